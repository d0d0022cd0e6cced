#include "support/LoopbackTlsServer.h"

#include <QFile>
#include <QSslSocket>

namespace tessara::test {

namespace {

QByteArray readAll(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

LoopbackTlsServer::LoopbackTlsServer(const QString& certificateFile, const QString& keyFile, QObject* parent)
    : QTcpServer(parent)
    , certificate_(readAll(certificateFile), QSsl::Pem)
    , key_(readAll(keyFile), QSsl::Rsa, QSsl::Pem) {
    listen(QHostAddress::LocalHost);
}

QUrl LoopbackTlsServer::url(const QString& scheme, const QString& path) const {
    return QUrl(scheme + QStringLiteral("://127.0.0.1:") + QString::number(serverPort()) + path);
}

void LoopbackTlsServer::incomingConnection(qintptr descriptor) {
    auto* socket = new QSslSocket(this);
    if (!socket->setSocketDescriptor(descriptor)) {
        delete socket;
        return;
    }
    ++connections_;
    socket->setLocalCertificate(certificate_);
    socket->setPrivateKey(key_);
    // The client is not asked for a certificate; only its trust in ours is under test.
    socket->setPeerVerifyMode(QSslSocket::VerifyNone);
    connect(socket, &QSslSocket::encrypted, this, [this] { ++encrypted_; });
    connect(socket, &QSslSocket::readyRead, this, [this, socket] { received_ += socket->readAll(); });
    connect(socket, &QSslSocket::disconnected, this, [this, socket] {
        ++ended_;
        socket->deleteLater();
    });
    socket->startServerEncryption();
}

} // namespace tessara::test
