#include "tessara/backend/TSRTransport.h"

#include "tessara/backend/ContentDecoder.h"
#include "tessara/backend/OneShotBody.h"
#include "tessara/backend/RedirectRule.h"
#include "tessara/backend/TSRMultipartData.h"
#include "tessara/backend/TSRNetwork.h"
#include "tessara/backend/TransportErrorMap.h"
#include "tessara/backend/UploadResultHandler.h"

#include <QElapsedTimer>
#include <QMimeDatabase>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QUrlQuery>

namespace tessara {

namespace {

constexpr const char* kOctetStream = "application/octet-stream";

// Qt's transfer timer is a coarse timer, which may fire up to 5% early; an abort after at
// least 90% of the idle interval is taken to be that timer rather than a caller's cancel.
bool endedByTimeout(QNetworkReply::NetworkError error, qint64 timeoutMs, qint64 idleMs) {
    return error == QNetworkReply::OperationCanceledError && timeoutMs > 0 && idleMs * 10 >= timeoutMs * 9;
}

// A body whose coded bytes pass the decoded-size limit cannot decode under it either (a
// coding adds only a few bytes per block), so it is cut off as it arrives rather than
// buffered: announced by Content-Length or grown while downloading. The result handlers
// then treat it as the undecodable body it is (decodingFailure; an upload's success ignores
// it). The abort is no transport failure and never goes through TransportErrorMap.
bool passesBodyLimit(qint64 bytes) {
    return bytes > ContentDecoder::MAX_DECODED_BODY_BYTES;
}

TSRTransferOutcome outcomeOf(QNetworkReply* reply, bool timedOut, bool headRequest, bool bodyOverLimit) {
    TSRTransferOutcome outcome;
    const auto error = reply->error();
    const QVariant status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute);
    if (bodyOverLimit && status.isValid()) {
        outcome.statusCode = status.toInt();
        outcome.body = QByteArray();
        outcome.bodyOverLimit = true;
        outcome.contentEncoding = reply->rawHeader("Content-Encoding");
        return outcome;
    }
    if (TransportErrorMap::isTransportFailure(error) || !status.isValid()) {
        // No error and no status cannot come from an HTTP transfer; the handlers treat the
        // missing error as the broken assumption it is.
        if (error != QNetworkReply::NoError)
            outcome.transportError = TransportErrorMap::map(error, timedOut, reply->errorString());
        return outcome;
    }
    outcome.statusCode = status.toInt();
    const QByteArray bytes = reply->readAll();
    const bool chunked = reply->rawHeader("Transfer-Encoding").toLower().contains("chunked");
    if (TSRTransferOutcome::hasBody(*outcome.statusCode, headRequest, reply->hasRawHeader("Content-Length"),
                                    chunked, bytes.size()))
        outcome.body = bytes;
    outcome.contentEncoding = reply->rawHeader("Content-Encoding");
    return outcome;
}

QString joinedPath(const QString& encodedBasePath, const QString& path) {
    QUrl decoded;
    decoded.setPath(path, QUrl::DecodedMode);
    QString suffix = decoded.path(QUrl::FullyEncoded);
    QString base = encodedBasePath;
    while (base.endsWith(QLatin1Char('/')))
        base.chop(1);
    if (suffix.isEmpty())
        return encodedBasePath;
    if (!suffix.startsWith(QLatin1Char('/')))
        suffix.prepend(QLatin1Char('/'));
    return base + suffix;
}

} // namespace

TSRTransport::TSRTransport(const TSRNetwork& network)
    : network_(network) {}

TSRTransport::~TSRTransport() = default;

QNetworkAccessManager* TSRTransport::session() {
    if (!session_)
        session_ = std::make_unique<QNetworkAccessManager>();
    return session_.get();
}

TSRHTTPRequest TSRTransport::makeRequest(TSRHTTPMethod method, const QString& path,
                                         std::optional<QList<TSRQueryItem>> queryItems) const {
    TSRHTTPRequest request;
    request.method = method;
    request.baseURL = network_.baseURL();
    request.path = path;
    request.queryItems = std::move(queryItems);
    request.addHeader(QStringLiteral("Accept"), QStringLiteral("application/json"));
    request.addHeader(QStringLiteral("Accept-Encoding"), QStringLiteral("gzip, deflate, br"));
    request.addHeader(QStringLiteral("Accept-Language"), network_.preferredLocalisation());
    request.addHeader(QStringLiteral("User-Agent"), network_.userAgent());
    return request;
}

