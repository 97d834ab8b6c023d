// One suite for both stores: an SQLite file and a private PostgreSQL database answer
// the same submissions with the same tables, the same ranking and the same limits.
#include "OpenStore.h"

#include "PrivatePostgres.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <thread>

using namespace tolva::hiscored;
using tolva::HiscoreEntry;
using tolva::testing::PrivatePostgres;
using tolva::testing::TempFolder;

namespace {

Submission Of(std::vector<HiscoreEntry> entries, std::string stat = {}, bool hasStat = false) {
    Submission s;
    for (std::size_t i = 0; i < entries.size(); ++i) s.Places.push_back({static_cast<int>(i), entries[i]});
    s.Stat = std::move(stat);
    s.HasStat = hasStat;
    return s;
}

Arrival At(const std::string& received, std::int64_t minute = 0, const std::string& sender = "10.0.0.1",
           int limit = 0) {
    return {received, minute, sender, limit};
}

class StoreSuite : public ::testing::TestWithParam<std::string> {
protected:
    void SetUp() override {
        if (GetParam() == "SQLite") {
            database_ = folder_ / "hiscores.sqlite";
        } else {
            PrivatePostgres& server = PrivatePostgres::Shared();
            database_ = server.NewDatabase();
            if (database_.empty()) GTEST_SKIP() << "PostgreSQL cannot start here: " << server.Why();
        }
    }
    std::unique_ptr<HiscoreStore> Open() {
        std::string error;
        auto store = OpenStore(database_, error);
        EXPECT_TRUE(store) << error;
        return store;
    }

    TempFolder folder_;
    std::string database_;
};

} // namespace

TEST_P(StoreSuite, KeepsEachEntryOnceFirstReceivedRankedFromTheBest) {
    const std::string withNul("B\xE9\0", 3);  // names are bytes, a NUL included
    {
        auto store = Open();
        ASSERT_TRUE(store);
        EXPECT_TRUE(store->Best(100)->empty());
        ASSERT_EQ(store->Add(Of({{"AAA", 5, 900}, {withNul, 3, 40}}, "[LEVEL1]\r\n\xFF", true),
                             At("2024-01-02 03:04:05")),
                  AddResult::Stored);
        // The same player a day later, with one new place above the old ones.
        ASSERT_EQ(store->Add(Of({{"CCC", 9, 5000}, {"AAA", 5, 900}, {withNul, 3, 40}}), At("2024-01-03 00:00:00")),
                  AddResult::Stored);
        // Equal scores: the higher level first, then the earlier, then the name.
        ASSERT_EQ(store->Add(Of({{"ZED", 7, 900}, {"BOB", 5, 900}, {"ABE", 5, 900}}), At("2024-01-04 00:00:00")),
                  AddResult::Stored);
    }
    auto store = Open();  // what was stored survives a new start
    ASSERT_TRUE(store);
    const auto best = store->Best(100);
    ASSERT_TRUE(best);
    const std::vector<StoredEntry> expected = {
        {"CCC", 9, 5000, "2024-01-03 00:00:00"}, {"ZED", 7, 900, "2024-01-04 00:00:00"},
        {"AAA", 5, 900, "2024-01-02 03:04:05"},  {"ABE", 5, 900, "2024-01-04 00:00:00"},
        {"BOB", 5, 900, "2024-01-04 00:00:00"},  {withNul, 3, 40, "2024-01-02 03:04:05"},
    };
    EXPECT_EQ(*best, expected);
    ASSERT_EQ(store->Best(2)->size(), 2u);
    EXPECT_EQ(store->Best(2)->back().Name, "ZED");
}

TEST_P(StoreSuite, CountsSubmissionsPerSenderAndMinuteInTheDatabase) {
    // Two stores on one database stand for two servers sharing it.
    auto first = Open();
    auto second = Open();
    ASSERT_TRUE(first && second);
    const auto add = [](HiscoreStore& store, double score, std::int64_t minute, const std::string& sender) {
        return store.Add(Of({{"ACE", 1, score}}), At("2024-01-01 00:00:00", minute, sender, 3));
    };
    EXPECT_EQ(add(*first, 1, 100, "10.0.0.1"), AddResult::Stored);
    EXPECT_EQ(add(*second, 2, 100, "10.0.0.1"), AddResult::Stored);
    EXPECT_EQ(add(*first, 3, 100, "10.0.0.1"), AddResult::Stored);
    EXPECT_EQ(add(*second, 4, 100, "10.0.0.1"), AddResult::TooMany);
    EXPECT_EQ(add(*first, 5, 100, "10.0.0.2"), AddResult::Stored);  // another address
    EXPECT_EQ(add(*first, 6, 101, "10.0.0.1"), AddResult::Stored);  // the next minute
    // A refused submission leaves nothing, and 0 means no limit.
    EXPECT_EQ(second->Best(100)->size(), 5u);
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(first->Add(Of({{"ACE", 2, 100.0 + i}}), At("2024-01-01 00:00:00", 101, "10.0.0.1", 0)),
                  AddResult::Stored);
}

TEST_P(StoreSuite, TakesSubmissionsFromManyThreadsAtOnceWithoutLosingOrDoublingAny) {
    auto store = Open();
    ASSERT_TRUE(store);
    constexpr int Threads = 8, Each = 25;
    std::atomic<int> failed{0};
    std::vector<std::thread> threads;
    for (int t = 0; t < Threads; ++t) {
        threads.emplace_back([&, t] {
            for (int i = 0; i < Each; ++i) {
                // Every table shares its lower places with the other threads' tables, in
                // another order of names, as players of one club would.
                const double own = 1000000.0 + t * 1000 + i;
                const auto result = store->Add(Of({{"OWN", 10, own}, {t % 2 ? "XXX" : "YYY", 1, 50},
                                                   {t % 2 ? "YYY" : "XXX", 1, 50}}),
                                               At("2024-02-02 00:00:00", 0, "10.0.0." + std::to_string(t)));
                failed += result != AddResult::Stored;
                failed += !store->Best(100);
            }
        });
    }
    for (auto& thread : threads) thread.join();
    EXPECT_EQ(failed, 0);
    const auto best = store->Best(1000);
    ASSERT_TRUE(best);
    EXPECT_EQ(best->size(), static_cast<std::size_t>(Threads * Each + 2));
}

INSTANTIATE_TEST_SUITE_P(Stores, StoreSuite, ::testing::Values("SQLite", "PostgreSQL"),
                         [](const auto& test) { return test.param; });
