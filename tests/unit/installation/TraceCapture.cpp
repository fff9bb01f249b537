#include "tests/unit/installation/TraceCapture.h"

#include "tests/support/Isolation.h"

#include <fstream>
#include <iterator>
#include <sstream>

namespace devinst::test {

namespace {

// The trace of this process, in the user's temporary folder. A child process of a death test
// writes to the trace of its parent.
class TraceFile {
  public:
    TraceFile() {
        wchar_t inherited[1024] = {};
        m_isOwn = GetEnvironmentVariableW(Variable, inherited, 1024) == 0;
        m_path = m_isOwn ? std::filesystem::temp_directory_path() / zt::test::UniqueName()
                         : std::filesystem::path(inherited);
        SetEnvironmentVariableW(Variable, m_path.c_str());
    }
    // The stand-ins keep the file open: it goes when the process has ended. A library that has
    // not opened it by now is not to make another.
    ~TraceFile() {
        SetEnvironmentVariableW(Variable, nullptr);
        if (m_isOwn)
            DeleteFileW(m_path.c_str());
    }

    std::string Content() const {
        std::ifstream file(m_path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    }

  private:
    static constexpr const wchar_t* Variable = L"ZT_TRACE";
    std::filesystem::path m_path;
    bool m_isOwn = false;
};

// Settled before the first test, and so before the first call on a stand-in.
const TraceFile TheTrace;

} // namespace

TraceCapture::TraceCapture() : m_start(TheTrace.Content().size()) {}

std::vector<std::string> TraceCapture::Lines() const {
    std::istringstream text(TheTrace.Content().substr(m_start));
    std::vector<std::string> lines;
    for (std::string line; std::getline(text, line);)
        lines.push_back(line);
    return lines;
}

std::string TraceCapture::Last() const {
    const std::vector<std::string> lines = Lines();
    return lines.empty() ? "" : lines.back();
}

} // namespace devinst::test
