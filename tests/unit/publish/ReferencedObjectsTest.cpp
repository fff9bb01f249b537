#include "publish/ReferencedObjects.h"

#include "tests/support/NodeTreeModel.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <array>

namespace zt::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class NodeWalk : public testing::Test {
  protected:
    void SetUp() override { NodeCount::Reset(); }
    void TearDown() override { EXPECT_EQ(NodeCount::references, 0); }

    // The objects in the set's order.
    std::vector<IUnknown*> Walk() {
        std::vector<IUnknown*> found;
        for (const auto& object : CollectAttachedObjects(&root))
            found.push_back(object.Get());
        return found;
    }

    // By ascending address.
    std::array<ModelObject, 4> objects;
    ModelNode root;
};

TEST_F(NodeWalk, FindsNothingInAnEmptyTree) {
    EXPECT_THAT(Walk(), IsEmpty());
}

TEST_F(NodeWalk, FindsWhatIsAttachedAtEveryLevel) {
    ModelNode* const first = root.Add(&objects[0]);
    first->Add(&objects[1])->Add(&objects[2]);
    root.Add()->Add(&objects[3]);
    EXPECT_THAT(Walk(), ElementsAre(&objects[0], &objects[1], &objects[2], &objects[3]));
}

TEST_F(NodeWalk, LeavesOutWhatIsAttachedToTheRoot) {
    root.attached = &objects[0];
    root.Add(&objects[1]);
    EXPECT_THAT(Walk(), ElementsAre(&objects[1]));
}

TEST_F(NodeWalk, OrdersTheObjectsByTheirIdentity) {
    root.Add(&objects[2])->Add(&objects[3]);
    root.Add(&objects[0]);
    root.Add(&objects[1]);
    EXPECT_THAT(Walk(), ElementsAre(&objects[0], &objects[1], &objects[2], &objects[3]));
}

TEST_F(NodeWalk, KeepsASharedObjectOnce) {
    ModelNode* const first = root.Add(&objects[1]);
    first->Add(&objects[1]);
    root.Add(&objects[0]);
    root.Add(&objects[1]);
    EXPECT_THAT(Walk(), ElementsAre(&objects[0], &objects[1]));
}

TEST_F(NodeWalk, TellsObjectsApartByTheirIdentityAndNotByTheirFaces) {
    root.Add(objects[0].Second());
    root.Add(&objects[0]);
    root.Add(objects[0].Second());
    EXPECT_THAT(Walk(), ElementsAre(&objects[0]));
}

TEST_F(NodeWalk, TakesAnObjectThatTellsNoIdentityAsItIs) {
    objects[0].tellsIdentity = false;
    root.Add(objects[0].Second());
    EXPECT_THAT(Walk(), ElementsAre(objects[0].Second()));
}

TEST_F(NodeWalk, StepsOverEmptyNodes) {
    root.Add()->Add()->Add(&objects[0]);
    EXPECT_THAT(Walk(), ElementsAre(&objects[0]));
}

TEST_F(NodeWalk, LeavesOutAChildThatIsNoNodeWithAllBelowIt) {
    ModelNode* const other = root.Add(&objects[0]);
    other->isNode = false;
    other->Add(&objects[1]);
    root.Add(&objects[2]);
    EXPECT_THAT(Walk(), ElementsAre(&objects[2]));
}

TEST_F(NodeWalk, GoesOnPastANodeThatGivesNoChildren) {
    ModelNode* const barren = root.Add(&objects[0]);
    barren->givesChildren = false;
    barren->Add(&objects[1]);
    root.Add(&objects[2]);
    EXPECT_THAT(Walk(), ElementsAre(&objects[0], &objects[2]));
}

TEST_F(NodeWalk, GoesOnPastAListThatFails) {
    ModelNode* const failing = root.Add(&objects[0]);
    failing->nextResult = E_FAIL;
    failing->Add(&objects[1]);
    root.Add(&objects[2]);
    EXPECT_THAT(Walk(), ElementsAre(&objects[0], &objects[2]));
}

TEST_F(NodeWalk, EndsAListThatPromisesAChildAndGivesNone) {
    root.Add(&objects[0]);
    root.children.push_back(nullptr);
    root.Add(&objects[1]);
    EXPECT_THAT(Walk(), ElementsAre(&objects[0]));
}

TEST_F(NodeWalk, TakesAnObjectThatCameWithAFailureAndReleasesIt) {
    root.Add(&objects[0])->attachedResult = E_FAIL;
    EXPECT_THAT(Walk(), ElementsAre(&objects[0]));
}

TEST_F(NodeWalk, FindsNothingWhereTheRootGivesNoChildren) {
    root.givesChildren = false;
    root.Add(&objects[0]);
    EXPECT_THAT(Walk(), IsEmpty());
}

// ---- size ----

// Breaks the chains that the destructor of a deep tree would follow to its end.
void TakeApart(ModelNode& root) {
    std::vector<std::unique_ptr<ModelNode>> nodes = std::move(root.children);
    while (!nodes.empty()) {
        std::unique_ptr<ModelNode> node = std::move(nodes.back());
        nodes.pop_back();
        std::move(node->children.begin(), node->children.end(), std::back_inserter(nodes));
        node->children.clear();
    }
}

// Runs the walk in a thread with little stack, of which a call for each level would not leave any.
std::size_t WalkOnSmallStack(ModelNode& root) {
    struct Work {
        ModelNode& root;
        std::size_t found;
    } work = {root, 0};
    const HANDLE thread = CreateThread(
        nullptr, 64 * 1024,
        [](void* argument) -> DWORD {
            Work& given = *static_cast<Work*>(argument);
            given.found = CollectAttachedObjects(&given.root).size();
            return 0;
        },
        &work, STACK_SIZE_PARAM_IS_A_RESERVATION, nullptr);
    WaitForSingleObject(thread, INFINITE);
    CloseHandle(thread);
    return work.found;
}

TEST_F(NodeWalk, NeedsNoStackForATreeOf10000Levels) {
    std::vector<ModelObject> many(10000);
    ModelNode* node = &root;
    for (ModelObject& object : many)
        node = node->Add(&object);
    EXPECT_EQ(WalkOnSmallStack(root), 10000U);
    TakeApart(root);
}

TEST_F(NodeWalk, AsksEachOf100000NodesOnce) {
    std::vector<ModelObject> many(1000);
    for (std::size_t i = 0; i < 100; ++i) {
        ModelNode* const branch = root.Add(&many[i]);
        for (std::size_t j = 0; j < 999; ++j)
            branch->Add(&many[(i * 999 + j) % many.size()]);
    }
    EXPECT_EQ(CollectAttachedObjects(&root).size(), 1000U);
    EXPECT_EQ(NodeCount::attachedCalls, 100000U);
    // One for each node and one for the end of each of the 100,001 lists.
    EXPECT_EQ(NodeCount::nextCalls, 200001U);
}

} // namespace
} // namespace zt::test
