// tolva2-cli crypt: runs standard input through Crypter, for level makers (the checksum
// line of a set) and for looking into a hiscore file. Binary-safe: the bytes come out as
// they are, with no line end added.
#include "CliCommand.h"

#include "support/GameError.h"
#include "support/ZenkorModule.h"

#include <charconv>
#include <cstdint>
#include <iostream>
#include <iterator>
#include <string>
#include <vector>

namespace tolva::cli {

namespace {

// A whole decimal number with an optional sign, nothing else.
bool ParseKey(const std::string& text, std::int32_t& key) {
    const char* first = text.data();
    const char* last = text.data() + text.size();
    if (first != last && *first == '+') ++first;
    if (first == last || *first == '+') return false;
    const auto [end, error] = std::from_chars(first, last, key);
    return error == std::errc() && end == last;
}

int RunCrypt(const std::vector<std::string>& args) {
    if (args.size() != 2) return UsageError("crypt needs two arguments: enc|dec KEY");
    const std::string& mode = args[0];
    if (mode != "enc" && mode != "dec") return UsageError("unknown crypt subcommand '" + mode + "'; use enc or dec");
    std::int32_t key = 0;
    if (!ParseKey(args[1], key)) return UsageError("crypt: KEY must be a whole number, not '" + args[1] + "'");

    const std::string input{std::istreambuf_iterator<char>(std::cin), std::istreambuf_iterator<char>()};
    if (std::cin.bad()) {
        std::cerr << "tolva2-cli: crypt: could not read standard input\n";
        return ExitFailed;
    }
    std::string output;
    try {
        output = mode == "enc" ? EncryptNumber(input, key) : DecryptNumber(input, key);
    } catch (const GameError& e) {
        std::cerr << "tolva2-cli: crypt: error " << e.Number << " (" << e.Source << "): " << e.Description << '\n';
        return ExitFailed;
    }
    std::cout.write(output.data(), static_cast<std::streamsize>(output.size()));
    std::cout.flush();
    return std::cout ? ExitOk : ExitFailed;
}

const CliRegistration registration{CliCommand{
    "crypt",
    "crypt enc|dec KEY                 encipher or decipher standard input to standard output",
    RunCrypt}};

} // namespace
} // namespace tolva::cli
