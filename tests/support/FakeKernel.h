// Stand-ins for the installation's early-bound components: real objects with a real function table,
// generated from the component's contract (components/contracts).
#pragma once

#include "components/Contract.h"

#include <gmock/gmock.h>
#include <unknwn.h>

#include <algorithm>
#include <array>
#include <concepts>
#include <cstddef>
#include <functional>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

namespace zt::test {

// The calls on a test's doubles in their order, each as 'Object.Operation(arguments)': texts in
// double quotes, a missing text or object as null, an object as object. Out-arguments are left out.
using CallList = std::vector<std::string>;

inline std::string ToUtf8(const wchar_t* text, int length) {
    const int size = WideCharToMultiByte(CP_UTF8, 0, text, length, nullptr, 0, nullptr, nullptr);
    std::string result(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text, length, result.data(), size, nullptr, nullptr);
    return result;
}

inline std::string ShowArgument(BSTR text) {
    if (text == nullptr)
        return "null";
    return '"' + ToUtf8(text, static_cast<int>(SysStringLen(text))) + '"';
}
inline std::string ShowArgument(LONG number) {
    return std::to_string(number);
}
inline std::string ShowArgument(const IUnknown* object) {
    return object != nullptr ? "object" : "null";
}
inline std::string ShowArgument(const VARIANT& value) {
    switch (value.vt) {
    case VT_EMPTY:
        return "empty";
    case VT_BSTR:
        return ShowArgument(value.bstrVal);
    case VT_I4:
        return ShowArgument(value.lVal);
    case VT_BOOL:
        return value.boolVal != VARIANT_FALSE ? "true" : "false";
    case VT_DISPATCH:
        return ShowArgument(static_cast<const IUnknown*>(value.pdispVal));
    default:
        return "type " + std::to_string(value.vt);
    }
}

// What an argument receives through is an out-argument.
template <typename Argument>
constexpr bool IsOut = std::is_pointer_v<Argument> && !std::is_same_v<Argument, BSTR> &&
                       !std::is_base_of_v<IUnknown, std::remove_pointer_t<Argument>>;

// One call as it stands in the call list.
template <typename... Arguments>
std::string ShowCall(const std::string& object, const char* operation,
                     const Arguments&... arguments) {
    std::string list;
    [[maybe_unused]] const auto append = [&list]<typename Argument>(const Argument& argument) {
        if constexpr (!IsOut<Argument>)
            list += (list.empty() ? "" : ", ") + ShowArgument(argument);
    };
    (append(arguments), ...);
    return object + "." + operation + "(" + list + ")";
}

// A component that answers Contract. It lives where the test puts it (its reference count does not
// delete it) and must outlive its users: a reference that is still held when it goes fails the
// test. So does a call of an operation for which the test gave no answer, and of a method that the
// contract does not list.
template <typename Contract>
class FakeObject {
  public:
    explicit FakeObject(CallList& calls, std::string name = Contract::Name)
        : m_calls(calls), m_name(std::move(name)) {}
    ~FakeObject() { EXPECT_EQ(m_references, 0) << m_name << ": references are still held"; }
    FakeObject(const FakeObject&) = delete;
    FakeObject& operator=(const FakeObject&) = delete;

    // The object, borrowed.
    Contract* Get() { return reinterpret_cast<Contract*>(&m_face); }
    LONG References() const { return m_references; }

    // Answers the operation from now on: fake.On<KernelAdmin::LoadTypes>([](BSTR path) { ... }).
    // The call is recorded before the answer is asked for.
    template <typename Operation, typename Answer>
    void On(Answer answer) {
        std::get<Slot<Operation>>(m_slots).answer = std::move(answer);
    }
    // Answers each of the operations with the same result and writes nothing to out-arguments.
    template <typename... Operation>
    void Return(HRESULT result) {
        (On<Operation>([result](const auto&...) { return result; }), ...);
    }

    // QueryInterface gives this object for the interface. IUnknown, and IDispatch where the
    // contract is dual, are answered without being told.
    void Answer(REFIID iid) { m_interfaces.push_back({iid, Get()}); }
    // QueryInterface gives another object; null: success without an object.
    void Answer(REFIID iid, IUnknown* object) { m_interfaces.push_back({iid, object}); }

