#include "HiscoreSite.h"

#include "CodePage.h"
#include "FormFields.h"
#include "Submission.h"

#include "session/GameSession.h"
#include "support/ZenkorModule.h"

#include <chrono>
#include <ctime>

namespace tolva::hiscored {

namespace {

std::string Page(std::string_view title, const std::string& body) {
    std::string page = "<!DOCTYPE html>\n<html><head><meta charset=\"utf-8\"><title>";
    page.append(title).append("</title></head>\n<body>\n<h1>").append(title).append("</h1>\n");
    page.append(body).append("</body></html>\n");
    return page;
}

// A game text (code-page bytes) as page text.
std::string Text(const std::string& bytes) { return EscapeHtml(CodePageToUtf8(bytes)); }

std::string Row(const std::string& place, const std::string& name, std::int16_t level, double score,
                const std::string& date) {
    std::string row = "<tr><td>" + place + "</td><td>" + Text(name) + "</td><td>" + NumberText(level) +
                      "</td><td>" + EscapeHtml(GameSession::FormatScore(score)) + "</td>";
    if (!date.empty()) row += "<td>" + EscapeHtml(date) + "</td>";
    return row + "</tr>\n";
}

} // namespace

std::string UtcText(std::chrono::system_clock::time_point time) {
    const std::time_t seconds = std::chrono::system_clock::to_time_t(time);
    std::tm utc{};
    gmtime_r(&seconds, &utc);
    char text[32];
    std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S", &utc);
    return text;
}

Reply HiscoreSite::Refusal(int status, std::string_view why) {
    return {status, Page("Hiscores refused", "<p>Refused: " + EscapeHtml(why) + ".</p>\n"), std::string(why)};
}

Reply HiscoreSite::Submit(std::string_view contentType, std::string_view body, const std::string& sender) {
    if (body.size() > MaxBodyBytes)
        return Refusal(413, "the submission is larger than " + std::to_string(MaxBodyBytes / 1024) + " KiB");
    if (!IsFormEncoded(contentType))
        return Refusal(415, "the submission must be sent as application/x-www-form-urlencoded");
    std::string error;
    const std::optional<FormFields> form = FormFields::Decode(body, error);
    if (!form) return Refusal(400, error);
    const SubmissionRead read = ReadSubmission(*form);
    if (!read.Ok) return Refusal(400, "the table does not check out: " + read.Problem);

    const Submission& submission = read.Value;
    if (submission.Places.empty())
        return {200, Page("Hiscores received", "<p>The table holds no scores, so there was nothing to store.</p>\n"), ""};
    const auto now = clock_();
    Arrival arrival;
    arrival.Received = UtcText(now);
    arrival.Minute = std::chrono::duration_cast<std::chrono::minutes>(now.time_since_epoch()).count();
    arrival.Sender = sender;
    arrival.MaxPerMinute = maxPerMinute_;
    switch (store_.Add(submission, arrival)) {
    case AddResult::Stored: break;
    case AddResult::TooMany:
        return Refusal(429, "this address has sent " + std::to_string(maxPerMinute_) +
                                " tables in this minute already; please try again in a minute");
    case AddResult::Failed:
        return Refusal(500, "the hiscore database could not store the table; please try again later");
    }

    std::string body_html = "<p>Stored " + std::to_string(submission.Places.size()) +
                            (submission.Places.size() == 1 ? " entry" : " entries") + " of your table" +
                            (submission.HasStat ? ", with your statistics" : "") + ".</p>\n";
    body_html += "<table>\n<tr><th>Place</th><th>Name</th><th>Level</th><th>Score</th></tr>\n";
    for (const Submission::Place& place : submission.Places)
        body_html += Row(std::to_string(place.Index + 1), place.Entry.Name, place.Entry.Level, place.Entry.Score, "");
    body_html += "</table>\n<p><a href=\"" + std::string(HiscorePath) + "\">The best " +
                 std::to_string(TableLength) + "</a></p>\n";
    return {200, Page("Hiscores received", body_html), ""};
}

Reply HiscoreSite::Table() {
    const std::optional<std::vector<StoredEntry>> best = store_.Best(TableLength);
    if (!best) return Refusal(500, "the hiscore database could not be read; please try again later");
    std::string body = "<table>\n<tr><th>Place</th><th>Name</th><th>Level</th><th>Score</th><th>Date</th></tr>\n";
    int place = 0;
    for (const StoredEntry& entry : *best)
        body += Row(std::to_string(++place), entry.Name, entry.Level, entry.Score, entry.Received.substr(0, 10));
    body += "</table>\n";
    if (best->empty()) body += "<p>No hiscores have been submitted yet.</p>\n";
    return {200, Page("TOLVA II Internet hiscores", body), ""};
}

} // namespace tolva::hiscored
