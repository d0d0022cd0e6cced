#include "backend/HttpListener.h"

#include <QElapsedTimer>
#include <QHttpServerRequest>
#include <QHttpServerResponder>
#include <QRegularExpression>
#include <QTcpSocket>

namespace tessara {

namespace {

QByteArray methodName(QHttpServerRequest::Method method) {
    switch (method) {
    case QHttpServerRequest::Method::Get:
        return "GET";
    case QHttpServerRequest::Method::Put:
        return "PUT";
    case QHttpServerRequest::Method::Delete:
        return "DELETE";
    case QHttpServerRequest::Method::Post:
        return "POST";
    case QHttpServerRequest::Method::Head:
        return "HEAD";
    case QHttpServerRequest::Method::Options:
        return "OPTIONS";
    case QHttpServerRequest::Method::Patch:
        return "PATCH";
    case QHttpServerRequest::Method::Connect:
        return "CONNECT";
    case QHttpServerRequest::Method::Trace:
        return "TRACE";
    default:
        return "UNKNOWN";
    }
}

BackendRequest toBackendRequest(const QHttpServerRequest& request, quint16 localPort) {
    BackendRequest result;
    result.method = methodName(request.method());
    const QUrl url = request.url();
    const QString encodedPath = url.path(QUrl::FullyEncoded);
    result.target = encodedPath;
    if (url.hasQuery())
        result.target += QLatin1Char('?') + url.query(QUrl::FullyEncoded);
    // Split before decoding, so an encoded "/" inside an id stays inside its segment.
    for (const QString& segment : encodedPath.split(QLatin1Char('/'), Qt::SkipEmptyParts))
        result.pathSegments << QUrl::fromPercentEncoding(segment.toUtf8());
    result.query = request.query();
    result.headers = request.headers();
    result.body = request.body();
    result.authority = HttpListener::authorityFrom(result.header("Host"), localPort);
    return result;
}

void writeResponse(QHttpServerResponder& responder, const BackendResponse& response) {
    responder.writeStatusLine(static_cast<QHttpServerResponder::StatusCode>(response.status));
    responder.writeHeader("Content-Type", kJsonContentType);
    responder.writeHeader("Content-Length", QByteArray::number(response.body.size()));
    responder.writeBody(response.body);
}

} // namespace

HttpListener::HttpListener(Handler handler, QObject* parent)
    : QAbstractHttpServer(parent)
    , handler_(std::move(handler)) {}

QString HttpListener::logLine(const QByteArray& method, const QString& target, int status, qint64 bytes,
                              double milliseconds) {
    return QStringLiteral("%1 %2 %3 %4 bytes %5 ms")
        .arg(QString::fromLatin1(method), target)
        .arg(status)
        .arg(bytes)
        .arg(milliseconds, 0, 'f', 1);
}

QString HttpListener::authorityFrom(const std::optional<QByteArray>& hostHeader, quint16 localPort) {
    // The value is written into step documents as it is, so only a plain host[:port] is trusted.
    static const QRegularExpression plain(
        QStringLiteral("^[A-Za-z0-9.\\-]+(:[0-9]{1,5})?$|^\\[[0-9A-Fa-f:.]+\\](:[0-9]{1,5})?$"));
    if (hostHeader) {
        const QString host = QString::fromLatin1(hostHeader->trimmed());
        if (plain.match(host).hasMatch())
            return host;
    }
    return QStringLiteral("127.0.0.1:%1").arg(localPort);
}

void HttpListener::log(const QByteArray& method, const QString& target, int status, qint64 bytes,
                       qint64 startedNs) const {
    if (logger_)
        logger_(logLine(method, target, status, bytes, double(startedNs) / 1e6));
}

bool HttpListener::handleRequest(const QHttpServerRequest& request, QTcpSocket* socket) {
    QElapsedTimer timer;
    timer.start();
    const BackendRequest backendRequest = toBackendRequest(request, socket->localPort());
    // Qt asks about an upgrade before it hands the socket to its WebSocket server: answering
    // true means "take it", and nothing may be written here; false lets missingHandler refuse it.
    if (backendRequest.header("Upgrade").value_or(QByteArray()).compare("websocket", Qt::CaseInsensitive) ==
        0) {
        if (!acceptsWebSocket_ || !acceptsWebSocket_(request.url().path()))
            return false;
        log(backendRequest.method, backendRequest.target, 101, 0, timer.nsecsElapsed());
        return true;
    }
    const BackendResponse response = handler_(backendRequest);
    QHttpServerResponder responder = makeResponder(request, socket);
    writeResponse(responder, response);
    log(backendRequest.method, backendRequest.target, response.status, response.body.size(),
        timer.nsecsElapsed());
    return true;
}

void HttpListener::missingHandler(const QHttpServerRequest& request, QTcpSocket* socket) {
    // Reached only for a WebSocket upgrade nobody takes: every other request is answered above.
    const BackendRequest backendRequest = toBackendRequest(request, socket->localPort());
    const BackendResponse response = BackendResponse::error(
        404, QStringLiteral("Тук няма WebSocket услуга: %1").arg(backendRequest.target));
    QHttpServerResponder responder = makeResponder(request, socket);
    writeResponse(responder, response);
    log(backendRequest.method, backendRequest.target, response.status, response.body.size(), 0);
}

} // namespace tessara
