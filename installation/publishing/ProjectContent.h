// What is published: the content of the project that is open in a kernel.
#pragma once

#include "installation/model/Xml.h"

#include <windows.h>
#include <oleauto.h>

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace devinst {

struct PublishedDocument {
    std::wstring name;
    std::filesystem::path file;
};

struct PublishedObject {
    std::wstring id;
    std::wstring name;
    std::wstring partNumber;
    std::wstring representation; // a file name; may be empty
};

struct ProjectContent {
    std::wstring name;
    std::wstring revision;
    std::vector<std::pair<std::wstring, std::wstring>> metadata; // without unset ones
    std::vector<PublishedDocument> documents;
    std::filesystem::path representations;
};

// Raises ComFailure when there is no kernel or no open project.
ProjectContent ReadProject(IDispatch* kernel);

// The objects that the project lists, in its order.
std::vector<PublishedObject> ReadObjects(IDispatch* kernel);

// What an object that a node refers to tells of itself.
PublishedObject DescribeObject(IUnknown* object);

} // namespace devinst
