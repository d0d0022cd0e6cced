#include "backend/BackendServer.h"

#include "backend/CreditEndpoints.h"
#include "backend/HttpListener.h"
#include "backend/RouteTable.h"
#include "backend/StatusEndpoints.h"
#include "backend/StepEndpoints.h"
#include "backend/UploadEndpoint.h"
#include "backend/UploadStorage.h"
#include "backend/VerificationService.h"

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
    , ownedStorage_(std::make_unique<QTemporaryDir>()) {
    init(ownedStorage_->path());
}

BackendServer::BackendServer(const QString& storageDirectory, QObject* parent)
    : QObject(parent) {
    QDir().mkpath(storageDirectory);
    init(QDir(storageDirectory).absolutePath());
}

BackendServer::~BackendServer() = default;

void BackendServer::init(const QString& storageDirectory) {
    storage_ = std::make_unique<UploadStorage>(storageDirectory);
    steps_ = std::make_unique<StepEndpoints>(processes_, submissions_);
    upload_ = std::make_unique<UploadEndpoint>(processes_, submissions_, *storage_);
    credit_ = std::make_unique<CreditEndpoints>(processes_);
    status_ = std::make_unique<StatusEndpoints>(submissions_);
    routes_ = std::make_unique<RouteTable>();
    // The upload route goes before the section route; RouteTable prefers it anyway.
    upload_->addRoutes(*routes_);
    steps_->addRoutes(*routes_);
    credit_->addRoutes(*routes_);
    status_->addRoutes(*routes_);

    verification_ =
        std::make_unique<VerificationService>(processes_, submissions_, storage_->rootDirectory());

    listener_ = new HttpListener([this](const BackendRequest& request) { return handle(request); }, this);
    listener_->setLogger(printLine);
    listener_->setWebSocketFilter([this](const QString& path) {
        return bool(webSocketHandler_) || VerificationService::servesPath(path);
    });
    // Qt hands an upgrade to the WebSocket side only while this signal has a receiver.
    connect(listener_, &QAbstractHttpServer::newWebSocketConnection, this, [this] {
        while (listener_->hasPendingWebSocketConnections()) {
            auto socket = listener_->nextPendingWebSocketConnection();
            if (webSocketHandler_)
                webSocketHandler_(std::move(socket));
            else
                verification_->accept(std::move(socket));
        }
    });
}

quint16 BackendServer::listen(quint16 port, const QHostAddress& address) {
    port_ = listener_->listen(address, port);
    if (port_ != 0)
        address_ = address;
    return port_;
}

QUrl BackendServer::baseUrl() const {
    QUrl url;
    url.setScheme(QStringLiteral("http"));
    url.setHost(address_.isNull() ? QStringLiteral("127.0.0.1") : address_.toString());
    url.setPort(port_);
    return url;
}

QStringList BackendServer::loadProcesses(const QString& directory) {
    return processes_.load(directory);
}

bool BackendServer::setKycStatus(const QString& submissionId, const QString& code, const QString& message) {
    return submissions_.setKycStatus(submissionId, code, message);
}

QString BackendServer::storageDirectory() const {
    return storage_->rootDirectory();
}

void BackendServer::setRequestLogger(std::function<void(const QString&)> logger) {
    listener_->setLogger(std::move(logger));
}

void BackendServer::setWebSocketHandler(std::function<void(std::unique_ptr<QWebSocket>)> handler) {
    webSocketHandler_ = std::move(handler);
}

BackendResponse BackendServer::handle(const BackendRequest& request) {
    return routes_->dispatch(request);
}

} // namespace tessara
