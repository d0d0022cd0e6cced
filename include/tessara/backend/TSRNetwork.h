#pragma once

#include "tessara/backend/TSRFile.h"
#include "tessara/backend/TSRResult.h"
#include "tessara/documents/CreditInstalmentDatesJSON.h"
#include "tessara/documents/CreditInstalmentDetailsJSON.h"
#include "tessara/documents/CreditProductJSON.h"
#include "tessara/documents/InstalmentDetailsDTO.h"
#include "tessara/documents/KYCStatusJSON.h"
#include "tessara/documents/SubmissionCreateDTO.h"
#include "tessara/documents/SubmissionJSON.h"
#include "tessara/documents/SubmitStepDTO.h"
#include "tessara/documents/UploadFileDTO.h"

#include <QNetworkReply>
#include <QObject>
#include <QPointer>
#include <QStringList>
#include <QUrl>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

namespace tessara {

class TSRTransport;

/// The one backend client of the program. Requests are described as TSRHTTPRequest values,
/// sent through one QNetworkAccessManager on the main thread, and their outcome is mapped
/// by StepResultHandler (typed calls) or UploadResultHandler (uploads).
///
/// Completions run on the main thread, always through a queued call, except `invalidURL`
/// and `encodingFailure`: those are delivered at once, on the calling thread, and no
/// transfer starts. Calls may be made from any thread; off the main thread the transfer
/// is started on the main thread and no reply object is returned.
class TSRNetwork : public QObject {
    Q_OBJECT

public:
    static constexpr double TIMEOUT_INTERVAL_FOR_REQUEST = 60.0; ///< Seconds; the default time-out.

    /// Receives the outcome of a call, once.
    template <typename T> using Completion = std::function<void(TSRResult<T>)>;

    /// Created on first use, which must happen on the main thread; lives as long as the
    /// application object.
    static TSRNetwork& shared();

    ~TSRNetwork() override;

    /// The backend's base; absent means the compiled-in default endpoint. Tessara's constructor
    /// sets it; requests read it when they are made.
    ///@{
    std::optional<QUrl> instanceURL() const { return instanceURL_; }
    void setInstanceURL(std::optional<QUrl> url) { instanceURL_ = std::move(url); }
    ///@}
    /// instanceURL, or the default endpoint parsed (a default that does not parse is fatal).
    QUrl baseURL() const;

    /// The Accept-Language value, fixed when the client was created.
    const QString& preferredLocalisation() const { return preferredLocalisation_; }
    /// The rule behind it: `appLocalisations` (leading "Base" entries dropped, "bg" when
    /// none remain) matched against the user's `preferredLanguages`, each match written as
    /// "tag;q=quality" with qualities 1.0, 0.9, 0.8... and joined by ", ".
    static QString preferredLocalisation(const QStringList& appLocalisations,
                                         const QStringList& preferredLanguages);

    /// The User-Agent value, computed on first use.
    const QString& userAgent() const;

    /// The request mechanics under the calls below (internal to the SDK and its tools).
    TSRTransport& transport() const { return *transport_; }

    /// Idle time after which a transfer ends with `timeout`; 60 s unless a test shortens it.
    ///@{
    double timeoutInterval() const { return timeoutInterval_; }
    void setTimeoutInterval(double seconds) { timeoutInterval_ = seconds; }
    ///@}

    /// POST "/submission".
    void createSubmission(const SubmissionCreateDTO& dto, Completion<SubmissionJSON> completion);
    /// GET "/step/direction/<directionId>/current".
    void loadCurrentStep(const QString& directionId, Completion<SubmissionJSON> completion);
    /// GET "/step/<submissionId>/<key>"; delivers the first document of the answered list.
    /// An empty list ends the program: a section must have a document.
    void loadSection(const QString& submissionId, const QString& key, Completion<SubmissionJSON> completion);
    /// The same call, delivering the whole answered list (empty included).
    void loadSectionList(const QString& submissionId, const QString& key,
                         Completion<std::vector<SubmissionJSON>> completion);
    /// POST "/step".
    void submitStep(const SubmitStepDTO& dto, Completion<SubmissionJSON> completion);
    /// POST "/step/uploadFile", multipart.
    void uploadFile(const TSRFile& file, const UploadFileDTO& dto, Completion<void> completion);
    /// GET "/custom/credit/products".
    void fetchCreditProducts(Completion<std::vector<CreditProductJSON>> completion);
    /// GET "/custom/credit/installmentDates?productId=<id>&preferedDate=<now in seconds>".
    void fetchInstalmentDates(qint64 productId, Completion<CreditInstalmentDatesJSON> completion);
    /// POST "/custom/credit/installmentDetails".
    void fetchInstalmentDetails(const InstalmentDetailsDTO& dto,
                                Completion<CreditInstalmentDetailsJSON> completion);
    /// GET "/step/v3/status/kyc/<submissionId>/<userHash>". Returns the started reply, or
    /// null when the request could not be made (or the call was made off the main thread).
    QPointer<QNetworkReply> requestKYCStatus(const QString& submissionId, const QString& userHash,
                                             Completion<KYCStatusJSON> completion);

    /// The "preferedDate" value for a moment: seconds since 1970 as the shortest text that
    /// reads back as the same double, always with a decimal part.
    static QString preferredDateText(double secondsSince1970);

private:
    explicit TSRNetwork(QObject* parent = nullptr);
    std::optional<QUrl> instanceURL_;
    QString preferredLocalisation_;
    mutable std::once_flag userAgentOnce_;
    mutable QString userAgent_;
    double timeoutInterval_ = TIMEOUT_INTERVAL_FOR_REQUEST;
    std::unique_ptr<TSRTransport> transport_;
};

} // namespace tessara
