// A folder and a registry of the test's own.
#pragma once

#include "support/Handles.h"

#include <gtest/gtest.h>

#include <shlobj.h>

#include <filesystem>
#include <stdexcept>
#include <string>

namespace zt::test {

// Tells this object from all others of all test processes.
inline std::wstring UniqueName() {
    static int count = 0;
    return L"zt-test-" + std::to_wstring(GetCurrentProcessId()) + L"-" +
           std::to_wstring(GetTickCount64()) + L"-" + std::to_wstring(++count);
}

// A fresh, empty folder below the user's temporary folder; removed with all it holds.
class TemporaryFolder {
  public:
    TemporaryFolder() : m_path(std::filesystem::temp_directory_path() / UniqueName()) {
        std::filesystem::create_directory(m_path);
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    // Full path, without a trailing backslash.
    std::wstring Path() const { return m_path.wstring(); }
    // Full path of something in the folder; name may hold backslashes.
    std::wstring Path(const std::wstring& name) const { return Path() + L"\\" + name; }

  private:
    std::filesystem::path m_path;
};

// Redirects one root of the registry (HKEY_LOCAL_MACHINE, say) to an empty key of the test's own
// for the lifetime of the object.
class RegistryOverride {
  public:
    explicit RegistryOverride(HKEY root) : m_root(root), m_name(L"Software\\" + UniqueName()) {
        HKEY key = nullptr;
        if (RegCreateKeyExW(HKEY_CURRENT_USER, m_name.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS,
                            nullptr, &key, nullptr) != ERROR_SUCCESS)
            throw std::runtime_error("cannot create the test's registry key");
        m_key.reset(key);
        // The key is removed through this handle, which a redirected HKEY_CURRENT_USER leaves
        // alone.
        RegOpenKeyExW(HKEY_CURRENT_USER, L"Software", 0, KEY_ALL_ACCESS, &key);
        m_parent.reset(key);
        if (RegOverridePredefKey(m_root, m_key.get()) != ERROR_SUCCESS)
            throw std::runtime_error("cannot redirect the registry");
    }
    ~RegistryOverride() {
        RegOverridePredefKey(m_root, nullptr);
        m_key.reset();
        RegDeleteTreeW(m_parent.get(), m_name.substr(std::wstring(L"Software\\").size()).c_str());
    }
    RegistryOverride(const RegistryOverride&) = delete;
    RegistryOverride& operator=(const RegistryOverride&) = delete;

    // Writes size bytes as they stand, making the key where it is missing.
    void Set(const std::wstring& keyPath, const std::wstring& valueName, DWORD type,
             const void* data, std::size_t size) const {
        HKEY key = nullptr;
        ASSERT_EQ(RegCreateKeyExW(m_key.get(), keyPath.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS,
                                  nullptr, &key, nullptr),
                  ERROR_SUCCESS);
        const KeyHolder holder(key);
        ASSERT_EQ(RegSetValueExW(key, valueName.c_str(), 0, type, static_cast<const BYTE*>(data),
                                 static_cast<DWORD>(size)),
                  ERROR_SUCCESS);
    }
    // A text with its terminator.
    void SetText(const std::wstring& keyPath, const std::wstring& valueName,
                 const std::wstring& text, DWORD type = REG_SZ) const {
        Set(keyPath, valueName, type, text.c_str(), (text.size() + 1) * sizeof(wchar_t));
    }

  private:
    HKEY m_root;
    std::wstring m_name;
    KeyHolder m_key;
    KeyHolder m_parent;
};

} // namespace zt::test
