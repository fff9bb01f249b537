#include "installation/setup/Options.h"

#include "installation/runtime/Utf8.h"

namespace devinst {

const char* const Usage =
    "zt-devsetup: sets the development installation up on this machine\n"
    "  --unregister        takes the component libraries beside this program out of the registry\n"
    "  --register          registers them\n"
    "  --root FOLDER       lays the installation's files out below FOLDER and points the\n"
    "                      machine's registry values at them\n"
    "  --pack FOLDER FILE  writes FILE, a project archive, from the files below FOLDER\n"
    "  --help              shows this text\n"
    "What is asked for is done in this order. Exit code: 0 when all was done, 1 when something\n"
    "failed, 2 for a command line without sense.\n";

namespace {

class Arguments {
  public:
    explicit Arguments(const std::vector<std::wstring>& values) : m_values(values) {}

    bool AtEnd() const { return m_next == m_values.size(); }
    const std::wstring& Next() { return m_values[m_next++]; }
    // The value of an option.
    const std::wstring& Value(const std::wstring& option) {
        if (AtEnd() || m_values[m_next].empty() || m_values[m_next].starts_with(L"--"))
            throw UsageError(ToUtf8(option) + ": a value is missing");
        return Next();
    }

  private:
    const std::vector<std::wstring>& m_values;
    std::size_t m_next = 0;
};

void ParseOption(Arguments& arguments, SetupOptions& options) {
    const std::wstring option = arguments.Next();
    if (option == L"--help") {
        options.help = true;
    } else if (option == L"--unregister") {
        options.unregisterLibraries = true;
    } else if (option == L"--register") {
        options.registerLibraries = true;
    } else if (option == L"--root") {
        options.root = arguments.Value(option);
    } else if (option == L"--pack") {
        const std::wstring folder = arguments.Value(option);
        options.packs.push_back({folder, arguments.Value(option)});
    } else {
        throw UsageError(ToUtf8(option) + ": no such option");
    }
}

} // namespace

SetupOptions ParseOptions(const std::vector<std::wstring>& arguments) {
    if (arguments.empty())
        throw UsageError("nothing to do");
    SetupOptions options;
    Arguments left(arguments);
    while (!left.AtEnd())
        ParseOption(left, options);
    return options;
}

} // namespace devinst
