#pragma once
// The error reporter of the rolling-text control: the one place in the game where a
// failing statement is told to the player. The control's routines name themselves with a
// fixed label ("(User Control) slpTextScroll::Sub PrintText"), so a report says which
// routine failed, with which error, in which version and build of the program.
//
// The text is built apart from the box so that it can be checked without a screen.
#include "support/platform/Dialogs.h"

#include <string>

namespace tolva {

// The report, in three lines of text with an empty line before the last:
//   Error <number> in <where>[ (Line #: <line>)]
//   while running <program>.exe v<major>.<minor> (Build <revision>)
//
//   Error = '<description>'
// joined by CR LF. The version parts follow the number patterns of the report: the major
// number as "#" (no digit at all for 0), the minor as "0#" (at least two digits) and the
// revision as "#0" (at least one digit). The line part is left out for line 0.
std::string ErrorReportText(int number, const std::string& where, int line, const std::string& description,
                            const std::string& program, int major, int minor, int revision);

// Shows the report of this program and version in a message box titled "Error" with the
// stop icon and one OK button, and waits for it to be answered.
void ReportError(Dialogs& dialogs, const std::string& where, int number, const std::string& description,
                 int line = 0);

} // namespace tolva
