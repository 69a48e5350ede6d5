#include "tests/gui/x11/Onlooker.h"

#include <dlfcn.h>

#include <bit>
#include <stdexcept>

namespace Quorvex::GUI {

namespace {

/// A call of the XTEST library, which has no header of its own here and may be missing.
template <class Pointer>
Pointer TestCall(const char* name) {
    static void* const library = dlopen("libXtst.so.6", RTLD_NOW);
    return library != nullptr ? reinterpret_cast<Pointer>(dlsym(library, name)) : nullptr;
}

bool FakeButton(Display* display, unsigned int button, int isPress) {
    const auto call = TestCall<int (*)(Display*, unsigned int, int, unsigned long)>("XTestFakeButtonEvent");
    const bool isDone = call != nullptr && call(display, button, isPress, 0) != 0;
    XSync(display, 0);
    return isDone;
}

bool FakeKey(Display* display, KeySym symbol, int isPress) {
    const auto call = TestCall<int (*)(Display*, unsigned int, int, unsigned long)>("XTestFakeKeyEvent");
    const bool isDone = call != nullptr && call(display, XKeysymToKeycode(display, symbol), isPress, 0) != 0;
    XSync(display, 0);
    return isDone;
}

std::uint8_t Channel(unsigned long pixel, unsigned long mask) {
    const auto shift = std::countr_zero(mask);
    const auto bits = std::popcount(mask);
    const auto value = (pixel & mask) >> shift;
    return static_cast<std::uint8_t>(bits > 8 ? value >> (bits - 8) : value << (8 - bits));
}

} // namespace

Onlooker::Onlooker(const char* displayName) : m_display(XOpenDisplay(displayName)) {
    if (m_display == nullptr)
        throw std::runtime_error("no display");
    // Without this the test would end together with a server that it kills.
    XSetIOErrorExitHandler(
        m_display, [](Display*, void*) {}, nullptr);
}

Onlooker::~Onlooker() {
    XCloseDisplay(m_display);
}

std::vector<std::uint8_t> Onlooker::Photograph(const Rect& rect) const {
    const auto width = static_cast<unsigned>(rect.Width());
    const auto height = static_cast<unsigned>(rect.Height());
    auto* const image = XGetImage(m_display, GetRoot(), rect.left, rect.top, width, height, AllPlanes, ZPixmap);
    std::vector<std::uint8_t> pixels;
    for (unsigned y = 0; image != nullptr && y < height; ++y) {
        for (unsigned x = 0; x < width; ++x) {
            const auto pixel = XGetPixel(image, static_cast<int>(x), static_cast<int>(y));
            for (const auto mask : {image->blue_mask, image->green_mask, image->red_mask})
                pixels.push_back(Channel(pixel, mask));
        }
    }
    if (image != nullptr)
        XDestroyImage(image);
    return pixels;
}

std::vector<std::uint8_t> Onlooker::PhotographWindow(void* handle, std::uint32_t width, std::uint32_t height) const {
    auto* const image =
        XGetImage(m_display, reinterpret_cast<::Window>(handle), 0, 0, width, height, AllPlanes, ZPixmap);
    std::vector<std::uint8_t> pixels;
    if (image == nullptr)
        return pixels;
    const auto* const first = reinterpret_cast<const std::uint8_t*>(image->data);
    pixels.assign(first, first + static_cast<std::ptrdiff_t>(width) * 4 * static_cast<std::ptrdiff_t>(height));
    XDestroyImage(image);
    return pixels;
}

std::string Onlooker::GetText(void* handle, const char* property, const char* type) const {
    Atom foundType = noXid;
    int format = 0;
    unsigned long count = 0;
    unsigned long rest = 0;
    unsigned char* data = nullptr;
    XGetWindowProperty(m_display, reinterpret_cast<::Window>(handle), Intern(property), 0, 1000, 0, Intern(type),
                       &foundType, &format, &count, &rest, &data);
    std::string text;
    if (data != nullptr) {
        text.assign(reinterpret_cast<const char*>(data), count);
        XFree(data);
    }
    return text;
}

std::vector<unsigned long> Onlooker::GetNumbers(void* handle, const char* property) const {
    Atom foundType = noXid;
    int format = 0;
    unsigned long count = 0;
    unsigned long rest = 0;
    unsigned char* data = nullptr;
    XGetWindowProperty(m_display, reinterpret_cast<::Window>(handle), Intern(property), 0, 1000, 0, AnyPropertyType,
                       &foundType, &format, &count, &rest, &data);
    std::vector<unsigned long> numbers;
    if (data != nullptr) {
        const auto* const first = reinterpret_cast<const unsigned long*>(data);
        numbers.assign(first, first + count);
        XFree(data);
    }
    return numbers;
}

std::vector<::Window> Onlooker::GetStacking() const {
    ::Window root = noXid;
    ::Window parent = noXid;
    ::Window* children = nullptr;
    unsigned int count = 0;
    XQueryTree(m_display, GetRoot(), &root, &parent, &children, &count);
    std::vector<::Window> result(children, children + count);
    if (children != nullptr)
        XFree(children);
    return result;
}

bool Onlooker::MoveMouse(int x, int y) const {
    const auto call = TestCall<int (*)(Display*, int, int, int, unsigned long)>("XTestFakeMotionEvent");
    const bool isDone = call != nullptr && call(m_display, -1, x, y, 0) != 0;
    XSync(m_display, 0);
    return isDone;
}

bool Onlooker::Press(unsigned int button) const {
    return FakeButton(m_display, button, 1);
}

bool Onlooker::Release(unsigned int button) const {
    return FakeButton(m_display, button, 0);
}

bool Onlooker::PressKey(KeySym symbol) const {
    return FakeKey(m_display, symbol, 1);
}

bool Onlooker::ReleaseKey(KeySym symbol) const {
    return FakeKey(m_display, symbol, 0);
}

void Onlooker::SendProtocol(void* handle, const char* protocol) const {
    XEvent event{};
    event.xclient.type = ClientMessage;
    event.xclient.window = reinterpret_cast<::Window>(handle);
    event.xclient.message_type = Intern("WM_PROTOCOLS");
    event.xclient.format = 32;
    event.xclient.data.l[0] = static_cast<long>(Intern(protocol));
    XSendEvent(m_display, event.xclient.window, 0, NoEventMask, &event);
    XSync(m_display, 0);
}

} // namespace Quorvex::GUI
