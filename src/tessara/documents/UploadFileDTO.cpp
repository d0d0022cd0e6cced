#include "tessara/documents/UploadFileDTO.h"

#include "tessara/documents/RecordCoding.h"

#include <array>

namespace tessara {

using namespace std::string_view_literals;

void readJson(JsonValue value, UploadFileDTO& out) {
    static constexpr std::array kKeys = {"submissionId"sv, "key"sv, "fromDirectionId"sv};
    const auto m = JsonReader::members(value, kKeys);
    out.submissionId = JsonReader::readString(m[0]);
    out.key = JsonReader::readString(m[1]);
    out.fromDirectionId = JsonReader::readString(m[2]);
}

void writeJson(JsonWriter& w, const UploadFileDTO& dto) {
    w.beginObject();
    w.member("fromDirectionId", dto.fromDirectionId, writeString);
    w.member("key", dto.key, writeString);
    w.member("submissionId", dto.submissionId, writeString);
    w.endObject();
}

TESSARA_DEFINE_JSON_CODING(UploadFileDTO)

} // namespace tessara
