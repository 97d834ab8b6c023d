#pragma once
// StartupTrace: where the start-up's time goes, for whoever keeps it fast. With the
// environment variable TOLVA_STARTUP_TRACE set (to anything but "0"), each step of the
// start-up prints a line on standard error:
//     startup:   57.3 ms  (+ 12.1)  level set
// the time since the process was launched (loading the libraries counts; the kernel gives
// the launch to its clock tick, 10 ms) and since the step before, which is exact. Without it, a step costs one test of a flag read once.
namespace tolva {

class StartupTrace {
public:
    // Marks the end of `step`.
    static void Mark(const char* step);
    static bool On();
};

} // namespace tolva
