#pragma once

// A TLS server on 127.0.0.1 that presents a self-signed certificate no client trusts, to show
// what a client does with an untrusted peer. It records every connection, whether a handshake
// completed, and every byte it decrypted; it never answers.
//
//   LoopbackTlsServer server(certificateFile, keyFile);      // listens at once
//   network.setInstanceURL(server.url("https"));
//   ... the call fails ...
//   EXPECT_TRUE(server.received().isEmpty());
//
// The checked-in pair in tests/support/tls was made once, in that folder, with
//   openssl req -x509 -newkey rsa:2048 -sha256 -days 36500 -nodes -keyout loopback-key.pem
//       -out loopback-cert.pem -subj "/CN=127.0.0.1"
//       -addext "subjectAltName=IP:127.0.0.1,DNS:localhost"
// so only its trust is wrong: name and dates fit. Runs on the thread that made it and needs
// that thread's event loop.

#include <QByteArray>
#include <QSslCertificate>
#include <QSslKey>
#include <QTcpServer>
#include <QUrl>

namespace tessara::test {

class LoopbackTlsServer : public QTcpServer {
    Q_OBJECT

public:
    LoopbackTlsServer(const QString& certificateFile, const QString& keyFile, QObject* parent = nullptr);

    // SCHEME://127.0.0.1:<port> followed by `path`.
    QUrl url(const QString& scheme, const QString& path = {}) const;
    const QSslCertificate& certificate() const { return certificate_; }

    int connectionCount() const { return connections_; }
    int completedHandshakes() const { return encrypted_; }
    // Connections that have ended, by either side.
    int endedConnections() const { return ended_; }
    // Everything decrypted from every connection, in order of arrival.
    const QByteArray& received() const { return received_; }

protected:
    void incomingConnection(qintptr descriptor) override;

private:
    QSslCertificate certificate_;
    QSslKey key_;
    int connections_ = 0;
    int encrypted_ = 0;
    int ended_ = 0;
    QByteArray received_;
};

} // namespace tessara::test
