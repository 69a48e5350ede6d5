#include "gui/window/MessageWords.h"
#include "gui/window/headless/HeadlessWindowSystem.h"
#include "tests/gui/RecordingEvents.h"

#include <gtest/gtest.h>

namespace Quorvex::GUI {
namespace {

std::int32_t LowHalf(std::intptr_t word) {
    return static_cast<std::int16_t>(word & 0xFFFF);
}

std::int32_t HighHalf(std::intptr_t word) {
    return static_cast<std::int16_t>((word >> 16) & 0xFFFF);
}

class MessageWords : public testing::Test {
protected:
    MouseMessage Make(MouseMessageNumber number, std::int32_t wheelDelta = 0) {
        return MakeMouseMessage(*m_window, number, -5, 30, {10, 20, 110, 120}, MouseKey::LeftButton, wheelDelta);
    }

    RecordingEvents m_events;
    HeadlessWindowSystem m_system;
    std::unique_ptr<IPlatformWindow> m_window = m_system.CreatePlatformWindow(WindowKind::Main, {}, "", m_events);
};

TEST_F(MessageWords, NegativePositionsKeepTheirSign) {
    const auto word = PackPosition(-3, -70);
    EXPECT_EQ(LowHalf(word), -3);
    EXPECT_EQ(HighHalf(word), -70);
}

TEST_F(MessageWords, PositionsWrapAtSixteenBits) {
    EXPECT_EQ(LowHalf(PackPosition(40000, 0)), 40000 - 65536);
}

TEST_F(MessageWords, AMoveIsRelativeToTheClientArea) {
    const auto message = Make(MouseMessageNumber::Move);
    EXPECT_EQ(LowHalf(message.lParam), -15);
    EXPECT_EQ(HighHalf(message.lParam), 10);
    EXPECT_EQ(message.screenX, -5);
    EXPECT_EQ(message.screenY, 30);
    EXPECT_EQ(message.wParam, 1u);
    EXPECT_EQ(message.window, m_window.get());
}

TEST_F(MessageWords, WheelsCarryDesktopPositionAndDelta) {
    for (const auto number : {MouseMessageNumber::Wheel, MouseMessageNumber::HorizontalWheel}) {
        const auto message = Make(number, -120);
        EXPECT_EQ(LowHalf(message.lParam), -5);
        EXPECT_EQ(HighHalf(message.lParam), 30);
        EXPECT_EQ(HighHalf(static_cast<std::intptr_t>(message.wParam)), -120);
        EXPECT_EQ(message.wParam & 0xFFFF, 1u);
    }
}

TEST_F(MessageWords, ALeaveHasEmptyWords) {
    const auto message = Make(MouseMessageNumber::Leave);
    EXPECT_EQ(message.wParam, 0u);
    EXPECT_EQ(message.lParam, 0);
    EXPECT_EQ(message.screenX, -5);
}

TEST_F(MessageWords, KeyDataTellsRepeatAndRelease) {
    EXPECT_EQ(MakeKeyData(0x1E, false, false), 0x001E0001);
    EXPECT_EQ(MakeKeyData(0x1E, true, false), 0x401E0001);
    EXPECT_EQ(static_cast<std::uint32_t>(MakeKeyData(0x1E, true, true)), 0xC01E0001u);
}

} // namespace
} // namespace Quorvex::GUI
