#include "tessara/kyc/KYCStatusPolling.h"

#include "tessara/backend/TSRNetwork.h"
#include "tessara/kyc/signalling/TSRSignallingClient.h"
#include "tessara/platform/FatalError.h"

namespace tessara {

QPointer<QNetworkReply> KYCStatusPolling::request(const SubmissionJSON& document, QObject* context,
                                                  std::function<void(const QString& code)> apply) {
    if (!document.submissionId)
        fatalError(QStringLiteral("The verification step has no submissionId to ask its status with."));
    return TSRNetwork::shared().requestKYCStatus(
        *document.submissionId, TSRSignallingClient::userHash(),
        [guard = QPointer<QObject>(context), apply = std::move(apply)](TSRResult<KYCStatusJSON> result) {
            if (guard && result.isSuccess())
                apply(result.value().code);
        });
}

} // namespace tessara
