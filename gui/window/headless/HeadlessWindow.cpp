#include "gui/window/headless/HeadlessWindow.h"

#include "foundation/Report.h"
#include "gui/window/headless/HeadlessWindowSystem.h"

#include <cstring>

namespace Quorvex::GUI {

HeadlessWindow::HeadlessWindow(HeadlessWindowSystem& system, WindowKind kind, const Rect& clientRect,
                               const String& title, IWindowEvents& events)
    : m_system(system), m_kind(kind), m_clientRect(clientRect), m_title(title), m_events(events),
      m_identifier(system.Register(*this)) {}

HeadlessWindow::~HeadlessWindow() {
    Destroy();
    m_system.Unregister(*this);
}

void HeadlessWindow::Destroy() {
    if (m_isDestroyed)
        return;
    m_isDestroyed = true;
    m_isVisible = false;
    m_isInvalid = false;
    m_events.OnDestroyed();
}

void HeadlessWindow::ShowOpaque(const std::uint8_t* bits, std::uint32_t width, std::uint32_t height,
                                std::uint32_t pitchBytes) {
    Keep(bits, width, height, pitchBytes, false);
}

void HeadlessWindow::ShowWithAlpha(const std::uint8_t* bits, std::uint32_t width, std::uint32_t height,
                                   std::uint32_t pitchBytes) {
    Keep(bits, width, height, pitchBytes, true);
}

void HeadlessWindow::Keep(const std::uint8_t* bits, std::uint32_t width, std::uint32_t height, std::uint32_t pitchBytes,
                          bool hasAlpha) {
    const std::size_t rowBytes = std::size_t{width} * 4;
    m_picture.width = width;
    m_picture.height = height;
    m_picture.hasAlpha = hasAlpha;
    m_picture.bits.resize(rowBytes * height);
    for (std::size_t y = 0; y < height && rowBytes != 0; ++y)
        std::memcpy(m_picture.bits.data() + y * rowBytes, bits + y * pitchBytes, rowBytes);
    ++m_showCount;
}

void HeadlessWindow::DispatchMouseMessagesAndHide() {
    m_system.DispatchMouseMessages();
    Hide();
}

bool HeadlessWindow::IsCompositionEnabled() const {
    return m_system.Desktop().isCompositionEnabled;
}

void HeadlessWindow::SetClientRect(const Rect& rect) {
    if (m_isDestroyed || rect == m_clientRect)
        return;
    const bool isSized = rect.Width() != m_clientRect.Width() || rect.Height() != m_clientRect.Height();
    m_clientRect = rect;
    // A minimised window takes its place when it is restored.
    if (m_isIconic)
        return;
    if (isSized && m_isVisible)
        m_isInvalid = true;
    m_events.OnMovedOrSized(false);
}

void HeadlessWindow::Show() {
    if (m_isDestroyed || m_isVisible)
        return;
    m_isVisible = true;
    m_isInvalid = true;
    if (m_kind == WindowKind::Main)
        Activate();
}

void HeadlessWindow::Hide() {
    if (!m_isVisible)
        return;
    m_isVisible = false;
    m_isInvalid = false;
    if (m_system.GetActiveWindow() == this)
        m_system.SetActiveWindow(m_owner);
}

void HeadlessWindow::Activate() {
    if (m_isDestroyed || !m_isVisible || !m_isEnabled)
        return;
    m_system.BringToFront(*this);
    m_system.SetActiveWindow(this);
}

void HeadlessWindow::BringToFront() {
    m_system.BringToFront(*this);
}

void HeadlessWindow::SetEnabled(bool isEnabled) {
    if (isEnabled == m_isEnabled || m_isDestroyed)
        return;
    // The platform takes the mouse away from a window before it becomes deaf.
    if (!isEnabled)
        m_events.OnCancelMode();
    m_isEnabled = isEnabled;
    m_events.OnEnabled(isEnabled);
}

void HeadlessWindow::SetOwner(IPlatformWindow* owner) {
    m_owner = static_cast<HeadlessWindow*>(owner);
    if (m_owner != nullptr)
        m_system.BringToFront(*this);
}

void HeadlessWindow::ForgetOwner(const HeadlessWindow& owner) {
    if (m_owner == &owner)
        m_owner = nullptr;
}

bool HeadlessWindow::SetLayered(bool isLayered) {
    m_isLayered = isLayered && m_system.Desktop().allowsLayered;
    return m_isLayered == isLayered;
}

void HeadlessWindow::Flash(std::uint32_t count, std::uint32_t) {
    m_flashes.push_back(count);
}

bool HeadlessWindow::Invalidate() {
    if (m_system.Desktop().refusesInvalidate) {
        ReportFailure(__LINE__, "InvalidateRect");
        return false;
    }
    // Nothing shows of a hidden or minimised window; it is painted as a whole when it appears.
    m_isInvalid = m_isVisible && !m_isIconic;
    return true;
}

void HeadlessWindow::PaintNow() {
    if (m_isDestroyed)
        return;
    m_isInvalid = false;
    m_events.OnPaint();
}

void HeadlessWindow::Post(std::uint32_t number, std::uintptr_t wParam, std::intptr_t lParam) {
    m_system.Enqueue(m_identifier, [=](HeadlessWindow& window) {
        if (number == UserMessage::Invalidate)
            window.Invalidate();
        else
            window.GetEvents().OnUserMessage(number, wParam, lParam);
    });
}

bool HeadlessWindow::IsHit(std::int32_t x, std::int32_t y) const {
    return m_isVisible && !m_isIconic && m_clientRect.Contains(x, y);
}

void HeadlessWindow::SetIconic(bool isIconic) {
    if (isIconic == m_isIconic || m_isDestroyed)
        return;
    m_isIconic = isIconic;
    m_isInvalid = !isIconic && m_isVisible;
    m_events.OnMovedOrSized(isIconic);
}

} // namespace Quorvex::GUI
