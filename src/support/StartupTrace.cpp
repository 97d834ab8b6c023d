#include "support/StartupTrace.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <fstream>
#include <sstream>
#include <string>
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
    std::fprintf(stderr, "startup: %7.1f ms  (+%6.1f)  %s\n", now - launch, now - last, step);
    last = now;
}

} // namespace tolva
