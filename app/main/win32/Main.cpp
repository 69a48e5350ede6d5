#include "app/Entry.h"
#include "app/win32/CommandLinePath.h"

using namespace Quorvex;

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
    return App::RunVarnolite(GUI::CreateNativeWindowSystem,
                             [] { return App::PathFromCommandLine(App::CommandLineCalls()); });
}
