// Stand-ins for late-bound components. They live where the test puts them and must outlive their
// users: a reference that is still held when one goes fails the test.
#pragma once

#include "components/Contract.h"
#include "tests/support/FakeKernel.h"

#include <comdef.h>
#include <gmock/gmock.h>

#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace zt::test {

// One Invoke as the component saw it.
struct Invocation {
    DISPID id;
    IID iid;
    LCID locale;
    WORD kind;
    std::vector<_variant_t> arguments; // the first one first
    std::vector<DISPID> named;
    bool asksResult;
    bool asksInfo;
};

inline Invocation DescribeInvocation(DISPID id, REFIID iid, LCID locale, WORD kind,
                                     const DISPPARAMS& parameters, const VARIANT* result,
                                     const EXCEPINFO* info) {
    Invocation invocation = {id, iid, locale, kind, {}, {}, result != nullptr, info != nullptr};
    for (UINT i = parameters.cArgs; i > 0; --i)
        invocation.arguments.emplace_back(parameters.rgvarg[i - 1]);
    invocation.named.assign(parameters.rgdispidNamedArgs,
                            parameters.rgdispidNamedArgs + parameters.cNamedArgs);
    return invocation;
}

// How an Invoke is answered. result and info may be null; what they point to is empty.
using InvokeAnswer =
    std::function<HRESULT(const Invocation& invocation, VARIANT* result, EXCEPINFO* info)>;

inline InvokeAnswer Succeed(HRESULT result = S_OK) {
    return [result](const Invocation&, VARIANT*, EXCEPINFO*) { return result; };
}
inline InvokeAnswer Give(const _variant_t& value) {
    return [value = _variant_t(value)](const Invocation&, VARIANT* result, EXCEPINFO*) mutable {
        return result != nullptr ? VariantCopy(result, &value) : S_OK;
    };
}
// The component's own error, with a description (null: none).
inline InvokeAnswer Raise(const wchar_t* description, SCODE code = 0) {
    return [description, code](const Invocation&, VARIANT*, EXCEPINFO* info) {
        if (info != nullptr) {
            info->bstrDescription = SysAllocString(description);
            info->scode = code;
        }
        return DISP_E_EXCEPTION;
    };
}

// An automation object. Without a name of its own it records every lookup and every Invoke, and
// answers as its members say. With one it is reached by name only: its calls go to the call list,
// it answers what On and its like say, and a call that is not made the way calls by name are made
// fails the test.
class FakeDispatch : public IDispatch {
  public:
    FakeDispatch() = default;
    FakeDispatch(CallList& calls, std::string name) : m_calls(&calls), m_name(std::move(name)) {}
    virtual ~FakeDispatch() {
        EXPECT_EQ(m_references, 0) << m_name << ": references are still held";
    }
    FakeDispatch(const FakeDispatch&) = delete;
    FakeDispatch& operator=(const FakeDispatch&) = delete;

    // Answers one kind of call (DISPATCH_PROPERTYGET, ...) of the name from now on. A kind without
    // an answer is refused with DISP_E_MEMBERNOTFOUND.
    void On(const std::wstring& name, WORD kind, InvokeAnswer reply) {
        const auto place = names.try_emplace(name, static_cast<DISPID>(names.size() + 100)).first;
        m_answers[{place->second, kind}] = std::move(reply);
    }
    // The property reads as value, which the caller gets a copy of.
    void Reads(const std::wstring& name, const _variant_t& value) {
        On(name, DISPATCH_PROPERTYGET, Give(value));
    }
    void Returns(const std::wstring& name, WORD kind, HRESULT code) {
        On(name, kind, Succeed(code));
    }
    // The name is not known any more.
    void Forget(const std::wstring& name) { names.erase(name); }

    LONG References() const { return m_references; }

    std::map<std::wstring, DISPID> names;
    HRESULT lookupFailure = DISP_E_UNKNOWNNAME;
    InvokeAnswer answer = Succeed();

