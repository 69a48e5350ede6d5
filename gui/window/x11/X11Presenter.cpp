#include "gui/window/x11/X11Presenter.h"

#include "foundation/Report.h"

#include <poll.h>

namespace Quorvex::GUI {

namespace {

bool isSharingAllowed = true;

/// Rows of an image in Xlib's plain format begin at multiples of four bytes.
std::size_t PaddedRowBytes(std::size_t width, std::uint32_t bitsPerPixel) {
    return (width * bitsPerPixel / 8 + 3) / 4 * 4;
}

} // namespace

X11Presenter::X11Presenter(const X11Connection& connection, ::Window window, const X11Visual& visual)
    : m_connection(connection), m_window(window), m_visual(visual),
      m_context(XCreateGC(connection.Get(), window, 0, nullptr)),
      m_isSharing(isSharingAllowed && connection.IsLocal() && XShmQueryExtension(connection.Get()) != 0) {
    if (m_isSharing)
        m_completionType = XShmGetEventBase(connection.Get()) + ShmCompletion;
}

X11Presenter::~X11Presenter() {
    if (m_connection.IsGone())
        XFree(m_context);
    else
        XFreeGC(m_connection.Get(), m_context);
}

void X11Presenter::SetSharingAllowed(bool isAllowed) {
    isSharingAllowed = isAllowed;
}

std::size_t X11Presenter::RowBytes() const {
    return PaddedRowBytes(m_width, m_visual.format.GetBitsPerPixel());
}

void X11Presenter::Show(const std::uint8_t* bits, std::uint32_t width, std::uint32_t height, std::uint32_t pitchBytes,
                        X11PixelFormat::Alpha alpha) {
    if (width == 0 || height == 0 || m_connection.IsGone())
        return;
    m_width = width;
    m_height = height;
    m_hasPicture = false;
    if (m_isSharing && ShowShared(bits, pitchBytes, alpha))
        return;
    if (!m_connection.IsGone())
        ShowThroughConnection(bits, pitchBytes, alpha);
}

void X11Presenter::Convert(const std::uint8_t* bits, std::uint32_t pitchBytes, std::uint8_t* target,
                           std::size_t targetPitchBytes, X11PixelFormat::Alpha alpha) const {
    for (std::size_t y = 0; y < m_height; ++y)
        m_visual.format.ConvertRow(bits + y * pitchBytes, target + y * targetPitchBytes, m_width, alpha);
}

bool X11Presenter::ShowShared(const std::uint8_t* bits, std::uint32_t pitchBytes, X11PixelFormat::Alpha alpha) {
    auto* const block = TakeFreeBlock(RowBytes() * m_height);
    // To wait for a block, or to share a new one, may be the first to notice that the display has gone.
    if (m_connection.IsGone())
        return false;
    if (block == nullptr) {
        m_isSharing = false;
        return false;
    }
    Convert(bits, pitchBytes, block->GetBytes(), RowBytes(), alpha);
    PutShared(*block);
    m_hasPicture = true;
    return true;
}

void X11Presenter::PutShared(X11SharedMemory& block) {
    auto* const image = XShmCreateImage(m_connection.Get(), m_visual.visual, static_cast<unsigned>(m_visual.depth),
                                        ZPixmap, block.GetSegment().shmaddr, &block.GetSegment(), m_width, m_height);
    if (image == nullptr) {
        ReportFailure(__LINE__, "XShmCreateImage", 0);
        return;
    }
    if (XShmPutImage(m_connection.Get(), m_window, m_context, image, 0, 0, 0, 0, m_width, m_height, 1) != 0)
        block.BeginPut();
    else
        ReportFailure(__LINE__, "XShmPutImage", 0);
    // The pixels are the block's, not the image's.
    image->data = nullptr;
    XDestroyImage(image);
}

bool X11Presenter::Repeat(std::uint32_t width, std::uint32_t height) {
    if (!m_hasPicture || width != m_width || height != m_height || m_connection.IsGone())
        return false;
    PutShared(*m_blocks[m_current]);
    return true;
}

X11SharedMemory* X11Presenter::TakeFreeBlock(std::size_t sizeBytes) {
    const auto other = 1 - m_current;
    // The second block is made only once the server falls behind.
    if (m_blocks[m_current] && m_blocks[m_current]->IsBusy()) {
        m_current = other;
        while (m_blocks[m_current] && m_blocks[m_current]->IsBusy())
            WaitForCompletion();
    }
    auto& block = m_blocks[m_current];
    if (!block)
        block = std::make_unique<X11SharedMemory>(m_connection);
    return block->Reserve(sizeBytes) ? block.get() : nullptr;
}

bool X11Presenter::TakeCompletion() {
    XEvent event;
    if (XCheckTypedWindowEvent(m_connection.Get(), m_window, m_completionType, &event) == 0)
        return false;
    OnCompletion(reinterpret_cast<const XShmCompletionEvent&>(event));
    return true;
}

void X11Presenter::WaitForCompletion() {
    // Far beyond what a server needs to copy a picture: after this the answer was lost, and waiting on would hang.
    constexpr int longestWaitMilliseconds = 2000;
    while (!TakeCompletion()) {
        pollfd readable{m_connection.GetDescriptor(), POLLIN, 0};
        if (!m_connection.IsGone() && poll(&readable, 1, longestWaitMilliseconds) > 0)
            continue;
        for (const auto& block : m_blocks) {
            if (block)
                block->ForgetPuts();
        }
        return;
    }
}

void X11Presenter::OnCompletion(const XShmCompletionEvent& event) {
    for (const auto& block : m_blocks) {
        if (block && block->GetSegment().shmseg == event.shmseg)
            block->EndPut();
    }
}

void X11Presenter::ShowThroughConnection(const std::uint8_t* bits, std::uint32_t pitchBytes,
                                         X11PixelFormat::Alpha alpha) {
    const bool isReady =
        m_visual.format.IsBgra() && !(m_visual.format.HasAlpha() && alpha == X11PixelFormat::Alpha::Opaque);
    auto rowBytes = std::size_t{pitchBytes};
    if (!isReady) {
        rowBytes = RowBytes();
        m_converted.resize(rowBytes * m_height);
        Convert(bits, pitchBytes, m_converted.data(), rowBytes, alpha);
        bits = m_converted.data();
    }
    auto* const image = XCreateImage(m_connection.Get(), m_visual.visual, static_cast<unsigned>(m_visual.depth),
                                     ZPixmap, 0, reinterpret_cast<char*>(const_cast<std::uint8_t*>(bits)), m_width,
                                     m_height, 32, static_cast<int>(rowBytes));
    if (image == nullptr) {
        ReportFailure(__LINE__, "XCreateImage", 0);
        return;
    }
    XPutImage(m_connection.Get(), m_window, m_context, image, 0, 0, 0, 0, m_width, m_height);
    image->data = nullptr;
    XDestroyImage(image);
}

} // namespace Quorvex::GUI
