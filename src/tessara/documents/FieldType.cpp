#include "tessara/documents/FieldType.h"

#include <array>

namespace tessara {

namespace {
constexpr std::array<std::string_view, 18> kRawValues = {
    "TEXT",     "NEW_LINE", "HORIZONTAL_LINE", "INPUT", "AREA",    "CHECKBOX", "RADIO",
    "DROPDOWN", "FLOW",     "SECTION",         "GROUP", "CONSENT", "SUBMIT",   "UPLOAD_FILE",
    "HINT",     "LINK",     "NOMENCLATURE",    "DATE",
};
static_assert(int(FieldType::date) == int(kRawValues.size()) - 1, "one wire string per case");
} // namespace

std::string_view rawValueUtf8(FieldType type) {
    return kRawValues[size_t(type)];
}

QString rawValue(FieldType type) {
    return QString::fromLatin1(rawValueUtf8(type));
}

std::optional<FieldType> fieldTypeFromRaw(std::string_view raw) {
    for (size_t i = 0; i < kRawValues.size(); ++i)
        if (kRawValues[i] == raw)
            return FieldType(i);
    return std::nullopt;
}

std::optional<FieldType> fieldTypeFromRaw(QStringView raw) {
    for (size_t i = 0; i < kRawValues.size(); ++i)
        if (raw == QLatin1StringView(kRawValues[i].data(), qsizetype(kRawValues[i].size())))
            return FieldType(i);
    return std::nullopt;
}

} // namespace tessara
