// Two registry roots of the test's own: one for what a user has, one for the machine's defaults.
#pragma once

#include "tests/support/Isolation.h"

#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace zt::test {

class RegistryRoots {
  public:
    struct Stored {
        DWORD type = REG_NONE;
        std::vector<BYTE> bytes;
    };

    RegistryRoots() : m_name(L"Software\\" + UniqueName()) {
        m_user = Create(HKEY_CURRENT_USER, m_name + L"\\user");
        m_machine = Create(HKEY_CURRENT_USER, m_name + L"\\machine");
    }
    ~RegistryRoots() {
        m_user.reset();
        m_machine.reset();
        RegDeleteTreeW(HKEY_CURRENT_USER, m_name.c_str());
    }
    RegistryRoots(const RegistryRoots&) = delete;
    RegistryRoots& operator=(const RegistryRoots&) = delete;

    HKEY User() const { return m_user.get(); }
    HKEY Machine() const { return m_machine.get(); }

    // Writes the bytes as they stand, making the key where it is missing.
    static void Set(HKEY root, const std::wstring& keyPath, const std::wstring& name, DWORD type,
                    const std::vector<BYTE>& bytes) {
        const KeyHolder key = Create(root, keyPath);
        if (RegSetValueExW(key.get(), name.c_str(), 0, type, bytes.data(),
                           static_cast<DWORD>(bytes.size())) != ERROR_SUCCESS)
            throw std::runtime_error("cannot write the test's registry value");
    }

    // What the user's root holds; nothing when the value is not there.
    std::optional<Stored> UserValue(const std::wstring& keyPath, const std::wstring& name) const {
        Stored stored;
        stored.bytes.resize(65536);
        DWORD size = static_cast<DWORD>(stored.bytes.size());
        HKEY key = nullptr;
        if (RegOpenKeyExW(User(), keyPath.c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS)
            return std::nullopt;
        const KeyHolder holder(key);
        if (RegQueryValueExW(key, name.c_str(), nullptr, &stored.type, stored.bytes.data(),
                             &size) != ERROR_SUCCESS)
            return std::nullopt;
        stored.bytes.resize(size);
        return stored;
    }
    bool HasUserKey(const std::wstring& keyPath) const {
        HKEY key = nullptr;
        const LSTATUS opened = RegOpenKeyExW(User(), keyPath.c_str(), 0, KEY_READ, &key);
        const KeyHolder holder(opened == ERROR_SUCCESS ? key : nullptr);
        return opened == ERROR_SUCCESS;
    }

  private:
    static KeyHolder Create(HKEY root, const std::wstring& path) {
        HKEY key = nullptr;
        if (RegCreateKeyExW(root, path.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key,
                            nullptr) != ERROR_SUCCESS)
            throw std::runtime_error("cannot create the test's registry key");
        return KeyHolder(key);
    }

    std::wstring m_name;
    KeyHolder m_user;
    KeyHolder m_machine;
};

} // namespace zt::test
