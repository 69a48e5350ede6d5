#pragma once

#include "gui/window/x11/X11PixelFormat.h"
#include "gui/window/x11/X11SharedMemory.h"

#include <array>
#include <memory>
#include <vector>

namespace Quorvex::GUI {

/// Shows buffers in one X window: through memory shared with the server, or through the connection where that is
/// refused. Two blocks take turns, so that the next picture can be written while the server still reads the last one.
/// GUI thread.
class X11Presenter {
public:
    /// The visual must be the window's.
    X11Presenter(const X11Connection& connection, ::Window window, const X11Visual& visual);
    ~X11Presenter();
    X11Presenter(const X11Presenter&) = delete;
    X11Presenter& operator=(const X11Presenter&) = delete;

    /// 32-bit BGRA, rows top-down and pitchBytes apart; an empty picture is ignored.
    void Show(const std::uint8_t* bits, std::uint32_t width, std::uint32_t height, std::uint32_t pitchBytes,
              X11PixelFormat::Alpha alpha);
    /// Shows the last picture again if it is at hand and has that size in pixels; false if it must be drawn anew.
    bool Repeat(std::uint32_t width, std::uint32_t height);
    /// Whether the last picture is at hand.
    bool HasPicture() const { return m_hasPicture; }
    /// The server is done with a block.
    void OnCompletion(const XShmCompletionEvent& event);

    /// Makes every later presenter of the process use the connection alone, as if the server shared no memory. For
    /// tests.
    static void SetSharingAllowed(bool isAllowed);
    bool IsSharing() const { return m_isSharing; }

private:
    X11SharedMemory* TakeFreeBlock(std::size_t sizeBytes);
    void WaitForCompletion();
    bool TakeCompletion();
    bool ShowShared(const std::uint8_t* bits, std::uint32_t pitchBytes, X11PixelFormat::Alpha alpha);
    void PutShared(X11SharedMemory& block);
    void ShowThroughConnection(const std::uint8_t* bits, std::uint32_t pitchBytes, X11PixelFormat::Alpha alpha);
    void Convert(const std::uint8_t* bits, std::uint32_t pitchBytes, std::uint8_t* target, std::size_t targetPitchBytes,
                 X11PixelFormat::Alpha alpha) const;
    std::size_t RowBytes() const;

    const X11Connection& m_connection;
    ::Window m_window;
    X11Visual m_visual;
    GC m_context;
    bool m_isSharing;
    int m_completionType = 0;
    std::uint32_t m_width = 0; ///< Of the last picture.
    std::uint32_t m_height = 0;
    std::array<std::unique_ptr<X11SharedMemory>, 2> m_blocks;
    std::size_t m_current = 0;
    bool m_hasPicture = false; ///< The current block holds the last picture.
    std::vector<std::uint8_t> m_converted;
};

} // namespace Quorvex::GUI
