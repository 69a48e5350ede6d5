#pragma once

#include "app/VarnoliteMainFrame.h"
#include "gui/Win32Window.h"
#include "gui/window/headless/HeadlessUser.h"
#include "tests/support/LogCapture.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace Quorvex::App::Test {

using Pixel = Data::ColorBGRA<std::uint8_t>;

/// A bitmap of 24 bits with a colour of its own for each pixel of up to 256 x 256.
std::string MakeBitmap(std::int32_t width, std::int32_t height);
/// The colour of its pixel.
Pixel BitmapPixel(std::int32_t x, std::int32_t y);

/// The whole program on windows in memory: a test plays the user, and reads what the window shows.
class ProgramTest : public testing::Test {
protected:
    ProgramTest();
    ~ProgramTest() override;

    /// Lets the program work until nothing waits and no load runs.
    void Settle();
    void Open(const String& path);
    String Write(const std::string& name, const std::string& bytes);
    /// Places the main window's client area at the desktop's origin.
    void Resize(std::int32_t width, std::int32_t height);
    /// Turns the wheel by notches over the middle of the window.
    void TurnWheel(int notches);
    /// Far enough down, then 32 notches up: exactly 100 %.
    void ZoomTo100Percent();

    GUI::HeadlessWindow& Window() { return *system.GetWindows().front(); }
    VarnoliteApplication& Application() { return frame->GetApplication(); }
    View::Varnolite& View() { return Application().GetView(); }
    std::string Title() { return Window().GetTitle().ToUTF8().ToStdString(); }
    std::string LabelText() { return View().GetLabelText().ToUTF8().ToStdString(); }
    Pixel ShownPixel(std::int32_t x, std::int32_t y);
    /// Compares the picture with the bitmap magnified by a whole factor; the rest must be background.
    void ExpectMagnified(std::int32_t width, std::int32_t height, std::int32_t factor);

    Quorvex::Test::TemporaryFolder folder;
    Quorvex::Test::LogCapture log;
    GUI::HeadlessWindowSystem system;
    GUI::HeadlessUser user{system};
    std::unique_ptr<VarnoliteMainFrame> frame;
};

} // namespace Quorvex::App::Test
