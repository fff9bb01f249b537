// A stand-in with operations of every kind, to try the stand-ins' runtime on.
#pragma once

#include "installation/runtime/EarlyBound.h"
#include "installation/runtime/LateBound.h"

#include <wrl/client.h>

#include <functional>
#include <string>

namespace devinst::test {

struct ProbeInterface;

// clang-format off
#define ZT_PROBE(METHOD)                                                          \
    METHOD(TakeAll,                    7, LONG, BSTR, VARIANT, IUnknown*)         \
    METHOD(GiveText,                   9, LONG, BSTR*)                            \
    METHOD(GiveVariant,               12, VARIANT*)                               \
    METHOD(GiveObject,                20, ProbeInterface**)                       \
    METHOD(Work,                      97)

#define ZT_PROBE_AUTOMATION(OPERATION)                                            \
    OPERATION(GetTitle,                1, PropertyGet,  Text)                     \
    OPERATION(PutTitle,                1, PropertyPut,  Nothing, ::zt::Text)      \
    OPERATION(PutHost,                 2, PropertyPut,  Nothing, ::zt::Object)    \
    OPERATION(PutRefHost,              2, PropertyPutReference, Nothing, ::zt::Object) \
    OPERATION(Combine,                 3, Method,       Text,    ::zt::Text, ::zt::Int32, ::zt::Boolean) \
    OPERATION(Child,                   4, Method,       Object)                   \
    OPERATION(Anything,                5, Method,       Value,   ::zt::Value)     \
    OPERATION(GetState,                6, Method,       Nothing)
// clang-format on

struct ProbeInterface : IDispatch {
    static constexpr char Name[] = "ProbeInterface";
    ZT_CONTRACT(ZT_PROBE, ZT_EARLY_BOUND)
};

struct ProbeAutomation {
    ZT_CONTRACT(ZT_PROBE_AUTOMATION, ZT_LATE_BOUND)
};

constexpr IID ProbeId = {
    0xb5f87f15, 0x0de2, 0x4c43, {0x9a, 0x02, 0x07, 0xa0, 0x54, 0x4c, 0x38, 0x30}};

class Probe final : public StandIn {
  public:
    Probe();

    HRESULT FindDispatchName(const wchar_t* name, DISPID* id) override;
    HRESULT InvokeDispatch(DISPID id, WORD kind, DISPPARAMS& parameters, VARIANT* result,
                           EXCEPINFO* exception) override;

    HRESULT On(ProbeInterface::TakeAll, LONG, BSTR, VARIANT, IUnknown*) { return S_OK; }
    // "text 5" for the number 5.
    HRESULT On(ProbeInterface::GiveText, LONG number, BSTR* text);
    // The number 42.
    HRESULT On(ProbeInterface::GiveVariant, VARIANT* value);
    // Another probe.
    HRESULT On(ProbeInterface::GiveObject, ProbeInterface** object);
    // Runs work.
    HRESULT On(ProbeInterface::Work) { return work(); }

    HRESULT On(ProbeAutomation::GetTitle, BSTR* text);
    HRESULT On(ProbeAutomation::PutTitle, BSTR text);
    HRESULT On(ProbeAutomation::PutHost, IDispatch*) { return S_OK; }
    HRESULT On(ProbeAutomation::PutRefHost, IDispatch*) { return S_OK; }
    // "a 3 true"
    HRESULT On(ProbeAutomation::Combine, BSTR text, LONG number, VARIANT_BOOL state, BSTR* result);
    // Another probe.
    HRESULT On(ProbeAutomation::Child, IDispatch** child);
    // A copy of the value.
    HRESULT On(ProbeAutomation::Anything, const VARIANT& value, VARIANT* result);
    // Runs work.
    HRESULT On(ProbeAutomation::GetState) { return work(); }

    std::function<HRESULT()> work = [] { return S_OK; };
    std::wstring title = L"first";

  private:
    ~Probe() override = default;
};

// A new probe, held by its test.
class ProbeHolder {
  public:
    ProbeHolder() : m_probe(new Probe) {}
    ~ProbeHolder() { m_probe->ReleaseReference(); }
    ProbeHolder(const ProbeHolder&) = delete;
    ProbeHolder& operator=(const ProbeHolder&) = delete;

    Probe* operator->() const { return m_probe; }
    // The object as its callers see it.
    ProbeInterface* Interface() const { return static_cast<ProbeInterface*>(m_probe->Identity()); }

  private:
    Probe* m_probe;
};

} // namespace devinst::test