    std::vector<std::wstring> lookups;
    std::vector<Invocation> invocations;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
        *object = iid == IID_IUnknown || iid == IID_IDispatch ? this : nullptr;
        if (*object == nullptr)
            return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return static_cast<ULONG>(++m_references); }
    ULONG STDMETHODCALLTYPE Release() override {
        EXPECT_GT(m_references, 0) << m_name << ": released too often";
        return static_cast<ULONG>(--m_references);
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID iid, LPOLESTR* texts, UINT count, LCID locale,
                                            DISPID* ids) override {
        EXPECT_EQ(iid, IID_NULL);
        EXPECT_EQ(count, 1u);
        EXPECT_EQ(locale, 0x400u);
        if (m_calls != nullptr)
            m_calls->push_back(m_name + ".find " + ToUtf8(texts[0], lstrlenW(texts[0])));
        else
            lookups.emplace_back(texts[0]);
        const auto found = names.find(texts[0]);
        *ids = found != names.end() ? found->second : DISPID_UNKNOWN;
        return found != names.end() ? S_OK : lookupFailure;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID iid, LCID locale, WORD kind,
                                     DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* info,
                                     UINT*) override {
        const Invocation call =
            DescribeInvocation(id, iid, locale, kind, *parameters, result, info);
        if (m_calls != nullptr)
            return InvokeKnown(call, result, info);
        invocations.push_back(call);
        return answer ? answer(call, result, info) : S_OK;
    }

  protected:
    CallList* m_calls = nullptr;
    std::string m_name;

  private:
    HRESULT InvokeKnown(const Invocation& call, VARIANT* result, EXCEPINFO* info) {
        const bool isPut =
            call.kind == DISPATCH_PROPERTYPUT || call.kind == DISPATCH_PROPERTYPUTREF;
        EXPECT_EQ(call.iid, IID_NULL);
        EXPECT_EQ(call.locale, 0x400u);
        EXPECT_EQ(call.arguments.size(), call.kind == DISPATCH_PROPERTYGET ? 0u : 1u);
        EXPECT_EQ(call.named, std::vector<DISPID>(isPut ? 1 : 0, -3));
        m_calls->push_back(Show(call));
        const auto reply = m_answers.find({call.id, call.kind});
        return reply != m_answers.end() ? reply->second(call, result, info) : DISP_E_MEMBERNOTFOUND;
    }

    std::string Show(const Invocation& call) const {
        static const std::map<WORD, std::string> kinds = {{DISPATCH_METHOD, "call"},
                                                          {DISPATCH_PROPERTYGET, "get"},
                                                          {DISPATCH_PROPERTYPUT, "put"},
                                                          {DISPATCH_PROPERTYPUTREF, "putref"}};
        std::string text = m_name + "." + kinds.at(call.kind) + " ";
        for (const auto& [name, known] : names)
            if (known == call.id)
                text += ToUtf8(name.c_str(), static_cast<int>(name.size()));
        for (const _variant_t& argument : call.arguments)
            text.append(" ").append(ShowArgument(static_cast<VARIANT>(argument)));
        return text +
               (call.asksResult && call.kind != DISPATCH_PROPERTYGET ? ", for a result" : "");
    }

    LONG m_references = 0;
    std::map<std::pair<DISPID, WORD>, InvokeAnswer> m_answers;
};

// A component that answers Contract and refuses every Invoke that is not exactly one of the
// contract's operations, with the platform's result code for what is wrong. Accepted calls go to
// the call list, refused ones do not.
template <typename Contract>
class FakeAutomation final : public FakeDispatch {
  public:
    explicit FakeAutomation(CallList& calls, std::string name = Contract::Name)
        : FakeDispatch(calls, std::move(name)) {}

    // Answers the operation from now on; without it, a call succeeds and gives nothing.
    template <typename Operation>
    void On(InvokeAnswer reply) {
        m_answers[Operation::Id] = std::move(reply);
    }

    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID iid, LCID locale, WORD kind,
                                     DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* info,
                                     UINT*) override {
        const Invocation invocation =
            DescribeInvocation(id, iid, locale, kind, *parameters, result, info);
        const Entry* const entry = Find(id);
        const HRESULT checked =
            entry != nullptr ? Check(*entry, invocation) : DISP_E_MEMBERNOTFOUND;
        if (FAILED(checked))
            return checked;
        Record(*entry, invocation);
        const auto reply = m_answers.find(id);
        return reply != m_answers.end() ? reply->second(invocation, result, info) : S_OK;
    }

  private:
    struct Entry {
        const char* name = "";
        DISPID id = DISPID_UNKNOWN;
        WORD kind = 0;
        VARTYPE result = VT_EMPTY;
        std::vector<VARTYPE> arguments;
    };

    template <typename Operation, typename... Types>
    static Entry Describe(std::tuple<Types...>*) {
        return {Operation::Name,
                Operation::Id,
                Operation::Kind,
                Operation::Result::Type,
                {Types::Type...}};
    }
    template <typename... Operation>
    static std::vector<Entry> DescribeAll(std::tuple<Operation...>*) {
        return {Describe<Operation>(static_cast<typename Operation::Arguments*>(nullptr))...};
    }
    static const Entry* Find(DISPID id) {
        static const std::vector<Entry> entries =
            DescribeAll(static_cast<typename Contract::Operations*>(nullptr));
        const auto found = std::find_if(entries.begin(), entries.end(),
                                        [id](const Entry& entry) { return entry.id == id; });
        return found != entries.end() ? &*found : nullptr;
    }

    static HRESULT Check(const Entry& entry, const Invocation& call) {
        const bool isPut = entry.kind == DISPATCH_PROPERTYPUT;
        const std::vector<DISPID> named(isPut ? 1 : 0, DISPID_PROPERTYPUT);
        if (call.iid != IID_NULL)
            return DISP_E_UNKNOWNINTERFACE;
        if (call.kind != entry.kind)
            return DISP_E_MEMBERNOTFOUND;
        if (call.arguments.size() != entry.arguments.size())
            return DISP_E_BADPARAMCOUNT;
        if (call.named != named)
            return DISP_E_PARAMNOTFOUND;
        for (std::size_t i = 0; i < entry.arguments.size(); ++i)
            if (call.arguments[i].vt != entry.arguments[i])
                return DISP_E_TYPEMISMATCH;
        return call.asksResult == (entry.result != VT_EMPTY) && call.asksInfo ? S_OK : E_INVALIDARG;
    }

    void Record(const Entry& entry, const Invocation& call) {
        std::string list;
        for (const _variant_t& argument : call.arguments)
            list += (list.empty() ? "" : ", ") + ShowArgument(static_cast<VARIANT>(argument));
        m_calls->push_back(m_name + "." + entry.name + "(" + list + ")");
    }

    std::map<DISPID, InvokeAnswer> m_answers;
};

} // namespace zt::test
