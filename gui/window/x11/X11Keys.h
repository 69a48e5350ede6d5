#pragma once

#include "gui/window/x11/X11Connection.h"

#include <cstdint>
#include <set>

namespace Quorvex::GUI {

/// The virtual-key code of a key symbol, as the key's cap would have it on the home platform; 0 for a key without.
std::uint32_t VirtualKeyOf(KeySym symbol);

/// Translates key events and knows which keys are down. GUI thread.
class X11Keyboard {
public:
    explicit X11Keyboard(const X11Connection& connection) : m_connection(connection) {}

    struct Key {
        std::uint32_t code; ///< Virtual key; 0 if the event is none for the program.
        std::intptr_t data; ///< The second word of a key message.
    };
    Key Press(XKeyEvent& event);
    Key Release(XKeyEvent& event);
    /// Keys that are let go while another program has the focus are not told.
    void ForgetKeys() { m_keysDown.clear(); }
    /// Modifiers and buttons after a pointer event.
    void SetState(unsigned int state) { m_state = state; }
    bool IsKeyDown(std::uint32_t key) const;

private:
    std::uint32_t Translate(XKeyEvent& event);
    /// Whether the home platform takes the key for menus and window commands instead of sending a key message.
    bool IsSystemKey(std::uint32_t key, unsigned int state) const;

    const X11Connection& m_connection;
    bool m_isPrepared = false;
    unsigned int m_state = 0;
    std::set<std::uint32_t> m_keysDown;
};

} // namespace Quorvex::GUI
