#pragma once
// A file of the source tree (a shipped level set, a solution file) read whole, by its path
// below the tree's root; empty when it cannot be read. The test program defines
// TOLVA_SOURCE_DIR.
#include <fstream>
#include <sstream>
#include <string>

namespace tolva::testing {

inline std::string ReadSource(const std::string& relative) {
    std::ifstream in(std::string(TOLVA_SOURCE_DIR) + "/" + relative, std::ios::binary);
    std::stringstream text;
    text << in.rdbuf();
    return text.str();
}

} // namespace tolva::testing
