#include "DocumentTestSupport.h"
#include "tessara/documents/CreditInstalmentDatesJSON.h"
#include "tessara/documents/CreditInstalmentDetailsJSON.h"
#include "tessara/documents/CreditProductJSON.h"
#include "tessara/documents/KYCStatusJSON.h"

#include <gtest/gtest.h>

using namespace tessara;
using tessara::test::decode;
using tessara::test::str;

namespace {

// A product with every key; `drop` removes one member, `replace` swaps one value.
std::string productJson(const std::string& drop = "", const std::string& key = "",
                        const std::string& value = "") {
    const std::pair<std::string, std::string> members[] = {
        {"annualExpenseRate", "12.5"},
        {"annualInterestRate", "9.99"},
        {"maxPrincipal", "5000"},
        {"minPrincipal", "100"},
        {"periods", R"([{"maxPrincipal":5000,"minPrincipal":100,"period":12}])"},
        {"productId", "7"},
        {"productName", R"("Бърз")"},
        {"productPeriodicity", R"("MONTHLY")"},
        {"productType", R"("LOAN")"},
        {"step", "50"},
    };
    std::string json = "{";
    for (const auto& [name, defaultValue] : members) {
        if (name == drop)
            continue;
        if (json.size() > 1)
            json += ",";
        json += "\"" + name + "\":" + (name == key ? value : defaultValue);
    }
    return json + "}";
}

} // namespace

TEST(CreditDocuments, ProductRequiresItsMandatoryKeys) {
    const struct {
        const char* key;
        bool required;
    } cases[] = {
        {"annualExpenseRate", false},
        {"annualInterestRate", false},
        {"maxPrincipal", true},
        {"minPrincipal", true},
        {"periods", true},
        {"productId", true},
        {"productName", true},
        {"productPeriodicity", true},
        {"productType", true},
        {"step", false},
    };
    ASSERT_TRUE(decode<CreditProductJSON>(productJson()));
    for (const auto& c : cases) {
        EXPECT_EQ(decode<CreditProductJSON>(productJson(c.key)).has_value(), !c.required)
            << "without " << c.key;
        EXPECT_EQ(decode<CreditProductJSON>(productJson("", c.key, "null")).has_value(), !c.required)
            << "null " << c.key;
    }
}

TEST(CreditDocuments, ProductValueTypesAreStrict) {
    const struct {
        const char* key;
        const char* value;
        bool decodes;
    } cases[] = {
        {"productId", R"("7")", false},
        {"productId", "7.5", false},
        {"productId", "-7", true},
        {"productId", "9223372036854775807", true},
        {"productId", "9223372036854775808", false},
        {"maxPrincipal", R"("5000")", false},
        {"maxPrincipal", "5e3", true},
        {"maxPrincipal", "true", false},
        {"maxPrincipal", "18446744073709551615", true},
        {"maxPrincipal", "123456789012345678901234567890123456789", false}, // 39 digits cannot be exact
        {"step", "1.5", false},
        {"step", R"("1")", false},
        {"productName", "1", false},
        {"periods", "{}", false},
        {"periods", "[]", true},
        {"periods", R"([{"maxPrincipal":1,"minPrincipal":1}])", false},
        {"periods", R"([{"maxPrincipal":1,"minPrincipal":1,"period":"12"}])", false},
        {"periods", R"([{"maxPrincipal":1,"minPrincipal":1,"period":12.5}])", false},
    };
    for (const auto& c : cases)
        EXPECT_EQ(decode<CreditProductJSON>(productJson("", c.key, c.value)).has_value(), c.decodes)
            << c.key << " = " << c.value;
}

TEST(CreditDocuments, AmountsStayExactFromBytesToTextAndBack) {
    // 30 integer digits plus cents: far beyond what a double holds.
    const std::string json =
        R"({"maxPrincipal":123456789012345678901234567890.12,"minPrincipal":0.1,"period":12})";
    const auto period = decode<CreditProductPeriodJSON>(json);
    ASSERT_TRUE(period);
    EXPECT_EQ(period->maxPrincipal.description(), "123456789012345678901234567890.12");
    EXPECT_EQ(period->minPrincipal.description(), "0.1");
    EXPECT_EQ(str(encodeDocument(*period)), json);

    const auto large = decode<CreditProductPeriodJSON>(
        R"({"maxPrincipal":123456789012345678901234567890,"minPrincipal":1.50,"period":1})");
    ASSERT_TRUE(large);
    EXPECT_EQ(large->maxPrincipal.description(), "123456789012345678901234567890");
    EXPECT_EQ(large->minPrincipal, Decimal::fromInteger(3).divided(Decimal::fromInteger(2)));
}

TEST(CreditDocuments, ProductListAndEquality) {
    const auto list =
        decode<std::vector<CreditProductJSON>>("[" + productJson() + "," + productJson("step") + "]");
    ASSERT_TRUE(list);
    ASSERT_EQ(list->size(), 2u);
    EXPECT_EQ((*list)[0].productName, QStringLiteral("Бърз"));
    EXPECT_EQ((*list)[0].step, 50);
    EXPECT_FALSE((*list)[1].step);
    EXPECT_NE((*list)[0], (*list)[1]); // an absent optional equals only an absent one
    EXPECT_EQ(decode<CreditProductJSON>(productJson("", "maxPrincipal", "5000.00")), (*list)[0]);
    EXPECT_FALSE(decode<std::vector<CreditProductJSON>>("[" + productJson() + ",{}]"));
}