std::optional<TSRHTTPRequest> TSRTransport::makeUploadRequest(TSRHTTPMethod method, const QString& path,
                                                              const TSRFile& file,
                                                              const UploadFileDTO& dto) const {
    const auto dtoBytes = encodeDocument(dto);
    if (!dtoBytes)
        return std::nullopt;
    TSRHTTPRequest request = makeRequest(method, path);
    TSRMultipartData multipart;
    const bool typed = file.type.isValid();
    QString filename = file.filename;
    if (!file.filenameAlreadyHasExtension)
        filename += QLatin1Char('.') + (typed ? file.type.preferredSuffix().toUpper() : QString());
    multipart.addPart(file.data, typed ? file.type.name() : QString::fromLatin1(kOctetStream),
                      QStringLiteral("file"), filename);
    const QMimeType json = QMimeDatabase().mimeTypeForName(QStringLiteral("application/json"));
    multipart.addPart(*dtoBytes, json.isValid() ? json.name() : QString::fromLatin1(kOctetStream),
                      QStringLiteral("dto"), QStringLiteral("blob"));
    multipart.isFinalized = true;
    request.body = multipart.body();
    request.addHeader(QStringLiteral("Content-Type"),
                      QStringLiteral("multipart/form-data; boundary=") + multipart.boundary);
    return request;
}

std::optional<QUrl> TSRTransport::transferURL(const TSRHTTPRequest& request) {
    const QUrl& base = request.baseURL;
    if (!base.isValid())
        return std::nullopt;
    QUrl url;
    url.setScheme(base.scheme());
    url.setHost(base.host(QUrl::FullyEncoded));
    url.setPort(base.port());
    url.setPath(joinedPath(base.path(QUrl::FullyEncoded), request.path), QUrl::TolerantMode);
    if (request.queryItems) {
        QUrlQuery query;
        for (const auto& [name, value] : *request.queryItems)
            query.addQueryItem(name, value);
        url.setQuery(query);
    }
    // Only a web address with a host can be requested; anything else is an invalid URL
    // rather than a transfer that fails later with a less telling error.
    const QString scheme = url.scheme();
    if (!url.isValid() || url.host().isEmpty() ||
        (scheme != QLatin1String("http") && scheme != QLatin1String("https")))
        return std::nullopt;
    return url;
}

std::optional<QNetworkRequest> TSRTransport::makeTransferRequest(const TSRHTTPRequest& request) const {
    const auto url = transferURL(request);
    if (!url)
        return std::nullopt;
    QNetworkRequest networkRequest(*url);
    networkRequest.setTransferTimeout(static_cast<int>(network_.timeoutInterval() * 1000.0));
    // Redirects are followed by transfer(), see RedirectRule.
    networkRequest.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                                QNetworkRequest::ManualRedirectPolicy);
    if (request.headers) {
        // A repeated field is combined into one line, in the place of its first occurrence.
        QList<QByteArray> fields;
        QList<QByteArray> values;
        for (const TSRHTTPHeader& header : *request.headers) {
            const QByteArray field = header.field.toUtf8();
            qsizetype at = -1;
            for (qsizetype i = 0; i < fields.size() && at < 0; ++i) {
                if (fields[i].compare(field, Qt::CaseInsensitive) == 0)
                    at = i;
            }
            if (at < 0) {
                fields.append(field);
                values.append(header.value.toUtf8());
            } else {
                values[at] += ", " + header.value.toUtf8();
            }
        }
        for (qsizetype i = 0; i < fields.size(); ++i)
            networkRequest.setRawHeader(fields[i], values[i]);
    }
    return networkRequest;
}

QNetworkReply* TSRTransport::start(const QNetworkRequest& networkRequest, const TSRHTTPRequest& request,
                                   OutcomeHandler handler, bool bodyOnce) {
    if (!isMainThread()) {
        runOnMain(this, [this, networkRequest, request, handler = std::move(handler), bodyOnce]() mutable {
            startOnMain(networkRequest, request, std::move(handler), bodyOnce);
        });
        return nullptr;
    }
    return startOnMain(networkRequest, request, std::move(handler), bodyOnce);
}

QNetworkReply* TSRTransport::startOnMain(const QNetworkRequest& networkRequest, const TSRHTTPRequest& request,
                                         OutcomeHandler handler, bool bodyOnce) {
    Hop hop{networkRequest, verbString(request.method), request.body, 0, bodyOnce};
    return transfer(std::move(hop), networkRequest.url(),
                    std::make_shared<OutcomeHandler>(std::move(handler)));
}

