// Before Xlib, whose macros would swallow a name of it.
#include "tests/support/LogCapture.h"

#include "tests/gui/x11/X11Fixture.h"

namespace Quorvex::GUI {
namespace {

class X11Show : public X11Fixture {
protected:
    void TearDown() override { X11Presenter::SetSharingAllowed(true); }

    /// Shows a picture of the window's size, from rows with a gap after each.
    void ShowPicture(X11Window& window, std::uint32_t width, std::uint32_t height, std::uint32_t seed) {
        const auto bits = MakePicture(width, height, seed);
        const std::size_t rowBytes = std::size_t{width} * 4;
        const std::size_t pitch = rowBytes + 12;
        std::vector<std::uint8_t> rows(pitch * height, 0xEE);
        for (std::size_t y = 0; y < height; ++y)
            std::copy_n(bits.begin() + static_cast<std::ptrdiff_t>(y * rowBytes), rowBytes,
                        rows.begin() + static_cast<std::ptrdiff_t>(y * pitch));
        window.ShowOpaque(rows.data(), width, height, static_cast<std::uint32_t>(pitch));
        m_system->FlushComposition();
        XSync(m_system->GetConnection().Get(), 0);
    }

    void ExpectPicture(const Rect& rect, std::uint32_t seed) {
        const auto wanted = WithoutAlpha(
            MakePicture(static_cast<std::uint32_t>(rect.Width()), static_cast<std::uint32_t>(rect.Height()), seed));
        EXPECT_EQ(m_onlooker->Photograph(rect), wanted) << rect.Width() << " x " << rect.Height();
    }

    void ShowAndCompareAtOddSizes() {
        std::uint32_t seed = 1;
        for (const auto& [width, height] :
             {std::pair{1u, 1u}, {7u, 3u}, {63u, 65u}, {201u, 149u}, {333u, 5u}, {2u, 251u}}) {
            const Rect rect{40, 30, 40 + static_cast<std::int32_t>(width), 30 + static_cast<std::int32_t>(height)};
            const auto window = Create(WindowKind::Main, rect, m_events);
            window->Show();
            Settle();
            ShowPicture(*window, width, height, ++seed);
            ExpectPicture(rect, seed);
        }
    }
};

TEST_F(X11Show, TheScreenEqualsTheBufferAtOddSizes) {
    ShowAndCompareAtOddSizes();
}

TEST_F(X11Show, TheScreenEqualsTheBufferWithoutSharedMemory) {
    X11Presenter::SetSharingAllowed(false);
    ShowAndCompareAtOddSizes();
}

TEST_F(X11Show, ManyPicturesInARowEndWithTheLast) {
    const Rect rect{10, 10, 410, 310};
    const auto window = Create(WindowKind::Main, rect, m_events);
    window->Show();
    Settle();
    for (std::uint32_t seed = 1; seed <= 60; ++seed)
        ShowPicture(*window, 400, 300, seed);
    ExpectPicture(rect, 60);
}

TEST_F(X11Show, PicturesFollowAResize) {
    const auto window = Create(WindowKind::Main, {10, 10, 110, 90}, m_events);
    window->Show();
    Settle();
    std::uint32_t seed = 100;
    for (const std::int32_t side : {101, 260, 17, 400, 399}) {
        const Rect rect{10, 10, 10 + side, 10 + side};
        window->SetClientRect(rect);
        ShowPicture(*window, static_cast<std::uint32_t>(side), static_cast<std::uint32_t>(side), ++seed);
        ExpectPicture(rect, seed);
    }
}

TEST_F(X11Show, AnUncoveredWindowShowsItsPictureAgainWithoutAPaint) {
    const Rect rect{10, 10, 110, 90};
    const auto window = Create(WindowKind::Main, rect, m_events);
    window->Show();
    Settle();
    ShowPicture(*window, 100, 80, 5);
    m_events.Clear();
    const auto cover = Create(WindowKind::Panel, {0, 0, 60, 60}, m_panelEvents);
    cover->Show();
    Settle();
    cover->Hide();
    Settle();
    EXPECT_FALSE(m_events.Has("paint"));
    ExpectPicture(rect, 5);
}

TEST_F(X11Show, WithoutSharedMemoryAnUncoveredWindowIsPainted) {
    X11Presenter::SetSharingAllowed(false);
    const auto window = Create(WindowKind::Main, {10, 10, 110, 90}, m_events);
    window->Show();
    Settle();
    ShowPicture(*window, 100, 80, 5);
    m_events.Clear();
    const auto cover = Create(WindowKind::Panel, {0, 0, 60, 60}, m_panelEvents);
    cover->Show();
    Settle();
    cover->Hide();
    EXPECT_TRUE(DispatchUntil([&] { return m_events.Has("paint"); }));
}

TEST_F(X11Show, APictureDrawnBeforeTheWindowAppearsIsNotLost) {
    const Rect rect{20, 20, 121, 121};
    const auto window = Create(WindowKind::Main, rect, m_events);
    ShowPicture(*window, 101, 101, 9);
    window->Show();
    Settle();
    EXPECT_FALSE(m_events.Has("paint"));
    ExpectPicture(rect, 9);
}

TEST_F(X11Show, AnEmptyPictureIsIgnored) {
    const Quorvex::Test::LogCapture log;
    const Rect rect{10, 10, 20, 20};
    const auto window = Create(WindowKind::Main, rect, m_events);
    window->Show();
    Settle();
    ShowPicture(*window, 10, 10, 4);
    const std::uint8_t pixel[4]{};
    window->ShowOpaque(pixel, 0, 1, 0);
    window->ShowOpaque(pixel, 1, 0, 4);
    Settle();
    ExpectPicture(rect, 4);
    EXPECT_TRUE(log.IsEmpty()) << log.Text();
}

TEST_F(X11Show, AScreenOfFiveSixFiveShowsTheNearestColours) {
    VirtualDisplay display("400x300x16");
    ASSERT_TRUE(display.IsRunning());
    Connect(display);
    const auto window = Create(WindowKind::Main, {0, 0, 201, 33}, m_events);
    window->Show();
    Settle();
    ShowPicture(*window, 201, 33, 3);
    const auto wanted = WithoutAlpha(MakePicture(201, 33, 3));
    const auto seen = m_onlooker->Photograph({0, 0, 201, 33});
    ASSERT_EQ(seen.size(), wanted.size());
    for (std::size_t i = 0; i < seen.size(); ++i) {
        const int levels = i % 3 == 1 ? 63 : 31;
        const int level = seen[i] >> (i % 3 == 1 ? 2 : 3);
        ASSERT_EQ(level, (wanted[i] * levels + 127) / 255) << "byte " << i;
    }
}

} // namespace
} // namespace Quorvex::GUI
