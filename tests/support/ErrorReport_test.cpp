// The error reporter's text, part by part, and the box it shows.
#include "support/ErrorReport.h"
#include "support/Version.h"
#include "testsupport/ScriptedDialogs.h"

#include <gtest/gtest.h>

using namespace tolva;

TEST(ErrorReport, TextHasItsThreeLinesWithTheVersionInItsPatternsInAStopBox) {
    EXPECT_EQ(ErrorReportText(380, "(User Control) slpTextScroll::Property Let ScrollSpeed", 0,
                              "Invalid property value", "tolva2", 1, 2, 3),
              "Error 380 in (User Control) slpTextScroll::Property Let ScrollSpeed\r\n"
              "while running tolva2.exe v1.02 (Build 3)\r\n\r\n"
              "Error = 'Invalid property value'");
    // A line number adds its part to the first line; revision 0 shows as 0.
    EXPECT_EQ(ErrorReportText(6, "here", 12, "Overflow", "tolva2", 2, 0, 0),
              "Error 6 in here (Line #: 12)\r\nwhile running tolva2.exe v2.00 (Build 0)\r\n\r\nError = 'Overflow'");
    // Two-digit minors stay as they are; the major's pattern gives no digit for 0.
    EXPECT_NE(ErrorReportText(5, "x", 0, "d", "p", 3, 15, 120).find("p.exe v3.15 (Build 120)"), std::string::npos);
    EXPECT_NE(ErrorReportText(5, "x", 0, "d", "p", 0, 7, 1).find("p.exe v.07 (Build 1)"), std::string::npos);
    // Negative lines are lines too; only 0 leaves the part out.
    EXPECT_NE(ErrorReportText(5, "x", -1, "d", "p", 1, 0, 0).find("x (Line #: -1)\r\n"), std::string::npos);
    EXPECT_EQ(ErrorReportText(5, "x", 0, "d", "p", 1, 0, 0).find("Line #"), std::string::npos);

    // The box: titled Error with the stop icon, and this program's name and version.
    ScriptedDialogs dialogs;
    ReportError(dialogs, "(User Control) slpTextScroll::Function DrawText", 480, "Can't create AutoRedraw image");
    ASSERT_EQ(dialogs.ShownBoxes().size(), 1u);
    const auto& box = dialogs.ShownBoxes()[0];
    EXPECT_FALSE(box.Input);
    EXPECT_EQ(box.Title, "Error");
    EXPECT_EQ(box.Icon, MessageIcon::Stop);
    EXPECT_EQ(box.Buttons, MessageButtons::Ok);
    EXPECT_EQ(box.Text, ErrorReportText(480, "(User Control) slpTextScroll::Function DrawText", 0,
                                        "Can't create AutoRedraw image", "tolva2", VersionMajor, VersionMinor,
                                        VersionRevision));
}
