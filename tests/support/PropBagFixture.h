// A property bag over two roots of the test's own.
#pragma once

#include "publish/PropBag.h"

#include "tests/support/RegistryRoots.h"

#include <gtest/gtest.h>

#include <comdef.h>

#include <optional>
#include <string>
#include <vector>

namespace zt::test {

constexpr wchar_t BagKeyName[] = L"Components\\KV3D";

class PropertyBagTest : public testing::Test {
  protected:
    // Reads through a bag that is opened now.
    HRESULT Read(const wchar_t* name, VARIANT* value) {
        CPropBag bag(m_roots.User(), m_roots.Machine(), BagKeyName, false);
        return bag.Read(name, value, nullptr);
    }
    HRESULT Write(const wchar_t* name, _variant_t value) {
        CPropBag bag(m_roots.User(), m_roots.Machine(), BagKeyName, true);
        return bag.Write(name, &value);
    }
    std::optional<RegistryRoots::Stored> Stored(const wchar_t* name) {
        return m_roots.UserValue(BagKeyName, name);
    }
    void SetUser(const wchar_t* name, DWORD type, const std::vector<BYTE>& bytes) {
        RegistryRoots::Set(m_roots.User(), BagKeyName, name, type, bytes);
    }
    void SetDefault(const wchar_t* name, DWORD type, const std::vector<BYTE>& bytes) {
        RegistryRoots::Set(m_roots.Machine(), BagKeyName, name, type, bytes);
    }

    RegistryRoots m_roots;
};

inline std::vector<BYTE> Dword(DWORD number) {
    const BYTE* const bytes = reinterpret_cast<const BYTE*>(&number);
    return {bytes, bytes + sizeof(number)};
}
inline std::vector<BYTE> Text(const std::wstring& text) {
    const BYTE* const bytes = reinterpret_cast<const BYTE*>(text.c_str());
    return {bytes, bytes + (text.size() + 1) * sizeof(wchar_t)};
}

inline _variant_t Asking(VARTYPE type) {
    _variant_t value;
    value.vt = type;
    return value;
}

} // namespace zt::test
