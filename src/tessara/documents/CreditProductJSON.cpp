#include "tessara/documents/CreditProductJSON.h"

#include "tessara/documents/RecordCoding.h"

#include <array>

namespace tessara {

using namespace std::string_view_literals;

void readJson(JsonValue value, CreditProductJSON& out) {
    static constexpr std::array kKeys = {
        "annualExpenseRate"sv, "annualInterestRate"sv, "maxPrincipal"sv,       "minPrincipal"sv, "periods"sv,
        "productId"sv,         "productName"sv,        "productPeriodicity"sv, "productType"sv,  "step"sv};
    const auto m = JsonReader::members(value, kKeys);
    using R = JsonReader;
    out.annualExpenseRate = R::readOptional(m[0], readDecimal);
    out.annualInterestRate = R::readOptional(m[1], readDecimal);
    out.maxPrincipal = R::readDecimal(m[2]);
    out.minPrincipal = R::readDecimal(m[3]);
    out.periods = readArrayOf<CreditProductPeriodJSON>(m[4]);
    out.productId = R::readInt64(m[5]);
    out.productName = R::readString(m[6]);
    out.productPeriodicity = R::readString(m[7]);
    out.productType = R::readString(m[8]);
    out.step = R::readOptional(m[9], readInt64);
}

void writeJson(JsonWriter& w, const CreditProductJSON& product) {
    w.beginObject();
    w.optionalMember("annualExpenseRate", product.annualExpenseRate, writeDecimal);
    w.optionalMember("annualInterestRate", product.annualInterestRate, writeDecimal);
    w.member("maxPrincipal", product.maxPrincipal, writeDecimal);
    w.member("minPrincipal", product.minPrincipal, writeDecimal);
    w.member("periods", product.periods, writeArrayOfRecords);
    w.member("productId", product.productId, writeInt64);
    w.member("productName", product.productName, writeString);
    w.member("productPeriodicity", product.productPeriodicity, writeString);
    w.member("productType", product.productType, writeString);
    w.optionalMember("step", product.step, writeInt64);
    w.endObject();
}

TESSARA_DEFINE_JSON_CODING(CreditProductJSON)

// The products endpoint answers with a bare JSON array.
template <>
std::optional<std::vector<CreditProductJSON>>
decodeDocument<std::vector<CreditProductJSON>>(QByteArrayView bytes) {
    const auto dom = JsonDom::parse(bytes);
    if (!dom)
        return std::nullopt;
    try {
        return readArrayOf<CreditProductJSON>(dom->root());
    } catch (const JsonDecodeFailure&) {
        return std::nullopt;
    }
}

template <>
std::optional<QByteArray>
encodeDocument<std::vector<CreditProductJSON>>(const std::vector<CreditProductJSON>& value) {
    JsonWriter writer;
    writeArrayOfRecords(writer, value);
    return writer.take();
}

} // namespace tessara
