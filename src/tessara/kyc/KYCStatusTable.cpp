#include "tessara/kyc/KYCStatusTable.h"

#include <array>
#include <string_view>

namespace tessara {

namespace {

struct Row {
    KYCStatusTable::Effect effect;
    std::initializer_list<std::string_view> words;
};

const std::array<Row, 6> kRows{{
    {KYCStatusTable::Effect::terminal,
     {"KYC_STATUS_SELFIE_OK", "KYC_STATUS_FAILED", "FAILED_NO_VIDEO_STREAM_CONNECTION", "PROCESS_SUCCESS",
      "PROCESS_FAIL"}},
    {KYCStatusTable::Effect::noEffect,
     {"KYC_STATUS_ROI_OUT_OF_SCENE", "KYC_STATUS_BAD_CAMERA", "KYC_STATUS_IMAGE_BLURRED",
      "KYC_STATUS_LOW_RESOLUTION", "KYC_STATUS_IMAGE_TOO_SMALL", "KYC_STATUS_ROI_NOT_FOUND"}},
    {KYCStatusTable::Effect::idCard, {"KYC_STATUS_ID_PREPARE_BACK", "KYC_STATUS_ID_PREPARE_FACE"}},
    {KYCStatusTable::Effect::selfie,
     {"KYC_STATUS_SELFIE_PREPARE_HEAD", "KYC_STATUS_SELFIE_CLOSE_EYE", "KYC_STATUS_SELFIE_TURN_HEAD",
      "KYC_STATUS_SELFIE_TOUCH_ELEMENT", "KYC_STATUS_SELFIE_NO_HEAD",
      "KYC_STATUS_SELFIE_AFTER_ID_PREPARE_HEAD", "KYC_STATUS_SELFIE_OPEN_MOUTH"}},
    {KYCStatusTable::Effect::stopMedia, {"STOP_MEDIA"}},
    {KYCStatusTable::Effect::noService, {"NO_NN_SERVER"}},
}};

} // namespace

KYCStatusTable::Effect KYCStatusTable::effectOf(const QString& word) {
    const QByteArray utf8 = word.toUtf8();
    const std::string_view text(utf8.constData(), size_t(utf8.size()));
    for (const Row& row : kRows)
        for (std::string_view candidate : row.words)
            if (candidate == text)
                return row.effect;
    return Effect::other;
}

bool KYCStatusTable::waitsForButton(const QString& word) {
    return word == QLatin1String("FAILED_NO_VIDEO_STREAM_CONNECTION");
}

} // namespace tessara
