// The edit handler that a run can have work on the project.
#include "tests/support/ProjectFixture.h"

namespace zt::test {
namespace {

using testing::ElementsAre;

constexpr HRESULT SomeFailure = static_cast<HRESULT>(0x80045678);

class PipelineEditHandler : public ProjectTest {
  protected:
    PipelineEditHandler() {
        request.editProgId = L"ZtTest.Handler";
        request.editMethod = L"Fix";
        handler.names[L"Fix"] = 5;
        handler.answer = Give(_variant_t(true));
    }
    ~PipelineEditHandler() override { EXPECT_EQ(handler.References(), 0); }

    // What the run ends with when the method answers so.
    std::wstring RunAnswered(InvokeAnswer answer) {
        handler.answer = std::move(answer);
        return Run();
    }

    FakeDispatch handler;
    std::unique_ptr<TestClass> handlerClass =
        std::make_unique<TestClass>(L"ZtTest.Handler", TestClass::Gives(&handler));
};

TEST_F(PipelineEditHandler, IsGivenTheKernelAdminAndNothingElse) {
    LONG references = 0;
    handler.answer = [&](const Invocation& call, VARIANT* result, EXCEPINFO*) {
        EXPECT_EQ(call.id, 5);
        EXPECT_EQ(call.iid, IID_NULL);
        EXPECT_EQ(call.locale, 0x400u);
        EXPECT_EQ(call.kind, DISPATCH_METHOD);
        EXPECT_TRUE(call.named.empty());
        EXPECT_TRUE(call.asksResult);
        EXPECT_TRUE(call.asksInfo);
        EXPECT_EQ(call.arguments.size(), 1u);
        EXPECT_EQ(call.arguments.at(0).vt, VT_DISPATCH);
        EXPECT_EQ(call.arguments.at(0).pdispVal, static_cast<IDispatch*>(admin.Get()));
        references = admin.References();
        *result = _variant_t(true).Detach();
        return S_OK;
    };
    EXPECT_EQ(Run(), L"");
    EXPECT_THAT(handler.lookups, ElementsAre(L"Fix"));
    ASSERT_EQ(handler.invocations.size(), 1u);
    // The run's own, the argument's, and those of the records of the call.
    EXPECT_EQ(references, 2 + 2);
    handler.invocations.clear();
    EXPECT_EQ(admin.References(), 1);
    EXPECT_THAT(handlerClass->Asked(), ElementsAre(IID_IDispatch));
    EXPECT_EQ(Count("log: Edit handler (ProgID: 'ZtTest.Handler', Method: 'Fix') succeeded"), 1);
    EXPECT_EQ(Count("log: Project saved"), 1);
}

TEST_F(PipelineEditHandler, RunsOnlyWithBothItsProgIdAndItsMethod) {
    request.editMethod = L"";
    EXPECT_EQ(Run(), L"");
    request.editMethod = L"Fix";
    request.editProgId = L"";
    EXPECT_EQ(Run(), L"");
    EXPECT_TRUE(handlerClass->Asked().empty());
    EXPECT_EQ(Count("KernelAdmin.SetSaveMode"), 0);
}

TEST_F(PipelineEditHandler, FailsWhereItsProgIdIsUnknown) {
    request.editProgId = L"ZtTest.Nowhere";
    EXPECT_EQ(Run(), L"Can't create edit handler: ZtTest.Nowhere");
}

TEST_F(PipelineEditHandler, FailsWhereItIsNotCreated) {
    handlerClass.reset();
    handlerClass = std::make_unique<TestClass>(L"ZtTest.Handler", TestClass::Fails(SomeFailure));
    EXPECT_EQ(Run(), L"Can't create edit handler: ZtTest.Handler");
    handlerClass.reset();
    handlerClass = std::make_unique<TestClass>(L"ZtTest.Handler", TestClass::GivesNothing());
    EXPECT_EQ(Run(), L"Can't create edit handler: ZtTest.Handler");
}

TEST_F(PipelineEditHandler, FailsWhereItDoesNotKnowTheMethod) {
    request.editMethod = L"Repair";
    EXPECT_EQ(Run(), L"EDIT method not found: Repair");
    EXPECT_TRUE(handler.invocations.empty());
}

TEST_F(PipelineEditHandler, FailsWithTheDescriptionOfWhatItRaises) {
    EXPECT_EQ(RunAnswered(Raise(L"Valve 3 has no name.")),
              L"Error calling EDIT method 'Fix'. Valve 3 has no name.");
    EXPECT_EQ(Count("log: Edit handler"), 0);
    EXPECT_EQ(Count("KernelAdmin.SetSaveMode"), 0);
}

TEST_F(PipelineEditHandler, FailsWithoutADescriptionWhereItGivesNone) {
    EXPECT_EQ(RunAnswered(Raise(nullptr)), L"Error calling EDIT method 'Fix'. ");
    EXPECT_EQ(RunAnswered(Raise(L"")), L"Error calling EDIT method 'Fix'. ");
    EXPECT_EQ(RunAnswered(Succeed(SomeFailure)), L"Error calling EDIT method 'Fix'. ");
}

TEST_F(PipelineEditHandler, FailsWithADescriptionThatIsFilledInLate) {
    EXPECT_EQ(RunAnswered([](const Invocation&, VARIANT*, EXCEPINFO* info) {
                  info->pfnDeferredFillIn = [](EXCEPINFO* late) -> HRESULT {
                      late->bstrDescription = SysAllocString(L"Filled in late.");
                      return S_OK;
                  };
                  return DISP_E_EXCEPTION;
              }),
              L"Error calling EDIT method 'Fix'. Filled in late.");
}

TEST_F(PipelineEditHandler, FailsWithADescriptionAlsoWhereItReturnsNothing) {
    EXPECT_EQ(RunAnswered([](const Invocation&, VARIANT*, EXCEPINFO* info) {
                  info->bstrDescription = SysAllocString(L"Nothing done.");
                  return S_OK;
              }),
              L"Error calling EDIT method 'Fix'. Nothing done.");
}

TEST_F(PipelineEditHandler, FailsAlsoWhereAFailingMethodHandsOverAResult) {
    EXPECT_EQ(RunAnswered([](const Invocation&, VARIANT* result, EXCEPINFO*) {
                  *result = _variant_t(true).Detach();
                  return SomeFailure;
              }),
              L"Error calling EDIT method 'Fix'. ");
}

struct ResultCase {
    const char* name;
    _variant_t result;
    bool succeeds;

