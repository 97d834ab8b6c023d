#pragma once
// What the server answers, apart from the sockets: a submission posted to the game's
// address becomes a stored table and a short page saying what was kept, a plain
// request the page of the best entries. Every page is a complete small HTML document
// in UTF-8; every text that came from a player is escaped on its way into it.
#include "HiscoreStore.h"

#include <chrono>
#include <functional>
#include <string>
#include <string_view>

namespace tolva::hiscored {

// The game's address on the server.
inline constexpr std::string_view HiscorePath = "/tolva2/updatehiscore.asp";
// A submission is a few hundred bytes and a statistics file some kilobytes; anything
// above this is refused before it is read.
inline constexpr std::size_t MaxBodyBytes = 64 * 1024;
// How many entries the public page shows.
inline constexpr int TableLength = 100;

struct Reply {
    int Status = 200;
    std::string Html;
    std::string Reason;  // for a refusal: its one line, for the log
};

// How many submissions one address may have stored in a minute unless told otherwise.
inline constexpr int DefaultMaxPerMinute = 10;

// A time in UTC as "YYYY-MM-DD HH:MM:SS".
std::string UtcText(std::chrono::system_clock::time_point time);

class HiscoreSite {
public:
    using Clock = std::function<std::chrono::system_clock::time_point()>;

    // `maxPerMinute`: stored submissions an address may make in a minute, 0 for any.
    explicit HiscoreSite(HiscoreStore& store, int maxPerMinute = DefaultMaxPerMinute,
                         Clock clock = std::chrono::system_clock::now)
        : store_(store), maxPerMinute_(maxPerMinute), clock_(std::move(clock)) {}

    // A POST of the game's form. 200 with what was stored; 400 for a form or table that
    // does not check out, 413 for a body over the limit, 415 for another encoding than
    // the form's, 429 for an address over its submissions of the minute; 500 if the
    // store failed. Nothing is stored unless the answer is 200.
    Reply Submit(std::string_view contentType, std::string_view body, const std::string& sender);

    // The best entries of all submissions.
    Reply Table();

    // A page for a refusal that happens before a handler runs (unknown path, wrong
    // method, a body too large): the status and one line of why.
    static Reply Refusal(int status, std::string_view why);

private:
    HiscoreStore& store_;
    int maxPerMinute_;
    Clock clock_;
};

} // namespace tolva::hiscored
