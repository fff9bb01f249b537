#include "installation/kernel/NodeObjects.h"

#include "components/ComponentIds.h"
#include "installation/runtime/EarlyBound.h"
#include "installation/runtime/LateBound.h"

#include <utility>

namespace devinst {

namespace {

IUnknown* MakeNode(const SharedTree& tree, std::size_t node) {
    return Ref<ProjectNodeObject>::Make(tree, node).Detach<IUnknown>();
}

IEnumUnknown* MakeChildren(const SharedTree& tree, std::size_t parent) {
    return Ref<NodeChildrenObject>::Make(tree, tree->nodes.FirstChild(parent))
        .Detach<IEnumUnknown>();
}

} // namespace

// ---- the project's side ----

HRESULT KernelProjectObject::On(zt::KernelProject::GetNodeTree, IUnknown** root) {
    auto tree = std::make_shared<TreeContext>(Ref<KernelProjectObject>(this),
                                              NodeList(Child(Content(), L"nodes")));
    *root = Ref<NodeTreeObject>::Make(std::move(tree)).Detach<IUnknown>();
    return S_OK;
}

Ref<ReferencedObject> KernelProjectObject::ObjectOf(const std::wstring& id) {
    if (const auto known = m_objects.find(id); known != m_objects.end())
        return Ref<ReferencedObject>(known->second);
    const XmlElement objects = Child(Content(), L"objects");
    if (objects == nullptr)
        return {};
    for (const XmlElement& object : Children(objects, L"object")) {
        if (Attribute(object, L"id") != id)
            continue;
        auto made = Ref<ReferencedObject>::Make(Ref<KernelProjectObject>(this), object);
        m_objects[id] = made.Get();
        return made;
    }
    return {};
}

// ---- root ----

NodeTreeObject::NodeTreeObject(SharedTree tree)
    : StandIn(zt::NodeTree::Name), m_tree(std::move(tree)) {
    AddFace(IID_IDispatch, FunctionTable<zt::NodeTree, NodeTreeObject>());
}

HRESULT NodeTreeObject::On(zt::NodeTree::GetItem, const VARIANT& position, IUnknown** item) {
    if (position.vt != VT_I4 || position.lVal < 0)
        return E_INVALIDARG;
    std::size_t node = m_tree->nodes.FirstChild(NodeList::None);
    for (LONG i = 0; i < position.lVal && node != NodeList::None; ++i)
        node = m_tree->nodes.Next(node);
    if (node != NodeList::None)
        *item = MakeNode(m_tree, node);
    return S_OK;
}

HRESULT NodeTreeObject::On(zt::NodeTree::GetChildren, IEnumUnknown** children) {
    *children = MakeChildren(m_tree, NodeList::None);
    return S_OK;
}

// ---- nodes ----

ProjectNodeObject::ProjectNodeObject(SharedTree tree, std::size_t node)
    : StandIn(zt::ProjectNode::Name), m_tree(std::move(tree)), m_node(node) {
    AddFace(IID_ProjectNode, FunctionTable<zt::ProjectNode, ProjectNodeObject>());
}

HRESULT ProjectNodeObject::On(zt::ProjectNode::GetChildren, IEnumUnknown** children) {
    *children = MakeChildren(m_tree, m_node);
    return S_OK;
}

HRESULT ProjectNodeObject::On(zt::ProjectNode::GetAttachedObject, IUnknown** object) {
    const std::wstring& id = m_tree->nodes.ObjectId(m_node);
    if (id.empty())
        return S_OK;
    Ref<ReferencedObject> attached = m_tree->project->ObjectOf(id);
    if (attached)
        *object = attached.Detach<IUnknown>();
    return S_OK;
}

// ---- lists of children ----

NodeChildrenObject::NodeChildrenObject(SharedTree tree, std::size_t first)
    : StandIn(NodeChildren::Name), m_tree(std::move(tree)), m_first(first), m_at(first) {
    AddFace(IID_IEnumUnknown, FunctionTable<NodeChildren, NodeChildrenObject>());
}

HRESULT NodeChildrenObject::On(NodeChildren::Next, ULONG count, IUnknown** objects,
                               ULONG* fetched) {
    if (count != 1)
        return E_INVALIDARG;
    if (m_at == NodeList::None)
        return S_FALSE;
    *objects = MakeNode(m_tree, m_at);
    m_at = m_tree->nodes.Next(m_at);
    if (fetched != nullptr)
        *fetched = 1;
    return S_OK;
}

HRESULT NodeChildrenObject::On(NodeChildren::Skip, ULONG count) {
    for (; count > 0 && m_at != NodeList::None; --count)
        m_at = m_tree->nodes.Next(m_at);
    return count == 0 ? S_OK : S_FALSE;
}

HRESULT NodeChildrenObject::On(NodeChildren::Reset) {
    m_at = m_first;
    return S_OK;
}

HRESULT NodeChildrenObject::On(NodeChildren::Clone, IEnumUnknown** list) {
    *list = Ref<NodeChildrenObject>::Make(m_tree, m_at).Detach<IEnumUnknown>();
    return S_OK;
}

// ---- what nodes refer to ----

ReferencedObject::ReferencedObject(Ref<KernelProjectObject> project, XmlElement object)
    : StandIn("ReferencedObject"), m_project(std::move(project)), m_object(std::move(object)) {
    AddFace(IID_IDispatch, FunctionTable<DispatchOnly, ReferencedObject>());
}

ReferencedObject::~ReferencedObject() {
    m_project->Forget(Attribute(m_object, L"id"));
}

HRESULT ReferencedObject::GiveAttribute(const wchar_t* attribute, BSTR* text) const {
    *text = SysAllocString(Attribute(m_object, attribute).c_str());
    return S_OK;
}

HRESULT ReferencedObject::On(ReferencedObjectScripting::GetId, BSTR* id) {
    return GiveAttribute(L"id", id);
}

HRESULT ReferencedObject::On(ReferencedObjectScripting::GetName, BSTR* name) {
    return GiveAttribute(L"name", name);
}

HRESULT ReferencedObject::On(ReferencedObjectScripting::GetPartNumber, BSTR* number) {
    return GiveAttribute(L"part", number);
}

HRESULT ReferencedObject::On(ReferencedObjectScripting::GetRepresentation, BSTR* file) {
    return GiveAttribute(L"representation", file);
}

HRESULT ReferencedObject::FindDispatchName(const wchar_t* name, DISPID* id) {
    return FindByContract<ReferencedObjectScripting>(name, id);
}

HRESULT ReferencedObject::InvokeDispatch(DISPID id, WORD kind, DISPPARAMS& parameters,
                                         VARIANT* result, EXCEPINFO* exception) {
    return InvokeByContract<ReferencedObjectScripting>(*this, id, kind, parameters, result,
                                                       exception);
}

} // namespace devinst
