#include "tessara/documents/SpecialType.h"

#include <array>

namespace tessara {

namespace {
constexpr std::array<std::string_view, kSpecialTypeCount> kRawValues = {
    "ADDRESS",
    "AMOUNT",
    "CHECK_FORM1",
    "CHECK_FORM2",
    "CHECK_HOLO1",
    "CHECK_HOLO2",
    "CHOOSE_PRODUCT",
    "DATE_FORMAT",
    "DATE_OF_EXPIRY",
    "DATE_OF_ISSUE",
    "DOC_ID",
    "FIRST_INSTALLMENT_SETTING",
    "NAME",
    "NAME_EN",
    "ID_BACK_URL",
    "ID_FACE_URL",
    "INSTALLMENT_AMOUNT",
    "INSTALLMENT_DATE",
    "AUTHORITY",
    "FATHER_NAME",
    "FATHER_NAME_EN",
    "MRZ",
    "NATIONALITY",
    "PERIODS",
    "PERIODS_PLURAL",
    "PERIODS_SINGULAR",
    "PLACE_OF_BIRTH",
    "POPUP",
    "PRODUCT_ID",
    "STATUS",
    "SUM_FORMAT",
    "SURNAME",
    "SURNAME_EN",
    "TOTAL_AMOUNT_SETTING",
    "TOTAL_SUM",
    "UIC",
    "VIDEO_URL",
};
static_assert(int(SpecialType::videoURL) == kSpecialTypeCount - 1, "one wire string per case");
} // namespace

std::string_view rawValueUtf8(SpecialType type) {
    return kRawValues[size_t(type)];
}

QString rawValue(SpecialType type) {
    return QString::fromLatin1(rawValueUtf8(type));
}

std::optional<SpecialType> specialTypeFromRaw(QStringView raw) {
    for (size_t i = 0; i < kRawValues.size(); ++i)
        if (raw == QLatin1StringView(kRawValues[i].data(), qsizetype(kRawValues[i].size())))
            return SpecialType(i);
    return std::nullopt;
}

} // namespace tessara
