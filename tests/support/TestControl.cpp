#include "tests/support/TestControl.h"

#include "support/ComPtr.h"

#include <bit>
#include <utility>

namespace zt::test {

namespace {

void Note(const char* call) {
    ControlRecord::Get().calls.emplace_back(call);
}

HWND MakeWindow(HWND parent) {
    const DWORD style = parent != nullptr ? WS_CHILD : WS_POPUP;
    return CreateWindowExW(0, L"STATIC", L"", style | SS_NOTIFY, 1, 2, 3, 4, parent, nullptr,
                           GetModuleHandleW(nullptr), nullptr);
}

class TestControl final : public IOleObject,
                          public IOleInPlaceObject,
                          public IPersistStreamInit,
                          public IPersistStorage,
                          public IRunnableObject,
                          public IDispatch {
  public:
    explicit TestControl(ControlTraits traits) : m_traits(std::move(traits)) {
        ++ControlRecord::Get().living;
    }

    // ---- IUnknown ----

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
        *object = nullptr;
        if ((iid == IID_IOleObject && m_traits.givesNullAsOleObject) ||
            (iid == IID_IPersistStreamInit && m_traits.givesNullAsStreamInit))
            return S_OK;
        if (iid == IID_IUnknown || (iid == IID_IOleObject && m_traits.isOleObject))
            *object = static_cast<IOleObject*>(this);
        else if (iid == IID_IOleInPlaceObject || iid == IID_IOleWindow)
            *object = static_cast<IOleInPlaceObject*>(this);
        else if (iid == IID_IPersistStreamInit && m_traits.hasStreamInit)
            *object = static_cast<IPersistStreamInit*>(this);
        else if (iid == IID_IPersistStorage && m_traits.hasStorage)
            *object = static_cast<IPersistStorage*>(this);
        else if (iid == IID_IRunnableObject && m_traits.isRunnable)
            *object = static_cast<IRunnableObject*>(this);
        else if (iid == IID_IDispatch && m_traits.automation != nullptr)
            *object = static_cast<IDispatch*>(this);
        if (*object == nullptr)
            return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++m_references; }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG left = --m_references;
        if (left == 0)
            delete this;
        return left;
    }

    // ---- IOleObject ----

