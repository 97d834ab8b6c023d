#include "session/LevelCodes.h"

#include "support/ZenkorModule.h"

#include <array>
#include <cctype>

namespace tolva {
namespace {

constexpr std::array<const char*, LevelCodes::Count> Codes = {
    "4FW2GW", "9CB3YR", "6NA6ZJ", "9LB6FP", "5AP0CK", "9ZK3GG", "3XP3DB", "2KZ8PW", "6GV8MA", "0XS5VN",
    "4BE6HY", "0FL7ED", "8FN6CT", "2LW1MY", "7YH4AB", "3PB7VW", "3EU9AX", "4XV2DA", "5PH7SJ", "8KB4YM",
    "9YR2KU", "6KS3BD", "1CN8MC", "9RG4HW", "2WS7HG", "2VM1ZM", "1MF7PV", "6VX6GJ", "4CZ8RS", "8ZT6JY",
    "3XX3PB", "0BJ8GZ", "2XU9MV", "3LS3DE", "8HH3NZ", "3CR6YY", "8SU1DH", "4KA0VH", "4JX8HV", "7CZ5LL",
    "8AY1WN", "1NN9SX", "3NB2CD", "0AM5FR", "2HN2VU", "9AW3ZT", "2XD7HR", "8SV7ZA", "8MK0FX", "2VM9JG",
    "5UR2RD", "0GU5AF", "5GF9FJ", "2CC4AS", "9NC7BA", "8LA6CP", "3GW2PF", "2GJ9BY", "6DD9LT", "7EU9SJ",
    "6BA5AG", "4AM3LW", "0FN6HM", "4HP2UV", "3CG0BT", "0AH3WK", "0LN9UN", "1CK2TZ", "0WF5AP", "2HU9SB",
    "9SD4JV", "1KS0XL", "3CV2XU", "4UB6UK", "0AG4HJ", "0TD4RC", "3PC7TZ", "7PP0BK", "3NG0NA", "5LE0GR",
    "9TD0MV", "0SC1PA", "9HN4RP", "9WU7CS", "0WC3CJ", "7FH3JG", "5TK4CN", "5PE2GN", "8FU0ZL", "3KW0BN",
    "6HH9LE", "9YK1TF", "2KB7XW", "2LL8ND", "5NB0VW", "3XH8KK", "0WB6SE", "4KM8TK", "6BU5AV", "7ZH9PC",
};

} // namespace

std::string LevelCodes::CodeOf(int level) {
    if (level < 1 || level > Count) return {};
    return Codes[static_cast<std::size_t>(level - 1)];
}

std::int16_t LevelCodes::Find(const std::string& typed) {
    std::string upper = typed;
    for (char& c : upper) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    for (int i = 0; i < Count; ++i)
        if (upper == Codes[static_cast<std::size_t>(i)]) return static_cast<std::int16_t>(i + 1);
    return -1;
}

std::string LevelCodes::ClipboardText(std::int16_t level) {
    return "TOLVA II LEVEL-CODE FOR LEVEL " + NumberText(level) + " :" + CodeOf(level);
}

std::int16_t LevelCodes::FindClipboardText(const std::string& pasted) {
    const std::size_t first = pasted.find_first_not_of(" \t\r\n");
    if (first == std::string::npos) return -1;
    std::string upper = pasted.substr(first, pasted.find_last_not_of(" \t\r\n") + 1 - first);
    for (char& c : upper) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    for (std::int16_t level = 1; level <= Count; ++level)
        if (upper == ClipboardText(level)) return level;
    return -1;
}

} // namespace tolva