    friend void PrintTo(const ResultCase& one, std::ostream* out) { *out << one.name; }
};

_variant_t Null() {
    _variant_t null;
    null.vt = VT_NULL;
    return null;
}

class PipelineEditHandlerResult : public PipelineEditHandler,
                                  public testing::WithParamInterface<ResultCase> {};

TEST_P(PipelineEditHandlerResult, DecidesOverSuccess) {
    const std::wstring failure = RunAnswered(Give(GetParam().result));
    EXPECT_EQ(failure, GetParam().succeeds ? L"" : L"Error calling EDIT method 'Fix'. ");
    EXPECT_EQ(Count("log: Edit handler (ProgID: 'ZtTest.Handler', Method: 'Fix') succeeded"),
              GetParam().succeeds ? 1 : 0);
}

INSTANTIATE_TEST_SUITE_P(
    , PipelineEditHandlerResult,
    testing::Values(ResultCase{"True", _variant_t(true), true},
                    ResultCase{"False", _variant_t(false), true},
                    ResultCase{"Nothing", _variant_t(), false}, ResultCase{"Null", Null(), false},
                    ResultCase{"Zero", _variant_t(0L), false},
                    ResultCase{"One", _variant_t(1L), true},
                    ResultCase{"MinusOne", _variant_t(-1L), true},
                    ResultCase{"Only16Bits", _variant_t(0x10000L), false},
                    ResultCase{"NoObject", _variant_t(static_cast<IDispatch*>(nullptr)), false}),
    [](const auto& one) { return one.param.name; });

TEST_F(PipelineEditHandler, FailsWhereItReturnsNothingButLeavesDataBehind) {
    EXPECT_EQ(RunAnswered([](const Invocation&, VARIANT* result, EXCEPINFO*) {
                  result->iVal = 1;
                  return S_OK;
              }),
              L"Error calling EDIT method 'Fix'. ");
}

TEST_F(PipelineEditHandler, ReleasesAnObjectThatItReturns) {
    FakeDispatch returned;
    handler.answer = [&](const Invocation&, VARIANT* result, EXCEPINFO*) {
        *result = _variant_t(static_cast<IDispatch*>(&returned)).Detach();
        return S_OK;
    };
    Run();
    EXPECT_EQ(returned.References(), 0);
}

} // namespace
} // namespace zt::test
