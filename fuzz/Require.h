#pragma once

/// Ends the fuzzer's run where the condition does not hold.
inline void Require(bool condition) {
    if (!condition)
        __builtin_trap();
}
