#include "tessara/credit/AmountFormat.h"

#include "tessara/documents/SpecialType.h"

#include <gtest/gtest.h>

namespace tessara::test {
namespace {

const QLocale kBulgarian(QLocale::Bulgarian, QLocale::Bulgaria);
const QLocale kAmerican(QLocale::English, QLocale::UnitedStates);

Decimal dec(const char* text) {
    return *Decimal::fromString(std::string_view(text));
}

std::vector<FieldJSON> sumFormat(std::optional<QString> label) {
    FieldJSON other;
    other.specialType = QStringLiteral("AMOUNT");
    other.label = QStringLiteral("{9}X");
    FieldJSON format;
    format.specialType = rawValue(SpecialType::sumFormat);
    format.label = std::move(label);
    FieldJSON second = format;
    second.label = QStringLiteral("{5}Y");
    return {other, format, second};
}

TEST(AmountFormat, TheFirstSumFormatLabelGivesDigitsAndSymbol) {
    struct Case {
        std::optional<QString> label;
        std::optional<int> digits; // absent: no format
        QString symbol;
    };
    const Case cases[] = {
        {QStringLiteral("{2} лв."), 2, QStringLiteral(" лв.")},
        {QStringLiteral("{0}EUR"), 0, QStringLiteral("EUR")},
        {QStringLiteral("{{3}}} €}"), 3, QStringLiteral(" €")},
        {QStringLiteral("лв. {2}"), std::nullopt, {}}, // text before "{"
        {QStringLiteral("{x} лв."), std::nullopt, {}},
        {QStringLiteral("{ 2} лв."), std::nullopt, {}},
        {std::nullopt, std::nullopt, {}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.label.value_or(QStringLiteral("<none>")).toStdString());
        const auto format = AmountFormat::configure(sumFormat(c.label));
        ASSERT_EQ(format.has_value(), c.digits.has_value());
        if (format) {
            EXPECT_EQ(format->fractionDigits(), *c.digits);
            EXPECT_EQ(format->currencySymbol(), c.symbol);
        }
    }
    EXPECT_FALSE(AmountFormat::configure({}).has_value());
}

TEST(AmountFormatDeathTest, ALabelWithoutSymbolOrTextEndsTheProgram) {
    EXPECT_DEATH(AmountFormat::configure(sumFormat(QStringLiteral("{2}"))), "no currency");
    EXPECT_DEATH(AmountFormat::configure(sumFormat(QStringLiteral("{"))), "empty");
}

TEST(AmountFormat, AmountsAreWrittenExactlyInTheLocalesCurrencyLayout) {
    const AmountFormat levs(2, QStringLiteral(" лв."));
    const std::optional<AmountFormat> none;
    struct Case {
        const std::optional<AmountFormat> format;
        QLocale locale;
        const char* amount;
        QString expected;
    };
    const Case cases[] = {
        {levs, kBulgarian, "2750", QStringLiteral("2750,00 лв.")},
        {levs, kBulgarian, "12345.675", QStringLiteral("12\u00a0345,68 лв.")},
        {levs, kBulgarian, "0.125", QStringLiteral("0,12 лв.")}, // a tie goes to the even digit
        {levs, kAmerican, "1234.5", QStringLiteral(" лв.1,234.50")},
        {AmountFormat(2, QStringLiteral("€ ")), QLocale(QLocale::German, QLocale::Germany), "-3",
         QStringLiteral("-3,00\u00a0€ ")},
        {AmountFormat(0, QStringLiteral("€")), kAmerican, "99.5", QStringLiteral("€100")},
        // Beyond any binary double's precision, still exact.
        {AmountFormat(2, QStringLiteral("$")), kAmerican, "123456789012345678901.01",
         QStringLiteral("$123456789012345678901.01")},
        {none, kBulgarian, "1500.5", QStringLiteral("1500,50\u00a0лв.")},
        {none, kAmerican, "1500.5", QStringLiteral("BGN1,500.50")},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.amount);
        QString expected = c.expected;
        QString actual = AmountFormat::formatAmount(c.format, dec(c.amount), c.locale);
        // Locales group with a plain or a no-break space depending on their data; both read alike.
        actual.replace(QChar(0x202F), QChar(0x00A0));
        EXPECT_EQ(actual.toStdString(), expected.toStdString());
    }
}

} // namespace
} // namespace tessara::test
