// Numbers as the game's files hold them: read by their leading decimal number, written
// as plain decimal text, rounded into integers with ties to the even neighbour.
//
// None of this may depend on the C locale (a decimal comma would break every file) or on
// the floating-point rounding mode, so the reading uses std::from_chars on a prefix
// scanned by hand, and the rounding is done by explicit comparison with the half.
#include "support/ZenkorModule.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <limits>
#include <string_view>

namespace tolva {

namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// The length of the run of digits at `pos`.
std::size_t DigitRun(std::string_view text, std::size_t pos) {
    std::size_t n = 0;
    while (pos + n < text.size() && IsDigit(text[pos + n])) ++n;
    return n;
}

// Nearest whole number, ties to the even one, for any finite value.
double RoundHalfEven(double value) {
    const double below = std::floor(value);
    const double fraction = value - below;  // exact for every double
    if (fraction > 0.5) return below + 1.0;
    if (fraction < 0.5) return below;
    return std::fmod(below, 2.0) == 0.0 ? below : below + 1.0;
}

template <typename Int>
Int RoundSaturated(double value) {
    if (std::isnan(value)) return 0;
    const double rounded = RoundHalfEven(value);
    if (rounded >= static_cast<double>(std::numeric_limits<Int>::max())) return std::numeric_limits<Int>::max();
    if (rounded <= static_cast<double>(std::numeric_limits<Int>::min())) return std::numeric_limits<Int>::min();
    return static_cast<Int>(rounded);
}

// For a number text that does not fit a double: whether it is too large (rather than too
// close to 0). Its decimal order is the place of its first non-zero digit against the
// point, plus the exponent.
bool OutOfRangeIsLarge(std::string_view number, std::size_t intDigits) {
    long order = 0;
    bool seenNonZero = false;
    std::size_t pos = 0;
    for (; pos < number.size() && (IsDigit(number[pos]) || number[pos] == '.'); ++pos) {
        if (number[pos] == '.' || seenNonZero) continue;
        if (number[pos] != '0') {
            seenNonZero = true;
            order = static_cast<long>(intDigits) - static_cast<long>(pos < intDigits ? pos : pos - 1);
        }
    }
    if (pos < number.size()) {  // the exponent, saturated far beyond any double
        const bool negativeExp = number[pos + 1] == '-';
        long exponent = 0;
        for (std::size_t i = pos + 1; i < number.size(); ++i)
            if (IsDigit(number[i]) && exponent < 1'000'000) exponent = exponent * 10 + (number[i] - '0');
        order += negativeExp ? -exponent : exponent;
    }
    return order > 0;
}

} // namespace

double Val(const std::string& text) {
    const std::string_view all(text);
    std::size_t pos = 0;
    while (pos < all.size() && (all[pos] == ' ' || all[pos] == '\t')) ++pos;
    bool negative = false;
    if (pos < all.size() && (all[pos] == '+' || all[pos] == '-')) negative = all[pos++] == '-';

    const std::size_t numberStart = pos;
    const std::size_t intDigits = DigitRun(all, pos);
    pos += intDigits;
    std::size_t fracDigits = 0;
    if (pos < all.size() && all[pos] == '.') {
        fracDigits = DigitRun(all, pos + 1);
        pos += 1 + fracDigits;
    }
    if (intDigits + fracDigits == 0) return 0.0;
    // An exponent counts only when digits follow it: "2e" is 2, "2e5" is 200000.
    if (pos < all.size() && (all[pos] == 'e' || all[pos] == 'E')) {
        std::size_t expPos = pos + 1;
        if (expPos < all.size() && (all[expPos] == '+' || all[expPos] == '-')) ++expPos;
        const std::size_t expDigits = DigitRun(all, expPos);
        if (expDigits > 0) pos = expPos + expDigits;
    }

    double magnitude = 0.0;
    const auto [end, error] = std::from_chars(all.data() + numberStart, all.data() + pos, magnitude,
                                              std::chars_format::general);
    (void)end;
    if (error == std::errc::result_out_of_range) {
        magnitude = OutOfRangeIsLarge(all.substr(numberStart, pos - numberStart), intDigits)
                        ? std::numeric_limits<double>::max()
                        : 0.0;
    } else if (error != std::errc()) {
        return 0.0;
    }
    return negative ? -magnitude : magnitude;
}

std::int16_t CInt(double value) { return RoundSaturated<std::int16_t>(value); }

std::int32_t CLng(double value) { return RoundSaturated<std::int32_t>(value); }

std::string NumberText(double value) {
    if (std::isnan(value)) return "NaN";
    if (std::isinf(value)) return value > 0 ? "Inf" : "-Inf";
    if (value == 0.0) return "0";  // also for -0
    // Fifteen significant digits, as the game always wrote its numbers: whole numbers
    // below 1E+15 come out plain, and the noise of binary fractions (0.1 + 0.2) is gone.
    std::array<char, 64> buffer{};
    const std::to_chars_result result =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::general, 15);
    std::string text(buffer.data(), result.ptr);
    for (char& c : text)
        if (c == 'e') c = 'E';
    return text;
}

double Floor(double value) { return std::floor(value); }

double Ceil(double value) { return std::ceil(value); }

std::string GroupDigits(const std::string& digits, std::size_t minimum) {
    std::string padded = digits;
    if (padded.size() < minimum) padded.insert(0, minimum - padded.size(), '0');
    std::string grouped;
    for (std::size_t i = 0; i < padded.size(); ++i) {
        grouped += padded[i];
        if ((i + 1) % 3 == 0 && i + 1 < padded.size()) grouped += '.';
    }
    return grouped;
}

std::string Trim(const std::string& text) {
    const auto first = text.find_first_not_of(' ');
    if (first == std::string::npos) return {};
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

} // namespace tolva
