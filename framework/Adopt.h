#pragma once

#include <wrl/client.h>

// Takes over the caller's reference to object (null gives an empty pointer). Use it instead of
// ComPtr::Attach: some versions of the toolchain's ComPtr take a reference more there.
template <typename T>
Microsoft::WRL::ComPtr<T> Adopt(T* object) {
    Microsoft::WRL::ComPtr<T> owner;
    *owner.ReleaseAndGetAddressOf() = object;
    return owner;
}
