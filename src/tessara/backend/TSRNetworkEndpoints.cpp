#include "tessara/backend/TSRNetwork.h"
#include "tessara/backend/TSRTransport.h"
#include "tessara/platform/FatalError.h"

#include <chrono>

namespace tessara {

namespace {

double secondsSince1970Now() {
    using namespace std::chrono;
    return static_cast<double>(duration_cast<nanoseconds>(system_clock::now().time_since_epoch()).count()) /
           1e9;
}

} // namespace

// Ids go into paths by plain concatenation: a "/" inside one makes extra segments, and the
// URL type percent-encodes what a path cannot hold.

void TSRNetwork::createSubmission(const SubmissionCreateDTO& dto, Completion<SubmissionJSON> completion) {
    auto request = transport_->buildJSONRequest(TSRHTTPMethod::post, QStringLiteral("/submission"), dto);
    if (!request)
        return completion(TSRNetworkError::encodingFailure());
    transport_->send<SubmissionJSON>(*request, std::move(completion));
}

void TSRNetwork::loadCurrentStep(const QString& directionId, Completion<SubmissionJSON> completion) {
    transport_->send<SubmissionJSON>(
        transport_->makeRequest(TSRHTTPMethod::get, QStringLiteral("/step/direction/") + directionId +
                                                        QStringLiteral("/current")),
        std::move(completion));
}

void TSRNetwork::loadSectionList(const QString& submissionId, const QString& key,
                                 Completion<std::vector<SubmissionJSON>> completion) {
    transport_->send<std::vector<SubmissionJSON>>(
        transport_->makeRequest(TSRHTTPMethod::get,
                                QStringLiteral("/step/") + submissionId + QLatin1Char('/') + key),
        std::move(completion));
}

void TSRNetwork::loadSection(const QString& submissionId, const QString& key,
                             Completion<SubmissionJSON> completion) {
    loadSectionList(submissionId, key,
                    [completion = std::move(completion)](TSRResult<std::vector<SubmissionJSON>> result) {
                        if (!result.isSuccess())
                            return completion(result.error());
                        if (result.value().empty())
                            fatalError(QStringLiteral("The section answer holds no step document."));
                        completion(std::move(result.value().front()));
                    });
}

void TSRNetwork::submitStep(const SubmitStepDTO& dto, Completion<SubmissionJSON> completion) {
    auto request = transport_->buildJSONRequest(TSRHTTPMethod::post, QStringLiteral("/step"), dto);
    if (!request)
        return completion(TSRNetworkError::encodingFailure());
    transport_->send<SubmissionJSON>(*request, std::move(completion));
}

void TSRNetwork::uploadFile(const TSRFile& file, const UploadFileDTO& dto, Completion<void> completion) {
    auto request =
        transport_->makeUploadRequest(TSRHTTPMethod::post, QStringLiteral("/step/uploadFile"), file, dto);
    if (!request)
        return completion(TSRNetworkError::encodingFailure());
    transport_->sendUpload(*request, std::move(completion));
}

void TSRNetwork::fetchCreditProducts(Completion<std::vector<CreditProductJSON>> completion) {
    transport_->send<std::vector<CreditProductJSON>>(
        transport_->makeRequest(TSRHTTPMethod::get, QStringLiteral("/custom/credit/products")),
        std::move(completion));
}

void TSRNetwork::fetchInstalmentDates(qint64 productId, Completion<CreditInstalmentDatesJSON> completion) {
    // "preferedDate" is the backend's spelling.
    QList<TSRQueryItem> query{{QStringLiteral("productId"), QString::number(productId)},
                              {QStringLiteral("preferedDate"), preferredDateText(secondsSince1970Now())}};
    transport_->send<CreditInstalmentDatesJSON>(
        transport_->makeRequest(TSRHTTPMethod::get, QStringLiteral("/custom/credit/installmentDates"),
                                std::move(query)),
        std::move(completion));
}

void TSRNetwork::fetchInstalmentDetails(const InstalmentDetailsDTO& dto,
                                        Completion<CreditInstalmentDetailsJSON> completion) {
    auto request = transport_->buildJSONRequest(TSRHTTPMethod::post,
                                                QStringLiteral("/custom/credit/installmentDetails"), dto);
    if (!request)
        return completion(TSRNetworkError::encodingFailure());
    transport_->send<CreditInstalmentDetailsJSON>(*request, std::move(completion));
}

QPointer<QNetworkReply> TSRNetwork::requestKYCStatus(const QString& submissionId, const QString& userHash,
                                                     Completion<KYCStatusJSON> completion) {
    const auto request =
        transport_->makeRequest(TSRHTTPMethod::get, QStringLiteral("/step/v3/status/kyc/") + submissionId +
                                                        QLatin1Char('/') + userHash);
    return transport_->send<KYCStatusJSON>(request, std::move(completion));
}

} // namespace tessara
