// The submission page: what it carries (the table's string as it stands, the statistics
// only when allowed and present, no line end) and its file in the game folder (a
// leftover replaced, removal). The browser's round trip is tests/hiscores/qt/InternetHiscores_test.
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

const std::string ShortEnd = "\"></form></body></html>";

bool Holds(const std::string& page, const std::string& part) { return page.find(part) != std::string::npos; }

} // namespace

TEST(SubmissionPage, CarriesTheTableAsItStandsAndTheStatisticsOnlyWhenAllowedAndPresent) {
    // Names with a quotation mark and markup: the table's string goes in unescaped.
    Hiscores table;
    table[0] = {"A\"B", 9, 12345};
    table[1] = {"<b>&x", 4, 99};
    TempFolder dir;
    const std::string folder = dir.Path() + "\\";   // as AppPath() gives it
    GameSettings settings;
    settings.HiscoreUrl = "http://127.0.0.1:1/tolva2/updatehiscore.asp?a=\"1\"";
    settings.SupplyStatFile = true;   // allowed, but no stat.ini yet: the short ending

    const std::string page = MakeSubmissionPage(folder, settings, table, DefaultSetKey);
    EXPECT_TRUE(Holds(page, "action=\"" + settings.HiscoreUrl + "\""));
    EXPECT_TRUE(page.ends_with("name=\"hiscoredata\" value=\"" + table.MakeHiscoreString(DefaultSetKey) + ShortEnd));
    EXPECT_FALSE(Holds(page, "\n") || Holds(page, "\r") || Holds(page, "&quot;"));
    EXPECT_FALSE(SubmittedStatistics(true, folder + "stat.ini"));

    const std::string bytes = "[LEVEL1]\r\nx=\"1\"<tag>\r\n\xE9\xFF";
    dir.Write("stat.ini", bytes);
    EXPECT_TRUE(MakeSubmissionPage(folder, settings, table, DefaultSetKey)
                    .ends_with("\"><textarea name=\"stat\">" + bytes + "</textarea></form></body></html>"));
    settings.SupplyStatFile = false;  // not allowed: the short ending again
    EXPECT_EQ(MakeSubmissionPage(folder, settings, table, DefaultSetKey), page);
    // An empty stat.ini still gives the text area.
    EXPECT_TRUE(Holds(SubmissionPageBytes("u", "v", std::string()), "<textarea name=\"stat\"></textarea>"));
}

TEST(SubmissionPage, TheFileReplacesALeftoverAndIsRemovedWithoutTrace) {
    TempFolder dir;
    const SubmissionPage page(dir.Path() + "\\");
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
    const SubmissionPage nowhere(dir.Path() + "\\missing\\");
    EXPECT_FALSE(nowhere.Write("x"));
    EXPECT_FALSE(nowhere.Exists());
}