QNetworkReply* TSRTransport::transfer(Hop hop, const QUrl& originalURL,
                                      std::shared_ptr<OutcomeHandler> handler) {
    QNetworkReply* reply = nullptr;
    if (hop.body && hop.bodyOnce) {
        // Qt needs the length of a body it may not buffer.
        QNetworkRequest once = hop.request;
        once.setAttribute(QNetworkRequest::DoNotBufferUploadDataAttribute, true);
        once.setHeader(QNetworkRequest::ContentLengthHeader, hop.body->size());
        auto body = std::make_unique<OneShotBody>(*hop.body);
        reply = session()->sendCustomRequest(once, hop.verb, body.get());
        body.release()->setParent(reply);
    } else if (hop.body) {
        reply = session()->sendCustomRequest(hop.request, hop.verb, *hop.body);
    } else {
        reply = session()->sendCustomRequest(hop.request, hop.verb);
    }
    // Qt reports progress once more when a transfer ends, so only bytes that really moved
    // count as activity for telling the idle time-out from a cancel.
    struct Activity {
        QElapsedTimer idle;
        qint64 received = 0;
        qint64 sent = 0;
        bool bodyOverLimit = false;
    };
    auto activity = std::make_shared<Activity>();
    activity->idle.start();
    // Aborted from the event loop, not from within the reply's own signal, which Qt is still
    // in the middle of handling.
    const auto cutOff = [reply, activity] {
        if (activity->bodyOverLimit)
            return;
        activity->bodyOverLimit = true;
        QMetaObject::invokeMethod(reply, &QNetworkReply::abort, Qt::QueuedConnection);
    };
    // A HEAD answer's or a 304's length describes a body that never comes.
    connect(reply, &QNetworkReply::metaDataChanged, reply, [reply, cutOff, head = hop.verb == "HEAD"] {
        const QVariant status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute);
        const QVariant length = reply->header(QNetworkRequest::ContentLengthHeader);
        if (status.isValid() && length.isValid() && passesBodyLimit(length.toLongLong()) &&
            TSRTransferOutcome::hasBody(status.toInt(), head, true, false, 0))
            cutOff();
    });
    connect(reply, &QNetworkReply::downloadProgress, reply, [activity, cutOff](qint64 received, qint64) {
        if (received > activity->received) {
            activity->received = received;
            activity->idle.restart();
        }
        if (passesBodyLimit(received))
            cutOff();
    });
    connect(reply, &QNetworkReply::uploadProgress, reply, [activity](qint64 sent, qint64) {
        if (sent > activity->sent) {
            activity->sent = sent;
            activity->idle.restart();
        }
    });
    connect(reply, &QNetworkReply::finished, this, [this, reply, activity, hop, originalURL, handler] {
        reply->deleteLater();
        const QVariant status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute);
        if (status.isValid() && !TransportErrorMap::isTransportFailure(reply->error()) &&
            hop.redirects < RedirectRule::kMaximumRedirects) {
            if (auto step = RedirectRule::next(status.toInt(), hop.verb, reply->rawHeader("Location"),
                                               hop.request.url())) {
                Hop next = hop;
                next.request.setUrl(step->url);
                next.verb = step->verb;
                ++next.redirects;
                if (!step->keepsBody) {
                    next.body.reset();
                    next.request.setHeader(QNetworkRequest::ContentTypeHeader, QVariant());
                }
                transfer(std::move(next), originalURL, handler);
                return;
            }
        }
        const qint64 timeoutMs = hop.request.transferTimeout();
        const bool timedOut = endedByTimeout(reply->error(), timeoutMs, activity->idle.elapsed());
        TSRTransferOutcome outcome = outcomeOf(reply, timedOut, hop.verb == "HEAD", activity->bodyOverLimit);
        outcome.url = originalURL.toString(QUrl::FullyEncoded);
        (*handler)(outcome);
    });
    return reply;
}

QNetworkReply* TSRTransport::sendUpload(const TSRHTTPRequest& request, Completion<void> completion) {
    auto networkRequest = makeTransferRequest(request);
    if (!networkRequest) {
        completion(TSRNetworkError::invalidURL());
        return nullptr;
    }
    // A file the backend may already have stored is not sent again behind the form's back.
    return start(
        *networkRequest, request,
        [completion = std::move(completion)](const TSRTransferOutcome& outcome) {
            runOnMain([completion, result = UploadResultHandler::handle(outcome)] { completion(result); });
        },
        true);
}

} // namespace tessara
