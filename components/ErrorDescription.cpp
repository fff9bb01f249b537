#include "components/ErrorDescription.h"

#include <windows.h>
#include <comdef.h>
#include <oleauto.h>
#include <wrl/client.h>

namespace zt {

std::wstring TakeErrorDescription() {
    Microsoft::WRL::ComPtr<IErrorInfo> info;
    _bstr_t description;
    if (GetErrorInfo(0, info.GetAddressOf()) == S_OK && info)
        info->GetDescription(description.GetAddress());
    const wchar_t* const text = description;
    return text != nullptr ? text : L"";
}

void ForgetErrorDescription() {
    SetErrorInfo(0, nullptr);
}

} // namespace zt
