#include "gui/window/x11/X11Connection.h"

#include "foundation/Exception.h"
#include "foundation/Report.h"

#include <sys/socket.h>

#include <cstring>
#include <string>

namespace Quorvex::GUI {

namespace {

constexpr std::array<const char*, static_cast<std::size_t>(X11Atom::Count)> atomNames{
    "WM_PROTOCOLS",
    "WM_DELETE_WINDOW",
    "WM_STATE",
    "UTF8_STRING",
    "_NET_WM_NAME",
    "_NET_WM_PID",
    "_NET_WM_PING",
    "_NET_WM_ICON",
    "_NET_WM_USER_TIME",
    "_NET_WM_STATE",
    "_NET_WM_STATE_DEMANDS_ATTENTION",
    "_NET_WM_STATE_SKIP_TASKBAR",
    "_NET_WM_STATE_SKIP_PAGER",
    "_NET_WM_WINDOW_TYPE",
    "_NET_WM_WINDOW_TYPE_NORMAL",
    "_NET_WM_WINDOW_TYPE_UTILITY",
    "_NET_ACTIVE_WINDOW",
    "_NET_WORKAREA",
    "_NET_CURRENT_DESKTOP",
    "_NET_SUPPORTING_WM_CHECK",
    "_MOTIF_WM_HINTS",
    "MANAGER",
    nullptr,
};

/// Xlib's handler of errors has no argument of the caller's. It is called on the thread that uses the connection, of
/// which each has its own.
thread_local X11ErrorTrap* currentTrap = nullptr;

/// Called before the exit handler of the connection; without it Xlib prints a message and ends the process.
int OnConnectionError(Display*) {
    return 0;
}

} // namespace

X11Connection::X11Connection(const char* displayName) : m_display(XOpenDisplay(displayName)) {
    if (m_display == nullptr)
        throw Exception(__LINE__, "XOpenDisplay");
    XSetErrorHandler(&OnError);
    XSetIOErrorHandler(&OnConnectionError);
    XSetIOErrorExitHandler(
        m_display, [](Display*, void* connection) { static_cast<X11Connection*>(connection)->m_isGone = true; }, this);
    m_screen = DefaultScreen(m_display);
    m_root = RootWindow(m_display, m_screen);
    m_descriptor = ConnectionNumber(m_display);
    InternAtoms();
}

X11Connection::~X11Connection() {
    XCloseDisplay(m_display);
}

void X11Connection::InternAtoms() {
    // One round trip for all of them.
    const auto compositor = "_NET_WM_CM_S" + std::to_string(m_screen);
    auto names = atomNames;
    names.back() = compositor.c_str();
    std::array<char*, atomNames.size()> writable{};
    for (std::size_t i = 0; i < names.size(); ++i)
        writable[i] = const_cast<char*>(names[i]);
    if (XInternAtoms(m_display, writable.data(), static_cast<int>(writable.size()), 0, m_atoms.data()) == 0)
        ReportFailure(__LINE__, "XInternAtoms", 0);
}

void X11Connection::Flush() const {
    if (!m_isGone)
        XFlush(m_display);
}

void X11Connection::Synchronize() const {
    if (!m_isGone)
        XSync(m_display, 0);
}

bool X11Connection::IsLocal() const {
    sockaddr_storage address{};
    socklen_t size = sizeof(address);
    return getsockname(m_descriptor, reinterpret_cast<sockaddr*>(&address), &size) == 0 && address.ss_family == AF_UNIX;
}

int X11Connection::OnError(Display* display, XErrorEvent* event) {
    if (currentTrap != nullptr && currentTrap->m_connection.Get() == display) {
        if (currentTrap->m_firstError == 0)
            currentTrap->m_firstError = event->error_code;
        return 0;
    }
    char name[64];
    const auto number = std::to_string(event->request_code);
    XGetErrorDatabaseText(display, "XRequest", number.c_str(), number.c_str(), name, sizeof(name));
    ReportFailure(__LINE__, name, event->error_code);
    return 0;
}

std::vector<unsigned long> X11Connection::GetNumbers(::Window window, Atom property, Atom type,
                                                     long maximumItems) const {
    Atom foundType = noXid;
    int format = 0;
    unsigned long count = 0;
    unsigned long rest = 0;
    unsigned char* data = nullptr;
    std::vector<unsigned long> numbers;
    if (m_isGone)
        return numbers;
    if (XGetWindowProperty(m_display, window, property, 0, maximumItems, 0, type, &foundType, &format, &count, &rest,
                           &data) != 0)
        return numbers;
    if (foundType == type && format == 32 && data != nullptr) {
        // Xlib widens the property's 32 bits to a long each.
        numbers.resize(count);
        std::memcpy(numbers.data(), data, count * sizeof(unsigned long));
    }
    if (data != nullptr)
        XFree(data);
    return numbers;
}

void X11Connection::SetNumbers(::Window window, Atom property, Atom type,
                               const std::vector<unsigned long>& numbers) const {
    if (m_isGone)
        return;
    XChangeProperty(m_display, window, property, type, 32, PropModeReplace,
                    reinterpret_cast<const unsigned char*>(numbers.data()), static_cast<int>(numbers.size()));
}

void X11Connection::SetBytes(::Window window, Atom property, Atom type, const char* bytes, std::size_t size) const {
    if (m_isGone)
        return;
    XChangeProperty(m_display, window, property, type, 8, PropModeReplace,
                    reinterpret_cast<const unsigned char*>(bytes), static_cast<int>(size));
}

void X11Connection::AskWindowManager(::Window window, Atom type, const std::array<long, 5>& data) const {
    XEvent event{};
    event.xclient.type = ClientMessage;
    event.xclient.window = window;
    event.xclient.message_type = type;
    event.xclient.format = 32;
    std::memcpy(event.xclient.data.l, data.data(), sizeof(data));
    if (m_isGone)
        return;
    XSendEvent(m_display, m_root, 0, SubstructureNotifyMask | SubstructureRedirectMask, &event);
}

X11ErrorTrap::X11ErrorTrap(const X11Connection& connection) : m_connection(connection) {
    // Errors of requests made before belong to whoever made them.
    connection.Synchronize();
    currentTrap = this;
}

X11ErrorTrap::~X11ErrorTrap() {
    currentTrap = nullptr;
}

std::uint32_t X11ErrorTrap::Synchronize() {
    m_connection.Synchronize();
    return m_firstError;
}

} // namespace Quorvex::GUI
