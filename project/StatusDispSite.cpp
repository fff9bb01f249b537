#include "project/StatusDispSite.h"

#include "components/ComponentIds.h"

namespace zt {

namespace {

// The button that answers a message box of the given style at once, so that nothing ever waits for
// a user. A box that offers to try again is not answered with it: the kernel would try for ever.
LONG AnswerTo(LONG style) {
    switch (style & MB_TYPEMASK) {
    case MB_ABORTRETRYIGNORE:
        return IDIGNORE;
    case MB_YESNOCANCEL:
    case MB_YESNO:
        return IDYES;
    case MB_RETRYCANCEL:
        return IDCANCEL;
    case MB_CANCELTRYCONTINUE:
        return IDCONTINUE;
    default:
        return IDOK;
    }
}

// Gives the caller a copy of the text. A null place is ignored.
HRESULT HandOver(const std::wstring& text, BSTR* place) {
    if (place == nullptr)
        return S_OK;
    *place = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
    return *place != nullptr ? S_OK : E_OUTOFMEMORY;
}

} // namespace

HRESULT CStatusDispSite::QueryInterface(REFIID iid, void** object) {
    if (object == nullptr)
        return E_POINTER;
    *object = nullptr;
    if (iid == IID_IUnknown || iid == IID_IOKStatusDisplay)
        *object = static_cast<IOKStatusDisplay*>(this);
    else if (iid == IID_IOleClientSite)
        *object = static_cast<IOleClientSite*>(this);
    else if (iid == IID_IServiceProvider)
        *object = static_cast<IServiceProvider*>(this);
    else
        return E_NOINTERFACE;
    AddRef();
    return S_OK;
}

ULONG CStatusDispSite::AddRef() {
    return ++m_references;
}

ULONG CStatusDispSite::Release() {
    const ULONG left = --m_references;
    if (left == 0)
        delete this;
    return left;
}

HRESULT CStatusDispSite::Reserved1() {
    return E_NOTIMPL;
}

HRESULT CStatusDispSite::Accepted2() {
    return S_OK;
}

HRESULT CStatusDispSite::Accepted3() {
    return S_OK;
}

HRESULT CStatusDispSite::Accepted4() {
    return S_OK;
}

HRESULT CStatusDispSite::ShowMessage(const wchar_t* text, LONG style, LONG* answer) {
    if (m_log != nullptr)
        m_log->LogError(text != nullptr ? text : L"");
    if (answer != nullptr)
        *answer = AnswerTo(style);
    return S_OK;
}

HRESULT CStatusDispSite::Reserved6() {
    return E_NOTIMPL;
}

HRESULT CStatusDispSite::Reserved7() {
    return E_NOTIMPL;
}

HRESULT CStatusDispSite::Reserved8() {
    return E_NOTIMPL;
}

HRESULT CStatusDispSite::GetProductVersion(BSTR* productVersion, BSTR* fileVersion) {
    const HRESULT product = HandOver(m_product.GetVersionString(L"ProductVersion"), productVersion);
    const HRESULT file = HandOver(m_product.GetFileVersion(), fileVersion);
    return FAILED(product) ? product : file;
}

HRESULT CStatusDispSite::GetProductName(BSTR* productName) {
    return HandOver(m_product.GetVersionString(L"ProductName"), productName);
}

HRESULT CStatusDispSite::Reserved11() {
    return E_NOTIMPL;
}

HRESULT CStatusDispSite::SaveObject() {
    return S_OK;
}

HRESULT CStatusDispSite::GetMoniker(DWORD, DWORD, IMoniker** moniker) {
    if (moniker != nullptr)
        *moniker = nullptr;
    return E_NOTIMPL;
}

HRESULT CStatusDispSite::GetContainer(IOleContainer** container) {
    if (container != nullptr)
        *container = nullptr;
    return E_NOINTERFACE;
}

HRESULT CStatusDispSite::ShowObject() {
    return S_OK;
}

HRESULT CStatusDispSite::OnShowWindow(BOOL) {
    return S_OK;
}

HRESULT CStatusDispSite::RequestNewObjectLayout() {
    return E_NOTIMPL;
}

HRESULT CStatusDispSite::QueryService(REFGUID service, REFIID iid, void** object) {
    if (service == IID_IOKStatusDisplay)
        return QueryInterface(iid, object);
    if (object != nullptr)
        *object = nullptr;
    return E_NOINTERFACE;
}

} // namespace zt
