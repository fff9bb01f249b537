#include "Options.h"

#include "Program.h"

#include "support/Encoding.h"

#include <stdexcept>

namespace zt::cmsclient {
namespace {

// Walks over the arguments.
class Reader {
  public:
    explicit Reader(const std::vector<std::wstring>& arguments) : m_arguments(arguments) {}

    bool IsAtEnd() const { return m_next == m_arguments.size(); }
    const std::wstring& Take() { return m_arguments[m_next++]; }

    const std::wstring& TakeValue() {
        if (IsAtEnd())
            throw std::runtime_error(ToUtf8(m_arguments[m_next - 1]) + " needs a value");
        return Take();
    }

    int TakeNumber(int smallest, int largest) {
        const std::wstring& option = m_arguments[m_next - 1];
        const std::wstring& text = TakeValue();
        const bool isNumber = !text.empty() && text.size() < 10 &&
                              text.find_first_not_of(L"0123456789") == std::wstring::npos;
        const int number = isNumber ? std::stoi(text) : -1;
        if (number < smallest || number > largest)
            throw std::runtime_error(ToUtf8(option) + " needs a number from " +
                                     std::to_string(smallest) + " to " + std::to_string(largest));
        return number;
    }

    std::vector<std::wstring> TakeRest() {
        if (IsAtEnd())
            throw std::runtime_error(ToUtf8(m_arguments[m_next - 1]) + " needs a command line");
        const auto first = m_arguments.begin() + static_cast<std::ptrdiff_t>(m_next);
        m_next = m_arguments.size();
        return {first, m_arguments.end()};
    }

  private:
    const std::vector<std::wstring>& m_arguments;
    std::size_t m_next = 0;
};

void TakeOption(Reader& reader, Options& options) {
    const std::wstring& option = reader.Take();
    if (option == L"--help" || option == L"-h" || option == L"/?")
        options.wantsHelp = true;
    else if (option == L"--exchange")
        options.exchangeFolder = reader.TakeValue();
    else if (option == L"--port")
        options.port = static_cast<std::uint16_t>(reader.TakeNumber(1, 65535));
    else if (option == L"--timeout")
        options.timeout = reader.TakeNumber(0, 99'999'999);
    else if (option == L"--messages")
        options.messages = reader.TakeNumber(1, 999'999'999);
    else if (option == L"--answer")
        options.answers = {ParseAnswer(ToUtf8(reader.TakeValue()))};
    else if (option == L"--script")
        options.scriptFile = reader.TakeValue();
    else if (option == L"--run")
        options.commandLine = JoinCommandLine(reader.TakeRest());
    else
        throw std::runtime_error("no such option: " + ToUtf8(option));
}

} // namespace

const char* const Usage =
    R"(Stands in for the content-management client: takes the program's messages and answers them.

cms-client --exchange FOLDER [OPTION ...] [--run COMMAND LINE ...]

  --exchange FOLDER  existing exchange folder; its cms.ini gets the port
  --port N           port to listen on, this machine only (default: a free one)
  --timeout SECONDS  the "Timeout" to write into cms.ini (default: leave it as it is)
  --answer ANSWER    the answer to every message (default: ok)
  --script FILE      answers to the messages in turn, one a line, in UTF-8; the last
                     one holds for all further messages; "#" begins a comment line
  --messages N       end after N messages (default: only with the program, or never)
  --run COMMAND ...  all that follows starts the program; end when it has ended

Answers:
  ok                     success           raw HH HH ...   these bytes, hexadecimal
  error [DESCRIPTION]    failure           garbage         bytes that are no frame
  text TEXT              TEXT in a frame   nothing         wait for the sender to leave
  late SECONDS           ok, but late      close           close without an answer
  pieces MILLISECONDS    ok, each byte by  reset           break the connection off
                         itself, so often

Exit code: 0 success reported, 1 failure reported, 2 no verdict reported,
           3 wrong command line or failure of this client itself
)";

Options ParseOptions(const std::vector<std::wstring>& arguments) {
    Options options;
    Reader reader(arguments);
    while (!reader.IsAtEnd())
        TakeOption(reader, options);
    if (options.wantsHelp)
        return options;
    if (options.exchangeFolder.empty())
        throw std::runtime_error("--exchange is missing");
    if (!options.answers.empty() && !options.scriptFile.empty())
        throw std::runtime_error("--answer and --script exclude each other");
    if (options.answers.empty() && options.scriptFile.empty())
        options.answers = {ParseAnswer("ok")};
    return options;
}

} // namespace zt::cmsclient
