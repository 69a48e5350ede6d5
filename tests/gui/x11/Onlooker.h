#pragma once

#include "gui/window/x11/Xlib.h"

#include <cstdint>
#include <string>
#include <vector>

namespace Quorvex::GUI {

/// Another program on the same display, by a connection of its own: it looks at the screen, moves the mouse and types.
/// Every operation has reached the server when it returns.
class Onlooker {
public:
    explicit Onlooker(const char* displayName);
    ~Onlooker();
    Onlooker(const Onlooker&) = delete;
    Onlooker& operator=(const Onlooker&) = delete;

    Display* Get() const { return m_display; }
    ::Window GetRoot() const { return DefaultRootWindow(m_display); }

    /// The pixels of the screen as blue, green and red, three bytes a pixel, of a screen of 24 or 16 bits; 16-bit
    /// channels come left-aligned.
    std::vector<std::uint8_t> Photograph(const Rect& rect) const;
    /// The window's own pixels with their alpha, four bytes each.
    std::vector<std::uint8_t> PhotographWindow(void* handle, std::uint32_t width, std::uint32_t height) const;
    std::string GetText(void* handle, const char* property, const char* type) const;
    std::vector<unsigned long> GetNumbers(void* handle, const char* property) const;
    Atom Intern(const char* name) const { return XInternAtom(m_display, name, 0); }
    /// The children of the root, the lowest first.
    std::vector<::Window> GetStacking() const;

    // By the XTEST extension; false where its library is missing.
    bool MoveMouse(int x, int y) const;
    bool Press(unsigned int button) const;
    bool Release(unsigned int button) const;
    bool PressKey(KeySym symbol) const;
    bool ReleaseKey(KeySym symbol) const;

    void SendProtocol(void* handle, const char* protocol) const;

private:
    Display* m_display;
};

} // namespace Quorvex::GUI
