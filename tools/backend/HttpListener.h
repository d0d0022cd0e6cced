#pragma once

#include "backend/BackendRequest.h"
#include "backend/BackendResponse.h"

#include <QAbstractHttpServer>
#include <functional>

namespace tessara {

// The socket side of the server: turns each received request into a BackendRequest, hands it to
// the handler, writes the answer and reports one log line for it.
class HttpListener : public QAbstractHttpServer {
    Q_OBJECT

public:
    using Handler = std::function<BackendResponse(const BackendRequest&)>;
    using Logger = std::function<void(const QString& line)>;

    explicit HttpListener(Handler handler, QObject* parent = nullptr);

    void setLogger(Logger logger) { logger_ = std::move(logger); }
    // Which WebSocket upgrades are handed to the WebSocket side, by the request's path; the others,
    // and all of them without a filter, are refused.
    void setWebSocketFilter(std::function<bool(const QString& path)> accepts) {
        acceptsWebSocket_ = std::move(accepts);
    }

    // "POST /step 200 1532 bytes 2.4 ms": the one line logged per request.
    static QString logLine(const QByteArray& method, const QString& target, int status, qint64 bytes,
                           double milliseconds);
    // The Host header when it is a plain host and port, otherwise 127.0.0.1 and `localPort`.
    static QString authorityFrom(const std::optional<QByteArray>& hostHeader, quint16 localPort);

protected:
    bool handleRequest(const QHttpServerRequest& request, QTcpSocket* socket) override;
    void missingHandler(const QHttpServerRequest& request, QTcpSocket* socket) override;

private:
    void log(const QByteArray& method, const QString& target, int status, qint64 bytes,
             qint64 startedNs) const;

    Handler handler_;
    Logger logger_;
    std::function<bool(const QString& path)> acceptsWebSocket_;
};

} // namespace tessara
