// The end of the kernel's and the configuration's use.
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
            return m_kernelResult;
        });
        m_admin.On<KernelAdmin::ShutDown>([this](LONG) {
            for (const LONG references : {m_project.References(), m_sequence.References(),
                                          m_notification.References(), m_export.References()})
                EXPECT_EQ(references, 0);
            EXPECT_EQ(m_admin.References(), 1);
            return m_kernelResult;
        });
        m_configuration.answer = [this](const test::Invocation& call, VARIANT*, EXCEPINFO*) {
            m_calls.push_back("Configuration " + std::to_string(call.id));
            EXPECT_EQ(m_admin.References(), 0);
            return m_closing;
        };
    }

    void FillKernel(CZTInvisible& app) {
        app.m_pKernelAdmin = m_admin.Get();
        app.m_pKernelProject = m_project.Get();
        app.m_pSequenceNumberHandler = m_sequence.Get();
        app.m_pNotificationHandler = m_notification.Get();
        app.m_pExportHandler = m_export.Get();
    }
    void FillConfiguration(CZTInvisible& app) {
        m_configuration.AddRef();
        app.m_configuration.AttachDispatch(&m_configuration);
    }
    void TearDown() override { m_app.m_configuration.ReleaseDispatch(); }

    CallList m_calls;
    test::FakeObject<KernelAdmin> m_admin{m_calls};
    test::FakeObject<KernelProject> m_project{m_calls};
    test::FakeObject<ExportHandler> m_export{m_calls};
    test::FakeObject<KernelProject> m_sequence{m_calls, "sequence"};
    test::FakeObject<KernelProject> m_notification{m_calls, "notification"};
    test::FakeDispatch m_configuration;
    HRESULT m_kernelResult = S_OK;
    HRESULT m_closing = S_OK;
};

TEST_F(ShutDown, ClosesTheProjectsReleasesThemEndsTheKernelAndClosesTheConfiguration) {
    FillKernel(m_app);
    FillConfiguration(m_app);
    m_app.ShutDownKernel();
    EXPECT_THAT(m_calls, ElementsAre("KernelAdmin.CloseProjects(-1)", "KernelAdmin.ShutDown(-1)",
                                     "Configuration 13"));
    ASSERT_EQ(m_configuration.invocations.size(), 1U);
    const auto& close = m_configuration.invocations[0];
    EXPECT_EQ(close.kind, DISPATCH_METHOD);
    ASSERT_EQ(close.arguments.size(), 1U);
    EXPECT_EQ(close.arguments[0].vt, VT_BOOL);
    EXPECT_EQ(close.arguments[0].boolVal, VARIANT_TRUE);
    EXPECT_EQ(m_admin.References(), 0);
}

TEST_F(ShutDown, IgnoresTheKernelsResults) {
    m_kernelResult = E_FAIL;
    FillKernel(m_app);
    FillConfiguration(m_app);
    m_app.ShutDownKernel();
    EXPECT_THAT(m_calls, ElementsAre("KernelAdmin.CloseProjects(-1)", "KernelAdmin.ShutDown(-1)",
                                     "Configuration 13"));
}

TEST_F(ShutDown, NeedsNoProjectAndNoHandlers) {
    m_app.m_pKernelAdmin = m_kernel.Get();
    m_app.ShutDownKernel();
    EXPECT_THAT(m_kernelCalls,
                ElementsAre("KernelAdmin.CloseProjects(-1)", "KernelAdmin.ShutDown(-1)"));
}

TEST_F(ShutDown, ClosesAConfigurationWithoutAKernel) {
    FillConfiguration(m_app);
    m_app.ShutDownKernel();
    EXPECT_THAT(m_calls, ElementsAre("Configuration 13"));
}

TEST_F(ShutDown, FollowsTheReportOfAFailure) {
    m_kernel.On<KernelAdmin::CloseProjects>([this](LONG) {
        EXPECT_EQ(test::BytesOf(Exchange(L"job_ERROR")), "Couldn't create KVAdmin");
        return S_OK;
    });
    Execute({L"-IN", Exchange(L"P.zip"), L"-M", L"job", L"-PUB"});
    EXPECT_THAT(m_kernelCalls,
                ElementsAre("KernelAdmin.PutClientName(\"ZeltorAuthor_Invisible\")",
                            "KernelAdmin.CloseProjects(-1)", "KernelAdmin.ShutDown(-1)"));
}

TEST_F(ShutDown, ChangesNoOutcomeWhenTheConfigurationRefusesToClose) {
    m_closing = E_ACCESSDENIED;
    FillConfiguration(m_app);
    Execute({L"-IN", Exchange(L"P.zip"), L"-M", L"job"});
    EXPECT_THAT(m_calls, ElementsAre("Configuration 13"));
    EXPECT_TRUE(test::Exists(Exchange(L"job_DONE")));
    EXPECT_FALSE(test::Exists(Exchange(L"job_ERROR")));
    EXPECT_EQ(m_output, "");
}

TEST_F(ShutDown, LeavesTheConfigurationToTheApplicationObjectsEnd) {
    {
        CZTInvisible app;
        FillConfiguration(app);
        app.ShutDownKernel();
        EXPECT_EQ(m_configuration.References(), 1);
    }
    EXPECT_EQ(m_configuration.References(), 0);
}

TEST_F(ShutDown, LeavesNothingToTheApplicationObjectsEndThatIsNotReleasedThere) {
    {
        CZTInvisible app;
        FillKernel(app);
        EXPECT_EQ(m_project.References(), 1);
    }
    for (const LONG references :
         {m_admin.References(), m_project.References(), m_sequence.References(),
          m_notification.References(), m_export.References()})
        EXPECT_EQ(references, 0);
    EXPECT_THAT(m_calls, IsEmpty());
}

} // namespace
} // namespace zt
