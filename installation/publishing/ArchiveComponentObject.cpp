#include "installation/publishing/ArchiveComponentObject.h"

#include "components/ComponentIds.h"
#include "installation/runtime/Utf8.h"

#include <algorithm>

namespace devinst {

namespace {

constexpr LONG CreateMode = 2;

// Zip files have a slash between the parts of a name.
std::string EntryName(std::wstring name) {
    std::replace(name.begin(), name.end(), L'\\', L'/');
    return ToUtf8(name);
}

} // namespace

ArchiveComponentObject::ArchiveComponentObject() : StandIn(zt::ArchiveComponent::Name) {
    AddFace(IID_Archive, FunctionTable<zt::ArchiveComponent, ArchiveComponentObject>());
}

HRESULT ArchiveComponentObject::On(zt::ArchiveComponent::Create, BSTR path, LONG mode) {
    if (mode != CreateMode || SysStringLen(path) == 0 || m_archive)
        return E_INVALIDARG;
    m_archive.emplace(std::filesystem::path(path));
    return S_OK;
}

HRESULT ArchiveComponentObject::On(zt::ArchiveComponent::Close) {
    if (!m_archive)
        return E_UNEXPECTED;
    m_archive->Close();
    m_archive.reset();
    return S_OK;
}

HRESULT ArchiveComponentObject::On(zt::ArchiveComponent::AddFile, BSTR path, BSTR name,
                                   VARIANT_BOOL flag) {
    if (flag != VARIANT_TRUE || SysStringLen(name) == 0 || name[0] == L'\\')
        return E_INVALIDARG;
    if (!m_archive)
        return E_UNEXPECTED;
    m_archive->AddFile(EntryName(name), path);
    return S_OK;
}

} // namespace devinst
