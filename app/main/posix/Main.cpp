#include "app/Entry.h"
#include "foundation/platform/posix/NativeText.h"

using namespace Quorvex;

int main(int count, char** arguments) {
    const auto getPath = [&]() -> std::optional<String> {
        if (count < 2)
            return std::nullopt;
        return Platform::WideFromNative(arguments[1]);
    };
    return App::RunVarnolite(GUI::CreateNativeWindowSystem, getPath);
}
