#include "tessara/credit/CreditRules.h"

#include <cmath>
#include <gtest/gtest.h>

namespace tessara::test {
namespace {

Decimal dec(const char* text) {
    return *Decimal::fromString(std::string_view(text));
}

CreditProductJSON product(qint64 id, std::vector<CreditProductPeriodJSON> periods) {
    CreditProductJSON p;
    p.productId = id;
    p.productName = QStringLiteral("P%1").arg(id);
    p.minPrincipal = dec("1"); // the product's own bounds never count
    p.maxPrincipal = dec("99999999");
    p.periods = std::move(periods);
    return p;
}

CreditProductPeriodJSON entry(qint64 period, const char* min, const char* max) {
    return {dec(max), dec(min), period};
}

TEST(CreditRules, AmountsSnapToTheStepIn32BitFloat) {
    struct Case {
        float value;
        float step;
        float expected;
    };
    const Case cases[] = {
        {1050.0f, 100.0f, 1100.0f}, // a half goes away from zero
        {1049.9f, 100.0f, 1000.0f},
        {-1050.0f, 100.0f, -1100.0f},
        {2750.0f, 50.0f, 2750.0f},
        {1234.0f, 1.0f, 1234.0f},
        {16777217.0f, 1.0f, 16777216.0f}, // above 2^24 a float holds even
                                          // units only
        {30000001.0f, 1.0f, 30000000.0f},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.value);
        EXPECT_EQ(CreditRules::snapAmount(c.value, c.step), c.expected);
    }
    // A step of 0 is not guarded: the result is no number.
    EXPECT_TRUE(std::isnan(CreditRules::snapAmount(1234.0f, 0.0f)));
}

TEST(CreditRules, MinAndMaxComeFromThePeriodEntriesOnly) {
    const std::vector<CreditProductJSON> products{
        product(1, {entry(12, "1000", "10000"), entry(24, "500.50", "20000")}),
        product(2, {}),
        product(3, {entry(6, "700", "30000.01")}),
    };
    EXPECT_EQ(CreditRules::computeMinMaxPrincipals(products),
              (MinMaxPrincipals{dec("500.5"), dec("30000.01")}));
    EXPECT_EQ(CreditRules::computeMinMaxPrincipals({product(2, {})}), MinMaxPrincipals{});
    EXPECT_EQ(CreditRules::computeMinMaxPrincipals({}), MinMaxPrincipals{});
}

TEST(CreditRules, SuitablePeriodsIndexTheProductsThatLendTheAmount) {
    const CreditProductJSON a = product(1, {entry(12, "1000", "5000"), entry(24, "8000", "20000")});
    // A product with two entries for one period stands twice in that period's list.
    const CreditProductJSON b = product(2, {entry(12, "500", "3000"), entry(12, "1000", "9000")});
    const std::vector<CreditProductJSON> products{a, b};
    struct Case {
        const char* amount;
        SuitablePeriods expected;
    };
    const Case cases[] = {
        {"1000", {{12, {a, b, b}}}}, // bounds are inclusive
        {"5000", {{12, {a, b}}}},
        {"6000", {{12, {b}}}}, // between a's two ranges only b lends
        {"20000.01", {}},      // above every range
        {"8000", {{12, {b}}, {24, {a}}}},
        {"499.99", {}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.amount);
        EXPECT_EQ(CreditRules::computeSuitablePeriods(products, dec(c.amount)), c.expected);
    }
}

TEST(CreditRules, SettingsKeepProductsByIdentifierInTheBackendsOrder) {
    const std::vector<CreditProductJSON> backend{product(3, {}), product(7, {}), product(9, {})};
    auto settings = [](std::vector<std::optional<QString>> values) {
        SubmissionSettings s;
        s.products.emplace();
        for (auto& v : values)
            s.products->push_back(SubmissionSettingsItem{v, std::nullopt});
        return std::optional<SubmissionSettings>(s);
    };
    struct Case {
        const char* name;
        std::optional<SubmissionSettings> settings;
        std::vector<qint64> kept;
    };
    const Case cases[] = {
        {"no settings", std::nullopt, {3, 7, 9}},
        {"no list", SubmissionSettings{}, {3, 7, 9}},
        {"empty list", settings({}), {}},
        {"settings order does not count", settings({QStringLiteral("9"), QStringLiteral("3")}), {3, 9}},
        {"signs, words, blanks and missing values",
         settings({QStringLiteral("+7"), QStringLiteral("7"), QStringLiteral("seven"), QStringLiteral(""),
                   std::nullopt, QStringLiteral(" 3"), QStringLiteral("9.0")}),
         {7}},
        {"overflow", settings({QStringLiteral("99999999999999999999"), QStringLiteral("-0")}), {}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        std::vector<qint64> kept;
        for (const CreditProductJSON& p : CreditRules::keptProducts(backend, c.settings))
            kept.push_back(p.productId);
        EXPECT_EQ(kept, c.kept);
    }
}

TEST(CreditRules, PeriodsRoundToTheNearestWholeNumber) {
    EXPECT_EQ(CreditRules::roundPeriod(14.5f), 15);
    EXPECT_EQ(CreditRules::roundPeriod(14.49f), 14);
    EXPECT_EQ(CreditRules::roundPeriod(-2.5f), -3);
}

TEST(CreditRulesDeathTest, APeriodThatIsNoWholeNumberEndsTheProgram) {
    for (float value : {NAN, INFINITY, 1e19f}) {
        SCOPED_TRACE(value);
        EXPECT_DEATH(CreditRules::roundPeriod(value), "no whole number of periods");
    }
}

} // namespace
} // namespace tessara::test
