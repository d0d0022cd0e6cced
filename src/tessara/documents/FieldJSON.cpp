#include "tessara/documents/FieldJSON.h"

#include "tessara/documents/RecordCoding.h"

#include <array>

namespace tessara {

namespace {

using namespace std::string_view_literals;

// The order in which keys are read: a failure anywhere fails the whole field.
constexpr std::array kKeys = {
    "type"sv,
    "value"sv,
    "styleClass"sv,
    "key"sv,
    "validation"sv,
    "validationError"sv,
    "label"sv,
    "options"sv,
    "directionId"sv,
    "directionLabel"sv,
    "specialType"sv,
    "variableLabel"sv,
    "condition"sv,
    "flowDirectionId"sv,
    "flowDirectionType"sv,
    "hideInEndUserFrontend"sv,
    "variableType"sv,
    "consentContent"sv,
    "fieldId"sv,
    "flowFieldId"sv,
    "required"sv,
    "hidden"sv,
    "allowedExt"sv,
    "maxSize"sv,
    "sizeError"sv,
    "extError"sv,
    "allignment"sv,
    "notes"sv,
};

FieldType readFieldType(JsonValue value) {
    const auto type = fieldTypeFromRaw(JsonReader::readUtf8(value));
    if (!type)
        JsonReader::fail();
    return *type;
}

} // namespace

void readJson(JsonValue value, FieldJSON& out) {
    const auto m = JsonReader::members(value, kKeys);
    using R = JsonReader;
    out.type = readFieldType(m[0]);
    out.value = R::readOptional(m[1], readString);
    out.styleClass = R::readOptional(m[2], readString);
    out.key = R::readOptional(m[3], readString);
    out.validation = R::readOptional(m[4], readString);
    out.validationError = R::readOptional(m[5], readString);
    out.label = R::readOptional(m[6], readString);
    out.options = R::readOptional(m[7], readArrayOf<FieldOption>);
    out.directionId = R::readOptional(m[8], readString);
    out.directionLabel = R::readOptional(m[9], readString);
    out.specialType = R::readOptional(m[10], readString);
    out.variableLabel = R::readOptional(m[11], readString);
    out.condition = R::readOptional(m[12], readRecord<GroupControlConditionJSON>);
    out.flowDirectionId = R::readOptional(m[13], readString);
    out.flowDirectionType = R::readOptional(m[14], readString);
    out.hideInEndUserFrontend = R::readOptional(m[15], readBool);
    out.variableType = R::readOptional(m[16], readString);
    out.consentContent = R::readOptional(m[17], readArrayOf<FieldJSON>);
    out.fieldId = R::readOptional(m[18], readInt64);
    out.flowFieldId = R::readOptional(m[19], readInt64);
    out.isRequired = R::readOptional(m[20], readBool);
    out.isHidden = R::readOptional(m[21], readBool);
    out.allowedFileExtensions = R::readOptional(
        m[22], [](JsonValue list) { return JsonReader::readArray<QString>(list, readString); });
    out.maximumFileSize = R::readOptional(m[23], readUInt64);
    out.fileSizeError = R::readOptional(m[24], readString);
    out.fileExtensionError = R::readOptional(m[25], readString);
    out.alignment = R::readOptional(m[26], readString);
    out.notes = R::readOptional(m[27], readString);
    // `fields` has no key: a decoded field always starts without it.
    out.fields.reset();
}

void writeJson(JsonWriter& w, const FieldJSON& field) {
    w.beginObject();
    w.optionalMember("allignment", field.alignment, writeString);
    w.optionalMember(
        "allowedExt", field.allowedFileExtensions,
        [](JsonWriter& writer, const std::vector<QString>& list) { writer.writeArray(list, writeString); });
    w.optionalMember("condition", field.condition, writeRecord);
    w.optionalMember("consentContent", field.consentContent, writeArrayOfRecords);
    w.optionalMember("directionId", field.directionId, writeString);
    w.optionalMember("directionLabel", field.directionLabel, writeString);
    w.optionalMember("extError", field.fileExtensionError, writeString);
    w.optionalMember("fieldId", field.fieldId, writeInt64);
    w.optionalMember("flowDirectionId", field.flowDirectionId, writeString);
    w.optionalMember("flowDirectionType", field.flowDirectionType, writeString);
    w.optionalMember("flowFieldId", field.flowFieldId, writeInt64);
    w.optionalMember("hidden", field.isHidden, writeBool);
    w.optionalMember("hideInEndUserFrontend", field.hideInEndUserFrontend, writeBool);
    w.optionalMember("key", field.key, writeString);
    w.optionalMember("label", field.label, writeString);
    w.optionalMember("maxSize", field.maximumFileSize, writeUInt64);
    w.optionalMember("notes", field.notes, writeString);
    w.optionalMember("options", field.options, writeArrayOfRecords);
    w.optionalMember("required", field.isRequired, writeBool);
    w.optionalMember("sizeError", field.fileSizeError, writeString);
    w.optionalMember("specialType", field.specialType, writeString);
    w.optionalMember("styleClass", field.styleClass, writeString);
    w.key("type");
    w.writeUtf8String(rawValueUtf8(field.type));
    w.optionalMember("validation", field.validation, writeString);
    w.optionalMember("validationError", field.validationError, writeString);
    w.optionalMember("value", field.value, writeString);
    w.optionalMember("variableLabel", field.variableLabel, writeString);
    w.optionalMember("variableType", field.variableType, writeString);
    // `fields` is never written: it is the client's own expansion of a section.
    w.endObject();
}

TESSARA_DEFINE_JSON_CODING(FieldJSON)

} // namespace tessara
