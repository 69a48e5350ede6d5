#include "gui/Capture.h"

#include "gui/window/headless/HeadlessWindowSystem.h"
#include "tests/gui/RecordingControl.h"
#include "tests/gui/RecordingEvents.h"
#include "tests/support/LogCapture.h"

#include <gtest/gtest.h>

namespace Quorvex::GUI::Test {
namespace {

class CaptureTest : public testing::Test {
protected:
    std::unique_ptr<IPlatformWindow> MakeWindow() {
        return system.CreatePlatformWindow(WindowKind::Panel, {0, 0, 10, 10}, "", events);
    }

    Quorvex::Test::LogCapture log;
    Calls calls;
    RecordingEvents events;
    HeadlessWindowSystem system;
    std::unique_ptr<IPlatformWindow> window = MakeWindow();
    std::unique_ptr<IPlatformWindow> other = MakeWindow();
    Capture capture{system};
    RecordingControl control{"control", calls};
};

TEST_F(CaptureTest, TakesAndReleasesTheMouse) {
    capture.Take(*window);
    EXPECT_EQ(system.GetCapture(), window.get());
    EXPECT_TRUE(capture.IsHeldBy(*window));
    EXPECT_FALSE(capture.IsHeldBy(*other));
    capture.Release();
    EXPECT_EQ(system.GetCapture(), nullptr);
    EXPECT_FALSE(capture.IsHeldBy(*window));
    EXPECT_TRUE(log.IsEmpty());
}

TEST_F(CaptureTest, ReleasingWithoutHoldingDoesNothing) {
    system.SetCapture(*other);
    capture.Release();
    EXPECT_EQ(system.GetCapture(), other.get());
    EXPECT_TRUE(log.IsEmpty());
}

TEST_F(CaptureTest, AMouseThatWasLostInBetweenIsLogged) {
    capture.Take(*window);
    system.ReleaseCapture();
    capture.Release();
    EXPECT_TRUE(log.HasLineEndingIn("Capture")) << log.Text();
    EXPECT_TRUE(log.DesktopText().empty());
}

TEST_F(CaptureTest, AnotherWindowMayTakeOver) {
    capture.Take(*window);
    capture.Take(*other);
    EXPECT_EQ(system.GetCapture(), other.get());
    EXPECT_TRUE(log.IsEmpty());
}

TEST_F(CaptureTest, CancellingEndsTheGesturesOfItsList) {
    capture.Take(*window);
    capture.Add(control);
    capture.Add(control);
    capture.Cancel();
    EXPECT_EQ(calls, (Calls{"control.Leave"}));
    EXPECT_EQ(system.GetCapture(), nullptr);
}

TEST_F(CaptureTest, ReleasingClearsTheList) {
    capture.Take(*window);
    capture.Add(control);
    capture.Release();
    capture.Cancel();
    EXPECT_TRUE(calls.empty());
}

TEST_F(CaptureTest, AControlMayLeaveTheList) {
    capture.Take(*window);
    capture.Add(control);
    capture.Remove(control);
    capture.Cancel();
    EXPECT_TRUE(calls.empty());
}

} // namespace
} // namespace Quorvex::GUI::Test
