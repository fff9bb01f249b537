#include "tests/unit/FakeClasses.h"

#include "tests/unit/Isolation.h"

#include <objbase.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace zt::test {

namespace {

std::vector<FakeClass>& Registered() {
    static std::vector<FakeClass> classes;
    return classes;
}

// Lives as long as its last reference.
class Factory final : public IClassFactory {
  public:
    explicit Factory(ClassMaker make) : m_make(std::move(make)) {}

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
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID iid, void** object) override {
        *object = nullptr;
        return m_make(outer, iid, object);
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }

  private:
    ~Factory() = default;

    ULONG m_references = 0;
    ClassMaker m_make;
};

std::string Narrow(const std::wstring& text) {
    return {text.begin(), text.end()};
}

std::string GuidText(REFGUID id) {
    wchar_t text[64] = {};
    StringFromGUID2(id, text, static_cast<int>(std::size(text)));
    return Narrow(text);
}

std::filesystem::path ProgramFile() {
    wchar_t program[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, program, MAX_PATH);
    return program;
}

std::string ManifestOf(const std::vector<FakeClass>& classes) {
    std::string text =
        "<assembly xmlns=\"urn:schemas-microsoft-com:asm.v1\" manifestVersion=\"1.0\">"
        "<assemblyIdentity type=\"win32\" name=\"FakeClasses\" version=\"1.0.0.0\"/>"
        "<file name=\"" +
        ProgramFile().filename().string() + "\">";
    for (const FakeClass& one : classes) {
        text += "<comClass clsid=\"" + GuidText(one.id) + "\" threadingModel=\"Apartment\"";
        if (!one.progId.empty())
            text += " progid=\"" + Narrow(one.progId) + "\"";
        text += "/>";
    }
    return text + "</file></assembly>";
}

// The program is looked for in the manifest's folder, so that is where the manifest has to stand
// for as long as the system reads it.
HANDLE CreateContext(const std::vector<FakeClass>& classes) {
    const std::filesystem::path manifest =
        ProgramFile().replace_filename(UniqueName() + L".manifest");
    std::ofstream(manifest, std::ios::binary) << ManifestOf(classes);
    const std::wstring source = manifest.wstring();
    ACTCTXW request = {};
    request.cbSize = sizeof(request);
    request.lpSource = source.c_str();
    const HANDLE context = CreateActCtxW(&request);
    std::filesystem::remove(manifest);
    return context;
}

} // namespace

ClassMaker Hand(IUnknown* object) {
    return [object](IUnknown*, REFIID iid, void** result) {
        return object->QueryInterface(iid, result);
    };
}

ClassMaker Refuse(HRESULT result) {
    return [result](IUnknown*, REFIID, void**) { return result; };
}

FakeClasses::FakeClasses(std::vector<FakeClass> classes) : m_context(CreateContext(classes)) {
    if (m_context == INVALID_HANDLE_VALUE || !ActivateActCtx(m_context, &m_cookie))
        throw std::runtime_error("cannot announce the test's classes");
    Registered() = std::move(classes);
}

FakeClasses::~FakeClasses() {
    Registered().clear();
    DeactivateActCtx(0, m_cookie);
    ReleaseActCtx(m_context);
}

namespace {

HRESULT FindFactory(REFCLSID classId, REFIID iid, void** object) {
    *object = nullptr;
    const std::vector<FakeClass>& classes = Registered();
    const auto found = std::find_if(classes.begin(), classes.end(),
                                    [&](const FakeClass& one) { return one.id == classId; });
    if (found == classes.end())
        return CLASS_E_CLASSNOTAVAILABLE;
    Factory* const factory = new Factory(found->make);
    factory->AddRef();
    const HRESULT result = factory->QueryInterface(iid, object);
    factory->Release();
    return result;
}

} // namespace

} // namespace zt::test

// The system asks the server of a class for it under this name; here the program is the server.
extern "C" __declspec(dllexport) HRESULT STDAPICALLTYPE
    DllGetClassObject(REFCLSID classId, REFIID iid, void** object) {
    return zt::test::FindFactory(classId, iid, object);
}
