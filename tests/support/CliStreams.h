#pragma once
// Runs the built tolva2-cli (its path is the compile definition TOLVA_CLI) through the
// shell as a user would: `input` on standard input, standard output and error kept in
// files of the test's folder, and the exit status. The arguments are shell words and
// come after the tool's own redirections, so that they may redirect a stream again
// (`<&-`, `>/dev/full`).
#include "CliRunner.h"
#include "support/TempFolder.h"

#include <sys/wait.h>

#include <cstdlib>
#include <string>
#include <vector>

namespace tolva::testing {

struct CliStreams {
    int status = -1;
    std::string out;
    std::string err;
};

inline CliStreams RunCli(const TempFolder& dir, const std::string& arguments, const std::string& input = "") {
    dir.Write("stdin", input);
    const std::string command = std::string(TOLVA_CLI) + " <" + Quote(dir / "stdin") + " >" + Quote(dir / "stdout") +
                                " 2>" + Quote(dir / "stderr") + " " + arguments;
    const int status = std::system(command.c_str());
    CliStreams run;
    run.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    run.out = dir.Read("stdout");
    run.err = dir.Read("stderr");
    return run;
}

// Arguments as shell words, each quoted (none may hold a single quote).
inline std::string Words(const std::vector<std::string>& args) {
    std::string words;
    for (const std::string& a : args) words += Quote(a) + " ";
    return words;
}

} // namespace tolva::testing
