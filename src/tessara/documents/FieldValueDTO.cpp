#include "tessara/documents/FieldValueDTO.h"

#include "tessara/documents/RecordCoding.h"

#include <array>

namespace tessara {

using namespace std::string_view_literals;

void readJson(JsonValue value, FieldValueDTO& out) {
    static constexpr std::array kKeys = {"key"sv, "value"sv};
    const auto m = JsonReader::members(value, kKeys);
    out.key = JsonReader::readString(m[0]);
    out.value = JsonReader::readString(m[1]);
}

void writeJson(JsonWriter& w, const FieldValueDTO& dto) {
    w.beginObject();
    w.member("key", dto.key, writeString);
    w.member("value", dto.value, writeString);
    w.endObject();
}

TESSARA_DEFINE_JSON_CODING(FieldValueDTO)

} // namespace tessara
