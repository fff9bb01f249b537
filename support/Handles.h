// Owners of the platform's handles.
#pragma once

#include <windows.h>

#include <cstdio>
#include <memory>
#include <type_traits>

namespace zt {

struct KeyCloser {
    void operator()(HKEY key) const { RegCloseKey(key); }
};
using KeyHolder = std::unique_ptr<std::remove_pointer_t<HKEY>, KeyCloser>;

struct StreamCloser {
    void operator()(std::FILE* stream) const { std::fclose(stream); }
};
using StreamHolder = std::unique_ptr<std::FILE, StreamCloser>;

// For the handles that are INVALID_HANDLE_VALUE when the call that makes them fails: adopt them
// with HoldHandle, which gives an empty holder for that value.
struct HandleCloser {
    void operator()(HANDLE handle) const { CloseHandle(handle); }
};
using HandleHolder = std::unique_ptr<std::remove_pointer_t<HANDLE>, HandleCloser>;

inline HandleHolder HoldHandle(HANDLE handle) {
    return HandleHolder(handle == INVALID_HANDLE_VALUE ? nullptr : handle);
}

} // namespace zt
