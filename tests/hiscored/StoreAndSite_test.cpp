// The SQLite store on a real file, and the pages the server answers with.
#include "FormFields.h"
#include "HiscoreSite.h"
#include "SqliteHiscoreStore.h"

#include "support/TempFolder.h"
#include "support/ZenkorModule.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

using namespace tolva::hiscored;
using tolva::DefaultSetKey;
using tolva::HiscoreEntry;
using tolva::Hiscores;
using tolva::testing::TempFolder;

namespace {

Submission Of(std::vector<HiscoreEntry> entries, std::string stat = {}, bool hasStat = false) {
    Submission s;
    for (std::size_t i = 0; i < entries.size(); ++i) s.Places.push_back({static_cast<int>(i), entries[i]});
    s.Stat = std::move(stat);
    s.HasStat = hasStat;
    return s;
}

std::unique_ptr<SqliteHiscoreStore> OpenStore(const std::string& path) {
    std::string error;
    auto store = SqliteHiscoreStore::Open(path, error);
    EXPECT_TRUE(store) << error;
    return store;
}

// One value from the database file, read with a connection of its own.
std::string Query(const std::string& path, const char* sql) {
    sqlite3* db = nullptr;
    sqlite3_open_v2(path.c_str(), &db, SQLITE_OPEN_READONLY, nullptr);
    sqlite3_stmt* statement = nullptr;
    std::string value = "(error)";
    if (sqlite3_prepare_v2(db, sql, -1, &statement, nullptr) == SQLITE_OK && sqlite3_step(statement) == SQLITE_ROW)
        value.assign(static_cast<const char*>(sqlite3_column_blob(statement, 0)) ?: "",
                     static_cast<std::size_t>(sqlite3_column_bytes(statement, 0)));
    sqlite3_finalize(statement);
    sqlite3_close(db);
    return value;
}

std::string Post(const Hiscores& table, const std::string& extra = {}) {
    return "hiscoredata=" + EncodeFormValue(table.MakeHiscoreString(DefaultSetKey)) + extra;
}

} // namespace

TEST(SqliteStore, KeepsSubmissionsAcrossOpeningsBestFirstAndEachEntryOnce) {
    TempFolder folder;
    const std::string path = folder / "hiscores.sqlite";
    const std::string withNul("B\xE9\0", 3);  // names are bytes, a NUL included
    {
        auto store = OpenStore(path);
        ASSERT_TRUE(store);
        EXPECT_TRUE(store->Best(100)->empty());
        ASSERT_TRUE(store->Add(Of({{"AAA", 5, 900}, {withNul, 3, 40}}, "[LEVEL1]\r\n\xFF", true),
                               "2024-01-02 03:04:05", "10.0.0.1"));
        // The same player again a day later, with one new place above the old ones.
        ASSERT_TRUE(store->Add(Of({{"CCC", 9, 5000}, {"AAA", 5, 900}, {withNul, 3, 40}}), "2024-01-03 00:00:00",
                               "10.0.0.2"));
    }
    auto store = OpenStore(path);
    ASSERT_TRUE(store);
    const auto best = store->Best(100);
    ASSERT_TRUE(best);
    ASSERT_EQ(best->size(), 3u);
    EXPECT_EQ((*best)[0].Name, "CCC");
    EXPECT_EQ((*best)[1].Name, "AAA");
    EXPECT_EQ((*best)[1].Received, "2024-01-02 03:04:05");  // the first time it came
    EXPECT_EQ((*best)[2].Name, withNul);
    EXPECT_EQ((*best)[2].Level, 3);
    EXPECT_EQ(store->Best(1)->size(), 1u);

    EXPECT_EQ(Query(path, "PRAGMA journal_mode"), "wal");
    EXPECT_EQ(Query(path, "SELECT stat FROM submission WHERE sender = '10.0.0.1'"), "[LEVEL1]\r\n\xFF");
    EXPECT_EQ(Query(path, "SELECT count(*) || '' FROM submission WHERE stat IS NULL"), "1");
    EXPECT_EQ(Query(path, "SELECT count(*) || '' FROM entry"), "5");
}

