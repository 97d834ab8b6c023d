// The pages the server answers with, over a real SQLite file: a valid table stored and
// shown escaped, bad and forged ones refused with their reason and stored nowhere, and
// the limit of submissions per address and minute on a virtual clock.
#include "FormFields.h"
#include "HiscoreSite.h"
#include "SqliteHiscoreStore.h"

#include "support/TempFolder.h"
#include "support/ZenkorModule.h"

#include <gtest/gtest.h>

using namespace tolva::hiscored;
using tolva::DefaultSetKey;
using tolva::Hiscores;
using tolva::testing::TempFolder;

namespace {

constexpr const char* Form = "application/x-www-form-urlencoded";

std::unique_ptr<SqliteHiscoreStore> OpenStore(const std::string& path) {
    std::string error;
    auto store = SqliteHiscoreStore::Open(path, error);
    EXPECT_TRUE(store) << error;
    return store;
}

std::string Post(const Hiscores& table, const std::string& extra = {}) {
    return "hiscoredata=" + EncodeFormValue(table.MakeHiscoreString(DefaultSetKey)) + extra;
}

// A fixed moment: 2024-05-06 07:08:09 UTC, moved on by `seconds`.
std::chrono::system_clock::time_point Moment(int seconds = 0) {
    return std::chrono::system_clock::time_point(std::chrono::seconds(1714979289 + seconds));
}

} // namespace

TEST(HiscoreSite, StoresAValidTableAndShowsItEscapedInTheGamesScoreForm) {
    TempFolder folder;
    auto store = OpenStore(folder / "hiscores.sqlite");
    ASSERT_TRUE(store);
    HiscoreSite site(*store, DefaultMaxPerMinute, [] { return Moment(); });

    Hiscores table;
    table[0] = {"<B>", 14, 1234567};
    table[1] = {"\"'&", 2, 80};
    const Reply stored = site.Submit("Application/X-WWW-Form-Urlencoded; charset=windows-1252", Post(table, "&stat=x"),
                                     "127.0.0.1");
    EXPECT_EQ(stored.Status, 200) << stored.Html;
    EXPECT_NE(stored.Html.find("Stored 2 entries of your table, with your statistics."), std::string::npos);
    EXPECT_NE(stored.Html.find("&lt;B&gt;"), std::string::npos);
    EXPECT_EQ(stored.Html.find("<B>"), std::string::npos);

    const Reply page = site.Table();
    EXPECT_EQ(page.Status, 200);
    EXPECT_NE(page.Html.find("<tr><td>1</td><td>&lt;B&gt;</td><td>14</td><td>001.234.567</td><td>2024-05-06</td></tr>"),
              std::string::npos)
        << page.Html;
    EXPECT_EQ(page.Html.find("<B>"), std::string::npos);
    EXPECT_EQ(site.Submit(Form, Post(table), "127.0.0.2").Html.find("statistics"), std::string::npos);  // none sent

    // A table of free places is accepted but leaves nothing.
    const Reply empty = site.Submit("", Post(Hiscores()), "127.0.0.1");
    EXPECT_EQ(empty.Status, 200);
    EXPECT_NE(empty.Html.find("nothing to store"), std::string::npos);
}

TEST(HiscoreSite, RefusesBadAndForgedSubmissionsWithAReasonAndStoresNothing) {
    TempFolder folder;
    auto store = OpenStore(folder / "hiscores.sqlite");
    ASSERT_TRUE(store);
    HiscoreSite site(*store, 0);
    Hiscores table;
    table[0] = {"ABC", 3, 300};
    const std::string good = table.MakeHiscoreString(DefaultSetKey);
    std::string tampered = good;
    tampered[tampered.size() - 1] = static_cast<char>(tampered.back() + 1);  // the checksum's last digit
    // Tables with a valid checksum that the game could never have made.
    const auto forged = [](std::vector<tolva::HiscoreEntry> places) {
        Hiscores forgery;
        for (std::size_t i = 0; i < places.size(); ++i) forgery[static_cast<int>(i)] = places[i];
        return Post(forgery);
    };

    const struct {
        const char* type;
        std::string body;
        int status;
        const char* why;
    } cases[] = {
        {Form, "hiscoredata=" + EncodeFormValue(tampered), 400, "checksum"},
        {Form, "hiscoredata=" + EncodeFormValue(good.substr(0, 20)), 400, "ends before"},
        {Form, "hiscoredata=%E", 400, "encoding"},
        {Form, "stat=only", 400, "no hiscoredata"},
        {"multipart/form-data; boundary=x", Post(table), 415, "x-www-form-urlencoded"},
        {"text/plain", Post(table), 415, "x-www-form-urlencoded"},
        {Form, Post(table, "&stat=" + std::string(MaxBodyBytes, 'x')), 413, "KiB"},
        {Form, forged({{std::string(2000, 'A'), 3, 300}}), 400, "place 1 has a name"},
    };
    for (const auto& c : cases) {
        const Reply reply = site.Submit(c.type, c.body, "127.0.0.1");
        EXPECT_EQ(reply.Status, c.status) << c.why;
        EXPECT_NE(reply.Html.find(c.why), std::string::npos) << reply.Html;
        EXPECT_NE(reply.Html.find("<p>Refused: "), std::string::npos);
        EXPECT_NE(reply.Reason.find(c.why), std::string::npos);
    }
    EXPECT_NE(site.Table().Html.find("No hiscores have been submitted yet."), std::string::npos);
}

TEST(HiscoreSite, AnswersTooManyToAnAddressOverItsSubmissionsOfTheMinute) {
    TempFolder folder;
    auto store = OpenStore(folder / "hiscores.sqlite");
    ASSERT_TRUE(store);
    int now = 0;
    HiscoreSite site(*store, 2, [&] { return Moment(now); });
    const auto submit = [&](double score, const std::string& sender) {
        Hiscores table;
        table[0] = {"ACE", 1, score};
        return site.Submit(Form, Post(table), sender).Status;
    };
    EXPECT_EQ(submit(1, "10.0.0.1"), 200);
    EXPECT_EQ(submit(2, "10.0.0.1"), 200);
    const Hiscores none;
    EXPECT_EQ(site.Submit(Form, Post(none), "10.0.0.1").Status, 200);  // nothing stored, nothing counted
    EXPECT_EQ(submit(3, "10.0.0.1"), 429);
    now = 60 - 10;  // still the same minute on the clock (the moment is 9 s into its minute)
    EXPECT_EQ(submit(4, "10.0.0.1"), 429);
    now = 60 - 9;   // the next minute
    EXPECT_EQ(submit(5, "10.0.0.1"), 200);
}
