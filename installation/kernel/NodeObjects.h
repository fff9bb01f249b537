// A project's node tree: the root, the nodes, their lists of children and what they refer to.
#pragma once

#include "components/contracts/Publishing.h"
#include "installation/kernel/KernelProjectObject.h"
#include "installation/kernel/NodeList.h"
#include "installation/kernel/Scripting.h"
#include "installation/runtime/Ref.h"
#include "installation/runtime/StandIn.h"

#include <memory>
#include <string>
#include <utility>

namespace devinst {

// clang-format off
// operation                       index  arguments
#define ZT_NODE_CHILDREN(METHOD)                                                  \
    METHOD(Next,                       3, ULONG, IUnknown**, ULONG* /* may be null */) \
    METHOD(Skip,                       4, ULONG)                                  \
    METHOD(Reset,                      5)                                         \
    METHOD(Clone,                      6, IEnumUnknown**)
// clang-format on

// IEnumUnknown as a contract.
struct NodeChildren : IUnknown {
    static constexpr char Name[] = "NodeChildren";
    ZT_CONTRACT(ZT_NODE_CHILDREN, ZT_EARLY_BOUND)
};

// What the objects of one tree share.
struct TreeContext {
    TreeContext(Ref<KernelProjectObject> itsProject, NodeList itsNodes)
        : project(std::move(itsProject)), nodes(std::move(itsNodes)) {}

    Ref<KernelProjectObject> project;
    NodeList nodes;
};
using SharedTree = std::shared_ptr<const TreeContext>;

class NodeTreeObject final : public StandIn {
  public:
    explicit NodeTreeObject(SharedTree tree);

    // The item at that position (a number) below the root; null where there is none.
    HRESULT On(zt::NodeTree::GetItem, const VARIANT& position, IUnknown** item);
    HRESULT On(zt::NodeTree::GetChildren, IEnumUnknown** children);

  private:
    SharedTree m_tree;
};

class ProjectNodeObject final : public StandIn {
  public:
    ProjectNodeObject(SharedTree tree, std::size_t node);

    HRESULT On(zt::ProjectNode::GetChildren, IEnumUnknown** children);
    HRESULT On(zt::ProjectNode::GetAttachedObject, IUnknown** object);

  private:
    SharedTree m_tree;
    std::size_t m_node;
};

// The nodes from one on that have the same parent.
class NodeChildrenObject final : public StandIn {
  public:
    NodeChildrenObject(SharedTree tree, std::size_t first);

    HRESULT On(NodeChildren::Next, ULONG count, IUnknown** objects, ULONG* fetched);
    HRESULT On(NodeChildren::Skip, ULONG count);
    HRESULT On(NodeChildren::Reset);
    HRESULT On(NodeChildren::Clone, IEnumUnknown** list);

  private:
    SharedTree m_tree;
    std::size_t m_first;
    std::size_t m_at;
};

// Something that nodes refer to: an <object> of the project.
class ReferencedObject final : public StandIn {
  public:
    ReferencedObject(Ref<KernelProjectObject> project, XmlElement object);

    HRESULT On(ReferencedObjectScripting::GetId, BSTR* id);
    HRESULT On(ReferencedObjectScripting::GetName, BSTR* name);
    HRESULT On(ReferencedObjectScripting::GetPartNumber, BSTR* number);
    HRESULT On(ReferencedObjectScripting::GetRepresentation, BSTR* file);
    HRESULT FindDispatchName(const wchar_t* name, DISPID* id) override;
    HRESULT InvokeDispatch(DISPID id, WORD kind, DISPPARAMS& parameters, VARIANT* result,
                           EXCEPINFO* exception) override;

  private:
    ~ReferencedObject() override;
    HRESULT GiveAttribute(const wchar_t* attribute, BSTR* text) const;

    Ref<KernelProjectObject> m_project;
    XmlElement m_object;
};

} // namespace devinst
