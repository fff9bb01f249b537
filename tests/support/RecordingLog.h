// A run's log for the tests: among the calls of a test's doubles.
#pragma once

#include "support/Output.h"
#include "support/RunLog.h"
#include "support/Text.h"
#include "tests/support/FakeKernel.h"

#include <gtest/gtest.h>

namespace zt::test {

// Records a line of the log as 'log: text' (its line end, which every line must have, left out) and
// a reported failure as 'LogError("text")'.
class RecordingLog final : public RunLog {
  public:
    explicit RecordingLog(CallList& calls) : m_calls(calls) {}
    virtual ~RecordingLog() = default;

    void Log(const wchar_t* format, ...) override {
        std::va_list arguments;
        va_start(arguments, format);
        const std::wstring text = FormatTextV(format, arguments);
        va_end(arguments);
        EXPECT_TRUE(text.ends_with(L'\n'));
        m_calls.push_back("log: " + ToUtf8(text.c_str(), static_cast<int>(text.size()) - 1));
    }
    void LogError(const wchar_t* message) override {
        const std::wstring text = WideText(message);
        m_calls.push_back("LogError(\"" + ToUtf8(text.c_str(), static_cast<int>(text.size())) +
                          "\")");
    }

  private:
    CallList& m_calls;
};

// Those of the calls that begin with that text, without it.
inline std::vector<std::string> CallsOf(const CallList& calls, const std::string& start) {
    std::vector<std::string> found;
    for (const std::string& call : calls)
        if (call.starts_with(start))
            found.push_back(call.substr(start.size()));
    return found;
}

} // namespace zt::test
