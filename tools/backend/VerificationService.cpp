#include "backend/VerificationService.h"

#include "backend/H264StreamDecoder.h"
#include "backend/ServiceMessages.h"
#include "backend/UploadStorage.h"
#include "backend/VerificationReport.h"
#include "tessara/kyc/signalling/ByeSignal.h"
#include "tessara/kyc/signalling/JoinSignal.h"
#include "tessara/kyc/signalling/SignalCoding.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTimer>
#include <QWebSocket>

namespace tessara {

struct VerificationService::Connection {
    std::unique_ptr<QWebSocket> socket;
    QString userHash; // empty until the join
};

struct VerificationService::Session {
    explicit Session(VerificationScript script)
        : logic(std::move(script)) {}

    QString userHash;
    QString submissionId; // empty for a user no submission knows
    VerificationSession logic;
    H264StreamDecoder decoder;
    VerificationReport report;
    QElapsedTimer sinceJoin;
    QFile stream;
    QTimer waitTimer;
    int waitToken = 0;
    Connection* current = nullptr; // the connection of the latest join, while it lasts
    bool ended = false;            // the client said bye
};

VerificationService::VerificationService(const ProcessStore& processes, SubmissionStore& submissions,
                                         QString storageRoot, QObject* parent)
    : QObject(parent)
    , processes_(processes)
    , submissions_(submissions)
    , storageRoot_(std::move(storageRoot)) {}

VerificationService::~VerificationService() {
    // Sockets closing during destruction must not call back into a half-destroyed service.
    for (const auto& connection : connections_)
        QObject::disconnect(connection->socket.get(), nullptr, this, nullptr);
}

bool VerificationService::servesPath(const QString& path) {
    return path.endsWith(QLatin1String("mobile/h264"));
}

void VerificationService::accept(std::unique_ptr<QWebSocket> socket) {
    auto connection = std::make_unique<Connection>();
    connection->socket = std::move(socket);
    Connection* raw = connection.get();
    QWebSocket* ws = raw->socket.get();
    connect(ws, &QWebSocket::binaryMessageReceived, this,
            [this, raw](const QByteArray& bytes) { onMessage(*raw, bytes); });
    connect(ws, &QWebSocket::textMessageReceived, this,
            [this, raw](const QString& text) { onMessage(*raw, text.toUtf8()); });
    // Queued: a connection may close (or be dropped by the script) while one of its messages is handled.
    connect(
        ws, &QWebSocket::disconnected, this, [this, raw] { onClosed(raw); }, Qt::QueuedConnection);
    connections_.push_back(std::move(connection));
}

void VerificationService::onMessage(Connection& connection, const QByteArray& bytes) {
    // Control messages are JSON objects and video units start with a start code, so the first byte
    // tells them apart.
    if (!bytes.startsWith('{')) {
        onUnit(connection, bytes);
        return;
    }
    if (const auto join = decodeDocument<JoinSignal>(bytes); join && join->cmd == WSCommand::join)
        onJoin(connection, join->from);
    else if (const auto bye = decodeDocument<ByeSignal>(bytes); bye && bye->cmd == WSCommand::bye)
        onBye(connection);
}

VerificationService::Session& VerificationService::startSession(const QString& userHash) {
    const SubmissionRecord* record = submissions_.findByUserHash(userHash);
    const ProcessDefinition* process = record ? processes_.process(record->processId) : nullptr;
    const QString scriptName = process ? process->verificationScript : VerificationScript::defaultName();
    auto session = std::make_unique<Session>(
        VerificationScript::named(scriptName)
            .value_or(*VerificationScript::named(VerificationScript::defaultName())));
    session->userHash = userHash;
    int attempt = 1;
    if (record) {
        session->submissionId = record->submissionId;
        if (record->verification)
            attempt = record->verification->attempt + 1;
    } else if (const auto previous = sessions_.find(userHash); previous != sessions_.end()) {
        attempt = previous->second->report.attempt + 1;
    }
    session->report.script = scriptName;
    session->report.attempt = attempt;

    const QString owner =
        record ? record->submissionId : QStringLiteral("user-") + UploadStorage::safeName(userHash);
    const QString folder = QDir(storageRoot_).filePath(owner + QStringLiteral("/kyc-stream"));
    const QString path = QDir(folder).filePath(QStringLiteral("attempt-%1.h264").arg(attempt));
    session->stream.setFileName(path);
    if (QDir().mkpath(folder) &&
        session->stream.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered))
        session->report.streamPath = QDir::cleanPath(path);

