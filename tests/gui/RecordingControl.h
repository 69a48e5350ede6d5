#pragma once

#include "gui/ControlList.h"

#include <string>
#include <vector>

namespace Quorvex::GUI::Test {

using Calls = std::vector<std::string>;

/// A control that writes down what it is told, as "name.Operation", and answers the mouse as the test wants it.
class RecordingControl : public Control {
public:
    RecordingControl(std::string controlName, Calls& record) : name(std::move(controlName)), calls(record) {}

    void Paint() override { calls.push_back(name + ".Paint"); }
    bool DeleteContextObjects() override {
        calls.push_back(name + ".Delete");
        return canRelease;
    }
    void OnCacheReset() override {
        calls.push_back(name + ".CacheReset");
        Control::OnCacheReset();
    }
    Control* OnMouseMove(std::int32_t x, std::int32_t y) override { return Mouse(".Move", x, y, onMove); }
    Control* OnMouseLButtonDown(std::int32_t x, std::int32_t y) override { return Mouse(".Down", x, y, onDown); }
    Control* OnMouseLButtonUp(std::int32_t x, std::int32_t y) override { return Mouse(".Up", x, y, onUp); }
    std::int32_t OnMouseMoveGlobal(std::int32_t x, std::int32_t y) override { return Global(".MoveGlobal", x, y); }
    std::int32_t OnMouseLButtonUpGlobal(std::int32_t x, std::int32_t y) override { return Global(".UpGlobal", x, y); }
    Control* OnMouseLeave() override {
        calls.push_back(name + ".Leave");
        return nullptr;
    }
    Control* OnFocusGained() override {
        calls.push_back(name + ".FocusGained");
        return this;
    }
    Control* OnFocusLost() override {
        calls.push_back(name + ".FocusLost");
        return nullptr;
    }
    bool OnKeyDown(std::uint32_t key, std::intptr_t) override { return Key(".KeyDown", key); }
    bool OnKeyUp(std::uint32_t key, std::intptr_t) override { return Key(".KeyUp", key); }
    std::int32_t OnMouseWheel(std::uintptr_t, std::intptr_t) override {
        calls.push_back(name + ".Wheel");
        return globalResult;
    }

    bool IsCacheValid() const { return cacheValid; }
    void SetCacheValid() { cacheValid = true; }
    Control* GetParent() const { return parent; }

    std::string name;
    Calls& calls;
    bool canRelease = true;
    bool usesKeys = false;
    std::int32_t globalResult = 0;
    Control* onMove = nullptr;
    Control* onDown = this;
    Control* onUp = this;

private:
    std::string At(std::int32_t x, std::int32_t y) const { return " " + std::to_string(x) + "," + std::to_string(y); }
    Control* Mouse(const char* operation, std::int32_t x, std::int32_t y, Control* result) {
        calls.push_back(name + operation + At(x, y));
        return result;
    }
    std::int32_t Global(const char* operation, std::int32_t x, std::int32_t y) {
        calls.push_back(name + operation + At(x, y));
        return globalResult;
    }
    bool Key(const char* operation, std::uint32_t key) {
        calls.push_back(name + operation + " " + std::to_string(key));
        return usesKeys;
    }
};

class RecordingList : public ControlList {
public:
    bool IsCacheValid() const { return cacheValid; }
    void SetCacheValid() { cacheValid = true; }
};

} // namespace Quorvex::GUI::Test
