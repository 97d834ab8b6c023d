// tolva2-cli ini: reads and writes one key of an ini file exactly as the game does (the
// same case-blind names, trimming and in-place replacement), for scripts and for
// checking the game's files by hand. FILE may be a stored path with backslashes.
#include "CliCommand.h"

#include "support/ZenkorModule.h"

#include <iostream>
#include <string>
#include <vector>

namespace tolva::cli {

namespace {

int RunIniGet(const std::vector<std::string>& args) {
    if (args.size() != 4) return UsageError("ini get needs three arguments: FILE SECTION KEY");
    const std::string value = ReadIni(args[1], args[2], args[3]);
    std::cout.write(value.data(), static_cast<std::streamsize>(value.size()));
    std::cout << '\n';
    std::cout.flush();
    return std::cout ? ExitOk : ExitFailed;
}

int RunIniSet(const std::vector<std::string>& args) {
    if (args.size() != 5) return UsageError("ini set needs four arguments: FILE SECTION KEY VALUE");
    if (!WriteIni(args[1], args[2], args[3], args[4])) {
        std::cerr << "tolva2-cli: ini set: could not write '" << args[1]
                  << "' (missing folder, read-only file, or a line break or '=' where it cannot stand)\n";
        return ExitFailed;
    }
    return ExitOk;
}

int RunIni(const std::vector<std::string>& args) {
    if (args.empty()) return UsageError("ini needs a subcommand: get or set");
    if (args[0] == "get") return RunIniGet(args);
    if (args[0] == "set") return RunIniSet(args);
    return UsageError("unknown ini subcommand '" + args[0] + "'; use get or set");
}

const CliRegistration registration{CliCommand{
    "ini",
    "ini get FILE SECTION KEY          print the value of KEY (an empty line if there is none)\n"
    "  ini set FILE SECTION KEY VALUE    write KEY=VALUE, making file and section as needed",
    RunIni}};

} // namespace
} // namespace tolva::cli
