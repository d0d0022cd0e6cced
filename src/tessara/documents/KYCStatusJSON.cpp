#include "tessara/documents/KYCStatusJSON.h"

#include "tessara/documents/RecordTable.h"

namespace tessara {

namespace {
constexpr RecordTable kTable{
    field("code", &KYCStatusJSON::code),
    field("message", &KYCStatusJSON::message),
};
} // namespace

TESSARA_DEFINE_RECORD(KYCStatusJSON, kTable)

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
