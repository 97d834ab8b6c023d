// Reading the form body strictly, and the game's code page on its way into pages.
#include "CodePage.h"
#include "FormFields.h"

#include <gtest/gtest.h>

using namespace tolva::hiscored;

TEST(FormFields, DecodesFieldsAsTheBrowserEncodedThem) {
    std::string error;
    const auto form = FormFields::Decode("hiscoredata=a+b%2C%FF%00c&&stat=&flag&x=%41=%3d", error);
    ASSERT_TRUE(form) << error;
    ASSERT_TRUE(form->Find("hiscoredata"));
    EXPECT_EQ(*form->Find("hiscoredata"), std::string("a b,\xFF\0c", 7));
    EXPECT_EQ(*form->Find("stat"), "");
    EXPECT_EQ(*form->Find("flag"), "");  // a name without '=' is a field with no value
    EXPECT_EQ(*form->Find("x"), "A==");
    EXPECT_EQ(form->Find("missing"), nullptr);
    EXPECT_TRUE(FormFields::Decode("", error));
}

TEST(FormFields, RefusesBrokenEscapesAndRepeatedFields) {
    for (const char* body : {"a=%", "a=%4", "a=%G1", "a=1%", "%zz=1", "a=%%41"}) {
        std::string error;
        EXPECT_FALSE(FormFields::Decode(body, error)) << body;
        EXPECT_NE(error.find("encoding"), std::string::npos) << body;
    }
    std::string error;
    EXPECT_FALSE(FormFields::Decode("hiscoredata=1&hiscoredata=2", error));
    EXPECT_NE(error.find("more than once"), std::string::npos);
    // The same name written two ways is still the same field.
    EXPECT_FALSE(FormFields::Decode("stat=1&st%61t=2", error));
}

TEST(FormFields, EncodesEveryByteSoThatItDecodesBack) {
    std::string all;
    for (int c = 0; c < 256; ++c) all += static_cast<char>(c);
    const std::string encoded = EncodeFormValue(all);
    EXPECT_EQ(encoded.find_first_of("&= "), std::string::npos);
    std::string error;
    const auto form = FormFields::Decode("v=" + encoded, error);
    ASSERT_TRUE(form) << error;
    EXPECT_EQ(*form->Find("v"), all);
    EXPECT_EQ(EncodeFormValue("a b&c"), "a+b%26c");
}

TEST(CodePage, EveryByteGoesToUtf8AndBack) {
    std::string all;
    for (int c = 0; c < 256; ++c) all += static_cast<char>(c);
    const std::string utf8 = CodePageToUtf8(all);
    EXPECT_NE(utf8.find("\xE2\x82\xAC"), std::string::npos);  // 0x80 is the euro sign
    EXPECT_NE(utf8.find("\xC3\x84"), std::string::npos);      // 0xC4 is A with diaeresis
    const auto back = Utf8ToCodePage(utf8);
    ASSERT_TRUE(back);
    EXPECT_EQ(*back, all);
}

TEST(CodePage, RefusesMalformedUtf8AndCharactersOutsideTheCodePage) {
    for (const std::string bad : {"\xC3", "\xC0\x80", "\xED\xA0\x80", "\xF8\x88\x80\x80\x80", "a\x80", "\xE2\x82"})
        EXPECT_FALSE(Utf8ToCodePage(bad)) << bad;
    EXPECT_FALSE(Utf8ToCodePage("\xE2\x98\x83"));      // a snowman has no byte in 1252
    EXPECT_FALSE(Utf8ToCodePage("\xF0\x9F\x98\x80"));  // nor has an emoji
}

TEST(CodePage, EscapesMarkupQuotesAndControls) {
    EXPECT_EQ(EscapeHtml("<b>\"A&B'</b>"), "&lt;b&gt;&quot;A&amp;B&#39;&lt;/b&gt;");
    EXPECT_EQ(EscapeHtml(std::string("a\0b\nc\x7F", 6)), "a?b?c?");
    EXPECT_EQ(EscapeHtml("\xC3\x84"), "\xC3\x84");
}
