// The submission page: its bytes piece by piece (nothing escaped, no line end), when the
// statistics go along, and its file in the game folder (a leftover replaced, removal).
#include "hiscores/Hiscores.h"
#include "hiscores/SubmissionPage.h"
#include "settings/GameSettings.h"
#include "support/TempFolder.h"
#include "support/ZenkorModule.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>

using namespace tolva;
using tolva::testing::TempFolder;

namespace {

const std::string Head = "<html><body onload=\"document.his.submit()\"><form name =\"his\" method=\"POST\" action=\"";
const std::string AfterUrl = "\" style=\"visibility: hidden;\"><input type=\"hidden\" name=\"hiscoredata\" value=\"";
const std::string ShortEnd = "\"></form></body></html>";

Hiscores MarkupTable() {
    Hiscores table;
    table[0] = {"A\"B", 9, 12345};
    table[1] = {"<b>&x", 4, 99};
    return table;
}

// A game folder as AppPath() gives it: with its closing backslash.
std::string GameFolderOf(const TempFolder& dir) { return dir.Path() + "\\"; }

} // namespace

TEST(SubmissionPage, TheBytesAreThePiecesJoinedAsTheyStand) {
    const std::string stat = "[LEVEL1]\r\nclicks=\"5\"<tag>\r\n";
    EXPECT_EQ(SubmissionPageBytes("http://h/x.asp?a=\"1\"", "V\"<i>", std::nullopt),
              Head + "http://h/x.asp?a=\"1\"" + AfterUrl + "V\"<i>" + ShortEnd);
    EXPECT_EQ(SubmissionPageBytes("u", "v", stat),
              Head + "u" + AfterUrl + "v\"><textarea name=\"stat\">" + stat + "</textarea></form></body></html>");
    // An empty stat.ini still gives the text area.
    EXPECT_NE(SubmissionPageBytes("u", "v", std::string()).find("<textarea name=\"stat\"></textarea>"),
              std::string::npos);

    // A table whose names hold a quotation mark and markup: its string goes in as it is.
    const Hiscores table = MarkupTable();
    const std::string hiscoreString = table.MakeHiscoreString(DefaultSetKey);
    TempFolder dir;
    GameSettings settings;
    settings.HiscoreUrl = "http://127.0.0.1:1/tolva2/updatehiscore.asp";
    settings.SupplyStatFile = false;
    const std::string page = MakeSubmissionPage(GameFolderOf(dir), settings, table, DefaultSetKey);
    EXPECT_EQ(page, Head + settings.HiscoreUrl + AfterUrl + hiscoreString + ShortEnd);
    EXPECT_EQ(page.find('\n'), std::string::npos);
    EXPECT_EQ(page.find('\r'), std::string::npos);
    EXPECT_EQ(page.find("&quot;"), std::string::npos);
}

TEST(SubmissionPage, TheStatisticsGoAlongOnlyWhenAllowedAndPresent) {
    TempFolder dir;
    const Hiscores table = MarkupTable();
    GameSettings settings;
    settings.HiscoreUrl = "http://example.invalid/p";
    const std::string bytes = "[LEVEL1]\r\nx=1\r\n\xE9\xFF";

    settings.SupplyStatFile = true;   // allowed, no stat.ini: the short ending
    EXPECT_TRUE(MakeSubmissionPage(GameFolderOf(dir), settings, table, DefaultSetKey).ends_with(ShortEnd));
    EXPECT_FALSE(SubmittedStatistics(true, GameFolderOf(dir) + "stat.ini"));

    dir.Write("stat.ini", bytes);
    const std::string with = MakeSubmissionPage(GameFolderOf(dir), settings, table, DefaultSetKey);
    EXPECT_TRUE(with.ends_with("<textarea name=\"stat\">" + bytes + "</textarea></form></body></html>"));

    settings.SupplyStatFile = false;  // not allowed, stat.ini present: the short ending
    EXPECT_TRUE(MakeSubmissionPage(GameFolderOf(dir), settings, table, DefaultSetKey).ends_with(ShortEnd));
}

TEST(SubmissionPage, TheFileReplacesALeftoverAndIsRemovedWithoutTrace) {
    TempFolder dir;
    const SubmissionPage page(GameFolderOf(dir));
    EXPECT_EQ(page.NativeFile(), dir / "submithiscore.htm");
    EXPECT_FALSE(page.Exists());
    EXPECT_TRUE(page.Remove());   // nothing to remove is no failure

    // A read-only page left by a crash is replaced by the next submission.
    dir.Write("submithiscore.htm", "left over from a crash");
    ::chmod((dir / "submithiscore.htm").c_str(), 0444);
    ASSERT_TRUE(page.Write("<html>new</html>"));
    EXPECT_EQ(dir.Read("submithiscore.htm"), "<html>new</html>");
    EXPECT_EQ(dir.EntryCount(), 1u);

    ::chmod((dir / "submithiscore.htm").c_str(), 0444);
    EXPECT_TRUE(page.Remove());
    EXPECT_FALSE(page.Exists());
    EXPECT_EQ(dir.EntryCount(), 0u);

    // A game folder that cannot take the page: false, and no page anywhere.
    const SubmissionPage nowhere(GameFolderOf(dir) + "missing\\");
    EXPECT_FALSE(nowhere.Write("x"));
    EXPECT_FALSE(nowhere.Exists());
}
