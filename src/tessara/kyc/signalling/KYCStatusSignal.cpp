#include "tessara/kyc/signalling/KYCStatusSignal.h"

#include "tessara/documents/RecordTable.h"
#include "tessara/kyc/signalling/SignalCoding.h"

#include <QStringList>

namespace tessara {

namespace {
constexpr RecordTable kTable{
    field("cmd", &KYCStatusSignal::cmd),
    field("type", &KYCStatusSignal::type),
};
} // namespace

TESSARA_DEFINE_RECORD(KYCStatusSignal, kTable)

bool isTerminalStatus(const QString& type) {
    static const QStringList words = {QStringLiteral("KYC_STATUS_SELFIE_OK"),
                                      QStringLiteral("KYC_STATUS_FAILED"),
                                      QStringLiteral("FAILED_NO_VIDEO_STREAM_CONNECTION"),
                                      QStringLiteral("PROCESS_SUCCESS"), QStringLiteral("PROCESS_FAIL")};
    return words.contains(type);
}

} // namespace tessara
