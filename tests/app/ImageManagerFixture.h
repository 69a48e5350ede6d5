#pragma once

#include "app/ImageManager.h"
#include "gui/window/headless/HeadlessWindowSystem.h"
#include "tests/gui/RecordingEvents.h"
#include "tests/support/FakeCodec.h"
#include "tests/support/ListOfPaths.h"
#include "tests/support/TemporaryFolder.h"
#include "video/software/SoftwareContext.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace Quorvex::App {

/// A manager with a window whose messages the test takes one by one, as the application would.
class ImageManagerFixture : public testing::Test {
protected:
    ImageManagerFixture() {
        events.onUserMessage = [this](std::uint32_t, std::uintptr_t action, std::intptr_t slot) {
            arrived = reinterpret_cast<ImageSlot*>(slot);
            arrivedAction = static_cast<PrefetchAction>(action);
        };
        window = system.CreatePlatformWindow(GUI::WindowKind::Main, {0, 0, 10, 10}, "test", events);
        system.RunUntilIdle();
    }
    ~ImageManagerFixture() override {
        codec.Release();
        manager.ClearSlots();
    }

    String Write(const std::string& name, const std::string& content) {
        folder.Write(name, content);
        return folder.PathOf(name);
    }

    void Open(const String& path, SharedPtr<FileList> list = {}) { manager.Open(context, *window, path, list); }

    /// The next slot that was posted; fails the test where none comes.
    ImageSlot& Await() {
        arrived = nullptr;
        while (arrived == nullptr)
            system.DispatchNextMessage();
        arrived->Join();
        return *arrived;
    }

    /// What the application does with a slot that the user waited for.
    ImageSlot& AwaitForeground() {
        for (;;) {
            ImageSlot& slot = Await();
            if (!slot.IsForeground()) {
                --slot.GetCounterRef();
                continue;
            }
            slot.SetForeground(false);
            manager.ClearBusy();
            if (current != nullptr)
                --current->GetCounterRef();
            current = &slot;
            return slot;
        }
    }

    ImageSlot& Show(const String& path, SharedPtr<FileList> list = {}) {
        Open(path, list);
        return AwaitForeground();
    }

    ImageRequest KeyFor(const ImageSlot& slot, std::int32_t requestedImage) {
        ImageRequest key = slot.GetRequest();
        key.requestedImage = requestedImage;
        return key;
    }

    FakeCodec codec;
    ::Quorvex::Test::TemporaryFolder folder;
    GUI::HeadlessWindowSystem system;
    GUI::RecordingEvents events;
    std::unique_ptr<GUI::IPlatformWindow> window;
    SharedPtr<Platform::Video::Context> context{new Platform::Video::Software::SoftwareContext()};
    ImageManager manager;
    ImageSlot* arrived = nullptr;
    PrefetchAction arrivedAction = PrefetchAction::Nothing;
    ImageSlot* current = nullptr;
};

inline std::string MessageOf(const std::function<void()>& action) {
    try {
        action();
    } catch (const std::exception& failure) {
        return failure.what();
    }
    return "nothing was raised";
}

} // namespace Quorvex::App
