// The objects that a project's nodes refer to, and their announcement to the 3D component.
#pragma once

#include "components/contracts/Publishing.h"

#include <wrl/client.h>

#include <functional>
#include <set>

namespace zt {

struct ByAddress {
    bool operator()(const Microsoft::WRL::ComPtr<IUnknown>& left,
                    const Microsoft::WRL::ComPtr<IUnknown>& right) const {
        return std::less<IUnknown*>()(left.Get(), right.Get());
    }
};

// Each object once, in the order of their identities: the addresses of their IUnknown.
using ObjectSet = std::set<Microsoft::WRL::ComPtr<IUnknown>, ByAddress>;

// Collects what is attached to the nodes below the root. The depth of the tree costs no stack. A
// child that is no node is ignored with all below it.
ObjectSet CollectAttachedObjects(IUnknown* root);

// Announces to the component, where it takes commands, all objects that the project's nodes refer
// to. Failures are ignored.
void AnnounceReferencedObjects(Component3D* component, KernelProject* project);

} // namespace zt