TEST(SqliteStore, SaysWhyAFileCannotBeUsed) {
    TempFolder folder;
    folder.Write("notes.txt", std::string(4096, 'x'));
    std::string error;
    EXPECT_FALSE(SqliteHiscoreStore::Open(folder / "notes.txt", error));
    EXPECT_NE(error.find("notes.txt"), std::string::npos) << error;
    EXPECT_FALSE(SqliteHiscoreStore::Open(folder / "no/such/folder/db.sqlite", error));
    EXPECT_NE(error.find("cannot open"), std::string::npos) << error;
}

TEST(HiscoreSite, StoresAValidTableAndShowsItEscapedInTheGamesScoreForm) {
    TempFolder folder;
    auto store = OpenStore(folder / "hiscores.sqlite");
    ASSERT_TRUE(store);
    HiscoreSite site(*store, [] { return std::string("2024-05-06 07:08:09"); });

    Hiscores table;
    table[0] = {"<b>", 14, 1234567};
    table[1] = {"\"'&", 2, 80};
    const Reply stored = site.Submit("application/x-www-form-urlencoded", Post(table, "&stat=x"), "127.0.0.1");
    EXPECT_EQ(stored.Status, 200) << stored.Html;
    EXPECT_NE(stored.Html.find("Stored 2 entries of your table, with your statistics."), std::string::npos);
    EXPECT_NE(stored.Html.find("&lt;b&gt;"), std::string::npos);
    EXPECT_EQ(stored.Html.find("<b>"), std::string::npos);

    const Reply page = site.Table();
    EXPECT_EQ(page.Status, 200);
    EXPECT_NE(page.Html.find("<tr><td>1</td><td>&lt;b&gt;</td><td>14</td><td>001.234.567</td><td>2024-05-06</td></tr>"),
              std::string::npos)
        << page.Html;
    EXPECT_NE(page.Html.find("<tr><td>2</td><td>&quot;&#39;&amp;</td><td>2</td><td>000.000.080</td>"),
              std::string::npos);
    EXPECT_EQ(page.Html.find("<b>"), std::string::npos);

    // A table of free places is accepted but leaves nothing.
    const Reply empty = site.Submit("", Post(Hiscores()), "127.0.0.1");
    EXPECT_EQ(empty.Status, 200);
    EXPECT_NE(empty.Html.find("nothing to store"), std::string::npos);
}

TEST(HiscoreSite, RefusesBadSubmissionsWithAReasonAndStoresNothing) {
    TempFolder folder;
    const std::string path = folder / "hiscores.sqlite";
    auto store = OpenStore(path);
    ASSERT_TRUE(store);
    HiscoreSite site(*store);
    Hiscores table;
    table[0] = {"ABC", 3, 300};
    const std::string good = table.MakeHiscoreString(DefaultSetKey);
    std::string tampered = good;
    tampered[tampered.size() - 1] = static_cast<char>(tampered.back() + 1);  // the checksum's last digit

    const struct {
        const char* type;
        std::string body;
        int status;
        const char* why;
    } cases[] = {
        {"application/x-www-form-urlencoded", "hiscoredata=" + EncodeFormValue(tampered), 400, "checksum"},
        {"application/x-www-form-urlencoded", "hiscoredata=" + EncodeFormValue(good.substr(0, 20)), 400, "ends before"},
        {"application/x-www-form-urlencoded", "hiscoredata=%E", 400, "encoding"},
        {"application/x-www-form-urlencoded", "stat=only", 400, "no hiscoredata"},
        {"multipart/form-data; boundary=x", Post(table), 415, "x-www-form-urlencoded"},
        {"application/x-www-form-urlencoded", Post(table, "&stat=" + std::string(MaxBodyBytes, 'x')), 413, "KiB"},
    };
    for (const auto& c : cases) {
        const Reply reply = site.Submit(c.type, c.body, "127.0.0.1");
        EXPECT_EQ(reply.Status, c.status) << c.why;
        EXPECT_NE(reply.Html.find(c.why), std::string::npos) << reply.Html;
        // The reason stands on one line of the page.
        EXPECT_NE(reply.Html.find("<p>Refused: "), std::string::npos);
    }
    EXPECT_EQ(Query(path, "SELECT count(*) || '' FROM submission"), "0");
    EXPECT_EQ(Query(path, "SELECT count(*) || '' FROM entry"), "0");
    EXPECT_NE(site.Table().Html.find("No hiscores have been submitted yet."), std::string::npos);
}
