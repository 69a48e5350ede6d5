#pragma once

#include "gui/window/headless/HeadlessWindowSystem.h"

namespace Quorvex::GUI {

/// The person in front of a HeadlessWindowSystem: each operation puts what that person does into the queue, in the
/// order of the messages that the home platform would send. Nothing reaches the program before it dispatches. GUI
/// thread.
class HeadlessUser {
public:
    explicit HeadlessUser(HeadlessWindowSystem& system) : m_system(system) {}

    /// Desktop coordinates. The window that the mouse was over before learns that it has left.
    void MoveMouse(std::int32_t x, std::int32_t y);
    /// The button acts where the mouse is. A press on an inactive window activates it, as far as it can be.
    void PressLeft();
    void ReleaseLeft();
    /// Press, release, second press and release.
    void DoubleClick();
    /// Moves there, presses, moves to the other place in the given number of steps, and releases.
    void Drag(std::int32_t fromX, std::int32_t fromY, std::int32_t toX, std::int32_t toY, std::int32_t steps = 4);
    /// 120 units are one notch, away from the user or to the right where positive.
    void TurnWheel(std::int32_t delta);
    void TiltWheel(std::int32_t delta);
    /// Virtual-key codes; to the active window.
    void PressKey(std::uint32_t key, bool isRepeated = false);
    void ReleaseKey(std::uint32_t key);

    void Close(HeadlessWindow& window);
    /// Moves or sizes the window by its frame.
    void Place(HeadlessWindow& window, const Rect& clientRect);
    void Minimize(HeadlessWindow& window);
    void Restore(HeadlessWindow& window);
    /// Another window comes to the front; null: one of another program.
    void SwitchTo(HeadlessWindow* window);
    void DropFiles(HeadlessWindow& window, const std::vector<String>& paths);
    /// Something that covered the window has gone.
    void Uncover(HeadlessWindow& window);
    /// The system takes the mouse away from a drag.
    void CancelMode(HeadlessWindow& window);
    void ChangeColors();
    void ChangeComposition(bool isEnabled);

private:
    HeadlessWindow* WindowAtMouse() const;
    void SendMouse(HeadlessWindow* window, MouseMessageNumber number, std::int32_t wheelDelta = 0);
    void MoveNow(std::int32_t x, std::int32_t y);
    void PressLeftNow(MouseMessageNumber number);
    void ActivateByMouse(HeadlessWindow& window);
    HeadlessWindow* Find(std::uint64_t identifier) const;
    void SendToAll(void (IWindowEvents::*event)());

    HeadlessWindowSystem& m_system;
    std::uint64_t m_hovered = 0;
    bool m_isLeftDown = false;
};

} // namespace Quorvex::GUI
