#pragma once

#include "gui/window/x11/Xlib.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace Quorvex::GUI {

/// The names that this program exchanges with window managers and compositors.
enum class X11Atom : std::size_t {
    WmProtocols,
    WmDeleteWindow,
    WmState,
    Utf8String,
    NetWmName,
    NetWmPid,
    NetWmPing,
    NetWmIcon,
    NetWmUserTime,
    NetWmState,
    NetWmStateDemandsAttention,
    NetWmStateSkipTaskbar,
    NetWmStateSkipPager,
    NetWmWindowType,
    NetWmWindowTypeNormal,
    NetWmWindowTypeUtility,
    NetActiveWindow,
    NetWorkArea,
    NetCurrentDesktop,
    NetSupportingWmCheck,
    MotifWmHints,
    Manager,
    CompositorSelection, ///< _NET_WM_CM_S and the number of the screen.
    Count
};

/// The program's one connection to the X server, with its first screen. Errors of single requests are reported under
/// the request's name and the program goes on. Once the connection is lost all operations do nothing, and whoever makes
/// requests of their own asks first: they would pile up in a buffer that nobody empties, and where it is full Xlib
/// writes through a null pointer. GUI thread.
class X11Connection {
public:
    /// Null means the display that the environment names. Raises Exception "XOpenDisplay" where there is none.
    explicit X11Connection(const char* displayName = nullptr);
    ~X11Connection();
    X11Connection(const X11Connection&) = delete;
    X11Connection& operator=(const X11Connection&) = delete;

    Display* Get() const { return m_display; }
    int GetScreen() const { return m_screen; }
    ::Window GetRoot() const { return m_root; }
    int GetDescriptor() const { return m_descriptor; }
    Atom GetAtom(X11Atom atom) const { return m_atoms[static_cast<std::size_t>(atom)]; }
    /// The display has gone.
    bool IsGone() const { return m_isGone; }
    /// Sends what waits in the buffer.
    void Flush() const;
    /// Waits until the server has carried out all requests.
    void Synchronize() const;
    /// Whether server and program run on one machine, so that they can share memory.
    bool IsLocal() const;

    /// Up to maximumItems numbers of 32 bits of a property; empty where it is missing or of another type.
    std::vector<unsigned long> GetNumbers(::Window window, Atom property, Atom type, long maximumItems) const;
    void SetNumbers(::Window window, Atom property, Atom type, const std::vector<unsigned long>& numbers) const;
    void SetBytes(::Window window, Atom property, Atom type, const char* bytes, std::size_t size) const;
    /// A client message to the root window, by which window managers are asked for something.
    void AskWindowManager(::Window window, Atom type, const std::array<long, 5>& data) const;

private:
    friend class X11ErrorTrap;
    static int OnError(Display* display, XErrorEvent* event);
    void InternAtoms();

    Display* m_display;
    int m_screen = 0;
    ::Window m_root = 0;
    int m_descriptor = -1;
    std::array<Atom, static_cast<std::size_t>(X11Atom::Count)> m_atoms{};
    bool m_isGone = false;
};

/// While it lives, errors of requests are kept instead of reported. Traps do not nest.
class X11ErrorTrap {
public:
    explicit X11ErrorTrap(const X11Connection& connection);
    ~X11ErrorTrap();
    X11ErrorTrap(const X11ErrorTrap&) = delete;
    X11ErrorTrap& operator=(const X11ErrorTrap&) = delete;

    /// Waits until the server has carried out all requests; the code of the first error, 0 for none.
    std::uint32_t Synchronize();

private:
    friend class X11Connection;
    const X11Connection& m_connection;
    std::uint32_t m_firstError = 0;
};

} // namespace Quorvex::GUI
