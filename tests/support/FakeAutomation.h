// Stand-ins for components that are known by the names of their operations only.
#pragma once

#include "components/ByName.h"
#include "tests/support/FakeKernel.h"

#include <gmock/gmock.h>

#include <windows.h>
#include <comdef.h>
#include <oleauto.h>

#include <functional>
#include <map>
#include <string>
#include <utility>

namespace zt::test {

// An automation object that knows the names that it was told of. It lives where the test puts it
// and must outlive its users: a reference that is still held when it goes fails the test. So does a
// call that is not made the way calls by name are made.
class FakeAutomation final : public IDispatch {
  public:
    // Gets the call's arguments (last first) and the place of the result, null where none is asked
    // for.
    using Answer = std::function<HRESULT(const DISPPARAMS& parameters, VARIANT* result)>;

    FakeAutomation(CallList& calls, std::string name) : m_calls(calls), m_name(std::move(name)) {}
    ~FakeAutomation() { EXPECT_EQ(m_references, 0) << m_name << ": references are still held"; }
    FakeAutomation(const FakeAutomation&) = delete;
    FakeAutomation& operator=(const FakeAutomation&) = delete;

    // Answers one kind of call (DISPATCH_PROPERTYGET, ...) of the name from now on. A kind without
    // an answer is refused with DISP_E_MEMBERNOTFOUND.
    void On(const std::wstring& name, WORD kind, Answer answer) {
        const auto place = m_ids.try_emplace(name, static_cast<DISPID>(m_ids.size() + 100)).first;
        m_answers[{place->second, kind}] = std::move(answer);
    }
    // The property reads as value, which the caller gets a copy of.
    void Reads(const std::wstring& name, const _variant_t& value) {
        On(name, DISPATCH_PROPERTYGET, [value](const DISPPARAMS&, VARIANT* result) {
            *result = _variant_t(value).Detach();
            return S_OK;
        });
    }
    LONG References() const { return m_references; }
    void Returns(const std::wstring& name, WORD kind, HRESULT code) {
        On(name, kind, [code](const DISPPARAMS&, VARIANT*) { return code; });
    }
    // The name is not known any more.
    void Forget(const std::wstring& name) { m_ids.erase(name); }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
        *object = iid == IID_IUnknown || iid == IID_IDispatch ? this : nullptr;
        if (*object == nullptr)
            return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return static_cast<ULONG>(++m_references); }
    ULONG STDMETHODCALLTYPE Release() override { return static_cast<ULONG>(--m_references); }

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale,
                                            DISPID* ids) override {
        EXPECT_EQ(iid, IID_NULL);
        EXPECT_EQ(count, 1u);
        EXPECT_EQ(locale, 0x400u);
        m_calls.push_back(m_name + ".find " + ToUtf8(names[0], lstrlenW(names[0])));
        const auto found = m_ids.find(names[0]);
        *ids = found != m_ids.end() ? found->second : DISPID_UNKNOWN;
        return found != m_ids.end() ? S_OK : DISP_E_UNKNOWNNAME;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID iid, LCID locale, WORD kind,
                                     DISPPARAMS* parameters, VARIANT* result, EXCEPINFO*,
                                     UINT*) override {
        EXPECT_EQ(iid, IID_NULL);
        EXPECT_EQ(locale, 0x400u);
        CheckParameters(kind, *parameters);
        m_calls.push_back(Show(id, kind, *parameters, result));
        const auto answer = m_answers.find({id, kind});
        return answer != m_answers.end() ? answer->second(*parameters, result)
                                         : DISP_E_MEMBERNOTFOUND;
    }

  private:
    static void CheckParameters(WORD kind, const DISPPARAMS& parameters) {
        if (kind == DISPATCH_PROPERTYPUT || kind == DISPATCH_PROPERTYPUTREF) {
            ASSERT_EQ(parameters.cArgs, 1u);
            ASSERT_EQ(parameters.cNamedArgs, 1u);
            EXPECT_EQ(parameters.rgdispidNamedArgs[0], -3);
        } else {
            EXPECT_EQ(parameters.cArgs, kind == DISPATCH_METHOD ? 1u : 0u);
            EXPECT_EQ(parameters.cNamedArgs, 0u);
        }
    }

    std::string Show(DISPID id, WORD kind, const DISPPARAMS& parameters, const VARIANT* result) {
        static const std::map<WORD, std::string> kinds = {{DISPATCH_METHOD, "call"},
                                                          {DISPATCH_PROPERTYGET, "get"},
                                                          {DISPATCH_PROPERTYPUT, "put"},
                                                          {DISPATCH_PROPERTYPUTREF, "putref"}};
        std::string text = m_name + "." + kinds.at(kind) + " ";
        for (const auto& [name, known] : m_ids)
            if (known == id)
                text += ToUtf8(name.c_str(), static_cast<int>(name.size()));
        for (UINT i = parameters.cArgs; i-- > 0;)
            text.append(" ").append(ShowArgument(parameters.rgvarg[i]));
        return text + (result != nullptr && kind != DISPATCH_PROPERTYGET ? ", for a result" : "");
    }

    CallList& m_calls;
    std::string m_name;
    LONG m_references = 0;
    std::map<std::wstring, DISPID> m_ids;
    std::map<std::pair<DISPID, WORD>, Answer> m_answers;
};

} // namespace zt::test
