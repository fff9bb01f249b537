// zt-test-registry FILE: carries out the registry changes that the file lists, one a line:
//
//   delete <tab> ROOT <tab> KEY                               the key with all below it, if it is
//   there set <tab> ROOT <tab> KEY <tab> NAME <tab> TYPE <tab> HEX  the value's bytes, exactly as
//   given
//
// ROOT is HKLM or HKCU, TYPE the type's number, HEX two digits a byte. The file is UTF-8. Exit code
// 0 when every line was carried out; the platform's own importer is no use here, since it completes
// a text that lacks its terminating zero.
#include <windows.h>

#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace {

std::wstring Widen(const std::string& text) {
    const int length = static_cast<int>(text.size());
    std::wstring wide(text.size(), L'\0');
    const int units = MultiByteToWideChar(CP_UTF8, 0, text.data(), length, wide.data(), length);
    wide.resize(static_cast<size_t>(units));
    return wide;
}

std::vector<std::string> Split(const std::string& line) {
    std::vector<std::string> fields;
    std::istringstream stream(line);
    for (std::string field; std::getline(stream, field, '\t');) {
        fields.push_back(field);
    }
    return fields;
}

HKEY Root(const std::string& name) {
    return name == "HKLM" ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER;
}

// The bytes, followed by ones that are no zero: RegSetValueEx lengthens a text by a zero that
// happens to stand behind it.
std::vector<BYTE> GuardedBytes(const std::string& hex) {
    std::vector<BYTE> bytes;
    for (size_t at = 0; at + 1 < hex.size(); at += 2) {
        bytes.push_back(static_cast<BYTE>(std::stoul(hex.substr(at, 2), nullptr, 16)));
    }
    bytes.insert(bytes.end(), 4, 0xff);
    return bytes;
}

LSTATUS Delete(const std::vector<std::string>& fields) {
    const LSTATUS status = RegDeleteTreeW(Root(fields.at(1)), Widen(fields.at(2)).c_str());
    return status == ERROR_FILE_NOT_FOUND ? ERROR_SUCCESS : status;
}

LSTATUS Set(const std::vector<std::string>& fields) {
    HKEY key = nullptr;
    LSTATUS status = RegCreateKeyExW(Root(fields.at(1)), Widen(fields.at(2)).c_str(), 0, nullptr, 0,
                                     KEY_WRITE, nullptr, &key, nullptr);
    if (status != ERROR_SUCCESS) {
        return status;
    }
    const std::vector<BYTE> bytes = GuardedBytes(fields.size() > 5 ? fields[5] : "");
    const DWORD type = static_cast<DWORD>(std::stoul(fields.at(4)));
    status = RegSetValueExW(key, Widen(fields.at(3)).c_str(), 0, type, bytes.data(),
                            static_cast<DWORD>(bytes.size() - 4));
    RegCloseKey(key);
    return status;
}

} // namespace

int wmain(int count, wchar_t** arguments) {
    if (count != 2) {
        return 2;
    }
    char path[MAX_PATH] = {};
    WideCharToMultiByte(CP_ACP, 0, arguments[1], -1, path, MAX_PATH, nullptr, nullptr);
    std::ifstream file(path);
    if (!file) {
        std::printf("cannot read %s\n", path);
        return 2;
    }
    for (std::string line; std::getline(file, line);) {
        const std::vector<std::string> fields = Split(line);
        const LSTATUS status = fields.at(0) == "delete" ? Delete(fields) : Set(fields);
        if (status != ERROR_SUCCESS) {
            std::printf("error %ld: %s\n", status, line.c_str());
            return 1;
        }
    }
    return 0;
}
