#include "tessara/documents/AccrualJSON.h"

#include "tessara/documents/RecordCoding.h"

#include <array>

namespace tessara {

using namespace std::string_view_literals;

void readJson(JsonValue value, AccrualJSON& out) {
    static constexpr std::array kKeys = {"amount"sv, "balanceCode"sv, "name"sv, "type"sv};
    const auto m = JsonReader::members(value, kKeys);
    out.amount = JsonReader::readDecimal(m[0]);
    out.balanceCode = JsonReader::readString(m[1]);
    out.name = JsonReader::readString(m[2]);
    out.type = JsonReader::readInt64(m[3]);
}

void writeJson(JsonWriter& w, const AccrualJSON& accrual) {
    w.beginObject();
    w.member("amount", accrual.amount, writeDecimal);
    w.member("balanceCode", accrual.balanceCode, writeString);
    w.member("name", accrual.name, writeString);
    w.member("type", accrual.type, writeInt64);
    w.endObject();
}

TESSARA_DEFINE_JSON_CODING(AccrualJSON)

} // namespace tessara
