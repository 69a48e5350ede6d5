#include "gui/window/x11/X11Keys.h"

#include "gui/window/MessageWords.h"

#include <X11/keysym.h>

#include <algorithm>
#include <array>

namespace Quorvex::GUI {

namespace {

struct KeyPair {
    KeySym symbol;
    std::uint32_t code;
};

// Keys of the number pad come as digits or as cursor keys, by the lock; their codes differ likewise.
constexpr std::array keyPairs{
    KeyPair{XK_BackSpace, 0x08},    KeyPair{XK_Tab, 0x09},
    KeyPair{XK_ISO_Left_Tab, 0x09}, KeyPair{XK_Clear, 0x0C},
    KeyPair{XK_KP_Begin, 0x0C},     KeyPair{XK_Return, 0x0D},
    KeyPair{XK_KP_Enter, 0x0D},     KeyPair{XK_Shift_L, 0x10},
    KeyPair{XK_Shift_R, 0x10},      KeyPair{XK_Control_L, 0x11},
    KeyPair{XK_Control_R, 0x11},    KeyPair{XK_Alt_L, 0x12},
    KeyPair{XK_Alt_R, 0x12},        KeyPair{XK_Pause, 0x13},
    KeyPair{XK_Caps_Lock, 0x14},    KeyPair{XK_Escape, 0x1B},
    KeyPair{XK_space, 0x20},        KeyPair{XK_Prior, 0x21},
    KeyPair{XK_KP_Prior, 0x21},     KeyPair{XK_Next, 0x22},
    KeyPair{XK_KP_Next, 0x22},      KeyPair{XK_End, 0x23},
    KeyPair{XK_KP_End, 0x23},       KeyPair{XK_Home, 0x24},
    KeyPair{XK_KP_Home, 0x24},      KeyPair{XK_Left, 0x25},
    KeyPair{XK_KP_Left, 0x25},      KeyPair{XK_Up, 0x26},
    KeyPair{XK_KP_Up, 0x26},        KeyPair{XK_Right, 0x27},
    KeyPair{XK_KP_Right, 0x27},     KeyPair{XK_Down, 0x28},
    KeyPair{XK_KP_Down, 0x28},      KeyPair{XK_Print, 0x2C},
    KeyPair{XK_Insert, 0x2D},       KeyPair{XK_KP_Insert, 0x2D},
    KeyPair{XK_Delete, 0x2E},       KeyPair{XK_KP_Delete, 0x2E},
    KeyPair{XK_Super_L, 0x5B},      KeyPair{XK_Super_R, 0x5C},
    KeyPair{XK_Menu, 0x5D},         KeyPair{XK_KP_Multiply, 0x6A},
    KeyPair{XK_KP_Add, 0x6B},       KeyPair{XK_KP_Separator, 0x6C},
    KeyPair{XK_KP_Subtract, 0x6D},  KeyPair{XK_KP_Decimal, 0x6E},
    KeyPair{XK_KP_Divide, 0x6F},    KeyPair{XK_Num_Lock, 0x90},
    KeyPair{XK_Scroll_Lock, 0x91},  KeyPair{XK_semicolon, 0xBA},
    KeyPair{XK_udiaeresis, 0xBA},   KeyPair{XK_plus, 0xBB},
    KeyPair{XK_equal, 0xBB},        KeyPair{XK_comma, 0xBC},
    KeyPair{XK_minus, 0xBD},        KeyPair{XK_period, 0xBE},
    KeyPair{XK_slash, 0xBF},        KeyPair{XK_numbersign, 0xBF},
    KeyPair{XK_grave, 0xC0},        KeyPair{XK_odiaeresis, 0xC0},
    KeyPair{XK_bracketleft, 0xDB},  KeyPair{XK_ssharp, 0xDB},
    KeyPair{XK_backslash, 0xDC},    KeyPair{XK_dead_circumflex, 0xDC},
    KeyPair{XK_bracketright, 0xDD}, KeyPair{XK_dead_acute, 0xDD},
    KeyPair{XK_apostrophe, 0xDE},   KeyPair{XK_adiaeresis, 0xDE},
    KeyPair{XK_less, 0xE2},
};

constexpr std::uint32_t leftButton = 0x01;
constexpr std::uint32_t rightButton = 0x02;
constexpr std::uint32_t middleButton = 0x04;
constexpr std::uint32_t shiftKey = 0x10;
constexpr std::uint32_t controlKey = 0x11;
constexpr std::uint32_t altKey = 0x12;
constexpr std::uint32_t f10Key = 0x79;

/// Keys whose codes run in the order of their symbols.
std::uint32_t CodeInRange(KeySym symbol) {
    if (symbol >= XK_0 && symbol <= XK_9)
        return static_cast<std::uint32_t>(0x30 + (symbol - XK_0));
    if (symbol >= XK_a && symbol <= XK_z)
        return static_cast<std::uint32_t>(0x41 + (symbol - XK_a));
    if (symbol >= XK_A && symbol <= XK_Z)
        return static_cast<std::uint32_t>(0x41 + (symbol - XK_A));
    if (symbol >= XK_KP_0 && symbol <= XK_KP_9)
        return static_cast<std::uint32_t>(0x60 + (symbol - XK_KP_0));
    if (symbol >= XK_F1 && symbol <= XK_F24)
        return static_cast<std::uint32_t>(0x70 + (symbol - XK_F1));
    return 0;
}

bool IsNumberPad(KeySym symbol) {
    return symbol >= XK_KP_Space && symbol <= XK_KP_Equal;
}

/// The bit of an event's state that tells of the key or mouse button; 0 for any other key.
unsigned int ModifierOf(std::uint32_t key) {
    switch (key) {
    case leftButton:
        return Button1Mask;
    case rightButton:
        return Button3Mask;
    case middleButton:
        return Button2Mask;
    case shiftKey:
        return ShiftMask;
    case controlKey:
        return ControlMask;
    case altKey:
        return Mod1Mask;
    default:
        return 0;
    }
}

std::uint8_t ScanCodeOf(const XKeyEvent& event) {
    // Key codes of X lie eight above the keyboard's own.
    return static_cast<std::uint8_t>(std::max(event.keycode, 8u) - 8);
}

} // namespace

std::uint32_t VirtualKeyOf(KeySym symbol) {
    const auto found = std::ranges::find(keyPairs, symbol, &KeyPair::symbol);
    return found != keyPairs.end() ? found->code : CodeInRange(symbol);
}

std::uint32_t X11Keyboard::Translate(XKeyEvent& event) {
    KeySym symbol = noXid;
    XLookupString(&event, nullptr, 0, &symbol, nullptr);
    if (IsNumberPad(symbol))
        return VirtualKeyOf(symbol);
    // The cap's unshifted symbol names the key. A layout without Latin letters has them in another of its groups.
    const auto keycode = static_cast<KeyCode>(event.keycode);
    for (unsigned int group = 0; group < XkbNumKbdGroups; ++group) {
        const auto inGroup = XkbGroupForCoreState(event.state) + group;
        const auto plain = XkbKeycodeToKeysym(m_connection.Get(), keycode, inGroup % XkbNumKbdGroups, 0);
        if (const auto code = VirtualKeyOf(plain))
            return code;
    }
    return 0;
}

bool X11Keyboard::IsSystemKey(std::uint32_t key, unsigned int state) const {
    if ((state & ControlMask) != 0)
        return false;
    return (state & Mod1Mask) != 0 || key == altKey || key == f10Key;
}

X11Keyboard::Key X11Keyboard::Press(XKeyEvent& event) {
    if (!m_isPrepared) {
        // Otherwise a held key would seem to be let go and pressed again and again.
        XkbSetDetectableAutoRepeat(m_connection.Get(), 1, nullptr);
        m_isPrepared = true;
    }
    m_state = event.state;
    const auto code = Translate(event);
    const bool wasDown = !m_keysDown.insert(code).second;
    if (IsSystemKey(code, event.state))
        return {0, 0};
    return {code, MakeKeyData(ScanCodeOf(event), wasDown, false)};
}

X11Keyboard::Key X11Keyboard::Release(XKeyEvent& event) {
    const auto code = Translate(event);
    m_keysDown.erase(code);
    // The state of an event is the one before it.
    m_state = event.state & ~ModifierOf(code);
    if (IsSystemKey(code, event.state))
        return {0, 0};
    return {code, MakeKeyData(ScanCodeOf(event), true, true)};
}

bool X11Keyboard::IsKeyDown(std::uint32_t key) const {
    return (m_state & ModifierOf(key)) != 0 || m_keysDown.contains(key);
}

} // namespace Quorvex::GUI
