// The frame that one message travels in, in both directions: the length of the whole frame (16
// bits, high byte first), the text in UTF-8 and one zero byte.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace zt {

// All sizes count bytes.
constexpr std::size_t FrameLengthSize = 2;
constexpr std::size_t FrameOverhead = FrameLengthSize + 1;
// The longest frame that may be sent, and the text in it.
constexpr std::size_t MaximumFrameSize = 65530;
constexpr std::size_t MaximumFrameText = MaximumFrameSize - FrameOverhead;
// The shortest frame that counts as an answer: one byte of text.
constexpr std::size_t MinimumAnswerSize = FrameOverhead + 1;
// The longest frame whose length the two bytes can tell.
constexpr std::size_t MaximumFrameLength = 0xFFFF;

// Nothing when the frame would be longer than MaximumFrameSize.
std::optional<std::string> BuildFrame(std::string_view text);

// The text of a received frame up to its first zero byte, as a view into received. Nothing when the
// bytes are not exactly one frame.
std::optional<std::string_view> TextInFrame(std::string_view received);

} // namespace zt
