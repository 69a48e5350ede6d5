#include "tests/codecs/ProcessorTime.h"

#include <time.h>

double ProcessorSeconds() {
    timespec busy{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &busy);
    return static_cast<double>(busy.tv_sec) + 1e-9 * static_cast<double>(busy.tv_nsec);
}
