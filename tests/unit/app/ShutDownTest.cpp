// The end of the kernel's and the configuration's use.
#include "tests/support/FakeKernel.h"
#include "tests/support/FakeDispatch.h"
#include "tests/support/RunFixture.h"

#include "framework/Exceptions.h"

namespace zt {
namespace {

using test::CallList;
using testing::ElementsAre;
using testing::IsEmpty;

class ShutDown : public test::RunFixture {
  protected:
    ShutDown() {
        m_admin.On<KernelAdmin::CloseProjects>([this](LONG) {
            EXPECT_EQ(m_project.References(), 1);
            return S_OK;
        });
        m_admin.On<KernelAdmin::ShutDown>([this](LONG) {
            for (const LONG references : {m_project.References(), m_sequence.References(),
                                          m_notification.References(), m_export.References()})
                EXPECT_EQ(references, 0);
            EXPECT_EQ(m_admin.References(), 1);
            return S_OK;
        });
        m_configuration.answer = [this](const test::Invocation& call, VARIANT*, EXCEPINFO*) {
            m_kernelCalls.push_back("Configuration " + std::to_string(call.id));
            EXPECT_EQ(m_admin.References(), 0);
            return m_closing;
        };
    }

    void FillKernel() {
        m_app.m_pKernelAdmin = m_admin.Get();
        m_app.m_pKernelProject = m_project.Get();
        m_app.m_pSequenceNumberHandler = m_sequence.Get();
        m_app.m_pNotificationHandler = m_notification.Get();
        m_app.m_pExportHandler = m_export.Get();
    }
    void FillConfiguration() {
        m_configuration.AddRef();
        m_app.m_configuration.AttachDispatch(&m_configuration);
    }
    void RunWith(const std::function<void()>& work) {
        m_whileProcessing = work;
        Execute({L"-IN", Exchange(L"P.zip"), L"-M", L"job", L"-PUB"});
    }
    void TearDown() override { m_app.m_configuration.ReleaseDispatch(); }

