#include "tests/support/PublishFixture.h"

#include "framework/Exceptions.h"
#include "framework/String.h"
#include "framework/Wnd.h"

namespace zt::test {

HRESULT FakeSettings::Load(IPropertyBag* bag, IErrorLog* log) {
    EXPECT_EQ(log, nullptr);
    _variant_t value;
    const HRESULT read = bag->Read(L"Quality", &value, nullptr);
    m_calls.push_back(m_name + ".Load(" +
                      (SUCCEEDED(read) ? ShowArgument(static_cast<VARIANT>(value)) : "nothing") +
                      ")");
    return result;
}

HRESULT FakeSettings::Save(IPropertyBag* bag, BOOL clearDirty, BOOL saveAll) {
    m_calls.push_back(m_name + ".Save(" + std::to_string(clearDirty) + ", " +
                      std::to_string(saveAll) + ")");
    _variant_t value(L"best");
    bag->Write(L"Quality", &value);
    return result;
}

void LeaveErrorDescription(const wchar_t* text) {
    ComPtr<ICreateErrorInfo> creator;
    ASSERT_EQ(CreateErrorInfo(creator.GetAddressOf()), S_OK);
    creator->SetDescription(const_cast<wchar_t*>(text));
    ComPtr<IErrorInfo> info;
    ASSERT_EQ(creator.As(&info), S_OK);
    SetErrorInfo(0, info.Get());
}

PublishTest::PublishTest()
    : publication{
          .kernel = kernel.Get(),
          .project = project.Get(),
          .exportHandler = nullptr,
          .site = &site,
          .log = log,
          .specificationClass = SpecificationClass::Ipc,
          .projectName = L"Pump",
          .exchangePath = folder.Path(),
          .isPackage = false,
          .language = L"de",
          .axesModelPath = L"axes1.wrl",
          .axesPosition = 0x00140032,
          .dataFolder = L"C:\\common",
          .settings = {.user = L"Software\\Product\\1.4", .machine = L"Software\\Product"}} {
    AfxEnableControlContainer();
    ControlRecord::Reset();
    SetErrorInfo(0, nullptr);
    AnswerAll(exporter);
    AnswerAll(component);
    AnswerAll(archive);
    kernel.On<KernelAdmin::GetSpecificationFolder>([](BSTR* place) {
        *place = SysAllocString(L"C:\\data\\Pumps");
        return S_OK;
    });
    exporter.Answer(IID_Exporter);
    exporter.Answer(IID_IObjectWithSite, &exporterSite);
    exporter.Answer(IID_IPersistPropertyBag, &exporterSettings);
    component.Answer(IID_3DComponent);
    component.Answer(IID_IPersistPropertyBag, &componentSettings);
    archive.Answer(IID_Archive);
    viewerControl.On<ViewerControl::Viewer>(Give(_variant_t(static_cast<IDispatch*>(&viewer))));
    viewer.names[L"ValidateNodes"] = 77;

    exporterClass =
        std::make_unique<TestClass>(CLSID_Exporter, Noted("create Exporter", exporter.Get()));
    archiveClass =
        std::make_unique<TestClass>(CLSID_Archive, Noted("create Archive", archive.Get()));
    componentClass = std::make_unique<TestClass>(L"KV.3D.1", Noted("create KV3D", component.Get()));
    viewerClass = std::make_unique<TestClass>(L"Faldera.Control.1", MakeViewer());
}

PublishTest::~PublishTest() {
    EXPECT_EQ(ControlRecord::Get().living, 0);
    EXPECT_EQ(CountWindows(), 0);
}

TestClass::Creation PublishTest::Noted(const char* name, IUnknown* object) {
    return [this, name, object](IUnknown* outer, REFIID iid, void** result) {
        EXPECT_EQ(outer, nullptr);
        calls.push_back(name);
        return object->QueryInterface(iid, result);
    };
}

TestClass::Creation PublishTest::MakeViewer() {
    return [this](IUnknown* outer, REFIID iid, void** result) {
        calls.push_back("create the viewer control");
        ControlTraits traits;
        traits.automation = &viewerControl;
        return MakeTestControlFactory(traits)->CreateInstance(outer, iid, result);
    };
}

std::wstring PublishTest::Publish() {
    try {
        return zt::Publish(publication) == 0 ? L"done" : L"another result";
    } catch (const wchar_t* failure) {
        return std::wstring(L"text: ") + failure;
    } catch (const CString& failure) {
        return std::wstring(L"string: ") + failure.GetString();
    } catch (COleException* failure) {
        wchar_t message[1024] = {};
        failure->GetErrorMessage(message, 1024);
        failure->Delete();
        return std::wstring(L"OLE: ") + message;
    }
}

std::string PublishTest::PublishedPath() const {
    const std::wstring path = folder.Path(L"Pump");
    return ToUtf8(path.c_str(), static_cast<int>(path.size()));
}

void PublishTest::StoreSetting(const wchar_t* componentName, const wchar_t* text) {
    user.SetText(publication.settings.user + L"\\" + componentName, L"Quality", text);
    machine.SetText(publication.settings.machine, L"Installed", L"yes");
}

void PublishTest::GiveNames(const wchar_t* first, const wchar_t* second) {
    exportHandler.On<ExportHandler::GetFirstName>([this, first](KernelProject* given, BSTR* name) {
        EXPECT_EQ(given, project.Get());
        *name = SysAllocString(first);
        return S_OK;
    });
    exportHandler.On<ExportHandler::GetSecondName>(
        [this, second](KernelProject* given, BSTR* name) {
            EXPECT_EQ(given, project.Get());
            *name = SysAllocString(second);
            return S_OK;
        });
    publication.exportHandler = exportHandler.Get();
}

} // namespace zt::test
