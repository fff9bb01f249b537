// The script of the sample export handler: a UTF-8 text file of the form
//
//   export-script 1
//   # a comment
//   first = Pump Catalogue
//   second = Pump
//
// "first" and "second" may stand in any order, once each; a missing one is empty.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace devinst {

struct ExportScript {
    std::wstring firstName;
    std::wstring secondName;
};

// nullopt for a text that has not this form.
std::optional<ExportScript> ParseExportScript(std::string_view text);

} // namespace devinst
