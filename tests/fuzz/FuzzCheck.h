#pragma once
// The one way a fuzz target of the game reports a finding: the target's name and what
// broke, on standard error, then the abort that makes libFuzzer keep the input. A bare
// abort() would leave whoever reads the log to guess which property failed.
#include <cstdio>
#include <cstdlib>

namespace tolva::fuzz {

[[noreturn]] inline void Finding(const char* target, const char* what) {
    std::fprintf(stderr, "\n==tolva2 fuzz finding== %s: %s\n", target, what);
    std::fflush(stderr);
    std::abort();
}

inline void Check(bool holds, const char* target, const char* what) {
    if (!holds) Finding(target, what);
}

} // namespace tolva::fuzz
