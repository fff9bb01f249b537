// Uses that no table allows end the process; each is tried in a child process.
#include "tests/unit/installation/Automation.h"
#include "tests/unit/installation/Kit.h"
#include "tests/unit/installation/PlanFile.h"
#include "tests/unit/installation/Probe.h"
#include "tests/unit/installation/TraceCapture.h"

#include "installation/runtime/Faults.h"
#include "tests/support/Isolation.h"

#include <gmock/gmock.h>

namespace devinst::test {
namespace {

using testing::ExitedWithCode;

struct UnlistedMethod {
    using Function = HRESULT(STDMETHODCALLTYPE*)(void*);
    static void Call(IUnknown* object, std::size_t index) {
        void** const functions = *reinterpret_cast<void***>(object);
        reinterpret_cast<Function>(functions[index])(object);
    }
};

TEST(StandInMisuseDeathTest, MethodThatNoTableListsEndsTheProcess) {
    for (const std::size_t index : {8u, 10u, 96u, 98u, 127u}) {
        const ProbeHolder probe;
        EXPECT_EXIT(UnlistedMethod::Call(probe.Interface(), index), ExitedWithCode(70),
                    "misuse: method " + std::to_string(index) +
                        " of Probe#.* as ProbeInterface, which no table lists");
    }
}

TEST(StandInMisuseDeathTest, DispidThatNoTableListsEndsTheProcess) {
    const ProbeHolder probe;
    EXPECT_EXIT(Invoke(probe.Interface(), 99, DISPATCH_METHOD), ExitedWithCode(70),
                "misuse: Probe#.* Invoke .method 99., which no table lists");
}

TEST(StandInMisuseDeathTest, CallOnAReleasedObjectEndsTheProcess) {
    const ProbeHolder probe;
    ProbeInterface* child = nullptr;
    ProbeInterface::GiveObject::Call(probe.Interface(), &child);
    child->Release();
    EXPECT_EXIT(ProbeInterface::Work::Call(child), ExitedWithCode(70),
                "misuse: Work on an object that was released");
    EXPECT_EXIT(child->Release(), ExitedWithCode(70),
                "misuse: Release on an object that was released");
    EXPECT_EXIT(Invoke(child, 1, DISPATCH_PROPERTYGET), ExitedWithCode(70),
                "misuse: Invoke on an object that was released");
}

TEST(StandInMisuseDeathTest, ExceptionOfNoKnownKindEndsTheProcess) {
    const ProbeHolder probe;
    probe->work = []() -> HRESULT { throw 1; };
    EXPECT_EXIT(ProbeInterface::Work::Call(probe.Interface()), ExitedWithCode(70),
                "misuse: an exception of no known kind");
}

TEST(StandInMisuseDeathTest, MisuseIsTraced) {
    const TraceCapture trace;
    const ProbeHolder probe;
    EXPECT_EXIT(UnlistedMethod::Call(probe.Interface(), 8), ExitedWithCode(70), "");
    EXPECT_THAT(trace.Last(),
                testing::MatchesRegex("misuse: method 8 of Probe#.* as ProbeInterface, "
                                      "which no table lists"));
}

TEST(StandInMisuseDeathTest, ExitFaultEndsTheProcessWithItsCode) {
    const ProbeHolder probe;
    const auto crash = [&] {
        std::string complaint;
        ReplaceFaultPlan(*ParseFaultPlan("Probe.Work 1 exit 9", &complaint));
        ProbeInterface::Work::Call(probe.Interface());
    };
    EXPECT_EXIT(crash(), ExitedWithCode(9), "");
}

// The plan is read with the first call of a process.
void CallUnderPlan(const std::wstring& path) {
    SetEnvironmentVariableW(L"ZT_FAULTS", path.c_str());
    const ProbeHolder probe;
    ProbeInterface::Work::Call(probe.Interface());
}

TEST(StandInMisuseDeathTest, PlanThatCannotBeReadEndsTheProcess) {
    EXPECT_EXIT(CallUnderPlan(L"C:\\no such folder\\plan.txt"), ExitedWithCode(70),
                "misuse: cannot read the fault plan C:.*plan.txt");
}

TEST(StandInMisuseDeathTest, PlanWithALineWithoutSenseEndsTheProcess) {
    const PlanFile plan("Probe.Work 1 explode\n");
    EXPECT_EXIT(CallUnderPlan(plan.Path()), ExitedWithCode(70),
                "misuse: the fault plan has a line without sense: Probe.Work 1 explode");
}

TEST(StandInMisuseDeathTest, PlanFromTheEnvironmentIsFollowed) {
    const PlanFile plan("Probe.Work 1 exit 11\n");
    EXPECT_EXIT(CallUnderPlan(plan.Path()), ExitedWithCode(11), "");
}

// One object of each of two libraries.
void CreateFromTwoLibraries(const std::wstring& plan) {
    SetEnvironmentVariableW(L"ZT_FAULTS", plan.c_str());
    HRESULT second = E_UNEXPECTED;
    {
        const zt::test::RegistryOverride registry(HKEY_LOCAL_MACHINE);
        const RegisteredLibrary handlers(L"zt-handlers.dll");
        const RegisteredLibrary components(L"zt-components.dll");
        Microsoft::WRL::ComPtr<IDispatch> object;
        handlers.Create(L"KVDev.SampleEdit", IID_PPV_ARGS(&object));
        second = components.Create(L"KV.Admin", IID_PPV_ARGS(&object));
    }
    ExitProcess(second == E_ACCESSDENIED ? 11 : 12);
}

TEST(StandInMisuseDeathTest, PlanCountsTheCallsOfAllLibrariesTogether) {
    const PlanFile plan("*.CreateInstance 2 result E_ACCESSDENIED\n");
    EXPECT_EXIT(CreateFromTwoLibraries(plan.Path()), ExitedWithCode(11), "");
}

TEST(StandInMisuseDeathTest, TraceThatCannotBeWrittenEndsTheProcess) {
    const auto call = [] {
        SetEnvironmentVariableW(L"ZT_TRACE", L"C:\\no such folder\\trace.txt");
        const ProbeHolder probe;
        ProbeInterface::Work::Call(probe.Interface());
    };
    EXPECT_EXIT(call(), ExitedWithCode(70), "misuse: cannot write the trace C:.*trace.txt");
}

} // namespace
} // namespace devinst::test
