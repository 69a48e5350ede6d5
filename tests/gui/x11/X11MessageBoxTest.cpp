#include "gui/window/x11/X11MessageBox.h"

#include "gui/MessageBoxPicture.h"
#include "gui/Scale.h"
#include "gui/window/x11/FreeTypeGlyphSource.h"
#include "tests/foundation/posix/ScopedVariable.h"
#include "tests/gui/x11/X11Fixture.h"

#include <atomic>
#include <thread>

namespace Quorvex::GUI {
namespace {

using Quorvex::Test::ScopedVariable;

/// The window of that title, 0 while there is none that is shown.
::Window FindShown(const Onlooker& onlooker, const std::string& title) {
    for (const ::Window window : onlooker.GetStacking()) {
        XWindowAttributes attributes{};
        if (XGetWindowAttributes(onlooker.Get(), window, &attributes) != 0 && attributes.map_state == IsViewable &&
            onlooker.GetText(reinterpret_cast<void*>(window), "_NET_WM_NAME", "UTF8_STRING") == title)
            return window;
    }
    return noXid;
}

} // namespace

TEST_F(X11Fixture, AMessageBoxShowsItsTextUntilItIsClosed) {
    const ScopedVariable display("DISPLAY", VirtualDisplay::Shared().GetName());
    const String text = "Gr\xFC\xDF"
                        "e,\r\nread me.";
    const auto cellHeight = 14 * ScaleFromDpi(m_system->GetScreenDpi());
    FreeTypeGlyphSource glyphs(static_cast<std::uint32_t>(cellHeight), static_cast<std::uint32_t>(cellHeight * 5 / 14));
    const MessageBoxPicture picture(glyphs, cellHeight, cellHeight / 14, text);
    const auto wanted = WithoutAlpha(picture.Draw(picture.GetWidth(), picture.GetHeight()));
    std::atomic<bool> isRead = false;
    std::thread box([&] {
        ShowX11MessageBox(u"Read \u00FC", text);
        isRead = true;
    });
    ::Window window = noXid;
    std::vector<std::uint8_t> shown;
    for (int tries = 0; tries < 2000 && shown != wanted; ++tries) {
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
        window = FindShown(*m_onlooker, "Read \xC3\xBC");
        if (window == noXid)
            continue;
        int x = 0;
        int y = 0;
        ::Window child = noXid;
        XTranslateCoordinates(m_onlooker->Get(), window, m_onlooker->GetRoot(), 0, 0, &x, &y, &child);
        shown = m_onlooker->Photograph({x, y, x + picture.GetWidth(), y + picture.GetHeight()});
    }
    EXPECT_TRUE(shown == wanted);
    EXPECT_FALSE(isRead);
    if (window == noXid)
        window = FindShown(*m_onlooker, "Read \xC3\xBC");
    m_onlooker->SendProtocol(reinterpret_cast<void*>(window), "WM_DELETE_WINDOW");
    box.join();
    EXPECT_EQ(FindShown(*m_onlooker, "Read \xC3\xBC"), noXid);
}

TEST(X11MessageBox, WithoutADisplayGoesToStandardError) {
    const ScopedVariable display("DISPLAY", ":65534");
    testing::internal::CaptureStderr();
    ShowX11MessageBox("Varnolite", u"Gr\u00FC\u00DFe");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Varnolite: Gr\xC3\xBC\xC3\x9F"
                                                      "e\n");
}

} // namespace Quorvex::GUI
