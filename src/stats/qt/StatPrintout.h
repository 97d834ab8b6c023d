#pragma once
// The printout of the statistics table: a header on every page (title with the date, the
// page label at the right, the column labels between two black bars), then a banded line
// for each level that was played, and the totals of the printed lines under a rule.
// Levels never played are left out; the white and grey bands go on across page breaks.
//
// It prints the table as it is in memory, on the system's default printer, with no
// dialog and no preview. With no printer nothing is printed and nothing is said: the
// window's "Send to printer!" comes all the same.
#include <string>

namespace tolva {

class StatCanvas;
class StatPages;
class StatTable;

// The head of a page, at the top of `page`: "TOLVA II STATISTICS - " and `dateText` in
// bold at twice the font size, `headerText` ("Page 2") right-aligned on that line.
void PrintHeader(StatCanvas& page, const std::string& headerText, const std::string& dateText);

// Prints the table into `pages` and ends the document. The totals row of `table` holds
// the totals of the printed levels afterwards, printer or no printer.
void PrintStatPages(StatTable& table, StatPages& pages, const std::string& dateText);

// Today's date in the system's short form, as the title shows it.
std::string TodayShortDate();

// Prints on the system's default printer; with none, only the totals row changes.
void PrintStatToPrinter(StatTable& table);

} // namespace tolva
