#pragma once
// Runs the built tolva2-cli (its path is the compile definition TOLVA_CLI) with a line of
// arguments through the shell, and gives its exit status and standard output. Standard
// error is dropped: the tests read what the tool prints and how it ends.
#include <cstdio>
#include <sstream>
#include <string>
#include <sys/wait.h>
#include <vector>

namespace tolva::testing {

struct CliRun {
    int status = -1;
    std::string out;

    std::vector<std::string> Lines() const {
        std::vector<std::string> lines;
        std::istringstream in(out);
        for (std::string line; std::getline(in, line);) lines.push_back(line);
        return lines;
    }
};

inline CliRun Cli(const std::string& arguments) {
    CliRun r;
    const std::string command = std::string(TOLVA_CLI) + " " + arguments + " 2>/dev/null";
    FILE* pipe = ::popen(command.c_str(), "r");
    if (!pipe) return r;
    char buffer[4096];
    std::size_t n;
    while ((n = std::fread(buffer, 1, sizeof buffer, pipe)) > 0) r.out.append(buffer, n);
    const int status = ::pclose(pipe);
    r.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return r;
}

// A path as one shell word.
inline std::string Quote(const std::string& path) { return "'" + path + "'"; }

} // namespace tolva::testing
