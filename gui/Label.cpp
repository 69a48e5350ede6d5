#include "gui/Label.h"

#include "gui/Panel.h"

namespace Quorvex::GUI {

namespace {
constexpr std::uint32_t backgroundQuad = 0;
constexpr std::uint32_t firstGlyphQuad = 1;
} // namespace

Label::Color Label::GetForegroundColor() {
    return m_foregroundColor;
}

Label::Color Label::GetBackgroundColor() {
    return m_backgroundColor;
}

void Label::SetForegroundColor(const Color& color) {
    SetColor(m_foregroundColor, color);
}

void Label::SetBackgroundColor(const Color& color) {
    SetColor(m_backgroundColor, color);
}

void Label::SetColor(Color& color, const Color& newColor) {
    if (color == newColor)
        return;
    color = newColor;
    Invalidate();
}

void Label::SetText(const String& german, const String& english) {
    m_texts = {german, english};
    Invalidate();
}

void Label::SetAlignment(Alignment alignment) {
    m_alignment = alignment;
    Invalidate();
}

void Label::Invalidate() {
    cacheValid = false;
    InvalidatePanel();
}

void Label::SetRect(std::int32_t newLeft, std::int32_t newTop, std::int32_t newRight, std::int32_t newBottom) {
    // Owners that place their labels in each paint keep the quads.
    if (GetRect() != Rect{newLeft, newTop, newRight, newBottom})
        Control::SetRect(newLeft, newTop, newRight, newBottom);
}

bool Label::DeleteContextObjects() {
    m_quads.reset();
    cacheValid = false;
    return true;
}

std::int32_t Label::TextLeft(std::int32_t textWidth) const {
    switch (m_alignment) {
    case Alignment::Right:
        return right - textWidth;
    case Alignment::Centered:
        return left + (right - left - textWidth) / 2;
    case Alignment::Left:
        break;
    }
    return left;
}

void Label::CreateContextObjects() {
    Panel& panel = *GetPanel();
    const String characters = GetText().ToANSI();
    m_quads = panel.GetRenderer()->GetContext()->CreateVertexBuffer2D(firstGlyphQuad + characters.length());
    QuadWriter writer(*m_quads, backgroundQuad);
    writer.Write(GetRect(), GetBackgroundColor());
    if (!characters.IsEmpty())
        WriteGlyphs(writer, panel.GetFont(), characters);
    cacheValid = true;
}

void Label::WriteGlyphs(QuadWriter& writer, const Font& font, const String& characters) {
    const auto* codes = reinterpret_cast<const std::uint8_t*>(characters.Narrow());
    const Color color = GetForegroundColor();
    const std::int32_t textTop = top + (bottom - top - font.GetHeight()) / 2;
    std::int32_t x = TextLeft(font.GetTextWidth(characters));
    for (std::uint32_t i = 0; i < characters.length(); ++i) {
        const std::int32_t width = font.GetWidths(codes[i]).b;
        writer.Write({x, textTop, x + width, textTop + font.GetHeight()}, color, font.GetTextureRect(codes[i]));
        if (i + 1 < characters.length())
            x += font.GetAdvance(codes[i], codes[i + 1]);
    }
}

void Label::Paint() {
    const bool hasBackground = GetBackgroundColor().alpha > 0.0f && !GetRect().IsEmpty();
    const bool hasText = !GetText().IsEmpty();
    // Without text the atlas is not needed; it would delay the first frame.
    if (!hasBackground && !hasText)
        return;
    if (!cacheValid)
        CreateContextObjects();
    if (hasBackground)
        m_quads->RenderRange(backgroundQuad);
    if (hasText)
        PaintText();
}

void Label::PaintText() {
    Panel& panel = *GetPanel();
    const SharedPtr<Platform::Video::Context>& context = panel.GetRenderer()->GetContext();
    context->BindImage2D(panel.GetFont().GetAtlas(context));
    for (std::uint32_t quad = firstGlyphQuad; quad < m_quads->GetQuadCount(); ++quad)
        m_quads->RenderRange(quad);
    context->UnbindImage();
}

} // namespace Quorvex::GUI
