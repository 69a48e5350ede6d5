#include "gui/window/MessageWords.h"

namespace Quorvex::GUI {

MouseMessage MakeMouseMessage(IPlatformWindow& window, MouseMessageNumber number, std::int32_t screenX,
                              std::int32_t screenY, const Rect& clientRect, std::uint32_t keys,
                              std::int32_t wheelDelta) {
    const auto delta = static_cast<std::uint32_t>(wheelDelta) & 0xFFFF;
    MouseMessage message{number, keys | (delta << 16), 0, screenX, screenY, &window};
    switch (number) {
    case MouseMessageNumber::Leave:
        message.wParam = 0;
        break;
    case MouseMessageNumber::Wheel:
    case MouseMessageNumber::HorizontalWheel:
        message.lParam = PackPosition(screenX, screenY);
        break;
    default:
        message.lParam = PackPosition(screenX - clientRect.left, screenY - clientRect.top);
        break;
    }
    return message;
}

std::intptr_t MakeKeyData(std::uint8_t scanCode, bool wasDown, bool isUp) {
    const std::uint32_t data = 1u | (std::uint32_t{scanCode} << 16) | (wasDown ? 1u << 30 : 0) | (isUp ? 1u << 31 : 0);
    return static_cast<std::int32_t>(data);
}

} // namespace Quorvex::GUI
