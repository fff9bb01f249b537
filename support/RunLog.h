#pragma once

namespace zt {

// The log of a run and its failure reports. Whatever works for a run reports through this and knows
// nothing else of the run.
class RunLog {
  public:
    // Appends the formatted text ("%s" is a wide text) to the log file, when the run has one. The
    // text carries its own line end. A text that cannot be written is dropped.
    virtual void Log(const wchar_t* format, ...) = 0;

    // Reports one failure, which does not end the run: to the log and to the content-management
    // client, the "_ERROR" status file or standard output. Null is the empty text.
    virtual void LogError(const wchar_t* message) = 0;

  protected:
    RunLog() = default;
    RunLog(const RunLog&) = default;
    RunLog& operator=(const RunLog&) = default;
    ~RunLog() = default;
};

} // namespace zt
