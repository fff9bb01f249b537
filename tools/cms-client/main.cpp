// cms-client: stands in for the content-management client that a run reports to.
#include "Server.h"

#include "Options.h"
#include "Output.h"
#include "Program.h"

#include <windows.h>

#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <io.h>
#include <iterator>
#include <optional>
#include <stdexcept>

namespace zt::cmsclient {
namespace {

constexpr int OwnFailure = 3;
constexpr Milliseconds Poll{50};

std::vector<Answer> ReadScript(const std::wstring& file) {
    std::ifstream stream(std::filesystem::path(file), std::ios::binary);
    if (!stream)
        throw std::runtime_error("the script cannot be read");
    const std::string text{std::istreambuf_iterator<char>(stream), {}};
    return ParseScript(text.starts_with("\xEF\xBB\xBF") ? text.substr(3) : text);
}

void WriteSetting(const std::filesystem::path& file, const wchar_t* key, int value) {
    if (!WritePrivateProfileStringW(L"CMS", key, std::to_wstring(value).c_str(), file.c_str()))
        throw std::runtime_error("cms.ini cannot be written: error " +
                                 std::to_string(GetLastError()));
}

void WriteSettings(const Options& options, std::uint16_t port) {
    // A name without its folders would mean a file of the system.
    const auto file = std::filesystem::absolute(options.exchangeFolder) / L"cms.ini";
    WriteSetting(file, L"Port", port);
    if (options.timeout)
        WriteSetting(file, L"Timeout", *options.timeout);
}

// Serves until the program has ended and all that it sent is answered, or the messages are there.
void ServeAll(Server& server, const Options& options, const Program* program) {
    while (!options.messages || server.Messages() < *options.messages) {
        const bool hasEnded = program != nullptr && program->HasEnded();
        if (!server.ServeOne(hasEnded ? Milliseconds{0} : Poll) && hasEnded)
            return;
    }
}

int Serve(const Options& options) {
    Server server(options.port,
                  options.scriptFile.empty() ? options.answers : ReadScript(options.scriptFile));
    WriteSettings(options, server.Port());
    PrintEvent("listening on port " + std::to_string(server.Port()));
    std::optional<Program> program;
    if (!options.commandLine.empty())
        program.emplace(options.commandLine);
    ServeAll(server, options, program ? &*program : nullptr);
    while (program && !program->HasEnded())
        Sleep(static_cast<DWORD>(Poll.count()));
    if (program)
        PrintEvent("the program ended with exit code " + std::to_string(program->ExitCode()));
    return static_cast<int>(server.Verdict());
}

int Main(const std::vector<std::wstring>& arguments) {
    try {
        const Options options = ParseOptions(arguments);
        if (!options.wantsHelp)
            return Serve(options);
        Print(Usage);
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "cms-client: %s (see --help)\n", error.what());
        return OwnFailure;
    }
}

} // namespace
} // namespace zt::cmsclient

int wmain(int count, wchar_t** arguments) {
    // The texts are UTF-8 with line feeds, in a console as well as in a file.
    SetConsoleOutputCP(CP_UTF8);
    _setmode(_fileno(stdout), _O_BINARY);
    return zt::cmsclient::Main({arguments + 1, arguments + count});
}
