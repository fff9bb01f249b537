// The platform's counted pointer to a component's object.
#pragma once

#include <wrl/client.h>

using Microsoft::WRL::ComPtr;

// Takes over the caller's reference to object (null gives an empty pointer). Use it instead of
// ComPtr::Attach: some versions of the toolchain's ComPtr take a reference more there.
template <typename T>
ComPtr<T> Adopt(T* object) {
    ComPtr<T> owner;
    *owner.ReleaseAndGetAddressOf() = object;
    return owner;
}
