// A project's node tree as plain objects: light enough for 100,000 of them. Every object is
// counted, and so is every call.
#pragma once

#include "components/ComponentIds.h"

#include <windows.h>
#include <oleauto.h>

#include <cstddef>
#include <memory>
#include <vector>

namespace zt::test {

// References and calls of all objects of the model.
struct NodeCount {
    static inline long references = 0;
    static inline std::size_t nextCalls = 0;
    static inline std::size_t attachedCalls = 0;
    static void Reset() {
        references = 0;
        nextCalls = 0;
        attachedCalls = 0;
    }
};

// Something that a node refers to. It has two faces; only the first one is its identity.
class ModelObject final : public IUnknown {
  public:
    ModelObject() : m_second(*this) {}
    ModelObject(const ModelObject&) = delete;

    IUnknown* Second() { return &m_second; }
    // Whether it tells its identity.
    bool tellsIdentity = true;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
        *object = tellsIdentity && iid == IID_IUnknown ? this : nullptr;
        if (*object == nullptr)
            return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return Count(1); }
    ULONG STDMETHODCALLTYPE Release() override { return Count(-1); }

  private:
    class Face final : public IUnknown {
      public:
        explicit Face(ModelObject& owner) : m_owner(owner) {}
        HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
            return m_owner.QueryInterface(iid, object);
        }
        ULONG STDMETHODCALLTYPE AddRef() override { return Count(1); }
        ULONG STDMETHODCALLTYPE Release() override { return Count(-1); }

      private:
        ModelObject& m_owner;
    };
    static ULONG Count(long change) {
        return static_cast<ULONG>((NodeCount::references += change) + 1);
    }

    Face m_second;
};

// Method places 7 to 20 of the root and of a node; the tests answer 9 and 20.
struct NodeFunctions : IDispatch {
    virtual HRESULT STDMETHODCALLTYPE Method7() = 0;
    virtual HRESULT STDMETHODCALLTYPE Method8() = 0;
    virtual HRESULT STDMETHODCALLTYPE GetChildren(IEnumUnknown** children) = 0;
    virtual HRESULT STDMETHODCALLTYPE Method10() = 0;
    virtual HRESULT STDMETHODCALLTYPE Method11() = 0;
    virtual HRESULT STDMETHODCALLTYPE Method12() = 0;
    virtual HRESULT STDMETHODCALLTYPE Method13() = 0;
    virtual HRESULT STDMETHODCALLTYPE Method14() = 0;
    virtual HRESULT STDMETHODCALLTYPE Method15() = 0;
    virtual HRESULT STDMETHODCALLTYPE Method16() = 0;
    virtual HRESULT STDMETHODCALLTYPE Method17() = 0;
    virtual HRESULT STDMETHODCALLTYPE Method18() = 0;
    virtual HRESULT STDMETHODCALLTYPE Method19() = 0;
    virtual HRESULT STDMETHODCALLTYPE GetAttachedObject(IUnknown** object) = 0;
};

class ModelNode final : public NodeFunctions {
  public:
    ModelNode() = default;
    explicit ModelNode(IUnknown* attachedObject) : attached(attachedObject) {}
    ModelNode(const ModelNode&) = delete;

    ModelNode* Add(IUnknown* attachedObject = nullptr) {
        children.push_back(std::make_unique<ModelNode>(attachedObject));
        return children.back().get();
    }

    std::vector<std::unique_ptr<ModelNode>> children;
    IUnknown* attached = nullptr; // borrowed
    bool isNode = true;           // has the node's interface
    bool givesChildren = true;
    HRESULT attachedResult = S_OK;
    HRESULT nextResult = S_OK; // of its children's enumerator

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
        *object = iid == IID_IUnknown || (isNode && iid == IID_ProjectNode) ? this : nullptr;
        if (*object == nullptr)
            return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override {
        return static_cast<ULONG>(++NodeCount::references);
    }
    ULONG STDMETHODCALLTYPE Release() override {
        return static_cast<ULONG>(--NodeCount::references + 1);
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                                     UINT*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE Method7() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Method8() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetChildren(IEnumUnknown** list) override;
    HRESULT STDMETHODCALLTYPE Method10() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Method11() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Method12() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Method13() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Method14() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Method15() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Method16() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Method17() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Method18() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Method19() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetAttachedObject(IUnknown** object) override {
        ++NodeCount::attachedCalls;
        *object = attached;
        if (attached != nullptr)
            attached->AddRef();
        return attachedResult;
    }
};

class ModelChildren final : public IEnumUnknown {
  public:
    explicit ModelChildren(ModelNode& node) : m_node(node) { ++NodeCount::references; }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void** object) override {
        *object = nullptr;
        return E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override {
        ++NodeCount::references;
        return ++m_references;
    }
    ULONG STDMETHODCALLTYPE Release() override {
        --NodeCount::references;
        const ULONG left = --m_references;
        if (left == 0)
            delete this;
        return left;
    }
    HRESULT STDMETHODCALLTYPE Next(ULONG count, IUnknown** objects, ULONG* fetched) override {
        ++NodeCount::nextCalls;
        *objects = nullptr;
        if (fetched != nullptr)
            *fetched = 0;
        if (m_node.nextResult != S_OK)
            return m_node.nextResult;
        if (count != 1 || m_at == m_node.children.size())
            return S_FALSE;
        *objects = m_node.children[m_at++].get();
        if (*objects == nullptr) // a list that promises and does not give
            return S_OK;
        (*objects)->AddRef();
        if (fetched != nullptr)
            *fetched = 1;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Skip(ULONG) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Reset() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Clone(IEnumUnknown**) override { return E_NOTIMPL; }

  private:
    ~ModelChildren() = default;
    ModelNode& m_node;
    std::size_t m_at = 0;
    ULONG m_references = 1;
};

inline HRESULT ModelNode::GetChildren(IEnumUnknown** list) {
    *list = givesChildren ? new ModelChildren(*this) : nullptr;
    return givesChildren ? S_OK : E_FAIL;
}

} // namespace zt::test