  private:
    // What the caller's pointer points to.
    struct Face {
        void* const* functions;
        FakeObject* owner;
    };
    struct Interface {
        IID iid;
        IUnknown* object;
    };
    static constexpr std::size_t TableSize = 128;
    using Table = std::array<void*, TableSize>;

    template <typename Arguments>
    struct AnswerOf;
    template <typename... Types>
    struct AnswerOf<std::tuple<Types...>> {
        using Type = std::function<HRESULT(Types...)>;
    };
    template <typename Operation>
    struct Slot {
        typename AnswerOf<typename Operation::Arguments>::Type answer;
    };
    template <typename Operations>
    struct SlotsOf;
    template <typename... Operation>
    struct SlotsOf<std::tuple<Operation...>> {
        using Type = std::tuple<Slot<Operation>...>;
    };

    static FakeObject& Of(void* object) { return *static_cast<Face*>(object)->owner; }

    static HRESULT STDMETHODCALLTYPE QueryInterface(void* object, REFIID iid, void** result) {
        return Of(object).Find(iid, result);
    }
    static ULONG STDMETHODCALLTYPE AddRef(void* object) {
        return static_cast<ULONG>(++Of(object).m_references);
    }
    static ULONG STDMETHODCALLTYPE Release(void* object) {
        FakeObject& fake = Of(object);
        EXPECT_GT(fake.m_references, 0) << fake.m_name << ": released too often";
        return static_cast<ULONG>(--fake.m_references);
    }

    template <std::size_t Index>
    static HRESULT STDMETHODCALLTYPE Unlisted(void* object) {
        ADD_FAILURE() << Of(object).m_name << ": method " << Index << " is not in the contract";
        return E_NOTIMPL;
    }

    template <typename Operation, typename Arguments>
    struct Thunk;
    template <typename Operation, typename... Types>
    struct Thunk<Operation, std::tuple<Types...>> {
        static HRESULT STDMETHODCALLTYPE Call(void* object, Types... arguments) {
            FakeObject& fake = Of(object);
            fake.m_calls.push_back(ShowCall(fake.m_name, Operation::Name, arguments...));
            const auto& answer = std::get<Slot<Operation>>(fake.m_slots).answer;
            if (answer)
                return answer(arguments...);
            ADD_FAILURE() << fake.m_calls.back() << " was not expected";
            return E_NOTIMPL;
        }
    };

    HRESULT Find(REFIID iid, void** result) {
        IUnknown* found = nullptr;
        bool known = true;
        const auto told = std::find_if(m_interfaces.rbegin(), m_interfaces.rend(),
                                       [&](const Interface& entry) { return entry.iid == iid; });
        if (told != m_interfaces.rend())
            found = told->object;
        else if (iid == IID_IUnknown ||
                 (std::derived_from<Contract, IDispatch> && iid == IID_IDispatch))
            found = Get();
        else
            known = false;
        if (found != nullptr)
            found->AddRef();
        *result = found;
        return known ? S_OK : E_NOINTERFACE;
    }

    template <std::size_t... Index, typename... Operation>
    static Table MakeTable(std::index_sequence<Index...>, std::tuple<Operation...>*) {
        static_assert(((Operation::Index < TableSize) && ...));
        Table table = {reinterpret_cast<void*>(&Unlisted<Index>)...};
        table[0] = reinterpret_cast<void*>(&QueryInterface);
        table[1] = reinterpret_cast<void*>(&AddRef);
        table[2] = reinterpret_cast<void*>(&Release);
        ((table[Operation::Index] =
              reinterpret_cast<void*>(&Thunk<Operation, typename Operation::Arguments>::Call)),
         ...);
        return table;
    }
    static void* const* Functions() {
        static const Table table = MakeTable(std::make_index_sequence<TableSize>(),
                                             static_cast<typename Contract::Operations*>(nullptr));
        return table.data();
    }

    Face m_face = {Functions(), this};
    CallList& m_calls;
    std::string m_name;
    LONG m_references = 0;
    std::vector<Interface> m_interfaces;
    typename SlotsOf<typename Contract::Operations>::Type m_slots;
};

} // namespace zt::test
