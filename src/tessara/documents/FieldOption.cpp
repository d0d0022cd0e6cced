#include "tessara/documents/FieldOption.h"

#include "tessara/documents/RecordCoding.h"

#include <array>

namespace tessara {

using namespace std::string_view_literals;

void readJson(JsonValue value, FieldOption& out) {
    static constexpr std::array kKeys = {"id"sv, "label"sv, "value"sv, "value2"sv};
    const auto m = JsonReader::members(value, kKeys);
    out.id = JsonReader::readInt64(m[0]);
    out.label = JsonReader::readOptional(m[1], readString);
    out.value = JsonReader::readString(m[2]);
    out.value2 = JsonReader::readOptional(m[3], readString);
}

void writeJson(JsonWriter& w, const FieldOption& option) {
    w.beginObject();
    w.member("id", option.id, writeInt64);
    w.optionalMember("label", option.label, writeString);
    w.member("value", option.value, writeString);
    w.optionalMember("value2", option.value2, writeString);
    w.endObject();
}

TESSARA_DEFINE_JSON_CODING(FieldOption)

} // namespace tessara
