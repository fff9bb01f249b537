#include "installation/runtime/Utf8.h"
#include "installation/setup/Layout.h"
#include "installation/setup/Libraries.h"
#include "installation/setup/Options.h"
#include "installation/setup/Pack.h"

#include <windows.h>

#include <cstdio>
#include <exception>

using namespace devinst;

namespace {

std::filesystem::path ProgramFolder() {
    std::wstring path(32768, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
    return std::filesystem::path(path).parent_path();
}

void CarryOut(const SetupOptions& options) {
    const std::filesystem::path kit = ProgramFolder();
    if (options.unregisterLibraries) {
        for (const std::filesystem::path& library : ComponentLibraries(kit))
            UnregisterLibrary(library);
    }
    if (options.registerLibraries) {
        for (const std::filesystem::path& library : ComponentLibraries(kit))
            RegisterLibrary(library);
    }
    if (options.root) {
        const std::filesystem::path root =
            std::filesystem::absolute(*options.root).make_preferred();
        LayOut(kit, root);
        WriteRegistry(root);
        WriteProductSettings();
    }
    for (const PackOrder& order : options.packs)
        Pack(order);
}

int Run(const std::vector<std::wstring>& arguments) {
    const SetupOptions options = ParseOptions(arguments);
    if (options.help)
        std::fputs(Usage, stdout);
    else
        CarryOut(options);
    return 0;
}

} // namespace

int wmain(int count, wchar_t** values) {
    try {
        return Run(std::vector<std::wstring>(values + 1, values + count));
    } catch (const UsageError& error) {
        std::fprintf(stderr, "zt-devsetup: %s\n%s", error.what(), Usage);
        return 2;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "zt-devsetup: %s\n", error.what());
        return 1;
    }
}
