// Replays the seeds and every input that once broke something.
#include "tests/fuzz/Targets.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

namespace zt::fuzz {
namespace {

namespace fs = std::filesystem;

// ZT_FUZZ_INPUTS: the folder of seeds/ and found/.
std::vector<fs::path> FilesBelow(const char* kind, const Target& target) {
    const fs::path folder = fs::path(ZT_FUZZ_INPUTS) / kind / target.name;
    std::vector<fs::path> files;
    if (fs::exists(folder))
        for (const fs::directory_entry& entry : fs::directory_iterator(folder))
            files.push_back(entry.path());
    return files;
}

std::vector<std::uint8_t> ContentOf(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

class Replay : public testing::TestWithParam<Target> {
  protected:
    static void Run(const fs::path& file) {
        SCOPED_TRACE(file);
        EXPECT_NO_THROW(GetParam().run(ContentOf(file)));
    }
};

TEST_P(Replay, OfSeedsBreaksNothing) {
    const std::vector<fs::path> seeds = FilesBelow("seeds", GetParam());
    EXPECT_FALSE(seeds.empty());
    for (const fs::path& seed : seeds)
        Run(seed);
}

TEST_P(Replay, OfFoundInputsBreaksNothing) {
    for (const fs::path& input : FilesBelow("found", GetParam()))
        Run(input);
}

TEST_P(Replay, OfNothingBreaksNothing) {
    EXPECT_NO_THROW(GetParam().run({}));
}

INSTANTIATE_TEST_SUITE_P(Fuzz, Replay, testing::ValuesIn(Targets), [](const auto& target) {
    std::string name = target.param.name;
    std::erase(name, '-');
    return name;
});

TEST(FuzzInputs, ABrokenPropertyIsTold) {
    EXPECT_NO_THROW(Require(true, "holds"));
    EXPECT_THROW(Require(false, "does not hold"), Broken);
}

TEST(FuzzInputs, AnEscapeStandsForAnyUnit) {
    const std::uint8_t bytes[] = {'a', 0xFF, 0x34, 0x12, 0xFF, 'b'};
    EXPECT_EQ(WideTextOf(bytes), L"a\x1234\xFF"
                                 L"b");
}

TEST(FuzzInputs, LinesAreFilledUpWithEmptyOnes) {
    const std::uint8_t bytes[] = {'a', '\n', '\n', 'b'};
    EXPECT_EQ(WideLines(bytes, 4), (std::vector<std::wstring>{L"a", L"", L"b", L""}));
}

} // namespace
} // namespace zt::fuzz