TEST(CreditDocuments, DetailsUseTheBackendSpellings) {
    const std::string good = R"({"selectedCreditAmount":1000,"selectedPeriod":12,"installmentAmount":88.85,)"
                             R"("totalDueAmount":1066.2,"acruals":[{"amount":66.2,"balanceCode":"INT",)"
                             R"("name":"Лихва","type":1}]})";
    const auto details = decode<CreditInstalmentDetailsJSON>(good);
    ASSERT_TRUE(details);
    EXPECT_EQ(details->instalmentAmount.description(), "88.85");
    EXPECT_EQ(details->accruals.size(), 1u);
    EXPECT_EQ(details->accruals[0].name, QStringLiteral("Лихва"));

    const struct {
        const char* name;
        std::string json;
    } failing[] = {
        {"without acruals",
         R"({"selectedCreditAmount":1,"selectedPeriod":1,"installmentAmount":1,"totalDueAmount":1})"},
        {"accruals spelt right",
         R"({"selectedCreditAmount":1,"selectedPeriod":1,"installmentAmount":1,"totalDueAmount":1,"accruals":[]})"},
        {"instalmentAmount with one l",
         R"({"selectedCreditAmount":1,"selectedPeriod":1,"instalmentAmount":1,"totalDueAmount":1,"acruals":[]})"},
        {"accrual without type",
         R"({"selectedCreditAmount":1,"selectedPeriod":1,"installmentAmount":1,"totalDueAmount":1,)"
         R"("acruals":[{"amount":1,"balanceCode":"b","name":"n"}]})"},
    };
    for (const auto& c : failing)
        EXPECT_FALSE(decode<CreditInstalmentDetailsJSON>(c.json)) << c.name;
}

TEST(CreditDocuments, InstalmentDatesAreSortedAndTheDefaultIsLenient) {
    const struct {
        const char* name;
        const char* json;
        bool decodes;
        std::optional<QDate> defaultDate;
        std::vector<QDate> available;
    } cases[] = {
        {"sorted ascending",
         R"({"productId":"7","defaultFirstInstallmentDate":"2026-01-15",
           "availableDates":["2026-02-01","2026-01-01","2025-12-31"]})",
         true,
         QDate(2026, 1, 15),
         {QDate(2025, 12, 31), QDate(2026, 1, 1), QDate(2026, 2, 1)}},
        {"default absent", R"({"productId":"7","availableDates":[]})", true, std::nullopt, {}},
        {"default null",
         R"({"productId":"7","defaultFirstInstallmentDate":null,"availableDates":[]})",
         true,
         std::nullopt,
         {}},
        {"default unreadable",
         R"({"productId":"7","defaultFirstInstallmentDate":"15.01.2026","availableDates":[]})",
         true,
         std::nullopt,
         {}},
        {"default impossible",
         R"({"productId":"7","defaultFirstInstallmentDate":"2026-02-30","availableDates":[]})",
         true,
         std::nullopt,
         {}},
        {"default not text",
         R"({"productId":"7","defaultFirstInstallmentDate":20260115,"availableDates":[]})",
         false,
         std::nullopt,
         {}},
        {"product id as number", R"({"productId":7,"availableDates":[]})", false, std::nullopt, {}},
        {"no available dates", R"({"productId":"7"})", false, std::nullopt, {}},
        {"date element not text", R"({"productId":"7","availableDates":[1]})", false, std::nullopt, {}},
        // The product id is read first, so its absence is a decoding failure before any date is read.
        {"no product id, bad date", R"({"availableDates":["nope"]})", false, std::nullopt, {}},
    };
    for (const auto& c : cases) {
        const auto dates = decode<CreditInstalmentDatesJSON>(c.json);
        ASSERT_EQ(dates.has_value(), c.decodes) << c.name;
        if (!dates)
            continue;
        EXPECT_EQ(dates->productId, "7") << c.name;
        EXPECT_EQ(dates->defaultFirstInstallmentDate, c.defaultDate) << c.name;
        EXPECT_EQ(dates->availableDates, c.available) << c.name;
    }
    EXPECT_EQ(
        str(encodeDocument(CreditInstalmentDatesJSON{"7", QDate(2026, 1, 5), {QDate(2026, 1, 5)}})),
        R"({"availableDates":["2026-01-05"],"defaultFirstInstallmentDate":"2026-01-05","productId":"7"})");
}

TEST(CreditDocumentsDeathTest, UnreadableAvailableDateIsFatal) {
    EXPECT_DEATH(decode<CreditInstalmentDatesJSON>(
                     R"({"productId":"7","availableDates":["2026-01-01","01/02/2026"]})"),
                 "01/02/2026");
    EXPECT_DEATH(decode<CreditInstalmentDatesJSON>(R"({"productId":"7","availableDates":["2026-13-01"]})"),
                 "2026-13-01");
}

TEST(CreditDocuments, StatusDocument) {
    EXPECT_EQ(decode<KYCStatusJSON>(R"({"code":"SUCCESS","message":"ok","extra":1})"),
              (KYCStatusJSON{"SUCCESS", "ok"}));
    EXPECT_FALSE(decode<KYCStatusJSON>(R"({"code":"SUCCESS"})"));
    EXPECT_FALSE(decode<KYCStatusJSON>(R"({"code":1,"message":"m"})"));
}
