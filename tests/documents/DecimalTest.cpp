#include "tessara/documents/Decimal.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <string>

using tessara::Decimal;

namespace {

Decimal dec(const char* text) {
    const auto value = Decimal::fromString(std::string_view(text));
    if (!value)
        ADD_FAILURE() << "not a decimal: " << text;
    return value.value_or(Decimal());
}

std::string text(const Decimal& value) {
    return value.toStdString();
}

} // namespace

TEST(Decimal, DescriptionIsPlainDigitsWithoutExponentOrTrailingZeros) {
    const struct {
        const char* input;
        const char* description;
    } cases[] = {
        {"1050.50", "1050.5"},
        {"1e3", "1000"},
        {"1E+3", "1000"},
        {"-0.0", "0"},
        {"-0", "0"},
        {"0.000", "0"},
        {"0.001", "0.001"},
        {"12.5e-3", "0.0125"},
        {"-7.25", "-7.25"},
        {"123456789.000", "123456789"},
        {"2.5E1", "25"},
        {"100", "100"},
        {"99999999999999999999999999999999999999", "99999999999999999999999999999999999999"},
        {"0.00000000000000000000000000000000000001", "0.00000000000000000000000000000000000001"},
        {"1000000000000000000000000000000000000000000000000",
         "1000000000000000000000000000000000000000000000000"},
    };
    for (const auto& c : cases) {
        const auto value = Decimal::fromString(std::string_view(c.input));
        ASSERT_TRUE(value) << c.input;
        EXPECT_EQ(value->description().toStdString(), c.description) << c.input;
    }
}

TEST(Decimal, RejectsTextOutsideTheJsonNumberGrammarOrBeyondItsPrecision) {
    const char* rejected[] = {
        "",
        "-",
        "+1",
        "01",
        "1.",
        ".5",
        "1e",
        "1e+",
        "0x10",
        "1,5",
        " 1",
        "1 ",
        "NaN",
        "Infinity",
        "1.2.3",
        "--1",
        // 39 significant digits cannot be held exactly, so they are refused rather than rounded.
        "123456789012345678901234567890123456789",
        "1.23456789012345678901234567890123456789",
        // Beyond the exponent range.
        "1e5000",
        "1e-5000",
    };
    for (const char* input : rejected)
        EXPECT_FALSE(Decimal::fromString(std::string_view(input))) << input;
    // Trailing zeros are not significant: these hold in 38 digits.
    EXPECT_TRUE(Decimal::fromString(std::string_view("1.000000000000000000000000000000000000000000000")));
    EXPECT_EQ(text(dec("0e999999999999999999")), "0");
    EXPECT_FALSE(Decimal::fromString(QStringView(u"1٥"))); // non-ASCII digit
    EXPECT_EQ(Decimal::fromString(QStringView(u"-2.50"))->description(), QStringLiteral("-2.5"));
}

TEST(Decimal, EqualityAndOrderAreNumeric) {
    EXPECT_EQ(dec("1.50"), dec("1.5"));
    EXPECT_EQ(dec("1e2"), dec("100"));
    EXPECT_EQ(dec("-0"), dec("0"));
    EXPECT_NE(dec("1.5"), dec("1.05"));
    // Ascending; every pair must compare by position.
    const char* ascending[] = {"-1e30",
                               "-100",
                               "-99.99",
                               "-1",
                               "-0.001",
                               "0",
                               "0.0000001",
                               "0.1",
                               "0.99",
                               "1",
                               "1.000000000000000000000000000000000001",
                               "9.5",
                               "10",
                               "100.01",
                               "99999999999999999999999999999999999999",
                               "1e40"};
    const int count = int(std::size(ascending));
    for (int i = 0; i < count; ++i) {
        for (int j = 0; j < count; ++j) {
            const Decimal a = dec(ascending[i]);
            const Decimal b = dec(ascending[j]);
            EXPECT_EQ(a < b, i < j) << ascending[i] << " < " << ascending[j];
            EXPECT_EQ(a == b, i == j) << ascending[i] << " == " << ascending[j];
        }
    }
    EXPECT_EQ(qHash(dec("2.50")), qHash(dec("2.5")));
}

TEST(Decimal, FromDoubleUsesTheShortestTextThatReadsBack) {
    const struct {
        double input;
        const char* description;
    } cases[] = {
        {0.1, "0.1"},
        {1050.5, "1050.5"},
        {-2.75, "-2.75"},
        {1e21, "1000000000000000000000"},
        {0.30000000000000004, "0.30000000000000004"},
        {100.0, "100"},
        {-0.0, "0"},
        {double(3.3f), "3.299999952316284"},
        {5e-324, nullptr},
    };
    for (const auto& c : cases) {
        const Decimal value = Decimal::fromDouble(c.input);
        if (c.description) {
            EXPECT_EQ(text(value), c.description) << c.input;
        }
        EXPECT_EQ(value.toDouble(), c.input) << c.input;
    }
}

TEST(Decimal, ConvertsToBinaryWithCorrectRounding) {
    EXPECT_EQ(dec("0.1").toDouble(), 0.1);
    EXPECT_EQ(dec("0.1").toFloat(), 0.1f);
    EXPECT_EQ(dec("16777217").toFloat(), 16777216.0f); // rounds to even in single precision
    EXPECT_EQ(dec("123456789012345678901234567890").toDouble(), 123456789012345678901234567890.0);
    EXPECT_EQ(dec("-1050.5").toFloat(), -1050.5f);
    EXPECT_EQ(dec("1e4000").toDouble(), std::numeric_limits<double>::infinity());
    EXPECT_EQ(dec("1e-4000").toDouble(), 0.0);
}

