#include "publish/Package.h"

#include "components/Creation.h"
#include "components/Values.h"
#include "components/contracts/Publishing.h"
#include "publish/FolderTree.h"

#include <wrl/client.h>

namespace zt {

namespace {

using Microsoft::WRL::ComPtr;

// Creates or overwrites the file.
constexpr LONG CreationMode = 2;

ComPtr<ArchiveComponent> CreateArchive() {
    ComPtr<ArchiveComponent> archive;
    if (FAILED(Create<ArchiveComponent>(CLSID_Archive, archive.GetAddressOf())) || !archive)
        throw L"Can't create KVZip";
    return archive;
}

} // namespace

void PackFolder(const std::wstring& folder, const std::wstring& packagePath) {
    const ComPtr<ArchiveComponent> archive = CreateArchive();
    if (FAILED(ArchiveComponent::Create::Call(archive.Get(), Borrow(MakeText(packagePath)),
                                              CreationMode)))
        throw L"Can't create KVB-file";
    const HRESULT added = AddFolderToArchive(archive.Get(), folder);
    ArchiveComponent::Close::Call(archive.Get());
    DeleteFolderTree(folder);
    if (FAILED(added))
        throw L"Error generating KVB-file";
}

} // namespace zt
