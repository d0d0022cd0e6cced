#pragma once

#include "tessara/backend/StepResultHandler.h"
#include "tessara/backend/TSRFile.h"
#include "tessara/backend/TSRHTTPRequest.h"
#include "tessara/backend/TSRResult.h"
#include "tessara/backend/TSRTransferOutcome.h"
#include "tessara/documents/JsonCoding.h"
#include "tessara/documents/UploadFileDTO.h"
#include "tessara/platform/MainThread.h"

#include <QNetworkReply>
#include <QNetworkRequest>
#include <QObject>
#include <functional>
#include <memory>
#include <optional>

class QNetworkAccessManager;

namespace tessara {

class TSRNetwork;

// The mechanics under TSRNetwork's calls: request values with the default headers, their
// transfer through one QNetworkAccessManager on the main thread, redirects, and the mapping of
// the outcome by StepResultHandler (typed calls) or UploadResultHandler (uploads).
class TSRTransport : public QObject {
    Q_OBJECT

public:
    template <typename T> using Completion = std::function<void(TSRResult<T>)>;

    // Reads the base URL, the header values and the time-out from `network` at each request.
    explicit TSRTransport(const TSRNetwork& network);
    ~TSRTransport() override;

    QNetworkAccessManager* session();

    // A request value on the base URL with the four default headers and no body.
    TSRHTTPRequest makeRequest(TSRHTTPMethod method, const QString& path,
                               std::optional<QList<TSRQueryItem>> queryItems = std::nullopt) const;

    // makeRequest with `dto` encoded (sorted keys) as the body and
    // "Content-Type: application/json" appended; absent when the DTO cannot be encoded.
    template <typename DTO>
    std::optional<TSRHTTPRequest> buildJSONRequest(TSRHTTPMethod method, const QString& path,
                                                   const DTO& dto) const {
        auto body = encodeDocument(dto);
        if (!body)
            return std::nullopt;
        TSRHTTPRequest request = makeRequest(method, path);
        request.body = std::move(*body);
        request.addHeader(QStringLiteral("Content-Type"), QStringLiteral("application/json"));
        return request;
    }

    // makeRequest with a two-part multipart body (the file, then the DTO as "dto") and its
    // Content-Type; absent when the DTO cannot be encoded.
    std::optional<TSRHTTPRequest> makeUploadRequest(TSRHTTPMethod method, const QString& path,
                                                    const TSRFile& file, const UploadFileDTO& dto) const;

    // The URL a request goes to: scheme, host, port and path of the base (its query,
    // fragment and credentials dropped), then `path` appended, then the query items.
    // Absent when no usable http(s) URL results.
    static std::optional<QUrl> transferURL(const TSRHTTPRequest& request);

    // The network request for a value: URL, time-out and headers in order, a repeated
    // field combined with ", ". Absent when transferURL is.
    std::optional<QNetworkRequest> makeTransferRequest(const TSRHTTPRequest& request) const;

    // Sends `request` and decodes the answer as T. Returns the started reply (main thread
    // only), null when none was started here.
    template <typename T> QNetworkReply* send(const TSRHTTPRequest& request, Completion<T> completion) {
        auto networkRequest = makeTransferRequest(request);
        if (!networkRequest) {
            completion(TSRNetworkError::invalidURL());
            return nullptr;
        }
        return start(*networkRequest, request,
                     [completion = std::move(completion)](const TSRTransferOutcome& outcome) {
                         if (auto result = StepResultHandler::handle<T>(outcome))
                             runOnMain([completion, result = std::move(*result)] { completion(result); });
                     });
    }

    // Sends a multipart request; the body of a successful answer is not read.
    QNetworkReply* sendUpload(const TSRHTTPRequest& request, Completion<void> completion);

private:
    using OutcomeHandler = std::function<void(const TSRTransferOutcome&)>;
    // Starts the transfer (queued onto the main thread when called elsewhere); `handler`
    // receives its outcome on the main thread. `bodyOnce`: the body never goes out twice, see
    // OneShotBody.
    QNetworkReply* start(const QNetworkRequest& networkRequest, const TSRHTTPRequest& request,
                         OutcomeHandler handler, bool bodyOnce = false);
    QNetworkReply* startOnMain(const QNetworkRequest& networkRequest, const TSRHTTPRequest& request,
                               OutcomeHandler handler, bool bodyOnce);
    // One request of a call; a followed redirect makes the next one.
    struct Hop {
        QNetworkRequest request;
        QByteArray verb;
        std::optional<QByteArray> body;
        int redirects = 0;
        bool bodyOnce = false;
    };
    QNetworkReply* transfer(Hop hop, const QUrl& originalURL, std::shared_ptr<OutcomeHandler> handler);

    const TSRNetwork& network_;
    std::unique_ptr<QNetworkAccessManager> session_;
};

} // namespace tessara
