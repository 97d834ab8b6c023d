#pragma once
// A bound in time on a step that could hang (a load waiting on a pipe for ever, a page
// that never finishes laying out): past it the test program ends at once and names the
// step, long before the run's own time limit. Each call sets the bound anew; a bound of 0
// lifts it.
#include <csignal>
#include <cstring>

#include <unistd.h>

namespace tolva::testing {

inline const char* HungStep = "";

extern "C" inline void EndHungStep(int) {
    [[maybe_unused]] auto n = ::write(2, "\nthis step hangs: ", 18);
    n = ::write(2, HungStep, std::strlen(HungStep));
    n = ::write(2, "\n", 1);
    ::_exit(1);
}

// `step` is a literal or text that outlives the bound.
inline void BoundInTime(unsigned seconds, const char* step) {
    HungStep = step;
    std::signal(SIGALRM, EndHungStep);
    ::alarm(seconds);
}

} // namespace tolva::testing