    HRESULT STDMETHODCALLTYPE GetMiscStatus(DWORD aspect, DWORD* status) override {
        Note("GetMiscStatus");
        *status = aspect == DVASPECT_CONTENT ? m_traits.status : 0;
        return m_traits.miscStatus;
    }
    HRESULT STDMETHODCALLTYPE SetClientSite(IOleClientSite* site) override {
        Note(site != nullptr ? "SetClientSite" : "ClearClientSite");
        m_site = site;
        ControlRecord::Get().site = site;
        if (site != nullptr && m_traits.keepsSite)
            ControlRecord::Get().keptSite = site;
        return m_traits.clientSite;
    }
    HRESULT STDMETHODCALLTYPE SetExtent(DWORD, SIZEL* extent) override {
        Note("SetExtent");
        ControlRecord::Get().extent = *extent;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE DoVerb(LONG verb, MSG*, IOleClientSite* site, LONG, HWND,
                                     const RECT* rect) override {
        Note(verb == OLEIVERB_INPLACEACTIVATE ? "Activate" : "another verb");
        if (m_traits.activation == Activation::Refused)
            return E_FAIL;
        if (m_traits.activation == Activation::Never)
            return S_OK;
        ControlRecord::Get().activatedAt = *rect;
        return ActivateIn(site);
    }
    HRESULT STDMETHODCALLTYPE Close(DWORD save) override {
        Note(save == OLECLOSE_NOSAVE ? "Close" : "Close and save");
        return S_OK;
    }

    HRESULT STDMETHODCALLTYPE GetClientSite(IOleClientSite**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetHostNames(LPCOLESTR, LPCOLESTR) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetMoniker(DWORD, IMoniker*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetMoniker(DWORD, DWORD, IMoniker**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE InitFromData(IDataObject*, BOOL, DWORD) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetClipboardData(DWORD, IDataObject**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE EnumVerbs(IEnumOLEVERB**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Update() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE IsUpToDate() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE GetUserClassID(CLSID*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetUserType(DWORD, LPOLESTR*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetExtent(DWORD, SIZEL*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Advise(IAdviseSink*, DWORD*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Unadvise(DWORD) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE EnumAdvise(IEnumSTATDATA**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetColorScheme(LOGPALETTE*) override { return E_NOTIMPL; }

    // ---- IOleInPlaceObject ----

    HRESULT STDMETHODCALLTYPE GetWindow(HWND* window) override {
        *window = m_window;
        return m_window != nullptr ? S_OK : E_FAIL;
    }
    HRESULT STDMETHODCALLTYPE ContextSensitiveHelp(BOOL) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE InPlaceDeactivate() override {
        Note("Deactivate");
        if (m_window != nullptr)
            DestroyWindow(std::exchange(m_window, nullptr));
        if (m_inPlaceSite != nullptr)
            m_inPlaceSite->OnInPlaceDeactivate();
        m_inPlaceSite.Reset();
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE UIDeactivate() override {
        Note("UIDeactivate");
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE SetObjectRects(const RECT* rect, const RECT*) override {
        Note("SetObjectRects");
        ControlRecord::Get().objectRects = *rect;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE ReactivateAndUndo() override { return E_NOTIMPL; }

    // ---- IPersistStreamInit and IPersistStorage ----

    HRESULT STDMETHODCALLTYPE GetClassID(CLSID*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE IsDirty() override { return S_FALSE; }
    HRESULT STDMETHODCALLTYPE Load(IStream*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Save(IStream*, BOOL) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetSizeMax(ULARGE_INTEGER*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE InitNew() override {
        Note("InitNew");
        return m_traits.initialisation;
    }
    HRESULT STDMETHODCALLTYPE InitNew(IStorage* storage) override {
        m_storage = storage;
        Note(CanKeepState() ? "InitNew in a storage" : "InitNew in no storage that works");
        return m_traits.initialisation;
    }
    HRESULT STDMETHODCALLTYPE Load(IStorage*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Save(IStorage*, BOOL) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SaveCompleted(IStorage*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE HandsOffStorage() override { return E_NOTIMPL; }

    // ---- IRunnableObject ----

    HRESULT STDMETHODCALLTYPE GetRunningClass(CLSID*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Run(IBindCtx*) override { return E_NOTIMPL; }
    BOOL STDMETHODCALLTYPE IsRunning() override { return TRUE; }
    HRESULT STDMETHODCALLTYPE LockRunning(BOOL, BOOL) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetContainedObject(BOOL contained) override {
        Note(contained ? "SetContainedObject" : "ClearContainedObject");
        return S_OK;
    }

    // ---- IDispatch ----

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
        return m_traits.automation->GetTypeInfoCount(count);
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override {
        return m_traits.automation->GetTypeInfo(index, locale, info);
    }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale,
                                            DISPID* ids) override {
        return m_traits.automation->GetIDsOfNames(iid, names, count, locale, ids);
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID iid, LCID locale, WORD kind,
                                     DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* info,
                                     UINT* wrongArgument) override {
        return m_traits.automation->Invoke(id, iid, locale, kind, parameters, result, info,
                                           wrongArgument);
    }

  private:
    ~TestControl() {
        Note("gone");
        --ControlRecord::Get().living;
    }

    HRESULT ActivateIn(IOleClientSite* site) {
        HWND parent = nullptr;
        OLEINPLACEFRAMEINFO info = {sizeof(info), FALSE, nullptr, nullptr, 0};
        RECT position = {}, clip = {};
        ComPtr<IOleInPlaceFrame> frame;
        ComPtr<IOleInPlaceUIWindow> document;
        if (FAILED(site->QueryInterface(IID_PPV_ARGS(&m_inPlaceSite))) ||
            m_inPlaceSite->CanInPlaceActivate() != S_OK ||
            FAILED(m_inPlaceSite->OnInPlaceActivate()) || FAILED(m_inPlaceSite->GetWindow(&parent)))
            return E_FAIL;
        if (FAILED(m_inPlaceSite->GetWindowContext(&frame, &document, &position, &clip, &info)))
            return E_FAIL;
        if (m_traits.keepsSite)
            ControlRecord::Get().keptFrame = frame;
        if (m_traits.activation != Activation::Windowless)
            m_window = MakeWindow(m_traits.activation == Activation::Windowed ? parent : nullptr);
        return S_OK;
    }

    bool CanKeepState() const {
        ComPtr<IStream> stream;
        return m_storage != nullptr &&
               SUCCEEDED(m_storage->CreateStream(
                   L"State", STGM_CREATE | STGM_READWRITE | STGM_SHARE_EXCLUSIVE, 0, 0, &stream)) &&
               SUCCEEDED(stream->Write("state", 5, nullptr));
    }

    ULONG m_references = 1;
    ControlTraits m_traits;
    ComPtr<IOleClientSite> m_site;
    ComPtr<IOleInPlaceSite> m_inPlaceSite;
    ComPtr<IStorage> m_storage;
    HWND m_window = nullptr;
};

class TestControlFactory final : public IClassFactory {
  public:
    explicit TestControlFactory(ControlTraits traits) : m_traits(std::move(traits)) {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
        *object = iid == IID_IUnknown || iid == IID_IClassFactory ? this : nullptr;
        if (*object == nullptr)
            return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++m_references; }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG left = --m_references;
        if (left == 0)
            delete this;
        return left;
    }
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown*, REFIID iid, void** object) override {
        *object = nullptr;
        if (FAILED(m_traits.creation))
            return m_traits.creation;
        const ComPtr<IOleObject> control = Adopt<IOleObject>(new TestControl(m_traits));
        return control->QueryInterface(iid, object);
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }

  private:
    ~TestControlFactory() = default;

    ULONG m_references = 1;
    ControlTraits m_traits;
};

BOOL CALLBACK CountOne(HWND window, LPARAM count) {
    const auto countChild = [](HWND, LPARAM children) -> BOOL {
        ++*std::bit_cast<int*>(children);
        return TRUE;
    };
    countChild(window, count);
    EnumChildWindows(window, countChild, count);
    return TRUE;
}

} // namespace

// {9D0F1D1C-6C0B-4C53-9B0A-5E7A6E3F2C11}
const CLSID TestControlClass::Id = {
    0x9d0f1d1c, 0x6c0b, 0x4c53, {0x9b, 0x0a, 0x5e, 0x7a, 0x6e, 0x3f, 0x2c, 0x11}};

const wchar_t* TestControlClass::IdText() {
    return L"{9D0F1D1C-6C0B-4C53-9B0A-5E7A6E3F2C11}";
}

TestControlClass::TestControlClass(ControlTraits traits, REFCLSID id) {
    const ComPtr<IClassFactory> factory = MakeTestControlFactory(std::move(traits));
    CoRegisterClassObject(id, factory.Get(), CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &m_cookie);
}

TestControlClass::~TestControlClass() {
    CoRevokeClassObject(m_cookie);
}

ComPtr<IClassFactory> MakeTestControlFactory(ControlTraits traits) {
    return Adopt<IClassFactory>(new TestControlFactory(std::move(traits)));
}

ControlRecord& ControlRecord::Get() {
    static ControlRecord record;
    return record;
}

void ControlRecord::Reset() {
    Get() = ControlRecord();
}

int CountWindows() {
    int count = 0;
    EnumThreadWindows(GetCurrentThreadId(), CountOne, reinterpret_cast<LPARAM>(&count));
    return count;
}

} // namespace zt::test
