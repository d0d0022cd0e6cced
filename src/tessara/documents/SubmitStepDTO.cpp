#include "tessara/documents/SubmitStepDTO.h"

#include "tessara/documents/RecordCoding.h"

#include <array>

namespace tessara {

using namespace std::string_view_literals;

void readJson(JsonValue value, SubmitStepDTO& out) {
    static constexpr std::array kKeys = {"submissionId"sv, "directionId"sv, "fromDirectionId"sv,
                                         "fromFlowFieldId"sv, "fields"sv};
    const auto m = JsonReader::members(value, kKeys);
    out.submissionId = JsonReader::readString(m[0]);
    out.directionId = JsonReader::readString(m[1]);
    out.fromDirectionId = JsonReader::readOptional(m[2], readString);
    out.fromFlowFieldId = JsonReader::readOptional(m[3], readString);
    out.fields = readArrayOf<FieldValueDTO>(m[4]);
}

void writeJson(JsonWriter& w, const SubmitStepDTO& dto) {
    w.beginObject();
    w.member("directionId", dto.directionId, writeString);
    w.member("fields", dto.fields, writeArrayOfRecords);
    w.optionalMember("fromDirectionId", dto.fromDirectionId, writeString);
    w.optionalMember("fromFlowFieldId", dto.fromFlowFieldId, writeString);
    w.member("submissionId", dto.submissionId, writeString);
    w.endObject();
}

TESSARA_DEFINE_JSON_CODING(SubmitStepDTO)

} // namespace tessara
