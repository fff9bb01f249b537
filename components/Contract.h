// How the contracts of the installation's components are written down, and how the program calls
// an early-bound method.
//
// A contract is a table of one line for each operation. Early-bound tables give the method index,
// counted from 0 with the inherited methods of IUnknown (3) and, for dual interfaces, IDispatch (4)
// included, and the argument types as the callee sees them. Late-bound tables give the DISPID, the
// kind of the call, the type of the result and of the arguments. The tables are the only place
// where these facts stand: the program's calls, the development installation's stand-ins and the
// tests are all generated from them.
#pragma once

#include "components/Values.h"

#include <windows.h>
#include <oleauto.h>

#include <cstddef>
#include <tuple>

namespace zt {

// ---- early-bound ----

// One method of a component's own interface. Every such method returns an HRESULT.
template <std::size_t MethodIndex, typename... ArgumentTypes>
struct EarlyBound {
    static constexpr std::size_t Index = MethodIndex;
    using Arguments = std::tuple<ArgumentTypes...>;
    using Function = HRESULT(STDMETHODCALLTYPE*)(void* object, ArgumentTypes...);

    // Calls the method through the object's function table. Arguments and ownership are the
    // platform's: in-arguments are borrowed, what an out-argument receives belongs to the caller.
    static HRESULT Call(IUnknown* object, ArgumentTypes... arguments) {
        void** const functions = *reinterpret_cast<void***>(object);
        return reinterpret_cast<Function>(functions[MethodIndex])(object, arguments...);
    }
};

// ---- late-bound ----

// Types of the arguments and results of automation calls. Argument is what a caller gives, Held
// what is made of it for the call, and Lend gives the component the held value, which stays the
// call's.
struct Nothing {
    static constexpr VARTYPE Type = VT_EMPTY;
};
struct Text { // BSTR, given as a wide text; null gives a null BSTR
    static constexpr VARTYPE Type = VT_BSTR;
    using Argument = const wchar_t*;
    using Held = _bstr_t;
    // Raises the framework's memory exception.
    static Held Hold(Argument text) { return text != nullptr ? MakeText(text) : Held(); }
    static void Lend(const Held& held, VARIANTARG& argument) { argument.bstrVal = Borrow(held); }
};
struct Int32 { // I4
    static constexpr VARTYPE Type = VT_I4;
    using Argument = long;
    using Held = long;
    static Held Hold(Argument number) { return number; }
    static void Lend(Held held, VARIANTARG& argument) { argument.lVal = held; }
};
struct Boolean { // VARIANT_BOOL
    static constexpr VARTYPE Type = VT_BOOL;
    using Argument = BOOL;
    using Held = VARIANT_BOOL;
    static Held Hold(Argument flag) { return flag ? VARIANT_TRUE : VARIANT_FALSE; }
    static void Lend(Held held, VARIANTARG& argument) { argument.boolVal = held; }
};
struct Object { // IDispatch, borrowed as an argument, owned as a result
    static constexpr VARTYPE Type = VT_DISPATCH;
    using Argument = IDispatch*;
    using Held = IDispatch*;
    static Held Hold(Argument object) { return object; }
    static void Lend(Held held, VARIANTARG& argument) { argument.pdispVal = held; }
};
struct Value { // VARIANT, as a result only
    static constexpr VARTYPE Type = VT_VARIANT;
};

struct Method {
    static constexpr WORD Kind = DISPATCH_METHOD;
};
struct PropertyGet {
    static constexpr WORD Kind = DISPATCH_PROPERTYGET;
};
struct PropertyPut {
    static constexpr WORD Kind = DISPATCH_PROPERTYPUT;
};

template <DISPID OperationId, typename CallKind, typename ResultType, typename... ArgumentTypes>
struct LateBound {
    static constexpr DISPID Id = OperationId;
    static constexpr WORD Kind = CallKind::Kind;
    using Result = ResultType;
    using Arguments = std::tuple<ArgumentTypes...>;
};

} // namespace zt

namespace zt::detail {

// A list of types that may be empty travels from a macro as the arguments of a function type.
template <std::size_t MethodIndex, typename Signature>
struct EarlyBoundLine;
template <std::size_t MethodIndex, typename... ArgumentTypes>
struct EarlyBoundLine<MethodIndex, void(ArgumentTypes...)>
    : EarlyBound<MethodIndex, ArgumentTypes...> {};

template <DISPID OperationId, typename CallKind, typename Signature>
struct LateBoundLine;
template <DISPID OperationId, typename CallKind, typename ResultType, typename... ArgumentTypes>
struct LateBoundLine<OperationId, CallKind, ResultType(ArgumentTypes...)>
    : LateBound<OperationId, CallKind, ResultType, ArgumentTypes...> {};

template <typename First, typename... Rest>
struct WithoutFirst {
    using Type = std::tuple<Rest...>;
};

} // namespace zt::detail

// The two forms of a table's line, for ZT_CONTRACT below.
#define ZT_EARLY_BOUND(operation, index, ...)                                                      \
    struct operation : ::zt::detail::EarlyBoundLine<index, void(__VA_ARGS__)> {                    \
        static constexpr char Name[] = #operation;                                                 \
    };
#define ZT_LATE_BOUND(operation, id, kind, result, ...)                                            \
    struct operation : ::zt::detail::LateBoundLine<id, ::zt::kind, ::zt::result(__VA_ARGS__)> {    \
        static constexpr char Name[] = #operation;                                                 \
    };
#define ZT_LISTED(operation, ...) , operation

// Inside a struct: one nested type for each line of TABLE, and Operations, the list of them
// (behind void, so that the list can be written with leading commas).
#define ZT_CONTRACT(TABLE, FORM)                                                                   \
    TABLE(FORM)                                                                                    \
    using Operations = ::zt::WithoutFirst<void TABLE(ZT_LISTED)>;

namespace zt {

template <typename... Types>
using WithoutFirst = typename detail::WithoutFirst<Types...>::Type;

} // namespace zt
