#include "Submission.h"

#include "CodePage.h"
#include "TableRules.h"

#include "support/ZenkorModule.h"


namespace tolva::hiscored {

namespace {

// The table as the browser sent it: normally the page's own code-page bytes, but a
// browser that read the page as UTF-8 posts UTF-8, which is mapped back before a
// second try. The first reading's problem is the one reported if neither checks out.
HiscoreStringParse ParseAsSent(const std::string& data) {
    HiscoreStringParse parse = ParseHiscoreString(data, DefaultSetKey);
    if (parse.Ok()) return parse;
    if (const std::optional<std::string> bytes = Utf8ToCodePage(data); bytes && *bytes != data) {
        HiscoreStringParse second = ParseHiscoreString(*bytes, DefaultSetKey);
        if (second.Ok()) return second;
    }
    return parse;
}

} // namespace

SubmissionRead ReadSubmission(const FormFields& form) {
    SubmissionRead read;
    const std::string* data = form.Find("hiscoredata");
    if (!data) {
        read.Problem = "the form has no hiscoredata field";
        return read;
    }
    if (data->empty()) {
        read.Problem = "the hiscoredata field is empty";
        return read;
    }
    const HiscoreStringParse parse = ParseAsSent(*data);
    if (!parse.Ok()) {
        read.Problem = Describe(parse.Problem);
        return read;
    }
    if (const std::optional<std::string> problem = CheckGameTable(parse.Entries)) {
        read.Problem = *problem;
        return read;
    }
    for (int i = 0; i < Hiscores::Places; ++i) {
        const HiscoreEntry& entry = parse.Entries[static_cast<std::size_t>(i)];
        if (entry.Score > 0) read.Value.Places.push_back({i, entry});
    }
    if (const std::string* stat = form.Find("stat")) {
        read.Value.HasStat = true;
        read.Value.Stat = *stat;
    }
    read.Ok = true;
    return read;
}

} // namespace tolva::hiscored