    CallList m_kernelCalls;
    test::FakeObject<KernelAdmin> m_admin{m_kernelCalls};
    test::FakeObject<KernelProject> m_project{m_kernelCalls};
    test::FakeObject<ExportHandler> m_export{m_kernelCalls};
    test::FakeObject<KernelProject> m_sequence{m_kernelCalls, "sequence"};
    test::FakeObject<KernelProject> m_notification{m_kernelCalls, "notification"};
    test::FakeDispatch m_configuration;
    HRESULT m_closing = S_OK;
};

TEST_F(ShutDown, ClosesTheProjectsReleasesThemEndsTheKernelAndClosesTheConfiguration) {
    RunWith([this] {
        FillKernel();
        FillConfiguration();
    });
    EXPECT_THAT(m_kernelCalls, ElementsAre("KernelAdmin.CloseProjects(-1)",
                                           "KernelAdmin.ShutDown(-1)", "Configuration 13"));
    ASSERT_EQ(m_configuration.invocations.size(), 1U);
    const auto& close = m_configuration.invocations[0];
    EXPECT_EQ(close.kind, DISPATCH_METHOD);
    ASSERT_EQ(close.arguments.size(), 1U);
    EXPECT_EQ(close.arguments[0].vt, VT_BOOL);
    EXPECT_EQ(close.arguments[0].boolVal, VARIANT_TRUE);
    EXPECT_EQ(m_admin.References(), 0);
    EXPECT_TRUE(test::Exists(Exchange(L"job_DONE")));
}

TEST_F(ShutDown, FollowsAFailureAsWell) {
    RunWith([this] {
        FillKernel();
        FillConfiguration();
        throw L"Can't open project";
    });
    EXPECT_THAT(m_kernelCalls, ElementsAre("KernelAdmin.CloseProjects(-1)",
                                           "KernelAdmin.ShutDown(-1)", "Configuration 13"));
    EXPECT_EQ(test::BytesOf(Exchange(L"job_ERROR")), "Can't open project");
}

TEST_F(ShutDown, FollowsTheReportOfTheFailure) {
    m_admin.On<KernelAdmin::CloseProjects>([this](LONG) {
        EXPECT_EQ(test::BytesOf(Exchange(L"job_ERROR")), "Can't open project");
        return S_OK;
    });
    RunWith([this] {
        FillKernel();
        throw L"Can't open project";
    });
    EXPECT_THAT(m_kernelCalls,
                ElementsAre("KernelAdmin.CloseProjects(-1)", "KernelAdmin.ShutDown(-1)"));
}

TEST_F(ShutDown, IgnoresTheKernelsResults) {
    m_admin.On<KernelAdmin::CloseProjects>([](LONG) { return E_FAIL; });
    m_admin.On<KernelAdmin::ShutDown>([](LONG) { return E_FAIL; });
    RunWith([this] {
        FillKernel();
        FillConfiguration();
    });
    EXPECT_THAT(m_kernelCalls, ElementsAre("KernelAdmin.CloseProjects(-1)",
                                           "KernelAdmin.ShutDown(-1)", "Configuration 13"));
    EXPECT_TRUE(test::Exists(Exchange(L"job_DONE")));
}

TEST_F(ShutDown, NeedsNoProjectAndNoHandlers) {
    m_admin.Return<KernelAdmin::CloseProjects, KernelAdmin::ShutDown>(S_OK);
    RunWith([this] { m_app.m_pKernelAdmin = m_admin.Get(); });
    EXPECT_THAT(m_kernelCalls,
                ElementsAre("KernelAdmin.CloseProjects(-1)", "KernelAdmin.ShutDown(-1)"));
}

TEST_F(ShutDown, ClosesAConfigurationWithoutAKernel) {
    RunWith([this] { FillConfiguration(); });
    EXPECT_THAT(m_kernelCalls, ElementsAre("Configuration 13"));
}

TEST_F(ShutDown, CallsNothingInARunWithoutComponents) {
    Execute({L"-IN", Exchange(L"P.zip"), L"-M", L"job"});
    EXPECT_THAT(m_kernelCalls, IsEmpty());
}

TEST_F(ShutDown, ChangesNoOutcomeWhenTheConfigurationRefusesToClose) {
    m_closing = E_ACCESSDENIED;
    RunWith([this] {
        FillKernel();
        FillConfiguration();
    });
    EXPECT_THAT(m_kernelCalls, ElementsAre("KernelAdmin.CloseProjects(-1)",
                                           "KernelAdmin.ShutDown(-1)", "Configuration 13"));
    EXPECT_TRUE(test::Exists(Exchange(L"job_DONE")));
    EXPECT_FALSE(test::Exists(Exchange(L"job_ERROR")));
    EXPECT_EQ(m_output, "");
}

TEST_F(ShutDown, LeavesTheConfigurationToTheApplicationObjectsEnd) {
    {
        CZTInvisible app;
        m_configuration.AddRef();
        app.m_configuration.AttachDispatch(&m_configuration);
        app.ShutDownKernel();
        EXPECT_EQ(m_configuration.References(), 1);
    }
    EXPECT_EQ(m_configuration.References(), 0);
}

TEST_F(ShutDown, LeavesNothingToTheApplicationObjectsEndThatIsNotReleasedThere) {
    {
        CZTInvisible app;
        app.m_pKernelAdmin = m_admin.Get();
        app.m_pKernelProject = m_project.Get();
        app.m_pSequenceNumberHandler = m_sequence.Get();
        app.m_pNotificationHandler = m_notification.Get();
        app.m_pExportHandler = m_export.Get();
        EXPECT_EQ(m_project.References(), 1);
    }
    for (const LONG references :
         {m_admin.References(), m_project.References(), m_sequence.References(),
          m_notification.References(), m_export.References()})
        EXPECT_EQ(references, 0);
    EXPECT_THAT(m_kernelCalls, IsEmpty());
}

} // namespace
} // namespace zt
