#pragma once
// What a shell command prints on its standard output, read whole: the printout tests read
// PDFs back with poppler's tools and ask the private CUPS server about its queue.
#include <cstdio>
#include <string>

namespace tolva::testing {

inline std::string CommandOutput(const std::string& command) {
    std::string out;
    FILE* pipe = ::popen(command.c_str(), "r");
    if (pipe == nullptr) return out;
    char buffer[4096];
    for (std::size_t n; (n = std::fread(buffer, 1, sizeof buffer, pipe)) > 0;) out.append(buffer, n);
    ::pclose(pipe);
    return out;
}

} // namespace tolva::testing
