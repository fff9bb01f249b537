// How the viewer route announces to the 3D component what the project's nodes refer to.
#include "tests/support/NodeTreeModel.h"
#include "tests/support/PublishFixture.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <array>

namespace zt::test {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::Not;

class AnnouncedObjects : public PublishTest {
  protected:
    AnnouncedObjects() {
        publication.specificationClass = SpecificationClass::Proc;
        NodeCount::Reset();
        component.Answer(IID_3DCommandTarget, target.Get());
        target.On<CommandTarget3D::Execute>(
            [this](LONG flags, const VARIANT* command, const VARIANT* argument) {
                calls.push_back(Describe(flags, *command, argument));
                return commandResult;
            });
        project.On<KernelProject::GetNodeTree>([this](IUnknown** root) {
            (*root = tree.Get())->AddRef();
            return S_OK;
        });
        tree.On<NodeTree::GetItem>([this](const VARIANT&, IUnknown** item) {
            (*item = &firstItem)->AddRef();
            return S_OK;
        });
        tree.On<NodeTree::GetChildren>(
            [this](IEnumUnknown** children) { return root.GetChildren(children); });
    }

    std::string Describe(LONG flags, const VARIANT& command, const VARIANT* argument) {
        EXPECT_EQ(flags, 0);
        EXPECT_EQ(command.vt, VT_I4);
        std::string text = "command " + std::to_string(command.lVal);
        if (argument == nullptr)
            return text + " without argument";
        EXPECT_EQ(argument->vt, VT_ARRAY | VT_VARIANT);
        EXPECT_EQ(SafeArrayGetDim(argument->parray), 1U);
        LONG lower = -1;
        LONG upper = -1;
        SafeArrayGetLBound(argument->parray, 1, &lower);
        SafeArrayGetUBound(argument->parray, 1, &upper);
        EXPECT_EQ(upper - lower, 1);
        for (LONG at = lower; at <= upper; ++at) {
            _variant_t element;
            SafeArrayGetElement(argument->parray, &at, &element);
            EXPECT_EQ(element.vt, VT_UNKNOWN);
            text += Name(element.punkVal);
        }
        return text;
    }
    std::string Name(const IUnknown* object) const {
        if (object == nullptr)
            return " none";
        if (object == &firstItem)
            return " item";
        for (std::size_t i = 0; i < objects.size(); ++i)
            if (object == &objects[i])
                return " object " + std::to_string(i);
        return " stranger";
    }
    CallList Commands() const {
        CallList found;
        for (const std::string& call : calls)
            if (call.rfind("command ", 0) == 0)
                found.push_back(call);
        return found;
    }

    FakeObject<CommandTarget3D> target{calls, "Commands"};
    FakeObject<NodeTree> tree{calls};
    ModelNode root;
    // By ascending address.
    std::array<ModelObject, 3> objects;
    FakeDispatch firstItem;
    HRESULT commandResult = S_OK;
};

TEST_F(AnnouncedObjects, AreAnnouncedBetweenSettingsAndPublication) {
    publication.axesModelPath = _bstr_t();
    EXPECT_EQ(Publish(), L"done");
    const CallList wanted = {"KV3D.PutSpecificationFileName(\"C:\\data\\Pumps.cfg\")",
                             "Commands.Execute(0)",
                             "command 1 without argument",
                             "KernelProject.GetNodeTree()",
                             "NodeTree.GetItem(0)",
                             "NodeTree.GetChildren()",
                             "KV3D.PutOptionC(0)"};
    const auto start = std::find(calls.begin(), calls.end(), wanted[0]);
    ASSERT_GE(calls.end() - start, static_cast<std::ptrdiff_t>(wanted.size()));
    EXPECT_EQ(CallList(start, start + static_cast<std::ptrdiff_t>(wanted.size())), wanted);
}

TEST_F(AnnouncedObjects, AreNotAskedForWithoutACommandInterface) {
    component.Answer(IID_3DCommandTarget, nullptr);
    EXPECT_EQ(Publish(), L"done");
    EXPECT_THAT(calls, Not(Contains("KernelProject.GetNodeTree()")));
}

TEST_F(AnnouncedObjects, AreNoneWithoutANodeTree) {
    project.Return<KernelProject::GetNodeTree>(E_FAIL);
    EXPECT_EQ(Publish(), L"done");
    EXPECT_THAT(Commands(), ElementsAre("command 1 without argument"));
}

TEST_F(AnnouncedObjects, AreAnnouncedPastARefusedCommand) {
    commandResult = E_FAIL;
    EXPECT_EQ(Publish(), L"done");
    EXPECT_THAT(calls, Contains("KernelProject.GetNodeTree()"));
}

TEST_F(AnnouncedObjects, ComeEachOnceWithTheFirstItemInTheOrderOfIdentity) {
    root.Add(&objects[2])->Add(&objects[1]);
    root.Add()->Add(&objects[0]);
    root.Add(objects[1].Second());
    EXPECT_EQ(Publish(), L"done");
    EXPECT_THAT(Commands(),
                ElementsAre("command 1 without argument", "command 1000 item object 0",
                            "command 1000 item object 1", "command 1000 item object 2"));
    EXPECT_EQ(NodeCount::references, 0);
}

TEST_F(AnnouncedObjects, ComeWithoutAFirstItemWhereTheRootHasNone) {
    root.Add(&objects[0]);
    tree.Return<NodeTree::GetItem>(E_FAIL);
    EXPECT_EQ(Publish(), L"done");
    EXPECT_THAT(Commands(),
                ElementsAre("command 1 without argument", "command 1000 none object 0"));
    EXPECT_EQ(NodeCount::references, 0);
}

TEST_F(AnnouncedObjects, AreAllAnnouncedThoughEachIsRefused) {
    root.Add(&objects[0]);
    root.Add(&objects[1]);
    commandResult = E_FAIL;
    EXPECT_EQ(Publish(), L"done");
    EXPECT_THAT(Commands(), ElementsAre("command 1 without argument", "command 1000 item object 0",
                                        "command 1000 item object 1"));
}

TEST_F(AnnouncedObjects, AreReleasedWhenThePublicationFails) {
    root.Add(&objects[0]);
    component.Return<Component3D::PublishView>(E_FAIL);
    EXPECT_EQ(Publish(), L"string: Error publishing project");
    EXPECT_EQ(NodeCount::references, 0);
}

} // namespace
} // namespace zt::test
