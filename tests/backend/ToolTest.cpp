#include "NetworkTestSupport.h"

#include <QProcess>
#include <QTemporaryDir>

namespace tessara {
namespace {

using test::CannedResponse;
using test::LoopbackHttpServer;

struct ToolRun {
    int exitCode = -1;
    bool crashed = true;
    QByteArray out;
    QByteArray err;
};

// Runs the tool without blocking the event loop, so an in-process server can answer it.
ToolRun runTool(const QStringList& arguments, const QByteArray& input = {}) {
    QProcess process;
    process.start(QStringLiteral(TESSARA_BINARY_DIR "/bin/tessara"), arguments);
    ToolRun run;
    if (!process.waitForStarted(5000))
        return run;
    process.write(input);
    process.closeWriteChannel();
    if (!QTest::qWaitFor([&] { return process.state() == QProcess::NotRunning; }, 20000)) {
        process.kill();
        process.waitForFinished();
        return run;
    }
    run.exitCode = process.exitCode();
    run.crashed = process.exitStatus() != QProcess::NormalExit;
    run.out = process.readAllStandardOutput();
    run.err = process.readAllStandardError();
    return run;
}

TEST(Tool, DecodesByTheClientsRulesAndPrintsSortedKeys) {
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("step.json"));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(
        R"({"type":"FORM","unknown":1,"fields":[{"type":"INPUT","required":true,"key":"egn"}],"name":null})");
    file.close();

