#include "tests/support/FakeKernel.h"

#include "components/contracts/Handlers.h"
#include "components/contracts/Kernel.h"

#include <comdef.h>
#include <gtest/gtest-spi.h>
#include <wrl/client.h>

namespace zt::test {
namespace {

using Microsoft::WRL::ComPtr;
using testing::ElementsAre;

TEST(FakeKernel, RecordsTheCallsWithTheirArguments) {
    CallList calls;
    FakeObject<KernelAdmin> admin(calls);
    FakeObject<KernelProject> project(calls, "project");
    admin.Return<KernelAdmin::LoadTypes, KernelAdmin::ShutDown>(S_FALSE);
    project.Return<KernelProject::StartNewRevision, KernelProject::GetDeclaration>(S_OK);

    EXPECT_EQ(KernelAdmin::LoadTypes::Call(admin.Get(), _bstr_t(L"C:\\\x00E4.xml")), S_FALSE);
    KernelAdmin::LoadTypes::Call(admin.Get(), nullptr);
    KernelProject::StartNewRevision::Call(project.Get());
    IDispatch* declaration = nullptr;
    KernelProject::GetDeclaration::Call(project.Get(), _bstr_t(L"Title"), &declaration);
    KernelAdmin::ShutDown::Call(admin.Get(), -1);

    EXPECT_THAT(calls,
                ElementsAre("KernelAdmin.LoadTypes(\"C:\\\xC3\xA4.xml\")",
                            "KernelAdmin.LoadTypes(null)", "project.StartNewRevision()",
                            "project.GetDeclaration(\"Title\")", "KernelAdmin.ShutDown(-1)"));
}

TEST(FakeKernel, HandsTheArgumentsToTheAnswer) {
    CallList calls;
    FakeObject<KernelAdmin> admin(calls);
    FakeObject<MetadataCollection> metadata(calls);
    FakeObject<MetadataItem> item(calls);
    admin.On<KernelAdmin::GetSpecificationFolder>([](BSTR* folder) {
        *folder = SysAllocString(L"C:\\spec");
        return S_OK;
    });
    metadata.On<MetadataCollection::FindItem>([&](VARIANT declaration, MetadataItem** found) {
        EXPECT_EQ(declaration.pdispVal, admin.Get());
        (*found = item.Get())->AddRef();
        return S_OK;
    });

    _bstr_t folder;
    KernelAdmin::GetSpecificationFolder::Call(admin.Get(), folder.GetAddress());
    EXPECT_STREQ(folder, L"C:\\spec");
    ComPtr<MetadataItem> found;
    MetadataCollection::FindItem::Call(metadata.Get(), _variant_t(admin.Get()), &found);
    EXPECT_EQ(found.Get(), item.Get());
    EXPECT_EQ(item.References(), 1);
    EXPECT_THAT(calls, ElementsAre("KernelAdmin.GetSpecificationFolder()",
                                   "MetadataCollection.FindItem(object)"));
}

TEST(FakeKernel, AnswersOnlyTheInterfacesThatItWasGiven) {
    CallList calls;
    FakeObject<ExportHandler> handler(calls);
    FakeObject<ScriptExporter> exporter(calls);
    FakeObject<KernelAdmin> admin(calls);
    handler.Answer(IID_IPersist, exporter.Get());
    handler.Answer(IID_IErrorInfo, nullptr);

    ComPtr<IUnknown> found;
    EXPECT_EQ(handler.Get()->QueryInterface(IID_IPersist, &found), S_OK);
    EXPECT_EQ(found.Get(), exporter.Get());
    EXPECT_EQ(handler.Get()->QueryInterface(IID_IErrorInfo, &found), S_OK);
    EXPECT_EQ(found, nullptr);
    EXPECT_EQ(handler.Get()->QueryInterface(IID_IDispatch, &found), E_NOINTERFACE);
    EXPECT_EQ(admin.Get()->QueryInterface(IID_IDispatch, &found), S_OK);
    EXPECT_EQ(found.Get(), admin.Get());
}

TEST(FakeKernel, FailsTheTestWhenACallHasNoAnswer) {
    CallList calls;
    FakeObject<KernelAdmin> admin(calls);
    EXPECT_NONFATAL_FAILURE(EXPECT_EQ(KernelAdmin::SetSaveMode::Call(admin.Get(), 1), E_NOTIMPL),
                            "KernelAdmin.SetSaveMode(1) was not expected");
}

TEST(FakeKernel, FailsTheTestWhenAnUnlistedMethodIsCalled) {
    CallList calls;
    FakeObject<KernelAdmin> admin(calls);
    EXPECT_NONFATAL_FAILURE(EarlyBound<96>::Call(admin.Get()),
                            "KernelAdmin: method 96 is not in the contract");
    EXPECT_THAT(calls, ElementsAre());
}

TEST(FakeKernel, FailsTheTestWhenAReferenceIsKept) {
    CallList calls;
    EXPECT_NONFATAL_FAILURE(
        {
            FakeObject<KernelAdmin> admin(calls);
            admin.Get()->AddRef();
        },
        "KernelAdmin: references are still held");
}

} // namespace
} // namespace zt::test
