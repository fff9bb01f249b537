// Performs whole runs with recorders in place of the project pipeline and of the link to the
// content-management client.
#pragma once

#include "app/ZTInvisible.h"

#include "tests/support/Files.h"
#include "tests/support/Isolation.h"

#include <gmock/gmock.h>

#include <functional>
#include <string>
#include <vector>

namespace zt::test {

class RunFixture : public testing::Test {
  protected:
    // Performs the run of "Z.exe" with these arguments.
    void Execute(std::vector<std::wstring> arguments) {
        arguments.insert(arguments.begin(), L"Z.exe");
        std::vector<wchar_t*> pointers;
        for (std::wstring& argument : arguments)
            pointers.push_back(argument.data());
        testing::internal::CaptureStdout();
        m_app.Execute(static_cast<int>(pointers.size()), pointers.data());
        m_output = testing::internal::GetCapturedStdout();
    }

    std::wstring Exchange(const std::wstring& name) const { return m_folder.Path(L"ex\\" + name); }
    std::wstring ExchangeFolder() const { return m_folder.Path(L"ex"); }
    std::wstring LogPath() const { return m_folder.Path(L"log\\run.log"); }
    std::string LogText() const { return BytesOf(LogPath()); }

    TemporaryFolder m_folder;
    RegistryOverride m_registry{HKEY_LOCAL_MACHINE};
    // What the run called, in order: "process NAME" and "notify ACTION ARGUMENT".
    std::vector<std::wstring> m_calls;
    // Performed inside the pipeline, and before each notification.
    std::function<void()> m_whileProcessing;
    std::function<void(const std::wstring& action)> m_whileNotifying;
    // What the run wrote to standard output.
    std::string m_output;
    CZTInvisible m_app{
        RunServices{[this](CZTInvisible&, const wchar_t* name, const wchar_t*, const wchar_t*,
                           const wchar_t*, const MetadataMap&, const wchar_t*) {
                        m_calls.push_back(L"process " + std::wstring(name));
                        if (m_whileProcessing)
                            m_whileProcessing();
                    },
                    [this](CZTInvisible&, const wchar_t* action, const wchar_t* argument) {
                        m_calls.push_back(L"notify " + std::wstring(action) + L" " + argument);
                        if (m_whileNotifying)
                            m_whileNotifying(action);
                        return 0;
                    }}};
};

} // namespace zt::test
