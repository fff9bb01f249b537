#include "installation/handlers/OpenProject.h"

#include "support/ComPtr.h"
#include "framework/Exceptions.h"
#include "installation/runtime/Call.h"

#include <comdef.h>

namespace devinst {

namespace {

constexpr LCID UserLocale = 0x400;

_variant_t Call(IDispatch* object, const wchar_t* name, WORD kind, DISPPARAMS parameters) {
    wchar_t* names[] = {const_cast<wchar_t*>(name)};
    DISPID id = DISPID_UNKNOWN;
    const HRESULT found = object->GetIDsOfNames(IID_NULL, names, 1, UserLocale, &id);
    if (FAILED(found))
        throw ComFailure{found, std::wstring(L"The kernel does not know ") + name + L"."};
    _variant_t result;
    ExceptionInfo info;
    const HRESULT called =
        object->Invoke(id, IID_NULL, UserLocale, kind, &parameters, &result, &info, nullptr);
    if (called == DISP_E_EXCEPTION)
        throw ComFailure{info.scode, info.bstrDescription != nullptr ? info.bstrDescription : L""};
    if (FAILED(called))
        throw ComFailure{called, std::wstring(L"The kernel refused ") + name + L"."};
    return result;
}

std::wstring TextOf(const _variant_t& value) {
    if (value.vt != VT_BSTR || value.bstrVal == nullptr)
        return {};
    return {value.bstrVal, SysStringLen(value.bstrVal)};
}

} // namespace

OpenProject::OpenProject(IDispatch* kernel) {
    if (kernel == nullptr)
        throw ComFailure{E_POINTER, L"The handler was given no kernel."};
    _variant_t project = Call(kernel, L"CurrentProject", DISPATCH_PROPERTYGET, {});
    if (project.vt != VT_DISPATCH || project.pdispVal == nullptr)
        throw ComFailure{E_FAIL, L"No project is open."};
    m_project = Adopt(project.Detach().pdispVal);
}

void OpenProject::SetMetadata(const std::wstring& name, const std::wstring& value) {
    _variant_t lastToFirst[] = {value.c_str(), name.c_str()};
    DISPPARAMS parameters = {lastToFirst, nullptr, 2, 0};
    Call(m_project.Get(), L"SetMetadata", DISPATCH_METHOD, parameters);
}

std::wstring OpenProject::Metadata(const std::wstring& name) {
    _variant_t argument(name.c_str());
    DISPPARAMS parameters = {&argument, nullptr, 1, 0};
    return TextOf(Call(m_project.Get(), L"GetMetadata", DISPATCH_METHOD, parameters));
}

std::wstring OpenProject::Read(const wchar_t* property) {
    return TextOf(Call(m_project.Get(), property, DISPATCH_PROPERTYGET, {}));
}

std::wstring OpenProject::Revision() {
    return Read(L"Revision");
}

std::wstring OpenProject::DocumentPath() {
    return Read(L"DocumentPath");
}

std::wstring OpenProject::Name() {
    return Read(L"Name");
}

std::wstring OpenProject::Content() {
    return Read(L"Content");
}

std::wstring OpenProject::Folder() {
    return Read(L"Folder");
}

std::wstring OpenProject::Representations() {
    return Read(L"Representations");
}

} // namespace devinst
