// What a user or the installation may set for publishing components, in a property bag.
#pragma once

#include <windows.h>
#include <ocidl.h>

#include <string>

namespace devinst {

struct PublicationSettings {
    std::wstring accent = L"#2a5d84"; // "Accent", a colour: # and six hexadecimal digits
    std::wstring footer;              // "Footer", a text
    bool showDocuments = true;        // "ShowDocuments", a boolean
    LONG tableRows = 1000;            // "TableRows", the most that a table has
    double scale = 1.0;               // "Scale", of pictures

    // Takes what the bag has; a property that it lacks, or has of another type or without sense,
    // stays as it is. Every read is traced.
    void Load(IPropertyBag* bag);
    // Writes all of them.
    HRESULT Save(IPropertyBag* bag) const;
};

} // namespace devinst
