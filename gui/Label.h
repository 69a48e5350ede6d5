#pragma once

#include "data/ColorBGRA.h"
#include "foundation/BilingualText.h"
#include "foundation/SharedPtr.h"
#include "gui/Control.h"
#include "video/VertexBuffer2D.h"

namespace Quorvex::GUI {

class Font;
class QuadWriter;

/// One line of text in the language of the program, centred vertically in its rectangle. A text wider than the
/// rectangle runs over. The quads are kept until text, colours or rectangle change.
class Label : public Control {
public:
    enum class Alignment : std::uint32_t { Left = 0, Right = 1, Centered = 2 };
    using Color = Data::ColorBGRA<float>;

    void Paint() override;
    bool DeleteContextObjects() override;
    void CreateContextObjects() override;
    void SetRect(std::int32_t newLeft, std::int32_t newTop, std::int32_t newRight, std::int32_t newBottom) override;

    /// Straight colours, channels 0 to 1; opaque white at first.
    virtual Color GetForegroundColor();
    /// The rectangle behind the text; at first transparent.
    virtual Color GetBackgroundColor();
    /// An equal colour changes nothing and costs no paint.
    void SetForegroundColor(const Color& color);
    void SetBackgroundColor(const Color& color);

    void SetText(const String& german, const String& english);
    /// A text free of language.
    void SetText(const String& text) { SetText(text, text); }
    /// The text in the present language.
    const String& GetText() const { return InCurrentLanguage(m_texts); }
    const BilingualText& GetTexts() const { return m_texts; }
    void SetAlignment(Alignment alignment);

private:
    void SetColor(Color& color, const Color& newColor);
    void Invalidate();
    std::int32_t TextLeft(std::int32_t textWidth) const;
    void PaintText();
    void WriteGlyphs(QuadWriter& writer, const Font& font, const String& characters);

    BilingualText m_texts;
    Alignment m_alignment = Alignment::Left;
    Color m_foregroundColor{1.0f, 1.0f, 1.0f, 1.0f};
    Color m_backgroundColor{};
    /// Quad 0 is the background, the others are the characters.
    SharedPtr<Platform::Video::VertexBuffer2D> m_quads;
};

} // namespace Quorvex::GUI
