#include "support/ZenkorModule.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

using tolva::CInt;
using tolva::CLng;
using tolva::NumberText;
using tolva::Val;

TEST(ZenkorNumbers, RoundingGoesToTheEvenNeighbourAndSaturates) {
    const struct {
        double in;
        int out;
    } cases[] = {{0.5, 0},   {1.5, 2},   {2.5, 2},   {3.5, 4},     {-0.5, 0}, {-1.5, -2}, {-2.5, -2},
                 {0.49, 0},  {0.51, 1},  {-0.51, -1}, {2.4999, 2}, {7, 7},    {-7, -7},   {1e-300, 0},
                 {32766.5, 32766}, {-32767.5, -32768}};
    for (const auto& c : cases) {
        EXPECT_EQ(CInt(c.in), c.out) << c.in;
        EXPECT_EQ(CLng(c.in), c.out) << c.in;
    }
    EXPECT_EQ(CInt(32767.5), 32767);
    EXPECT_EQ(CInt(40000), 32767);
    EXPECT_EQ(CInt(-40000), -32768);
    EXPECT_EQ(CInt(1e300), 32767);
    EXPECT_EQ(CInt(-std::numeric_limits<double>::infinity()), -32768);
    EXPECT_EQ(CInt(std::nan("")), 0);
    EXPECT_EQ(CLng(40000), 40000);
    EXPECT_EQ(CLng(2147483646.5), 2147483646);
    EXPECT_EQ(CLng(2147483647.5), 2147483647);
    EXPECT_EQ(CLng(-2147483648.5), -2147483647 - 1);
    EXPECT_EQ(CLng(1e20), 2147483647);
    EXPECT_EQ(CLng(-1e20), -2147483647 - 1);
    EXPECT_EQ(CLng(4503599627370497.0), 2147483647);  // above 2^52: already whole
}

TEST(ZenkorNumbers, ValReadsTheLeadingDecimalNumber) {
    const struct {
        const char* text;
        double value;
    } cases[] = {
        {"12abc", 12},    {" -3.5", -3.5}, {"abc", 0},      {"", 0},        {"1e3", 1000},   {"\t+7", 7},
        {".5", 0.5},      {"-.25", -0.25}, {"5.", 5},       {"1.2.3", 1.2}, {"2e", 2},       {"2e+", 2},
        {"2E-2x", 0.02},  {"- 3", 0},      {"-", 0},        {".", 0},       {"0x10", 0},     {"1,5", 1},
        {"  12  34", 12}, {"007", 7},      {"-0", 0},       {"\x80" "1", 0}, {"3\r\n", 3},
        {"123456789012345", 123456789012345.0},
    };
    for (const auto& c : cases) EXPECT_EQ(Val(c.text), c.value) << '"' << c.text << '"';
    EXPECT_EQ(Val("1e400"), std::numeric_limits<double>::max());
    EXPECT_EQ(Val("-1e400"), -std::numeric_limits<double>::max());
    EXPECT_EQ(Val(std::string(400, '9')), std::numeric_limits<double>::max());
    EXPECT_EQ(Val("1e-400"), 0.0);
    EXPECT_EQ(Val("0.000000000000000000000000000001e-390"), 0.0);
    EXPECT_EQ(Val("0." + std::string(400, '0') + "1"), 0.0);
    EXPECT_EQ(Val("0.001e311"), 1e308);
}

TEST(ZenkorNumbers, NumberTextIsPlainDecimalThatValReadsBack) {
    EXPECT_EQ(NumberText(0), "0");
    EXPECT_EQ(NumberText(-0.0), "0");
    EXPECT_EQ(NumberText(42), "42");
    EXPECT_EQ(NumberText(-17), "-17");
    EXPECT_EQ(NumberText(1234567), "1234567");
    EXPECT_EQ(NumberText(999999999999999.0), "999999999999999");
    EXPECT_EQ(NumberText(0.5), "0.5");
    EXPECT_EQ(NumberText(-3.25), "-3.25");
    EXPECT_EQ(NumberText(0.1 + 0.2), "0.3");
    EXPECT_EQ(NumberText(1e15), "1E+15");
    EXPECT_EQ(NumberText(1e-5), "1E-05");
    EXPECT_EQ(NumberText(std::nan("")), "NaN");
    EXPECT_EQ(NumberText(-std::numeric_limits<double>::infinity()), "-Inf");
    for (double v : {3.0, -2.5, 123456.789, 1e-3, 98765432109876.0, -1e20, 6.02214076e23})
        EXPECT_EQ(Val(NumberText(v)), v) << NumberText(v);
}
