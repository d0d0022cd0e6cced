#include "tessara/documents/SubmissionJSON.h"

#include "tessara/documents/RecordCoding.h"

#include <array>

namespace tessara {

using namespace std::string_view_literals;

void readJson(JsonValue value, SubmissionJSON& out) {
    static constexpr std::array kKeys = {"type"sv,        "name"sv,           "submissionId"sv,
                                         "directionId"sv, "processId"sv,      "fields"sv,
                                         "settings"sv,    "creditProducts"sv, "instalmentDetails"sv};
    const auto m = JsonReader::members(value, kKeys);
    using R = JsonReader;
    out.type = R::readOptional(m[0], readString);
    out.name = R::readOptional(m[1], readString);
    out.submissionId = R::readOptional(m[2], readString);
    out.directionId = R::readOptional(m[3], readString);
    out.processId = R::readOptional(m[4], readString);
    out.fields = readArrayOf<FieldJSON>(m[5]);
    out.settings = R::readOptional(m[6], readRecord<SubmissionSettings>);
    out.creditProducts = R::readOptional(m[7], readArrayOf<CreditProductJSON>);
    out.instalmentDetails = R::readOptional(m[8], readRecord<CreditInstalmentDetailsJSON>);
}

void writeJson(JsonWriter& w, const SubmissionJSON& submission) {
    w.beginObject();
    w.optionalMember("creditProducts", submission.creditProducts, writeArrayOfRecords);
    w.optionalMember("directionId", submission.directionId, writeString);
    w.member("fields", submission.fields, writeArrayOfRecords);
    w.optionalMember("instalmentDetails", submission.instalmentDetails, writeRecord);
    w.optionalMember("name", submission.name, writeString);
    w.optionalMember("processId", submission.processId, writeString);
    w.optionalMember("settings", submission.settings, writeRecord);
    w.optionalMember("submissionId", submission.submissionId, writeString);
    w.optionalMember("type", submission.type, writeString);
    w.endObject();
}

TESSARA_DEFINE_JSON_CODING(SubmissionJSON)

// The list endpoints answer with a bare JSON array of step documents.
template <>
std::optional<std::vector<SubmissionJSON>> decodeDocument<std::vector<SubmissionJSON>>(QByteArrayView bytes) {
    const auto dom = JsonDom::parse(bytes);
    if (!dom)
        return std::nullopt;
    try {
        return readArrayOf<SubmissionJSON>(dom->root());
    } catch (const JsonDecodeFailure&) {
        return std::nullopt;
    }
}

template <>
std::optional<QByteArray>
encodeDocument<std::vector<SubmissionJSON>>(const std::vector<SubmissionJSON>& value) {
    JsonWriter writer;
    writeArrayOfRecords(writer, value);
    return writer.take();
}

} // namespace tessara