TEST(Decimal, IntegerConversionsOnlyForWholeValuesInRange) {
    EXPECT_EQ(dec("1e2").toInt64(), 100);
    EXPECT_EQ(dec("-9223372036854775808").toInt64(), std::numeric_limits<qint64>::min());
    EXPECT_FALSE(dec("9223372036854775808").toInt64());
    EXPECT_EQ(dec("9223372036854775808").toUInt64(), 9223372036854775808ull);
    EXPECT_FALSE(dec("18446744073709551616").toUInt64());
    EXPECT_FALSE(dec("-1").toUInt64());
    EXPECT_FALSE(dec("1.5").toInt64());
    EXPECT_FALSE(dec("1e30").toInt64());
    EXPECT_EQ(Decimal::fromInteger(std::numeric_limits<qint64>::min()).toInt64(),
              std::numeric_limits<qint64>::min());
}

TEST(Decimal, ArithmeticIsExact) {
    const struct {
        const char* a;
        const char* b;
        const char* sum;
        const char* difference;
        const char* product;
    } cases[] = {
        {"0.1", "0.2", "0.3", "-0.1", "0.02"},
        {"1050.50", "-50.5", "1000", "1101", "-53050.25"},
        {"99999999999999999999999999999999999999", "1", "100000000000000000000000000000000000000",
         "99999999999999999999999999999999999998", "99999999999999999999999999999999999999"},
        {"1e29", "1e-8", "100000000000000000000000000000.00000001", "99999999999999999999999999999.99999999",
         "1000000000000000000000"},
        {"123456789012345678901234567890", "0.5", "123456789012345678901234567890.5",
         "123456789012345678901234567889.5", "61728394506172839450617283945"},
        {"0", "-3.25", "-3.25", "3.25", "0"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(text(dec(c.a) + dec(c.b)), c.sum) << c.a << " + " << c.b;
        EXPECT_EQ(text(dec(c.a) - dec(c.b)), c.difference) << c.a << " - " << c.b;
        EXPECT_EQ(text(dec(c.a) * dec(c.b)), c.product) << c.a << " * " << c.b;
    }
}

TEST(Decimal, ResultsBeyondThirtyEightDigitsRoundHalfAwayFromZero) {
    // 38 nines plus 0.5: 39 significant digits, the last one a half.
    EXPECT_EQ(text(dec("99999999999999999999999999999999999999") + dec("0.5")),
              "100000000000000000000000000000000000000");
    EXPECT_EQ(text(dec("1e30") + dec("1e-8")), "1000000000000000000000000000000");
    EXPECT_EQ(text(dec("-1e30") - dec("5e-8")), "-1000000000000000000000000000000.0000001");
    EXPECT_EQ(
        text(dec("-12345678901234567890123456789012345678") * dec("10.00000000000000000000000000000000001")),
        "-123456789012345678901234567890123456900");
    EXPECT_EQ(
        text(dec("11111111111111111111111111111111111111") * dec("11111111111111111111111111111111111111")),
        "12345679012345679012345679012345679012" + std::string(37, '0'));
}

TEST(Decimal, RoundedToScaleHalfAwayFromZero) {
    const struct {
        const char* input;
        int scale;
        const char* expected;
    } cases[] = {
        {"2.345", 2, "2.35"},
        {"2.344", 2, "2.34"},
        {"-2.345", 2, "-2.35"},
        {"2.5", 0, "3"},
        {"-2.5", 0, "-3"},
        {"0.004", 2, "0"},
        {"0.005", 2, "0.01"},
        {"1234.5", -2, "1200"},
        {"1250", -2, "1300"},
        {"7.1", 3, "7.1"},
        {"0.0000001", 2, "0"},
        {"999.995", 2, "1000"},
        {"123456789012345678901234567890.125", 2, "123456789012345678901234567890.13"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(text(dec(c.input).rounded(c.scale)), c.expected) << c.input << " to " << c.scale;
}

TEST(Decimal, DivisionKeepsThirtyEightDigits) {
    EXPECT_EQ(text(*dec("1").divided(dec("3"))), "0." + std::string(38, '3'));
    EXPECT_EQ(text(*dec("2").divided(dec("3"))), "0." + std::string(37, '6') + "7");
    EXPECT_EQ(text(*dec("-10").divided(dec("4"))), "-2.5");
    EXPECT_EQ(text(*dec("1000").divided(dec("0.001"))), "1000000");
    EXPECT_EQ(text(*dec("99999999999999999999999999999999999999")
                        .divided(dec("99999999999999999999999999999999999999"))),
              "1");
    EXPECT_FALSE(dec("1").divided(dec("0")));
    // A monthly annuity factor, the computation the reference backend performs.
    const Decimal rate = *dec("0.12").divided(dec("12"));
    EXPECT_EQ(text(rate), "0.01");
}

TEST(DecimalDeathTest, NonFiniteDoubleIsFatal) {
    EXPECT_DEATH(Decimal::fromDouble(std::nan("")), "non-finite");
    EXPECT_DEATH(Decimal::fromDouble(HUGE_VAL), "non-finite");
}
