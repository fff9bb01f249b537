#include "installation/runtime/ClassObject.h"

#include "installation/runtime/Call.h"
#include "installation/runtime/StandIn.h"

#include <map>
#include <memory>

namespace devinst {

namespace {

class ClassObject final : public IClassFactory {
  public:
    explicit ClassObject(const ComponentClass& componentClass) : m_class(componentClass) {}
    virtual ~ClassObject() = default;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
        const bool known = iid == IID_IUnknown || iid == IID_IClassFactory;
        *object = known ? this : nullptr;
        return known ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }

    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID iid, void** object) override {
        *object = nullptr;
        return Perform({m_class.className, "CreateInstance"}, {Described(iid)},
                       {Output::Interface(reinterpret_cast<IUnknown**>(object))}, [&] {
                           if (outer != nullptr)
                               return CLASS_E_NOAGGREGATION;
                           StandIn* const made = m_class.create();
                           const HRESULT result = made->Query(iid, object);
                           made->ReleaseReference();
                           return result;
                       });
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }

  private:
    const ComponentClass& m_class;
};

} // namespace

IClassFactory* ClassObjectOf(const ComponentClass& componentClass) {
    static auto* const objects = new std::map<const ComponentClass*, std::unique_ptr<ClassObject>>;
    std::unique_ptr<ClassObject>& object = (*objects)[&componentClass];
    if (object == nullptr)
        object = std::make_unique<ClassObject>(componentClass);
    return object.get();
}

} // namespace devinst
