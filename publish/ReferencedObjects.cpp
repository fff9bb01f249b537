#include "publish/ReferencedObjects.h"

#include "components/Creation.h"
#include "framework/Exceptions.h"

#include <comdef.h>

#include <utility>
#include <vector>

namespace zt {

namespace {

using Microsoft::WRL::ComPtr;

// Commands of the 3D component.
constexpr long BeginObjects = 1;
constexpr long AddObject = 1000;

using ChildList = ComPtr<IEnumUnknown>;

template <typename Node>
void PushChildren(std::vector<ChildList>& lists, IUnknown* node) {
    ChildList children;
    Node::GetChildren::Call(node, children.GetAddressOf());
    if (children)
        lists.push_back(std::move(children));
}

// The identity of an object, or the object itself where it refuses that.
ComPtr<IUnknown> IdentityOf(const ComPtr<IUnknown>& object) {
    ComPtr<IUnknown> identity = Query<IUnknown>(object.Get());
    return identity ? identity : object;
}

// A list that hands over no child where it promises one has ended: asking it on could last for
// ever.
bool NextChild(IEnumUnknown* children, ComPtr<IUnknown>& child) {
    ULONG count = 0;
    return children->Next(1, child.ReleaseAndGetAddressOf(), &count) == S_OK && child;
}

_variant_t ObjectValue(const ComPtr<IUnknown>& object) {
    return _variant_t(object.Get(), true);
}

// An array of the two, each as VT_UNKNOWN.
_variant_t PairOf(const ComPtr<IUnknown>& first, const ComPtr<IUnknown>& second) {
    SAFEARRAY* const array = SafeArrayCreateVector(VT_VARIANT, 0, 2);
    if (array == nullptr)
        AfxThrowMemoryException();
    _variant_t pair;
    pair.vt = VT_ARRAY | VT_VARIANT;
    pair.parray = array;
    LONG index = 0;
    for (const ComPtr<IUnknown>& object : {first, second}) {
        _variant_t element = ObjectValue(object);
        SafeArrayPutElement(array, &index, &element);
        ++index;
    }
    return pair;
}

void Send(CommandTarget3D* target, long command, const VARIANT* argument) {
    const _variant_t number(command, VT_I4);
    CommandTarget3D::Execute::Call(target, 0, &number, argument);
}

} // namespace

ObjectSet CollectAttachedObjects(IUnknown* root) {
    ObjectSet objects;
    std::vector<ChildList> path;
    PushChildren<NodeTree>(path, root);
    ComPtr<IUnknown> child;
    while (!path.empty()) {
        if (!NextChild(path.back().Get(), child)) {
            path.pop_back();
            continue;
        }
        const ComPtr<ProjectNode> node = Query<ProjectNode>(child.Get());
        if (!node)
            continue;
        ComPtr<IUnknown> attached;
        ProjectNode::GetAttachedObject::Call(node.Get(), attached.GetAddressOf());
        if (attached)
            objects.insert(IdentityOf(attached));
        PushChildren<ProjectNode>(path, node.Get());
    }
    return objects;
}

void AnnounceReferencedObjects(Component3D* component, KernelProject* project) {
    const ComPtr<CommandTarget3D> target = Query<CommandTarget3D>(component);
    if (!target)
        return;
    Send(target.Get(), BeginObjects, nullptr);

    ComPtr<IUnknown> root;
    KernelProject::GetNodeTree::Call(project, root.GetAddressOf());
    if (!root)
        return;
    ComPtr<IUnknown> firstItem;
    NodeTree::GetItem::Call(root.Get(), _variant_t(0L, VT_I4), firstItem.GetAddressOf());
    for (const ComPtr<IUnknown>& object : CollectAttachedObjects(root.Get())) {
        const _variant_t pair = PairOf(firstItem, object);
        Send(target.Get(), AddObject, &pair);
    }
}

} // namespace zt