    struct Row {
        QStringList arguments;
        QByteArray input;
        int exitCode;
        QByteArray out;
        QByteArray err;
    };
    const std::vector<Row> rows = {
        {{"decode", "step", path},
         {},
         0,
         "{\"fields\":[{\"key\":\"egn\",\"required\":true,\"type\":\"INPUT\"}],\"type\":\"FORM\"}\n",
         ""},
        {{"decode", "kyc-status", "-"},
         R"({"message":"m","code":"PROCESS_SUCCESS"})",
         0,
         "{\"code\":\"PROCESS_SUCCESS\",\"message\":\"m\"}\n",
         ""},
        {{"decode", "step", "-"}, R"({"type":"FORM"})", 1, "", "JSON decoding failed.\n"},
        {{"decode", "products", "-"}, "\xff\xfe not json at all", 1, "", "JSON decoding failed.\n"},
        {{"decode", "section-list", "-"}, "", 1, "", "JSON decoding failed.\n"},
        {{"decode", "kyc-status", "-"}, R"({"code":"X"})", 1, "", "JSON decoding failed.\n"},
    };
    for (const Row& row : rows) {
        const ToolRun run = runTool(row.arguments, row.input);
        SCOPED_TRACE(row.arguments.join(' ').toStdString() + "\n" + run.err.toStdString());
        ASSERT_FALSE(run.crashed);
        EXPECT_EQ(run.exitCode, row.exitCode);
        EXPECT_EQ(run.out, row.out);
        EXPECT_EQ(run.err, row.err);
    }
}

TEST(Tool, ADateTheClientWouldStopOnIsReportedNotCrashedOn) {
    const ToolRun run =
        runTool({"decode", "dates", "-"}, R"({"productId":"1","availableDates":["2026-13-45"]})");
    ASSERT_FALSE(run.crashed);
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(run.err.startsWith("JSON decoding failed.\n")) << run.err.constData();
}

TEST(Tool, WrongUsageExplainsItselfWithStatusTwo) {
    for (const QStringList& arguments :
         {QStringList{}, QStringList{"frobnicate"}, QStringList{"decode", "step"},
          QStringList{"decode", "letter", "-"}, QStringList{"submit", "--direction", "d"},
          QStringList{"dates", "seven"}}) {
        const ToolRun run = runTool(arguments);
        EXPECT_EQ(run.exitCode, 2) << arguments.join(' ').toStdString();
        EXPECT_TRUE(run.err.startsWith("tessara: ")) << run.err.constData();
    }
    const ToolRun overview = runTool({"--help"});
    EXPECT_EQ(overview.exitCode, 0);
    for (const char* command : {"decode", "start", "open", "section", "submit", "upload", "products", "dates",
                                "details", "kyc-status", "--timeout"})
        EXPECT_TRUE(overview.out.contains(command)) << command;
    const ToolRun submitHelp = runTool({"submit", "--help"});
    EXPECT_EQ(submitHelp.exitCode, 0);
    EXPECT_TRUE(submitHelp.out.startsWith("Usage: tessara submit")) << submitHelp.out.constData();
    EXPECT_TRUE(submitHelp.out.contains("--field <KEY=VALUE>"));
}

TEST(Tool, TalksToTheBackendThroughTheClient) {
    LoopbackHttpServer server;
    server.enqueue(CannedResponse::json(200, R"({"name":"Стъпка","fields":[],"type":"FORM"})"));
    const ToolRun open = runTool({"open", "d-1", "--backend", server.url(QStringLiteral("/api")).toString()});
    ASSERT_EQ(server.requestCount(), 1);
    EXPECT_EQ(server.requests()[0].target, "/api/step/direction/d-1/current");
    EXPECT_TRUE(server.requests()[0].header("User-Agent").contains(" tessara/"));
    EXPECT_EQ(open.exitCode, 0) << open.err.constData();
    EXPECT_EQ(open.out, QStringLiteral("{\"fields\":[],\"name\":\"Стъпка\",\"type\":\"FORM\"}\n").toUtf8());

    server.enqueue(CannedResponse::json(200, R"({"fields":[]})"));
    const ToolRun submit = runTool({"submit", "--backend", server.url().toString(), "--submission", "s",
                                    "--direction", "d", "--field", "a=1", "--field", "b=x=y"});
    EXPECT_EQ(submit.exitCode, 0) << submit.err.constData();
    EXPECT_EQ(
        server.requests()[1].body,
        R"({"directionId":"d","fields":[{"key":"a","value":"1"},{"key":"b","value":"x=y"}],"submissionId":"s"})");

    server.enqueue(CannedResponse::json(400, R"({"message":"Процесът не съществува"})"));
    const ToolRun refused = runTool({"start", "p-9", "--backend", server.url().toString()});
    EXPECT_EQ(refused.exitCode, 1);
    EXPECT_EQ(refused.err, QStringLiteral("Процесът не съществува\n").toUtf8());
    EXPECT_TRUE(refused.out.isEmpty());

    // The client never answers a 400 without a body; the tool's own limit ends the wait.
    server.enqueue(CannedResponse::noBody(400));
    const ToolRun silent = runTool({"products", "--backend", server.url().toString(), "--timeout", "1"});
    EXPECT_EQ(silent.exitCode, 1);
    EXPECT_TRUE(silent.err.contains("no result after 1 s; giving up.")) << silent.err.constData();

    const ToolRun invalid = runTool({"products", "--backend", "ftp://nowhere"});
    EXPECT_EQ(invalid.exitCode, 1);
    EXPECT_EQ(invalid.err, "The URL is invalid.\n");
}

TEST(Tool, UploadsAFileAsMultipart) {
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("scan"));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("%PDF-1.4\n%\xe2\xe3\xcf\xd3\n");
    file.close();
    LoopbackHttpServer server;
    server.enqueue(CannedResponse::text(200, "stored"));
    const ToolRun run = runTool({"upload", "--backend", server.url().toString(), "--submission", "s", "--key",
                                 "doc", "--from", "d", path});
    EXPECT_EQ(run.exitCode, 0) << run.err.constData();
    EXPECT_TRUE(run.out.isEmpty());
    ASSERT_EQ(server.requestCount(), 1);
    const auto parts = server.requests()[0].multipartParts();
    ASSERT_TRUE(parts && parts->size() == 2);
    EXPECT_EQ((*parts)[0].header("Content-Disposition"), "form-data; name=\"file\"; filename=\"scan.PDF\"");
    EXPECT_EQ((*parts)[0].header("Content-Type"), "application/pdf");
}

} // namespace
} // namespace tessara
