// The tessara-backend program as a host developer runs it.
#include "ServedSample.h"

#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

using namespace tessara;
using namespace tessara::testing;

namespace {

const QString kProgram = QStringLiteral(TESSARA_BINARY_DIR "/bin/tessara-backend");

} // namespace

TEST(BackendProgram, ServesTheSampleOnAFreePortAndLogsEachRequest) {
    QTemporaryDir storage;
    QProcess program;
    program.start(kProgram, {QStringLiteral("--port"), QStringLiteral("0"), QStringLiteral("--processes"),
                             kSampleProcesses, QStringLiteral("--storage"), storage.path()});
    ASSERT_TRUE(program.waitForStarted(10000)) << program.errorString().toStdString();
    QByteArray out;
    const QRegularExpression banner(
        QStringLiteral("^tessara-backend listening on http://127\\.0\\.0\\.1:([0-9]+)\n"));
    ASSERT_TRUE(QTest::qWaitFor(
        [&] {
            out += program.readAllStandardOutput();
            return banner.match(QString::fromUtf8(out)).hasMatch();
        },
        10000))
        << out.toStdString() << program.readAllStandardError().toStdString();
    const int port = banner.match(QString::fromUtf8(out)).captured(1).toInt();
    ASSERT_GT(port, 0);

    TSRNetwork::shared().setInstanceURL(QUrl(QStringLiteral("http://127.0.0.1:%1").arg(port)));
    const auto first = awaitResult<SubmissionJSON>([&](auto done) {
        TSRNetwork::shared().createSubmission(
            SubmissionCreateDTO{QStringLiteral("credit-request"), QStringLiteral("t")}, done);
    });
    TSRNetwork::shared().setInstanceURL(std::nullopt);
    ASSERT_TRUE(first.isSuccess());
    EXPECT_EQ(first.value().directionId, QStringLiteral("personal-data"));
    EXPECT_TRUE(QTest::qWaitFor(
        [&] {
            out += program.readAllStandardOutput();
            return out.contains("POST /submission 200 ");
        },
        10000))
        << out.toStdString();

    program.terminate();
    EXPECT_TRUE(program.waitForFinished(10000));
}

TEST(BackendProgram, RefusesToStartWithBrokenDefinitions) {
    QTemporaryDir processes;
    QDir(processes.path()).mkpath(QStringLiteral("broken/steps"));
    QFile process(processes.path() + QStringLiteral("/broken/process.json"));
    ASSERT_TRUE(process.open(QIODevice::WriteOnly));
    process.write(R"({"processId": "broken", "firstStep": "start"})");
    process.close();

    QProcess program;
    program.start(kProgram, {QStringLiteral("--port"), QStringLiteral("0"), QStringLiteral("--processes"),
                             processes.path()});
    ASSERT_TRUE(program.waitForFinished(10000));
    EXPECT_EQ(program.exitCode(), 1);
    const QString errors = QString::fromUtf8(program.readAllStandardError());
    EXPECT_TRUE(errors.contains(processes.path() +
                                QStringLiteral("/broken/process.json: \"firstStep\" names \"start\"")))
        << errors.toStdString();
}
