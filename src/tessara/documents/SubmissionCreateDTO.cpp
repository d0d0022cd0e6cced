#include "tessara/documents/SubmissionCreateDTO.h"

#include "tessara/documents/RecordCoding.h"

#include <array>

namespace tessara {

using namespace std::string_view_literals;

void readJson(JsonValue value, SubmissionCreateDTO& out) {
    static constexpr std::array kKeys = {"processId"sv, "callingServiceToken"sv};
    const auto m = JsonReader::members(value, kKeys);
    out.processId = JsonReader::readString(m[0]);
    out.callingServiceToken = JsonReader::readOptional(m[1], readString);
}

void writeJson(JsonWriter& w, const SubmissionCreateDTO& dto) {
    w.beginObject();
    w.optionalMember("callingServiceToken", dto.callingServiceToken, writeString);
    w.member("processId", dto.processId, writeString);
    w.endObject();
}

TESSARA_DEFINE_JSON_CODING(SubmissionCreateDTO)

} // namespace tessara
