#include "support/ErrorReport.h"

#include "support/Version.h"

namespace tolva {

namespace {

// A whole number with at least `minDigits` digits, zeros in front; with 0 digits asked
// for, the number 0 gives no digit at all, as the "#" pattern has it.
std::string PatternDigits(int value, std::size_t minDigits) {
    const bool negative = value < 0;
    const long long magnitude = negative ? -static_cast<long long>(value) : value;
    std::string digits = magnitude == 0 ? std::string() : std::to_string(magnitude);
    if (digits.size() < minDigits) digits.insert(0, minDigits - digits.size(), '0');
    return negative ? "-" + digits : digits;
}

} // namespace

std::string ErrorReportText(int number, const std::string& where, int line, const std::string& description,
                            const std::string& program, int major, int minor, int revision) {
    std::string text = "Error " + std::to_string(number) + " in " + where;
    if (line != 0) text += " (Line #: " + std::to_string(line) + ")";
    text += "\r\n";
    text += "while running " + program + ".exe v" + PatternDigits(major, 0) + "." + PatternDigits(minor, 2) +
            " (Build " + PatternDigits(revision, 1) + ")";
    text += "\r\n\r\n";
    text += "Error = '" + description + "'";
    return text;
}

void ReportError(Dialogs& dialogs, const std::string& where, int number, const std::string& description, int line) {
    dialogs.MessageBox(
        ErrorReportText(number, where, line, description, ProgramName, VersionMajor, VersionMinor, VersionRevision),
        "Error", MessageIcon::Stop, MessageButtons::Ok);
}

} // namespace tolva
