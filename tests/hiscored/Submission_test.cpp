// A submission read with the game's own table code: what passes, what is refused and why.
#include "CodePage.h"
#include "FormFields.h"
#include "Submission.h"

#include "support/ZenkorModule.h"

#include <gtest/gtest.h>

using namespace tolva::hiscored;
using tolva::DefaultSetKey;
using tolva::Hiscores;
using tolva::OtherSetKey;

namespace {

Hiscores Sample() {
    Hiscores table;
    table[0] = {"<I>", 31, 123456789};
    table[1] = {"\"'&", 12, 5000};
    table[2] = {"\xC4\xD6\xDC", 9, 400};
    return table;  // places 3..9 are free
}

SubmissionRead Read(const std::string& body) {
    std::string error;
    const auto form = FormFields::Decode(body, error);
    if (!form) {
        ADD_FAILURE() << error;
        return {};
    }
    return ReadSubmission(*form);
}

std::string Body(const std::string& data) { return "hiscoredata=" + EncodeFormValue(data); }

} // namespace

TEST(Submission, TakesATableThatABrowserSentInUtf8) {
    const std::string data = Sample().MakeHiscoreString(DefaultSetKey);
    const std::string utf8 = CodePageToUtf8(data);
    ASSERT_NE(utf8, data);  // the cipher's high codes make the two differ
    const SubmissionRead read = Read(Body(utf8));
    ASSERT_TRUE(read.Ok) << read.Problem;
    EXPECT_EQ(read.Value.Places[2].Entry.Name, "\xC4\xD6\xDC");
}

TEST(Submission, RefusesTablesThatDoNotCheckOut) {
    // A changed score, a cut text and a missing field are the site's table of refusals;
    // here: another set's table is not what the game submits, and an empty field.
    EXPECT_FALSE(Read(Body(Sample().MakeHiscoreString(OtherSetKey))).Ok);
    EXPECT_FALSE(Read("hiscoredata=").Ok);
}
