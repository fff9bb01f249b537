#include "publish/Package.h"

#include "components/Creation.h"
#include "components/Values.h"
#include "components/contracts/Publishing.h"
#include "publish/FolderTree.h"
#include "support/ComPtr.h"

#include <windows.h>

namespace zt {

namespace {

constexpr DWORD PathSize = 260;

std::wstring TemporaryFolder() {
    wchar_t folder[PathSize] = {};
    const DWORD length = GetTempPathW(PathSize, folder);
    return length != 0 && length < PathSize ? folder : L"C:\\";
}

// Creates or overwrites the file.
constexpr LONG CreationMode = 2;

ComPtr<ArchiveComponent> CreateArchive() {
    ComPtr<ArchiveComponent> archive;
    if (FAILED(Create<ArchiveComponent>(CLSID_Archive, archive.GetAddressOf())) || !archive)
        throw L"Can't create KVZip";
    return archive;
}

} // namespace

std::wstring TemporaryDestination() {
    wchar_t name[MAX_PATH] = {};
    // With the number 0 the system chooses one and takes the name by creating the file.
    if (GetTempFileNameW(TemporaryFolder().c_str(), L"KVE", 0, name) == 0)
        return L"C:\\__temp";
    DeleteFileW(name);
    return name;
}

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
