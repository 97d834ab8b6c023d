// tolva2-cli crypt: runs standard input through Crypter, for level makers (the checksum
// line of a set) and for looking into a hiscore file. Binary-safe: the bytes come out as
// they are, with no line end added.
#include "CliCommand.h"

#include "support/GameError.h"
#include "support/ZenkorModule.h"

#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <cstdint>
#include <iostream>
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

// Far above any text a level maker or a hiscore file gives Crypter; an endless input
// (/dev/zero) ends here instead of filling the memory.
constexpr std::size_t MaxInputBytes = std::size_t{64} << 20;

enum class InputRead { Ok, TooLarge, Failed };

// Standard input with the system's read, not through std::cin: a closed or unreadable
// descriptor is a read error to report, where the stream buffer would throw from inside
// an iterator.
InputRead ReadStandardInput(std::string& input) {
    std::string bytes;
    char buffer[65536];
    for (;;) {
        const ssize_t n = ::read(STDIN_FILENO, buffer, sizeof buffer);
        if (n < 0 && errno == EINTR) continue;
        if (n < 0) return InputRead::Failed;
        if (n == 0) break;
        if (bytes.size() + static_cast<std::size_t>(n) > MaxInputBytes) return InputRead::TooLarge;
        bytes.append(buffer, static_cast<std::size_t>(n));
    }
    input = std::move(bytes);
    return InputRead::Ok;
}

int RunCrypt(const std::vector<std::string>& args) {
    if (args.size() != 2) return UsageError("crypt needs two arguments: enc|dec KEY");
    const std::string& mode = args[0];
    if (mode != "enc" && mode != "dec") return UsageError("unknown crypt subcommand '" + mode + "'; use enc or dec");
    std::int32_t key = 0;
    if (!ParseKey(args[1], key)) return UsageError("crypt: KEY must be a whole number, not '" + args[1] + "'");

    std::string input;
    switch (ReadStandardInput(input)) {
    case InputRead::Ok: break;
    case InputRead::TooLarge:
        std::cerr << "tolva2-cli: crypt: standard input is over " << (MaxInputBytes >> 20) << " MiB\n";
        return ExitFailed;
    case InputRead::Failed:
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
