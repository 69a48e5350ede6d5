#include "gui/Scale.h"
#include "gui/ViewerStyle.h"
#include "tests/gui/GuiFixture.h"
#include "tests/gui/RecordingContext.h"

namespace Quorvex::GUI::Test {
namespace {

constexpr Color none{0.0f, 0.0f, 0.0f, 0.0f};
constexpr Color black{0.0f, 0.0f, 0.0f, 1.0f};
constexpr Color white{1.0f, 1.0f, 1.0f, 1.0f};
constexpr Color translucent{0.1f, 0.1f, 0.1f, 0.67f};
constexpr Color grey70{0.7f, 0.7f, 0.7f, 1.0f};
constexpr Color grey50{0.5f, 0.5f, 0.5f, 1.0f};

TEST(ViewerStyle, AnswersByItsTable) {
    const ViewerStyle style;
    const std::vector<std::pair<Color, Color>> table{
        {style.GetButtonBackgroundColor(), none},
        {style.GetButtonTextColor(), white},
        {style.GetButtonFrameLeftColor(), none},
        {style.GetButtonFrameTopColor(), none},
        {style.GetButtonHoverTextColor(), white},
        {style.GetButtonFrameRightColor(), none},
        {style.GetButtonFrameBottomColor(), none},
        {style.GetEditBackgroundColor(), black},
        {style.GetRowTextColor(), white},
        {style.GetListFrameColor(), grey50},
        {style.GetRowBackgroundColor(), black},
        {style.GetEditTextColor(), white},
        {style.GetHoveredRowTextColor(), grey70},
        {style.GetHoveredRowBackgroundColor(), black},
        {style.GetToolbarBackgroundColor(), none},
        {style.GetToolbarTextColor(), white},
        {style.GetPanelBackgroundColor(), translucent},
        {style.GetPanelTitleColor(), {0.0f, 0.0f, 0.0f, 0.67f}},
        {style.GetToolPanelBackgroundColor(), translucent},
        {style.GetInactivePanelTitleColor(), {0.2f, 0.2f, 0.2f, 0.67f}},
        {style.GetDialogBackgroundColor(), translucent},
        {style.GetTooltipBackgroundColor(), translucent},
        {style.GetTooltipTextColor(), {1.0f, 1.0f, 1.0f, 0.75f}},
        {style.GetStatusBackgroundColor(), translucent},
        {style.GetStatusTextColor(), white},
        {style.GetSliderColor(), grey70},
        {style.GetSliderGrooveColor(), {0.3f, 0.3f, 0.3f, 1.0f}},
        {style.GetScrollBarBackgroundColor(), none},
        {style.GetSelectionColor(), {0.88f, 1.0f, 1.0f, 1.0f}},
        {style.GetSelectionTextColor(), black},
        {style.GetDisabledTextColor(), grey50},
        {style.GetScrollBarColor(), grey70},
    };
    for (std::size_t i = 0; i < table.size(); ++i)
        EXPECT_EQ(table[i].first, table[i].second) << "row " << i;
}

TEST(ViewerStyle, ItsOpaqueFormDiffersInThreeColours) {
    const ViewerStyle style;
    const SharedPtr<Style> opaque = style.CreateStyleWithOpaquePanelBackground();
    ASSERT_TRUE(opaque);
    EXPECT_EQ(opaque->GetPanelBackgroundColor(), (Color{0.245588f, 0.243f, 0.243f, 1.0f}));
    EXPECT_EQ(opaque->GetPanelTitleColor(), (Color{0.312588f, 0.31f, 0.31f, 1.0f}));
    EXPECT_EQ(opaque->GetInactivePanelTitleColor(), (Color{0.178588f, 0.176f, 0.176f, 1.0f}));
    EXPECT_EQ(opaque->GetToolPanelBackgroundColor(), opaque->GetPanelBackgroundColor());
    EXPECT_EQ(opaque->GetDialogBackgroundColor(), opaque->GetPanelBackgroundColor());
    EXPECT_EQ(opaque->GetTooltipBackgroundColor(), translucent);
    EXPECT_EQ(opaque->GetStatusBackgroundColor(), translucent);
}

/// A buffer for a double frame, in which each quad's colour tells its side: red 1 left, 2 top, 3 right, 4 bottom.
class FrameTest : public testing::Test {
protected:
    FrameTest() : context(new RecordingContext(calls)), buffer(context.get(), 8) {}
    ~FrameTest() override { SetScale(1); }

    static Color Side(int side) { return {0.0f, 0.0f, static_cast<float>(side) / 255.0f + 0.001f, 1.0f}; }
    struct Quad {
        int side;
        Rect rect;
        bool operator==(const Quad&) const = default;
        friend void PrintTo(const Quad& quad, std::ostream* stream) {
            *stream << "side " << quad.side << " at ";
            *stream << quad.rect.left << "," << quad.rect.top << " to " << quad.rect.right << "," << quad.rect.bottom;
        }
    };
    std::vector<Quad> Drawn() const {
        std::vector<Quad> quads;
        for (std::uint32_t i = 0; i < count; ++i) {
            const auto& first = buffer.vertices[i * 6];
            const auto& opposite = buffer.vertices[i * 6 + 2];
            quads.push_back({first.r,
                             {static_cast<int>(first.x), static_cast<int>(first.y), static_cast<int>(opposite.x),
                              static_cast<int>(opposite.y)}});
        }
        return quads;
    }
    template <class Draw>
    void DrawWith(const Draw& draw) {
        QuadWriter writer(buffer);
        draw(writer);
        count = writer.GetNextQuad();
    }

