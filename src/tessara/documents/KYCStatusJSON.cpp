#include "tessara/documents/KYCStatusJSON.h"

#include "tessara/documents/RecordCoding.h"

#include <array>

namespace tessara {

using namespace std::string_view_literals;

void readJson(JsonValue value, KYCStatusJSON& out) {
    static constexpr std::array kKeys = {"code"sv, "message"sv};
    const auto m = JsonReader::members(value, kKeys);
    out.code = JsonReader::readString(m[0]);
    out.message = JsonReader::readString(m[1]);
}

void writeJson(JsonWriter& w, const KYCStatusJSON& status) {
    w.beginObject();
    w.member("code", status.code, writeString);
    w.member("message", status.message, writeString);
    w.endObject();
}

TESSARA_DEFINE_JSON_CODING(KYCStatusJSON)

std::optional<QString> decodeRequiredStringMember(QByteArrayView bytes, std::string_view key) {
    const auto dom = JsonDom::parse(bytes);
    if (!dom)
        return std::nullopt;
    try {
        const std::array keys = {key};
        return JsonReader::readString(JsonReader::members(dom->root(), keys)[0]);
    } catch (const JsonDecodeFailure&) {
        return std::nullopt;
    }
}

} // namespace tessara
