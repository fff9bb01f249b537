// Outputs of calls that are made to go wrong.
#pragma once

#include "installation/runtime/Call.h"
#include "installation/runtime/Faults.h"

namespace devinst {

// Gives the output its empty value, overwriting what is there (nothing, by COM's rules).
void EmptyOutput(const Output& output);

// Frees what the output holds and empties it: a failing call hands nothing over.
void DropOutput(const Output& output);

// Gives an empty output the value of a Null, Empty, Text or Variant fault.
void FillFaulty(const Output& output, const Fault& fault);

// The VARIANT that a fault plan names ("empty", "null", "i4", "bstr", "text TEXT", "true", "false",
// "no-object", "error", "array-i4", "array-bstr-1", "array-bstr-2", "array-bstr-2-empty"); false
// for an unknown name.
bool IsVariantForm(const std::wstring& form);
bool MakeVariant(const std::wstring& form, VARIANT& value);

} // namespace devinst