    const FrameColors colors{Side(1), Side(2), Side(3), Side(4)};
    const Rect rect{10, 20, 30, 50};
    const std::vector<Quad> ring{
        {2, {10, 20, 30, 21}}, {4, {10, 49, 30, 50}}, {1, {10, 21, 11, 49}}, {3, {29, 21, 30, 49}}};
    Calls calls;
    SharedPtr<RecordingContext> context;
    RecordingVertexBuffer buffer;
    std::uint32_t count = 0;
    ViewerStyle style;
};

TEST_F(FrameTest, AFrameIsARingOfFourQuadsThatDoNotOverlap) {
    DrawWith([&](QuadWriter& writer) { style.DrawEditFrame(writer, rect, colors); });
    EXPECT_EQ(Drawn(), ring);
    DrawWith([&](QuadWriter& writer) { style.DrawListFrame(writer, rect, colors); });
    EXPECT_EQ(Drawn(), ring);
    DrawWith([&](QuadWriter& writer) { style.DrawPanelFrame(writer, rect, colors); });
    EXPECT_EQ(Drawn(), ring);
}

TEST_F(FrameTest, APressedFrameHasTheColoursOfTheOppositeSides) {
    DrawWith([&](QuadWriter& writer) { style.DrawPressedButtonFrame(writer, rect, colors); });
    EXPECT_EQ(Drawn(),
              (std::vector<Quad>{
                  {4, {10, 20, 30, 21}}, {2, {10, 49, 30, 50}}, {3, {10, 21, 11, 49}}, {1, {29, 21, 30, 49}}}));
}

TEST_F(FrameTest, DoubleFramesHaveASecondRingWithin) {
    DrawWith([&](QuadWriter& writer) { style.DrawRaisedFrame(writer, rect, colors); });
    ASSERT_EQ(count, 8u);
    EXPECT_EQ(Drawn()[4], (Quad{2, {11, 21, 29, 22}}));
    DrawWith([&](QuadWriter& writer) { style.DrawSunkenFrame(writer, rect, colors); });
    ASSERT_EQ(count, 8u);
    EXPECT_EQ(Drawn()[0].side, 4);
    EXPECT_EQ(Drawn()[7], (Quad{1, {28, 22, 29, 48}}));
}

TEST_F(FrameTest, AFrameIsAsWideAsTheScale) {
    SetScale(4);
    DrawWith([&](QuadWriter& writer) { style.DrawEditFrame(writer, rect, colors); });
    EXPECT_EQ(Drawn()[0].rect, (Rect{10, 20, 30, 24}));
    EXPECT_EQ(Drawn()[3].rect, (Rect{26, 24, 30, 46}));
}

TEST_F(FrameTest, TheButtonFrameTakesTheStylesFourColours) {
    class Coloured : public ViewerStyle {
    public:
        Color GetButtonFrameLeftColor() const override { return Side(1); }
        Color GetButtonFrameTopColor() const override { return Side(2); }
        Color GetButtonFrameRightColor() const override { return Side(3); }
        Color GetButtonFrameBottomColor() const override { return Side(4); }
    };
    DrawWith([&](QuadWriter& writer) { Coloured().DrawButtonFrame(writer, rect); });
    EXPECT_EQ(Drawn(), ring);
}

TEST_F(FrameTest, AQuadHasItsVerticesInTheOrderThatRenderersFillExactly) {
    DrawWith([&](QuadWriter& writer) { writer.Write(rect, {0.25f, 0.5f, 0.75f, 1.0f}, {0.1f, 0.2f, 0.3f, 0.4f}); });
    const std::pair<int, int> corners[] = {{10, 20}, {30, 20}, {30, 50}, {10, 20}, {30, 50}, {10, 50}};
    for (int i = 0; i < 6; ++i) {
        const auto& vertex = buffer.vertices[i];
        EXPECT_EQ(vertex.x, corners[i].first) << i;
        EXPECT_EQ(vertex.y, corners[i].second) << i;
        EXPECT_EQ(vertex.u, corners[i].first == 10 ? 0.1f : 0.3f) << i;
        EXPECT_EQ(vertex.v, corners[i].second == 20 ? 0.2f : 0.4f) << i;
        EXPECT_EQ(vertex.b, 63) << i;
        EXPECT_EQ(vertex.g, 127) << i;
        EXPECT_EQ(vertex.r, 191) << i;
        EXPECT_EQ(vertex.a, 255) << i;
    }
    EXPECT_EQ(buffer.unlockCount, 1);
}

TEST_F(FrameTest, TheGuiHandsOutOneStyle) {
    HeadlessWindowSystem system;
    TestGUI gui(system, calls);
    EXPECT_EQ(gui.GetStyle()->GetPanelBackgroundColor(), translucent);
    const SharedPtr<Style> other(new ViewerStyleWithOpaquePanelBackground());
    gui.SetStyle(other);
    EXPECT_EQ(gui.GetStyle(), other);
}

} // namespace
} // namespace Quorvex::GUI::Test
