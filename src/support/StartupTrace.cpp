#include "support/StartupTrace.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <fstream>
#include <sstream>
#include <string>
#include <sys/resource.h>
#include <unistd.h>

namespace tolva {
namespace {

double BootClockMs() {
    timespec now{};
    clock_gettime(CLOCK_BOOTTIME, &now);
    return static_cast<double>(now.tv_sec) * 1000.0 + static_cast<double>(now.tv_nsec) / 1e6;
}

// When the process began, on the boot clock: field 22 of /proc/self/stat, in clock
// ticks. The command name in field 2 may hold blanks, so the fields are counted after
// its closing parenthesis. Without /proc, the first mark counts as the launch.
double LaunchMs() {
    std::ifstream in("/proc/self/stat");
    std::string stat((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    const auto close = stat.rfind(')');
    if (close == std::string::npos) return BootClockMs();
    std::istringstream fields(stat.substr(close + 2));
    std::string field;
    for (int i = 3; i <= 22 && fields >> field; ++i) {
        if (i == 22) return std::strtod(field.c_str(), nullptr) * 1000.0 / static_cast<double>(sysconf(_SC_CLK_TCK));
    }
    return BootClockMs();
}

} // namespace

bool StartupTrace::On() {
    static const bool on = [] {
        const char* value = std::getenv("TOLVA_STARTUP_TRACE");
        return value != nullptr && *value != '\0' && std::strcmp(value, "0") != 0;
    }();
    return on;
}

void StartupTrace::Mark(const char* step) {
    if (!On()) return;
    static const double launch = LaunchMs();
    static double last = launch;
    const double now = BootClockMs();
    // Pages touched for the first time cost more than most of the work done on them:
    // each step also tells how many it faulted in (minor faults, 4 KiB each).
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    static long lastFaults = 0;
    const long faults = usage.ru_minflt;
    // And the processor time the process has had so far, which another busy program on
    // the machine does not stretch the way it stretches the clock.
    const double cpu = (static_cast<double>(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) * 1000.0) +
                       static_cast<double>(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1000.0;
    std::fprintf(stderr, "startup: %7.1f ms  (+%6.1f)  %6ld pages  cpu %6.1f ms  %s\n", now - launch, now - last,
                 faults - lastFaults, cpu, step);
    last = now;
    lastFaults = faults;
}

} // namespace tolva
