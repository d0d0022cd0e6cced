#include "tessara/documents/SubmissionContainer.h"

#include "tessara/documents/RecordCoding.h"

#include <array>

namespace tessara {

using namespace std::string_view_literals;

// The wrapped document sits under "direction", not under the field's name.
void readJson(JsonValue value, SubmissionContainer& out) {
    static constexpr std::array kKeys = {"direction"sv};
    const auto m = JsonReader::members(value, kKeys);
    out.submission = readRecord<SubmissionJSON>(m[0]);
}

void writeJson(JsonWriter& w, const SubmissionContainer& container) {
    w.beginObject();
    w.member("direction", container.submission, writeRecord);
    w.endObject();
}

TESSARA_DEFINE_JSON_CODING(SubmissionContainer)

} // namespace tessara
