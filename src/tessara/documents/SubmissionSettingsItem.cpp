#include "tessara/documents/SubmissionSettingsItem.h"

#include "tessara/documents/RecordCoding.h"

#include <array>

namespace tessara {

using namespace std::string_view_literals;

void readJson(JsonValue value, SubmissionSettingsItem& out) {
    static constexpr std::array kKeys = {"itemValue"sv, "name"sv};
    const auto m = JsonReader::members(value, kKeys);
    out.itemValue = JsonReader::readOptional(m[0], readString);
    out.name = JsonReader::readOptional(m[1], readString);
}

void writeJson(JsonWriter& w, const SubmissionSettingsItem& item) {
    w.beginObject();
    w.optionalMember("itemValue", item.itemValue, writeString);
    w.optionalMember("name", item.name, writeString);
    w.endObject();
}

TESSARA_DEFINE_JSON_CODING(SubmissionSettingsItem)

} // namespace tessara
