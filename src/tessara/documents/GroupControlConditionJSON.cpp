#include "tessara/documents/GroupControlConditionJSON.h"

#include "tessara/documents/RecordCoding.h"

#include <array>

namespace tessara {

using namespace std::string_view_literals;

void readJson(JsonValue value, GroupControlConditionJSON& out) {
    static constexpr std::array kKeys = {"fieldKey"sv, "sectionKey"sv, "value"sv, "operator"sv, "hide"sv};
    const auto m = JsonReader::members(value, kKeys);
    out.fieldKey = JsonReader::readOptional(m[0], readString);
    out.sectionKey = JsonReader::readOptional(m[1], readString);
    out.value = JsonReader::readOptional(m[2], readString);
    out.groupOperator = JsonReader::readOptional(m[3], [](JsonValue raw) {
        const auto type = groupControlOperatorTypeFromRaw(JsonReader::readUtf8(raw));
        if (!type)
            JsonReader::fail();
        return *type;
    });
    out.shouldHide = JsonReader::readOptional(m[4], readBool);
}

void writeJson(JsonWriter& w, const GroupControlConditionJSON& condition) {
    w.beginObject();
    w.optionalMember("fieldKey", condition.fieldKey, writeString);
    w.optionalMember("hide", condition.shouldHide, writeBool);
    w.optionalMember("operator", condition.groupOperator,
                     [](JsonWriter& writer, GroupControlOperatorType type) {
                         writer.writeUtf8String(rawValueUtf8(type));
                     });
    w.optionalMember("sectionKey", condition.sectionKey, writeString);
    w.optionalMember("value", condition.value, writeString);
    w.endObject();
}

TESSARA_DEFINE_JSON_CODING(GroupControlConditionJSON)

} // namespace tessara
