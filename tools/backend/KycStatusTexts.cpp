#include "backend/KycStatusTexts.h"

#include <QHash>

namespace tessara {

QString KycStatusTexts::messageFor(const QString& code) {
    static const QHash<QString, QString> texts = {
        {QStringLiteral("KYC_WAIT_FOR_VIDEO_STREAM"), QStringLiteral("Очаква се видео връзка.")},
        {QStringLiteral("KYC_STATUS_ID_PREPARE_FACE"),
         QStringLiteral("Покажете лицевата страна на личната карта.")},
        {QStringLiteral("KYC_STATUS_ID_PREPARE_BACK"), QStringLiteral("Покажете гърба на личната карта.")},
        {QStringLiteral("KYC_STATUS_SELFIE_PREPARE_HEAD"), QStringLiteral("Погледнете право в камерата.")},
        {QStringLiteral("KYC_STATUS_SELFIE_OK"), QStringLiteral("Самоличността е потвърдена.")},
        {QStringLiteral("KYC_STATUS_FAILED"), QStringLiteral("Самоличността не беше потвърдена.")},
        {QStringLiteral("FAILED_NO_VIDEO_STREAM_CONNECTION"), QStringLiteral("Няма видео връзка.")},
        {QStringLiteral("NO_NN_SERVER"), QStringLiteral("Услугата за проверка в момента не е достъпна.")},
        {QStringLiteral("PROCESS_SUCCESS"), QStringLiteral("Проверката завърши успешно.")},
        {QStringLiteral("PROCESS_FAIL"), QStringLiteral("Проверката завърши неуспешно.")},
    };
    return texts.value(code, QStringLiteral("Проверката на самоличността продължава."));
}

} // namespace tessara
