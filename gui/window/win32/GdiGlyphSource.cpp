#include "gui/window/win32/GdiGlyphSource.h"

#include "foundation/Exception.h"
#include "foundation/Report.h"

namespace Quorvex::GUI {

namespace {

[[noreturn]] void Fail(int line, const char* name) {
    ReportFailure(line, name);
    throw Exception(line, name);
}

} // namespace

GdiGlyphSource::GdiGlyphSource(std::uint32_t cellHeight, std::uint32_t meanWidth) {
    try {
        Create(cellHeight, meanWidth);
        AskWidths();
    } catch (...) {
        Release();
        throw;
    }
}

GdiGlyphSource::~GdiGlyphSource() {
    Release();
}

void GdiGlyphSource::Create(std::uint32_t cellHeight, std::uint32_t meanWidth) {
    m_context = CreateCompatibleDC(nullptr);
    if (m_context == nullptr)
        Fail(__LINE__, "CreateCompatibleDC");
    m_font = CreateFontA(static_cast<int>(cellHeight), static_cast<int>(meanWidth), 0, 0, FW_NORMAL, FALSE, FALSE,
                         FALSE, ANSI_CHARSET, OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS, NONANTIALIASED_QUALITY,
                         DEFAULT_PITCH, "Arial");
    if (m_font == nullptr)
        Fail(__LINE__, "CreateFontA");
    m_formerFont = SelectObject(m_context, m_font);
    if (m_formerFont == nullptr)
        Fail(__LINE__, "SelectObject");
}

void GdiGlyphSource::AskWidths() {
    OUTLINETEXTMETRICA metrics{};
    metrics.otmSize = sizeof(metrics);
    if (GetOutlineTextMetricsA(m_context, sizeof(metrics), &metrics) == 0)
        Fail(__LINE__, "GetOutlineTextMetricsA");
    std::array<ABC, 256> widths{};
    if (!GetCharABCWidthsA(m_context, 0, 255, widths.data()))
        Fail(__LINE__, "GetCharABCWidthsA");
    for (std::size_t i = 0; i < widths.size(); ++i)
        m_widths[i] = {widths[i].abcA, static_cast<std::int32_t>(widths[i].abcB), widths[i].abcC};
}

BITMAPINFO GdiGlyphSource::Describe() const {
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof(info.bmiHeader);
    info.bmiHeader.biWidth = static_cast<LONG>(m_width);
    info.bmiHeader.biHeight = static_cast<LONG>(m_height);
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    return info;
}

void GdiGlyphSource::BeginBitmap(std::uint32_t width, std::uint32_t height) {
    m_width = width;
    m_height = height;
    const auto info = Describe();
    void* bits = nullptr;
    if (m_bitmap != nullptr) {
        SelectObject(m_context, m_formerBitmap);
        DeleteObject(m_bitmap);
    }
    m_bitmap = CreateDIBSection(m_context, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    if (m_bitmap == nullptr)
        Fail(__LINE__, "CreateDIBSection");
    m_formerBitmap = SelectObject(m_context, m_bitmap);
    if (m_formerBitmap == nullptr)
        Fail(__LINE__, "SelectObject");
    if (SetBkMode(m_context, TRANSPARENT) == 0)
        Fail(__LINE__, "SetBkMode");
    if (SetBkColor(m_context, 0) == CLR_INVALID)
        Fail(__LINE__, "SetBkColor");
    if (SetTextColor(m_context, 0xFFFFFF) == CLR_INVALID)
        Fail(__LINE__, "SetTextColor");
}

void GdiGlyphSource::DrawCharacter(std::uint8_t character, std::int32_t x, std::int32_t y) {
    const auto text = static_cast<char>(character);
    if (!TextOutA(m_context, x, y, &text, 1))
        Fail(__LINE__, "TextOutA");
}

std::vector<std::uint8_t> GdiGlyphSource::ReadBitmap() {
    const std::size_t rowBytes = std::size_t{m_width} * 4;
    std::vector<std::uint8_t> bottomUp(rowBytes * m_height);
    auto info = Describe();
    if (GetDIBits(m_context, m_bitmap, 0, m_height, bottomUp.data(), &info, DIB_RGB_COLORS) == 0)
        Fail(__LINE__, "GetDIBits");
    std::vector<std::uint8_t> topDown;
    topDown.reserve(bottomUp.size());
    for (std::size_t y = m_height; y-- > 0;) {
        const auto row = bottomUp.begin() + static_cast<std::ptrdiff_t>(y * rowBytes);
        topDown.insert(topDown.end(), row, row + static_cast<std::ptrdiff_t>(rowBytes));
    }
    return topDown;
}

void GdiGlyphSource::Release() {
    if (m_formerBitmap != nullptr)
        SelectObject(m_context, m_formerBitmap);
    if (m_formerFont != nullptr)
        SelectObject(m_context, m_formerFont);
    if (m_bitmap != nullptr)
        DeleteObject(m_bitmap);
    if (m_font != nullptr)
        DeleteObject(m_font);
    if (m_context != nullptr)
        DeleteDC(m_context);
}

} // namespace Quorvex::GUI
