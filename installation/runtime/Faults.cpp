#include "installation/runtime/Faults.h"

#include "installation/runtime/Environment.h"
#include "installation/runtime/Trace.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace devinst {

namespace {

constexpr std::size_t MostRules = 256;

// How many matching calls each rule has seen. All libraries of the process that carry this runtime
// count together, in a memory section named after the process.
LONG* SharedCounts() {
    static LONG* const counts = [] {
        const std::wstring name = L"zt-faults-" + std::to_wstring(GetCurrentProcessId());
        const HANDLE section = CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0,
                                                  MostRules * sizeof(LONG), name.c_str());
        void* view = section != nullptr ? MapViewOfFile(section, FILE_MAP_WRITE, 0, 0, 0) : nullptr;
        if (view == nullptr)
            FailLoudly("no memory for the fault counts");
        return static_cast<LONG*>(view);
    }();
    return counts;
}

std::vector<FaultRule> ReadPlan() {
    const std::wstring path = EnvironmentText(L"ZT_FAULTS");
    if (path.empty())
        return {};
    std::ifstream file(std::filesystem::path(path), std::ios::binary);
    if (!file)
        FailLoudly("cannot read the fault plan " + ToUtf8(path));
    const std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    std::string complaint;
    std::optional<std::vector<FaultRule>> rules = ParseFaultPlan(text, &complaint);
    if (!rules)
        FailLoudly("the fault plan has a line without sense: " + complaint);
    if (rules->size() > MostRules)
        FailLoudly("the fault plan has too many lines");
    return *std::move(rules);
}

// Lives until the process ends: objects may be released after static destruction has begun.
std::vector<FaultRule>& ThePlan() {
    static auto* const rules = new std::vector<FaultRule>(ReadPlan());
    return *rules;
}

bool Matches(const FaultRule& rule, std::string_view object, std::string_view operation) {
    return (rule.object == "*" || rule.object == object) &&
           (rule.operation == "*" || rule.operation == operation);
}

} // namespace

std::optional<Fault> NextFault(std::string_view object, std::string_view operation) {
    const std::vector<FaultRule>& rules = ThePlan();
    std::optional<Fault> fault;
    for (std::size_t i = 0; i < rules.size(); ++i) {
        if (!Matches(rules[i], object, operation))
            continue;
        const auto count = static_cast<unsigned>(InterlockedIncrement(&SharedCounts()[i]));
        if (!fault && count >= rules[i].first && count <= rules[i].last)
            fault = rules[i].fault;
    }
    return fault;
}

void ReplaceFaultPlan(std::vector<FaultRule> rules) {
    ThePlan() = std::move(rules);
    std::fill_n(SharedCounts(), MostRules, 0);
}

} // namespace devinst
