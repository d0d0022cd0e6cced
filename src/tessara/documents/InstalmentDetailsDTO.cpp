#include "tessara/documents/InstalmentDetailsDTO.h"

#include "tessara/documents/RecordCoding.h"

#include <array>

namespace tessara {

using namespace std::string_view_literals;

void readJson(JsonValue value, InstalmentDetailsDTO& out) {
    static constexpr std::array kKeys = {"productId"sv, "amount"sv, "periods"sv};
    const auto m = JsonReader::members(value, kKeys);
    out.productId = JsonReader::readInt64(m[0]);
    out.amount = JsonReader::readDecimal(m[1]);
    out.periods = JsonReader::readInt64(m[2]);
}

void writeJson(JsonWriter& w, const InstalmentDetailsDTO& dto) {
    w.beginObject();
    w.member("amount", dto.amount, writeDecimal);
    w.member("periods", dto.periods, writeInt64);
    w.member("productId", dto.productId, writeInt64);
    w.endObject();
}

TESSARA_DEFINE_JSON_CODING(InstalmentDetailsDTO)

} // namespace tessara
