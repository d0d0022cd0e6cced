#include "tessara/documents/CreditProductPeriodJSON.h"

#include "tessara/documents/RecordCoding.h"

#include <array>

namespace tessara {

using namespace std::string_view_literals;

void readJson(JsonValue value, CreditProductPeriodJSON& out) {
    static constexpr std::array kKeys = {"maxPrincipal"sv, "minPrincipal"sv, "period"sv};
    const auto m = JsonReader::members(value, kKeys);
    out.maxPrincipal = JsonReader::readDecimal(m[0]);
    out.minPrincipal = JsonReader::readDecimal(m[1]);
    out.period = JsonReader::readInt64(m[2]);
}

void writeJson(JsonWriter& w, const CreditProductPeriodJSON& period) {
    w.beginObject();
    w.member("maxPrincipal", period.maxPrincipal, writeDecimal);
    w.member("minPrincipal", period.minPrincipal, writeDecimal);
    w.member("period", period.period, writeInt64);
    w.endObject();
}

TESSARA_DEFINE_JSON_CODING(CreditProductPeriodJSON)

} // namespace tessara
