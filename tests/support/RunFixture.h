// Whole runs in the test's process, with a kernel and a content-management client of the test's.
#pragma once

#include "app/ZTInvisible.h"

#include "components/ComponentIds.h"
#include "tests/support/FakeKernel.h"
#include "tests/support/Files.h"
#include "tests/support/Isolation.h"
#include "tests/support/LoopbackPeer.h"
#include "tests/support/TestClasses.h"

#include <gmock/gmock.h>

#include <functional>
#include <mutex>
#include <string>
#include <vector>

namespace zt::test {

// What the client was sent, each as "ACTION|ARGUMENT"; it takes every message.
class FakeClient {
  public:
    // Has the runs with this exchange folder find the client.
    void Serve(const std::wstring& exchangeFolder) {
        std::filesystem::create_directories(exchangeFolder);
        WriteBytes(exchangeFolder + L"\\cms.ini",
                   "[CMS]\nPort=" + std::to_string(m_peer.Port()) + "\nTimeout=10\n");
    }
    std::vector<std::string> Messages() const {
        const std::lock_guard lock(m_mutex);
        return m_messages;
    }

    // Performed for each message before it is answered.
    std::function<void(const std::string& message)> whileReceiving;

  private:
    void Answer(Connection& connection) {
        const std::string frame = connection.ReadFrame();
        const std::string start = "TOOL_ACTION_MESSAGE|ZELTOR_MANUAL|";
        EXPECT_EQ(frame.substr(2, start.size()), start);
        const std::string message = frame.substr(2 + start.size(), frame.size() - start.size() - 3);
        if (whileReceiving)
            whileReceiving(message);
        {
            const std::lock_guard lock(m_mutex);
            m_messages.push_back(message);
        }
        connection.Send({"\x00\x1BTOOL_RESPONSE_MESSAGE|OK\x00", 27});
    }

    mutable std::mutex m_mutex;
    std::vector<std::string> m_messages;
    LoopbackPeer m_peer{[this](Connection& connection) { Answer(connection); }};
};

// A run with project work gets as far as a kernel that learns its client's name; there the test may
// do what it likes, and then no administration component is to be had.
class RunFixture : public testing::Test {
  protected:
    RunFixture() {
        m_kernel.Answer(IID_KernelAdmin);
        m_kernel.Return<KernelAdmin::CloseProjects, KernelAdmin::ShutDown>(S_OK);
        m_kernel.On<KernelAdmin::PutClientName>([this](BSTR) {
            if (m_whileProcessing)
                m_whileProcessing();
            return S_OK;
        });
    }

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
    CallList m_kernelCalls;
    FakeObject<KernelAdmin> m_kernel{m_kernelCalls};
    TestClass m_kernelClass{CLSID_KernelAdmin, TestClass::Gives(m_kernel.Get())};
    std::function<void()> m_whileProcessing;
    // What the run wrote to standard output.
    std::string m_output;
    CZTInvisible m_app;
};

} // namespace zt::test
