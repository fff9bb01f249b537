#include "cms/Frame.h"

namespace zt {
namespace {

std::size_t LengthInFrame(std::string_view frame) {
    const auto high = static_cast<unsigned char>(frame[0]);
    const auto low = static_cast<unsigned char>(frame[1]);
    return static_cast<std::size_t>(high) << 8 | low;
}

} // namespace

std::optional<std::string> BuildFrame(std::string_view text) {
    if (text.size() > MaximumFrameText)
        return std::nullopt;
    const std::size_t size = text.size() + FrameOverhead;
    std::string frame(size, '\0');
    frame[0] = static_cast<char>(size >> 8);
    frame[1] = static_cast<char>(size & 0xFF);
    text.copy(frame.data() + FrameLengthSize, text.size());
    return frame;
}

std::optional<std::string_view> TextInFrame(std::string_view received) {
    if (received.size() < MinimumAnswerSize)
        return std::nullopt;
    if (LengthInFrame(received) != received.size() || received.back() != '\0')
        return std::nullopt;
    const std::string_view text = received.substr(FrameLengthSize);
    return text.substr(0, text.find('\0'));
}

} // namespace zt
