#pragma once

#include "backend/ProcessStore.h"
#include "backend/SubmissionStore.h"
#include "backend/VerificationSession.h"

#include <QObject>
#include <QString>
#include <map>
#include <memory>
#include <vector>

class QWebSocket;

namespace tessara {

// A simulated verification service on the backend's own port: it takes the step's WebSocket
// ("…/mobile/h264"), answers a join with "startCamera" and (when its script says so) "nn-connected",
// decodes every H.264 unit it receives and steers the user through the script of the user's process.
// Each status word it sends becomes the submission's verification status; what it saw of the video
// goes into the submission's record, and the received stream into
// <storage>/<submission>/kyc-stream/attempt-<n>.h264.
//
// Lives on the server's thread, like the rest of the server.
class VerificationService : public QObject {
    Q_OBJECT

public:
    VerificationService(const ProcessStore& processes, SubmissionStore& submissions, QString storageRoot,
                        QObject* parent = nullptr);
    ~VerificationService() override;

    // Whether a WebSocket opened on this path is the service's.
    static bool servesPath(const QString& path);

    // Takes a connection opened on one of its paths.
    void accept(std::unique_ptr<QWebSocket> socket);

private:
    struct Session;
    struct Connection;

    void onMessage(Connection& connection, const QByteArray& bytes);
    void onJoin(Connection& connection, const QString& userHash);
    void onBye(Connection& connection);
    void onUnit(Connection& connection, const QByteArray& unit);
    void onClosed(Connection* connection);
    Session& startSession(const QString& userHash);
    void perform(Session& session, const VerificationSession::Actions& actions);
    void publish(Session& session);

    const ProcessStore& processes_;
    SubmissionStore& submissions_;
    const QString storageRoot_;
    std::vector<std::unique_ptr<Connection>> connections_;
    std::map<QString, std::unique_ptr<Session>> sessions_; // by user hash: the current attempt
};

} // namespace tessara
