#include "tests/codecs/ProcessorTime.h"

#include <windows.h>

namespace {

double SecondsOf(const FILETIME& time) {
    return 1e-7 * (4294967296.0 * time.dwHighDateTime + time.dwLowDateTime);
}

} // namespace

double ProcessorSeconds() {
    FILETIME creation{}, exit{}, kernel{}, user{};
    GetProcessTimes(GetCurrentProcess(), &creation, &exit, &kernel, &user);
    return SecondsOf(kernel) + SecondsOf(user);
}
