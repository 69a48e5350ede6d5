#include "gui/window/win32/Win32Presenter.h"

#include "foundation/Report.h"
#include "foundation/platform/win32/SystemCalls.h"

#include <cstring>
#include <vector>

namespace Quorvex::GUI {

namespace {

/// Rows top-down; a row may be longer than what of it is shown.
BITMAPINFO Describe(std::uint32_t rowPixels, std::uint32_t height) {
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof(info.bmiHeader);
    info.bmiHeader.biWidth = static_cast<LONG>(rowPixels);
    info.bmiHeader.biHeight = -static_cast<LONG>(height);
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    info.bmiHeader.biSizeImage = rowPixels * height * 4;
    return info;
}

std::vector<std::uint8_t> WithoutGaps(const std::uint8_t* bits, std::uint32_t width, std::uint32_t height,
                                      std::uint32_t pitchBytes) {
    const std::size_t rowBytes = std::size_t{width} * 4;
    std::vector<std::uint8_t> packed(rowBytes * height);
    for (std::size_t y = 0; y < height; ++y)
        std::memcpy(packed.data() + y * rowBytes, bits + y * pitchBytes, rowBytes);
    return packed;
}

void UpdateLayered(HWND window, HDC source, std::uint32_t width, std::uint32_t height) {
    const auto update = Platform::GetUserCalls().updateLayeredWindow;
    if (update == nullptr)
        return;
    POINT origin{0, 0};
    SIZE size{static_cast<LONG>(width), static_cast<LONG>(height)};
    BLENDFUNCTION blend{AC_SRC_OVER, 0, 255, AC_SRC_ALPHA};
    if (!update(window, nullptr, nullptr, &size, source, &origin, 0, &blend, ULW_ALPHA))
        ReportFailure(__LINE__, "UpdateLayeredWindow");
}

} // namespace

void ShowBuffer(HWND window, const std::uint8_t* bits, std::uint32_t width, std::uint32_t height,
                std::uint32_t pitchBytes) {
    if (width == 0 || height == 0)
        return;
    const HDC context = GetDC(window);
    if (context == nullptr) {
        ReportFailure(__LINE__, "GetDC");
        return;
    }
    const auto info = Describe(pitchBytes / 4, height);
    if (SetDIBitsToDevice(context, 0, 0, width, height, 0, 0, 0, height, bits, &info, DIB_RGB_COLORS) == 0)
        ReportFailure(__LINE__, "SetDIBitsToDevice");
    if (ReleaseDC(window, context) == 0)
        ReportFailure(__LINE__, "ReleaseDC");
}

void ShowBufferWithAlpha(HWND window, const std::uint8_t* bits, std::uint32_t width, std::uint32_t height,
                         std::uint32_t pitchBytes) {
    if (width == 0 || height == 0)
        return;
    const HDC context = CreateCompatibleDC(nullptr);
    if (context == nullptr)
        ReportFailure(__LINE__, "CreateCompatibleDC");
    const auto info = Describe(width, height);
    void* memory = nullptr;
    const HBITMAP bitmap = CreateDIBSection(context, &info, DIB_RGB_COLORS, &memory, nullptr, 0);
    if (bitmap == nullptr)
        ReportFailure(__LINE__, "CreateCompatibleBitmap");
    const HGDIOBJ former = SelectObject(context, bitmap);
    if (former == nullptr)
        ReportFailure(__LINE__, "SelectObject");
    const auto packed = WithoutGaps(bits, width, height, pitchBytes);
    if (SetBitmapBits(bitmap, static_cast<DWORD>(packed.size()), packed.data()) == 0)
        ReportFailure(__LINE__, "SetBitmapBits");
    UpdateLayered(window, context, width, height);
    if (former != nullptr)
        SelectObject(context, former);
    if (!DeleteObject(bitmap))
        ReportFailure(__LINE__, "DeleteObject");
    if (!DeleteDC(context))
        ReportFailure(__LINE__, "DeleteDC");
}

} // namespace Quorvex::GUI
