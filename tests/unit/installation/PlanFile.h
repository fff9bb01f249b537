#pragma once

#include "tests/support/Isolation.h"

#include <fstream>
#include <memory>

namespace devinst::test {

// A plan file that the child process finds where its parent put it.
class PlanFile {
  public:
    explicit PlanFile(const char* text) {
        wchar_t inherited[1024] = {};
        if (GetEnvironmentVariableW(Variable, inherited, 1024) != 0) {
            m_path = inherited;
            return;
        }
        m_folder = std::make_unique<zt::test::TemporaryFolder>();
        m_path = m_folder->Path(L"plan.txt");
        std::ofstream(std::filesystem::path(m_path)) << text;
        SetEnvironmentVariableW(Variable, m_path.c_str());
    }
    ~PlanFile() { SetEnvironmentVariableW(Variable, nullptr); }

    const std::wstring& Path() const { return m_path; }

  private:
    static constexpr const wchar_t* Variable = L"ZT_TEST_PLAN";
    std::unique_ptr<zt::test::TemporaryFolder> m_folder;
    std::wstring m_path;
};

} // namespace devinst::test
