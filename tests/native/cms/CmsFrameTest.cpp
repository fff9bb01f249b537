#include "cms/Frame.h"

#include <gmock/gmock.h>

#include <string>

namespace {

using zt::BuildFrame;
using zt::TextInFrame;
using namespace std::string_literals;

std::string Frame(char high, char low, const std::string& rest) {
    return std::string{high, low} + rest;
}

TEST(CmsFrame, OfTwoLettersIsFiveBytesLong) {
    EXPECT_EQ(BuildFrame("AB"), "\x00\x05\x41\x42\x00"s);
}

TEST(CmsFrame, OfNoTextIsItsLengthAndTheZero) {
    EXPECT_EQ(BuildFrame(""), "\x00\x03\x00"s);
}

TEST(CmsFrame, TellsItsLengthWithTheHighByteFirst) {
    const auto frame = BuildFrame(std::string(0x1234 - 3, 'x'));
    ASSERT_TRUE(frame);
    EXPECT_EQ(frame->size(), 0x1234u);
    EXPECT_EQ(frame->substr(0, 3), "\x12\x34x");
    EXPECT_EQ(frame->substr(0x1234 - 2), "x\0"s);
}

TEST(CmsFrame, TakesUtf8BytesAsTheyAre) {
    EXPECT_EQ(BuildFrame("\xC3\xA4\xE2\x82\xAC"), "\x00\x08\xC3\xA4\xE2\x82\xAC\x00"s);
}

TEST(CmsFrame, MayBe65530BytesLong) {
    const auto frame = BuildFrame(std::string(65527, 'x'));
    ASSERT_TRUE(frame);
    EXPECT_EQ(frame->size(), 65530u);
    EXPECT_EQ(frame->substr(0, 2), "\xFF\xFA");
    EXPECT_EQ(frame->back(), '\0');
}

TEST(CmsFrame, IsNotBuiltWhenItWouldBe65531BytesLong) {
    EXPECT_EQ(BuildFrame(std::string(65528, 'x')), std::nullopt);
}

TEST(ReceivedFrame, GivesItsText) {
    EXPECT_EQ(TextInFrame("\x00\x05\x41\x42\x00"s), "AB");
}

TEST(ReceivedFrame, MayBe65535BytesLong) {
    const std::string text(65532, 'x');
    EXPECT_EQ(TextInFrame(Frame('\xFF', '\xFF', text + '\0')), text);
}

TEST(ReceivedFrame, EndsItsTextAtTheFirstZero) {
    EXPECT_EQ(TextInFrame("\x00\x07"
                          "A\0BC\0"s),
              "A");
}

TEST(ReceivedFrame, MayHoldAnEmptyTextBeforeItsZeros) {
    EXPECT_EQ(TextInFrame("\x00\x04\x00\x00"s), "");
}

struct Invalid {
    const char* why;
    std::string bytes;
};

class ReceivedBytes : public testing::TestWithParam<Invalid> {};

TEST_P(ReceivedBytes, AreNoFrame) {
    EXPECT_EQ(TextInFrame(GetParam().bytes), std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(
    Invalid, ReceivedBytes,
    testing::Values(Invalid{"NoBytes", ""}, Invalid{"OneByte", "\x01"s},
                    Invalid{"LengthAlone", "\x00\x02"s}, Invalid{"ThreeBytes", "\x00\x03\x00"s},
                    Invalid{"LengthOneTooSmall", "\x00\x04\x41\x42\x00"s},
                    Invalid{"LengthOneTooLarge", "\x00\x06\x41\x42\x00"s},
                    Invalid{"LengthWithoutItsOwnBytes", "\x00\x03\x41\x42\x00"s},
                    Invalid{"LengthLowByteFirst", "\x05\x00\x41\x42\x00"s},
                    Invalid{"NoClosingZero", "\x00\x05\x41\x42\x43"s},
                    Invalid{"TwoFrames", "\x00\x04\x41\x00\x00\x04\x41\x00"s},
                    Invalid{"LengthOf65536", Frame('\0', '\0', std::string(65534, '\0'))}),
    [](const auto& testCase) { return testCase.param.why; });

} // namespace
