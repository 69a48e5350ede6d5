#pragma once

#include "gui/window/WindowSystem.h"

#include <functional>
#include <memory>
#include <optional>

namespace Quorvex::App {

/// Makes the window system of the run; may raise.
using WindowSystemFactory = std::unique_ptr<GUI::IWindowSystem> (*)();
/// The path that the command line asks for; asked once the window stands.
using PathSource = std::function<std::optional<String>()>;

/// The program from its start to its end: makes the window, opens the path if there is one, runs the message loop, and
/// returns the exit code of the process. A failure of the program itself ends it quietly with 0; where there is no
/// display at all it says so and returns 1. To be called once.
int RunVarnolite(WindowSystemFactory createWindowSystem, const PathSource& getPath);

/// The part with a window system: an exception from here on ends quietly with 0.
int RunMainFrame(GUI::IWindowSystem& windowSystem, const PathSource& getPath);

} // namespace Quorvex::App
