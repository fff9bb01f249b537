// The sequence of one run and its outcome.
#include "app/ZTInvisible.h"

#include "app/CommandLine.h"
#include "app/Outcome.h"
#include "app/Steps.h"
#include "support/Files.h"
#include "support/Paths.h"
#include "support/Registry.h"

#include <ctime>
#include <cwchar>
#include <iterator>
#include <vector>

namespace zt {

namespace {

CommandLine Parse(int count, wchar_t** arguments) {
    std::vector<std::wstring_view> behindProgram;
    for (int i = 1; i < count; ++i)
        behindProgram.emplace_back(arguments[i]);
    return ParseCommandLine(behindProgram);
}

// The machine's exchange folder from the registry, empty when there is none.
std::wstring RegistryExchangePath() {
    return ReadRegistryText(HKEY_LOCAL_MACHINE, L"Software\\Morvenit\\CMSTC", L"ExchangePath");
}

// Local time as "hh:mm:ss", 24 hours.
std::wstring TimeOfDay() {
    wchar_t time[32] = {};
    _wstrtime_s(time, std::size(time));
    return time;
}

} // namespace

void CZTInvisible::Execute(int count, wchar_t** arguments) {
    CommandLine line;
    std::wstring projectName;
    const auto failure = FailureOf([&] {
        line = Parse(count, arguments);
        projectName = line.projectFile;
        Perform(line, projectName);
    });
    if (failure)
        ReportFailure(*failure, projectName);
    line.metadata.clear();
    // The outcome is decided: nothing that the shut-down raises changes it.
    FailureOf([this] { ShutDownKernel(); });
}

void CZTInvisible::Perform(const CommandLine& line, std::wstring& projectName) {
    TakeOver(line);
    if (line.projectFile.empty())
        throw L"Project name is not specified.";
    const ProjectLocation location = LocateProject(line.projectFile);
    projectName = location.name;
    if (location.hasFolder)
        m_strExchangePath = location.folder;
    ResolveExchangeFolder();
    StartStatusFiles(line.statusId);
    PrepareLogFile();
    Log(L"ZeltorAuthorInvisible started at %s with command line: '%s'\n", TimeOfDay().c_str(),
        std::wstring(ArgumentsOf(m_lpCmdLine != nullptr ? m_lpCmdLine : L"")).c_str());
    if (HasProjectWork(line))
        ProcessProject(*this, projectName.c_str(), line.document.c_str(), line.editProgId.c_str(),
                       line.editMethod.c_str(), line.metadata, line.newProjectName.c_str());
    ReportSuccess(projectName);
}

void CZTInvisible::TakeOver(const CommandLine& line) {
    m_bNotify = line.notify;
    m_bPackage = line.package;
    m_bPublish = line.publish;
    m_bUpdateDoc = line.updateDocument;
    m_bNewRevision = line.newRevision;
    m_strExchangePath = line.exchangePath;
    m_strLogFile = line.logFile;
}

void CZTInvisible::ResolveExchangeFolder() {
    if (m_strExchangePath.empty())
        m_strExchangePath = RegistryExchangePath();
    m_strExchangePath = WithoutTrailingBackslash(m_strExchangePath);
    if (!EnsureFolder(m_strExchangePath, false))
        throw L"Can't create exchange folder";
}

void CZTInvisible::StartStatusFiles(const std::wstring& statusId) {
    if (statusId.empty())
        return;
    m_strStatusBase = m_strExchangePath + L"\\" + statusId;
    MarkRunning(m_strStatusBase);
}

void CZTInvisible::PrepareLogFile() {
    if (m_strLogFile.empty())
        return;
    if (!EnsureFolder(m_strLogFile, true))
        throw L"Can't create log-file folder";
    if (!CreateEmptyFile(m_strLogFile))
        throw L"Can't create log file.";
}

void CZTInvisible::ReportSuccess(const std::wstring& projectName) {
    Log(L"SUCCESS: ZeltorAuthorInvisible finished successfully at %s\n", TimeOfDay().c_str());
    if (!m_strStatusBase.empty())
        MarkSucceeded(m_strStatusBase);
    if (m_bNotify) {
        NotifyContentManager(*this, L"STATUS", L"SUCCESS");
        NotifyContentManager(*this, L"SAVE_AND_CLOSE", ArchiveFileName(projectName).c_str());
    }
}

void CZTInvisible::ReportFailure(const std::wstring& message, const std::wstring& projectName) {
    LogError(message.c_str());
    if (m_bNotify) {
        NotifyContentManager(*this, L"STATUS", L"FAILED");
        NotifyContentManager(*this, L"CLOSE", projectName.c_str());
    }
}

} // namespace zt
