#include "installation/setup/Layout.h"

#include "installation/runtime/Utf8.h"
#include "installation/setup/SetupError.h"

#include <windows.h>

#include <fstream>

namespace devinst {

namespace fs = std::filesystem;

namespace {

void MakeFolder(const fs::path& folder) {
    std::error_code error;
    fs::create_directories(folder, error);
    if (error)
        ThrowSetupError("cannot create the folder", folder.wstring(),
                        static_cast<DWORD>(error.value()));
}

void CopyOneFile(const fs::path& source, const fs::path& target) {
    if (!CopyFileW(source.c_str(), target.c_str(), FALSE))
        ThrowSetupError("cannot copy to " + ToUtf8(target.wstring()) + " from", source.wstring(),
                        GetLastError());
}

// The files below source, with their folders, into target.
void CopyFolder(const fs::path& source, const fs::path& target) {
    MakeFolder(target);
    for (const fs::directory_entry& entry : fs::directory_iterator(source)) {
        const fs::path to = target / entry.path().filename();
        if (entry.is_directory())
            CopyFolder(entry.path(), to);
        else
            CopyOneFile(entry.path(), to);
    }
}

// A specification is its ".cfg" file and, beside it, the folder of its files: those that all
// specifications share, and over them those of its own.
void LayOutSpecification(const fs::path& kit, const fs::path& description, const fs::path& store) {
    const fs::path name = description.stem();
    CopyOneFile(description, store / description.filename());
    CopyFolder(kit / L"data" / L"library", store / name);
    CopyOneFile(kit / L"zt-handlers.dll", store / name / L"zt-handlers.dll");
    const fs::path own = description.parent_path() / name;
    if (fs::is_directory(own))
        CopyFolder(own, store / name);
}

void LayOutSpecifications(const fs::path& kit, const fs::path& store) {
    MakeFolder(store);
    for (const fs::directory_entry& entry :
         fs::directory_iterator(kit / L"data" / L"specifications")) {
        if (entry.path().extension() == L".cfg")
            LayOutSpecification(kit, entry.path(), store);
    }
}

// The catalogue lies below the maker's folder, the models that it names do not.
void LayOutAxes(const fs::path& axes, const fs::path& data) {
    const fs::path catalogue = data / L"Morvenit" / L"KVProductFamily" / L"Axes";
    const fs::path models = data / L"KVProductFamily" / L"Axes";
    MakeFolder(catalogue);
    MakeFolder(models);
    for (const fs::directory_entry& entry : fs::directory_iterator(axes)) {
        const bool isModel = entry.path().extension() == L".wrl";
        CopyOneFile(entry.path(), (isModel ? models : catalogue) / entry.path().filename());
    }
}

std::string XmlText(const std::wstring& text) {
    std::string result;
    for (const char c : ToUtf8(text)) {
        if (c == '&')
            result += "&amp;";
        else if (c == '<')
            result += "&lt;";
        else
            result += c;
    }
    return result;
}

void WriteConfiguration(const fs::path& root) {
    const fs::path path = root / L"configuration.xml";
    std::ofstream file(path, std::ios::binary);
    file << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
         << "<configuration>\n"
         << "  <proj-location>" << XmlText(root / L"work" / L"Projects") << "</proj-location>\n"
         << "  <pub-location>" << XmlText(root / L"publications") << "</pub-location>\n"
         << "</configuration>\n";
    file.close();
    if (!file)
        throw SetupError("cannot write " + ToUtf8(path.wstring()));
}

} // namespace

void LayOut(const fs::path& kit, const fs::path& root) {
    const fs::path data = root / L"data";
    LayOutSpecifications(kit, data / L"Morvenit" / L"KVProductFamily" / L"IPCCFG");
    LayOutAxes(kit / L"data" / L"axes", data);
    for (const wchar_t* folder :
         {L"work\\Representations", L"work\\Projects", L"exchange", L"publications", L"product"})
        MakeFolder(root / folder);
    CopyOneFile(kit / L"ZTProduct.exe", root / L"product" / L"ZTProduct.exe");
    WriteConfiguration(root);
}

} // namespace devinst
