// The protocol of the link to the content-management client: frames, the message to it and its
// answer. No Windows call.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zt {

// ---- frames ----
// The frame that one message travels in, in both directions: the length of the whole frame (16
// bits, high byte first), the text in UTF-8 and one zero byte. All sizes count bytes.

constexpr std::size_t FrameLengthSize = 2;
constexpr std::size_t FrameOverhead = FrameLengthSize + 1;
// The longest frame that may be sent, and the text in it.
constexpr std::size_t MaximumFrameSize = 65530;
constexpr std::size_t MaximumFrameText = MaximumFrameSize - FrameOverhead;
// The shortest frame that counts as an answer: one byte of text.
constexpr std::size_t MinimumAnswerSize = FrameOverhead + 1;
// The longest frame whose length fits into the two bytes.
constexpr std::size_t MaximumFrameLength = 0xFFFF;

// Nothing when the frame would be longer than MaximumFrameSize.
std::optional<std::string> BuildFrame(std::string_view text);

// The text of a received frame up to its first zero byte, as a view into received. Nothing when the
// bytes are not exactly one frame.
std::optional<std::string_view> TextInFrame(std::string_view received);

// ---- texts ----

// The message that reports to the client what happened. The fields are joined by "|" without
// escaping, so an argument that holds a "|" makes further fields. A null argument is none; an empty
// one is an empty field.
std::wstring BuildActionMessage(const wchar_t* action, const wchar_t* argument);

// The first fields of text, at most maximum, as views into it. Fields stand between bars; an empty
// one is no field, so several bars in a row separate like one.
std::vector<std::wstring_view> SplitFields(std::wstring_view text, std::size_t maximum);

// Nothing when the client's answer reports success, else the text that reports the failure to the
// user.
std::optional<std::wstring> FailureInResponse(std::wstring_view response);

} // namespace zt
