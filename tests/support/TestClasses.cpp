#include "tests/support/TestClasses.h"

#include "support/Handles.h"

#include <cstdio>
#include <stdexcept>
#include <string>
#include <utility>

namespace zt::test {

class TestClass::Factory final : public IClassFactory {
  public:
    explicit Factory(Creation answer) : creation(std::move(answer)) {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
        *object = nullptr;
        if (iid != IID_IUnknown && iid != IID_IClassFactory)
            return E_NOINTERFACE;
        *object = static_cast<IClassFactory*>(this);
        return S_OK;
    }
    // The TestClass owns the factory.
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID iid, void** object) override {
        asked.push_back(iid);
        *object = nullptr;
        return creation(outer, iid, object);
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }

    Creation creation;
    std::vector<IID> asked;
};

namespace {

struct NamedClass {
    std::wstring progId;
    CLSID id;
    IClassFactory* factory;
};

// The classes that are known by a ProgID, and the activation context that makes all of them known:
// only the one that was activated last counts. It names this very program as their server.
class NamedClasses {
  public:
    static NamedClasses& Get() {
        static NamedClasses classes;
        return classes;
    }
    void Add(const wchar_t* progId, IClassFactory* factory) {
        CLSID id = {};
        CoCreateGuid(&id);
        m_classes.push_back({progId, id, factory});
        Renew();
    }
    void Remove(const IClassFactory* factory) {
        if (std::erase_if(m_classes,
                          [&](const NamedClass& entry) { return entry.factory == factory; }) != 0)
            Renew();
    }
    IClassFactory* Find(REFCLSID id) const {
        for (const NamedClass& entry : m_classes)
            if (entry.id == id)
                return entry.factory;
        return nullptr;
    }

  private:
    void Renew();

    std::vector<NamedClass> m_classes;
    HANDLE m_context = INVALID_HANDLE_VALUE;
    ULONG_PTR m_activation = 0;
};

std::wstring ProgramPath() {
    wchar_t path[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    return path;
}

// Plain text: identifiers, file names and ProgIDs are ASCII.
void WriteManifest(const std::wstring& path, const std::wstring& program,
                   const std::vector<NamedClass>& classes) {
    const StreamHolder stream(_wfopen(path.c_str(), L"wb"));
    if (stream == nullptr)
        throw std::runtime_error("cannot write the test's manifest");
    fprintf(stream.get(),
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>"
            "<assembly xmlns=\"urn:schemas-microsoft-com:asm.v1\" manifestVersion=\"1.0\">"
            "<assemblyIdentity type=\"win32\" name=\"zt.test\" version=\"1.0.0.0\"/>"
            "<file name=\"%ls\">",
            program.c_str());
    for (const NamedClass& entry : classes) {
        wchar_t id[64] = {};
        StringFromGUID2(entry.id, id, 64);
        fprintf(stream.get(),
                "<comClass clsid=\"%ls\" threadingModel=\"Apartment\" progid=\"%ls\"/>", id,
                entry.progId.c_str());
    }
    fprintf(stream.get(), "</file></assembly>");
}

HANDLE MakeContext(const std::vector<NamedClass>& classes) {
    const std::wstring program = ProgramPath();
    const std::size_t nameAt = program.rfind(L'\\') + 1;
    // Beside the program: the server is looked for in the manifest's folder.
    wchar_t manifest[MAX_PATH] = {};
    GetTempFileNameW(program.substr(0, nameAt).c_str(), L"zt", 0, manifest);
    WriteManifest(manifest, program.substr(nameAt), classes);

    ACTCTXW context = {};
    context.cbSize = sizeof(context);
    context.lpSource = manifest;
    const HANDLE handle = CreateActCtxW(&context);
    DeleteFileW(manifest);
    if (handle == INVALID_HANDLE_VALUE)
        throw std::runtime_error("cannot make the test's activation context");
    return handle;
}

void NamedClasses::Renew() {
    if (m_context != INVALID_HANDLE_VALUE) {
        DeactivateActCtx(0, m_activation);
        ReleaseActCtx(std::exchange(m_context, INVALID_HANDLE_VALUE));
    }
    if (!m_classes.empty()) {
        m_context = MakeContext(m_classes);
        ActivateActCtx(m_context, &m_activation);
    }
}

} // namespace

TestClass::TestClass(REFCLSID id, Creation creation)
    : m_factory(std::make_unique<Factory>(std::move(creation))) {
    if (FAILED(CoRegisterClassObject(id, m_factory.get(), CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE,
                                     &m_cookie)))
        throw std::runtime_error("cannot register the test's class");
}

TestClass::TestClass(const wchar_t* progId, Creation creation)
    : m_factory(std::make_unique<Factory>(std::move(creation))) {
    NamedClasses::Get().Add(progId, m_factory.get());
}

TestClass::~TestClass() {
    if (m_cookie != 0)
        CoRevokeClassObject(m_cookie);
    else
        NamedClasses::Get().Remove(m_factory.get());
}

const std::vector<IID>& TestClass::Asked() const {
    return m_factory->asked;
}

TestClass::Creation TestClass::Gives(IUnknown* object) {
    return [object](IUnknown*, REFIID iid, void** result) {
        return object->QueryInterface(iid, result);
    };
}

TestClass::Creation TestClass::Fails(HRESULT result) {
    return [result](IUnknown*, REFIID, void**) { return result; };
}

TestClass::Creation TestClass::GivesNothing() {
    return [](IUnknown*, REFIID, void**) { return S_OK; };
}

} // namespace zt::test

extern "C" __declspec(dllexport) HRESULT STDAPICALLTYPE
    DllGetClassObject(REFCLSID id, REFIID iid, void** object) {
    IClassFactory* const factory = zt::test::NamedClasses::Get().Find(id);
    return factory != nullptr ? factory->QueryInterface(iid, object) : CLASS_E_CLASSNOTAVAILABLE;
}