    session->waitTimer.setSingleShot(true);
    Session* raw = session.get();
    connect(&session->waitTimer, &QTimer::timeout, this, [this, raw] {
        perform(*raw, raw->logic.waitElapsed(raw->waitToken));
        publish(*raw);
    });
    auto& slot = sessions_[userHash];
    slot = std::move(session);
    return *slot;
}

void VerificationService::onJoin(Connection& connection, const QString& userHash) {
    connection.userHash = userHash;
    const auto found = sessions_.find(userHash);
    Session& session = found == sessions_.end() || found->second->ended || found->second->logic.finished()
                           ? startSession(userHash)
                           : *found->second;
    session.current = &connection;
    if (!session.sinceJoin.isValid())
        session.sinceJoin.start();
    perform(session, session.logic.join());
    publish(session);
}

void VerificationService::onBye(Connection& connection) {
    const auto found = sessions_.find(connection.userHash);
    if (found == sessions_.end() || found->second->current != &connection)
        return;
    Session& session = *found->second;
    session.ended = true;
    session.waitTimer.stop();
}

void VerificationService::onUnit(Connection& connection, const QByteArray& unit) {
    const auto found = sessions_.find(connection.userHash);
    if (connection.userHash.isEmpty() || found == sessions_.end())
        return;
    Session& session = *found->second;
    VerificationReport& report = session.report;
    ++report.units;
    report.bytes += unit.size();
    if (session.stream.isOpen())
        session.stream.write(unit);
    const H264StreamDecoder::Picture picture = session.decoder.feed(unit);
    report.profile = session.decoder.profile();
    report.level = session.decoder.level();
    if (picture.decoded) {
        ++report.pictures;
        report.width = picture.width;
        report.height = picture.height;
        report.keyFrames += picture.keyFrame ? 1 : 0;
        if (report.firstPictureMs < 0)
            report.firstPictureMs = session.sinceJoin.elapsed();
        if (session.current == &connection)
            perform(session, session.logic.picture(picture.width, picture.height));
    }
    publish(session);
}

void VerificationService::perform(Session& session, const VerificationSession::Actions& actions) {
    for (const VerificationSession::Action& action : actions) {
        switch (action.kind) {
        case VerificationSession::Action::Kind::send:
            if (const auto* status = std::get_if<KYCStatusSignal>(&action.message))
                submissions_.setKycStatus(session.submissionId, status->type);
            if (session.current)
                session.current->socket->sendTextMessage(
                    QString::fromUtf8(ServiceMessages::encode(action.message)));
            break;
        case VerificationSession::Action::Kind::drop:
            if (session.current)
                session.current->socket->abort();
            session.current = nullptr;
            break;
        case VerificationSession::Action::Kind::wait:
            session.waitToken = action.token;
            session.waitTimer.start(action.waitMs);
            break;
        }
    }
}

void VerificationService::publish(Session& session) {
    session.report.status = session.logic.status();
    session.report.reconnects = session.logic.reconnects();
    if (SubmissionRecord* record = submissions_.find(session.submissionId))
        record->verification = session.report;
}

void VerificationService::onClosed(Connection* connection) {
    for (auto& [hash, session] : sessions_) {
        if (session->current == connection)
            session->current = nullptr;
    }
    for (auto it = connections_.begin(); it != connections_.end(); ++it) {
        if (it->get() == connection) {
            it->get()->socket.release()->deleteLater();
            connections_.erase(it);
            return;
        }
    }
}

} // namespace tessara
