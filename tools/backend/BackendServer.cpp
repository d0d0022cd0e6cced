#include "backend/BackendServer.h"

#include "backend/CreditEndpoints.h"
#include "backend/HttpListener.h"
#include "backend/RouteTable.h"
#include "backend/StatusEndpoints.h"
#include "backend/StepEndpoints.h"
#include "backend/UploadEndpoint.h"
#include "backend/UploadStorage.h"

#include <QDir>
#include <QTemporaryDir>
#include <QWebSocket>
#include <cstdio>

namespace tessara {

namespace {

void printLine(const QString& line) {
    std::fputs(line.toUtf8().append('\n').constData(), stdout);
    std::fflush(stdout);
}

} // namespace

BackendServer::BackendServer(QObject* parent)
    : QObject(parent)
    , m_ownedStorage(std::make_unique<QTemporaryDir>()) {
    init(m_ownedStorage->path());
}

BackendServer::BackendServer(const QString& storageDirectory, QObject* parent)
    : QObject(parent) {
    QDir().mkpath(storageDirectory);
    init(QDir(storageDirectory).absolutePath());
}

BackendServer::~BackendServer() = default;

void BackendServer::init(const QString& storageDirectory) {
    m_storage = std::make_unique<UploadStorage>(storageDirectory);
    m_steps = std::make_unique<StepEndpoints>(m_processes, m_submissions);
    m_upload = std::make_unique<UploadEndpoint>(m_processes, m_submissions, *m_storage);
    m_credit = std::make_unique<CreditEndpoints>(m_processes);
    m_status = std::make_unique<StatusEndpoints>(m_submissions);
    m_routes = std::make_unique<RouteTable>();
    // The upload route goes before the section route; RouteTable prefers it anyway.
    m_upload->addRoutes(*m_routes);
    m_steps->addRoutes(*m_routes);
    m_credit->addRoutes(*m_routes);
    m_status->addRoutes(*m_routes);

    m_listener = new HttpListener([this](const BackendRequest& request) { return handle(request); }, this);
    m_listener->setLogger(printLine);
}

quint16 BackendServer::listen(quint16 port, const QHostAddress& address) {
    m_port = m_listener->listen(address, port);
    if (m_port != 0)
        m_address = address;
    return m_port;
}

QUrl BackendServer::baseUrl() const {
    QUrl url;
    url.setScheme(QStringLiteral("http"));
    url.setHost(m_address.isNull() ? QStringLiteral("127.0.0.1") : m_address.toString());
    url.setPort(m_port);
    return url;
}

QStringList BackendServer::loadProcesses(const QString& directory) {
    return m_processes.load(directory);
}

bool BackendServer::setKycStatus(const QString& submissionId, const QString& code, const QString& message) {
    return m_submissions.setKycStatus(submissionId, code, message);
}

QString BackendServer::storageDirectory() const {
    return m_storage->rootDirectory();
}

void BackendServer::setRequestLogger(std::function<void(const QString&)> logger) {
    m_listener->setLogger(std::move(logger));
}

void BackendServer::setWebSocketHandler(std::function<void(std::unique_ptr<QWebSocket>)> handler) {
    const bool first = !m_webSocketHandler;
    m_webSocketHandler = std::move(handler);
    // Qt hands an upgrade to the WebSocket side only while this signal has a receiver.
    m_listener->setAcceptWebSockets(bool(m_webSocketHandler));
    if (first && m_webSocketHandler) {
        connect(m_listener, &QAbstractHttpServer::newWebSocketConnection, this, [this] {
            while (m_listener->hasPendingWebSocketConnections()) {
                auto socket = m_listener->nextPendingWebSocketConnection();
                if (m_webSocketHandler)
                    m_webSocketHandler(std::move(socket));
            }
        });
    }
}

BackendResponse BackendServer::handle(const BackendRequest& request) {
    return m_routes->dispatch(request);
}

} // namespace tessara
