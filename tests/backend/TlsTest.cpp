#include "NetworkTestSupport.h"
#include "support/LoopbackTlsServer.h"

#include <QMimeDatabase>
#include <QNetworkAccessManager>
#include <QSslSocket>

namespace tessara {
namespace {

using test::Capture;
using test::LoopbackTlsServer;
using test::NetworkTest;

QString tlsFile(const char* name) {
    return QStringLiteral(TESSARA_SOURCE_DIR "/tests/support/tls/") + QLatin1String(name);
}

// Against a server whose certificate nobody vouches for, a typed call and an upload fail with the
// transport's words for the handshake (the error table's `custom`), and the server reads nothing
// of them: no request line, no headers, no body.
TEST_F(NetworkTest, AnUntrustedCertificateFailsTheCallBeforeAnyByteOfIt) {
    LoopbackTlsServer tls(tlsFile("loopback-cert.pem"), tlsFile("loopback-key.pem"));
    ASSERT_FALSE(tls.certificate().isNull());
    network().setInstanceURL(tls.url(QStringLiteral("https")));
    const TSRFile file{QByteArray("secret scan"),
                       QMimeDatabase().mimeTypeForName(QStringLiteral("text/plain")), QStringLiteral("a.txt"),
                       true};
    struct Row {
        const char* name;
        std::function<std::optional<TSRError>()> call;
    };
    const Row rows[] = {
        {"typed call",
         [&]() -> std::optional<TSRError> {
             Capture<SubmissionJSON> capture;
             network().loadCurrentStep(QStringLiteral("d-1"), capture.completion());
             if (!capture.wait(10000) || capture.result().isSuccess())
                 return std::nullopt;
             return capture.error();
         }},
        {"upload",
         [&]() -> std::optional<TSRError> {
             Capture<void> capture;
             network().uploadFile(file, {QStringLiteral("s"), QStringLiteral("k"), QStringLiteral("d")},
                                  capture.completion());
             if (!capture.wait(10000) || capture.result().isSuccess())
                 return std::nullopt;
             return capture.error();
         }},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const int before = tls.connectionCount();
        const auto error = row.call();
        ASSERT_TRUE(error.has_value());
        const TSRNetworkError* network = networkError(*error);
        ASSERT_NE(network, nullptr);
        EXPECT_EQ(network->kind(), TSRNetworkError::Kind::custom);
        EXPECT_TRUE(network->errorDescription().startsWith(QStringLiteral("SSL handshake failed")))
            << network->errorDescription().toStdString();
        EXPECT_GT(tls.connectionCount(), before);
    }
    // The shared client would otherwise close its failed TLS channels only at exit, after Qt's
    // TLS backend has gone, which Qt reports as a warning.
    network().transport().session()->clearConnectionCache();
    ASSERT_TRUE(QTest::qWaitFor([&] { return tls.endedConnections() == tls.connectionCount(); }, 5000));
    EXPECT_EQ(tls.completedHandshakes(), 0);
    EXPECT_TRUE(tls.received().isEmpty()) << tls.received().constData();

    // The same server does read what a client that trusts it sends.
    QSslSocket trusting;
    QSslConfiguration configuration = trusting.sslConfiguration();
    configuration.addCaCertificate(tls.certificate());
    trusting.setSslConfiguration(configuration);
    trusting.connectToHostEncrypted(QStringLiteral("127.0.0.1"), tls.serverPort());
    ASSERT_TRUE(QTest::qWaitFor([&] { return trusting.isEncrypted(); }, 5000))
        << trusting.errorString().toStdString();
    trusting.write("GET / HTTP/1.1\r\n");
    EXPECT_TRUE(QTest::qWaitFor([&] { return tls.received() == "GET / HTTP/1.1\r\n"; }, 5000));
}

} // namespace
} // namespace tessara
