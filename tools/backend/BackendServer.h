#pragma once

#include "backend/BackendRequest.h"
#include "backend/BackendResponse.h"
#include "backend/ProcessStore.h"
#include "backend/SubmissionStore.h"

#include <QHostAddress>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QUrl>
#include <functional>
#include <memory>

class QTemporaryDir;
class QWebSocket;

namespace tessara {

class CreditEndpoints;
class HttpListener;
class RouteTable;
class StatusEndpoints;
class StepEndpoints;
class UploadEndpoint;
class UploadStorage;
class VerificationService;

// The reference backend: serves process definitions over the SDK's HTTP interface. Embeddable:
//
//     BackendServer server;                      // uploads go to a temporary folder it owns
//     QStringList errors = server.loadProcesses(dir);
//     quint16 port = server.listen(0);           // any free loopback port
//
// Everything runs on the thread the server lives on; call it from that thread only.
class BackendServer : public QObject {
    Q_OBJECT

public:
    explicit BackendServer(QObject* parent = nullptr);
    // Uploaded files are kept under `storageDirectory`, which is created when missing.
    explicit BackendServer(const QString& storageDirectory, QObject* parent = nullptr);
    ~BackendServer() override;

    // Starts listening; port 0 picks a free one. Returns the port, or 0 when it cannot listen.
    quint16 listen(quint16 port = 8080, const QHostAddress& address = QHostAddress(QHostAddress::LocalHost));
    quint16 port() const { return port_; }
    // "http://127.0.0.1:PORT" (or the listening address), valid once listening.
    QUrl baseUrl() const;

    // Loads process definitions (see ProcessStore::load). Returns the problems; empty on success.
    [[nodiscard]] QStringList loadProcesses(const QString& directory);
    const ProcessStore& processes() const { return processes_; }

    SubmissionStore& submissions() { return submissions_; }
    const SubmissionStore& submissions() const { return submissions_; }
    // Sets the verification state of a submission; an empty message takes the word's standard
    // text. False when no such submission exists.
    bool setKycStatus(const QString& submissionId, const QString& code, const QString& message = {});

    QString storageDirectory() const;

    // Receives the one log line of every request. The default writes it to standard output;
    // an empty function silences the log.
    void setRequestLogger(std::function<void(const QString&)> logger);

    // Receives WebSocket connections opened on any path of this server, instead of the verification
    // service. Without a handler, paths ending in "mobile/h264" reach the service (see
    // VerificationService) and other upgrades are refused; an empty function restores that.
    void setWebSocketHandler(std::function<void(std::unique_ptr<QWebSocket>)> handler);

    // Answers one request without a socket: the same routes the listener serves.
    BackendResponse handle(const BackendRequest& request);

private:
    void init(const QString& storageDirectory);

    std::unique_ptr<QTemporaryDir> ownedStorage_;
    std::unique_ptr<UploadStorage> storage_;
    ProcessStore processes_;
    SubmissionStore submissions_;
    std::unique_ptr<StepEndpoints> steps_;
    std::unique_ptr<UploadEndpoint> upload_;
    std::unique_ptr<CreditEndpoints> credit_;
    std::unique_ptr<StatusEndpoints> status_;
    std::unique_ptr<RouteTable> routes_;
    std::unique_ptr<VerificationService> verification_;
    HttpListener* listener_ = nullptr; // child of this object
    std::function<void(std::unique_ptr<QWebSocket>)> webSocketHandler_;
    QHostAddress address_;
    quint16 port_ = 0;
};

} // namespace tessara
