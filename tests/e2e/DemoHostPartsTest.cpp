// The demo host's pieces that need no running process: command line, answers, picture names,
// the summary, typing.

#include "host/AnswerBook.h"
#include "host/DemoOptions.h"
#include "host/ScreenshotRecorder.h"
#include "host/SubmissionSummary.h"
#include "host/UserGestures.h"

#include <QDir>
#include <QJsonDocument>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <gtest/gtest.h>

using namespace tessara::demo;

namespace {

struct OptionCase {
    QStringList arguments;
    const char* error; // nullptr: parses
    std::function<void(const DemoOptions&)> check;
};

TEST(DemoOptions, ParsesTheCommandLine) {
    const OptionCase cases[] = {
        {{},
         nullptr,
         [](const DemoOptions& o) {
             EXPECT_FALSE(o.backendUrl);
             EXPECT_EQ(o.processId, QStringLiteral("credit-request"));
             EXPECT_EQ(o.processesDir, DemoOptions::defaultProcessesDir());
             EXPECT_EQ(o.timeoutSeconds, 60);
             EXPECT_FALSE(o.autopilot);
             EXPECT_FALSE(o.camera);
         }},
        {{"--backend", "https://bank.example/api/", "--process", "p1", "--token", "", "--open", "step-3"},
         nullptr,
         [](const DemoOptions& o) {
             EXPECT_EQ(o.backendUrl, QUrl(QStringLiteral("https://bank.example/api/")));
             EXPECT_EQ(o.processId, QStringLiteral("p1"));
             // An empty token is still a token: the SDK sends it as "".
             EXPECT_EQ(o.token, QString());
             EXPECT_EQ(o.openDirectionId, QStringLiteral("step-3"));
         }},
        {{"--autopilot", "--answers", "a.json", "--screenshots", "out", "--until", "x", "--timeout", "0"},
         nullptr,
         [](const DemoOptions& o) {
             // Relative paths are taken from where the command was typed.
             EXPECT_EQ(o.answersFile, QDir::current().absoluteFilePath(QStringLiteral("a.json")));
             EXPECT_EQ(o.screenshotsDir, QDir::current().absoluteFilePath(QStringLiteral("out")));
             EXPECT_EQ(o.untilDirectionId, QStringLiteral("x"));
             EXPECT_EQ(o.timeoutSeconds, 0);
         }},
        {{"--camera", "synthetic"},
         nullptr,
         [](const DemoOptions& o) { EXPECT_EQ(o.camera, QStringLiteral("synthetic")); }},
        {{"--camera", "file:frames.nv12"},
         nullptr,
         [](const DemoOptions& o) {
             EXPECT_EQ(o.camera, QStringLiteral("file:") +
                                     QDir::current().absoluteFilePath(QStringLiteral("frames.nv12")));
         }},
        {{"--camera", "file:"}, "--camera is system, synthetic or file:PATH", {}},
        {{"--camera", "webcam"}, "--camera is system, synthetic or file:PATH", {}},
        {{"--backend", "127.0.0.1:8080"}, "--backend needs an absolute URL", {}},
        {{"--timeout", "soon"}, "--timeout needs a whole number of seconds", {}},
        {{"--timeout", "-1"}, "--timeout needs a whole number of seconds", {}},
        {{"--until", "x"}, "--until only makes sense with --autopilot", {}},
        {{"--frobnicate"}, "Unknown option", {}},
        {{"stray"}, "Unexpected argument: stray", {}},
    };
    for (const OptionCase& c : cases) {
        SCOPED_TRACE(c.arguments.join(u' ').toStdString());
        QString error;
        const auto options =
            DemoOptions::parse(QStringList{QStringLiteral("tessara-demo")} + c.arguments, &error);
        if (c.error) {
            EXPECT_FALSE(options);
            EXPECT_TRUE(error.contains(QString::fromUtf8(c.error))) << error.toStdString();
        } else {
            ASSERT_TRUE(options) << error.toStdString();
            c.check(*options);
        }
    }
}

TEST(AnswerBook, ReadsAnswersAsTheTextToEnter) {
    QString error;
    const auto book =
        AnswerBook::fromJson(R"({"name": "Иван", "agree": true, "decline": false, "amount": 2400,
                                               "rate": 1.5, "file": "docs/a.pdf", "abs": "/tmp/b.pdf"})",
                             QStringLiteral("/answers/here"), &error);
    ASSERT_TRUE(book) << error.toStdString();
    EXPECT_EQ(book->answer(QStringLiteral("name")), QStringLiteral("Иван"));
    EXPECT_EQ(book->answer(QStringLiteral("agree")), QStringLiteral("true"));
    EXPECT_EQ(book->answer(QStringLiteral("decline")), QStringLiteral("false"));
    EXPECT_EQ(book->answer(QStringLiteral("amount")), QStringLiteral("2400"));
    EXPECT_EQ(book->answer(QStringLiteral("rate")), QStringLiteral("1.5"));
    EXPECT_EQ(book->answer(QStringLiteral("missing")), std::nullopt);
    EXPECT_EQ(book->resolvePath(QStringLiteral("docs/a.pdf")), QStringLiteral("/answers/here/docs/a.pdf"));
    EXPECT_EQ(book->resolvePath(QStringLiteral("/tmp/b.pdf")), QStringLiteral("/tmp/b.pdf"));
}

TEST(AnswerBook, RefusesWhatCannotBeEntered) {
    const std::pair<QByteArray, const char*> cases[] = {
        {"[1, 2]", "one JSON object"},
        {R"({"a": [1]})", "the answer for \"a\" must be a string"},
        {R"({"a": null})", "the answer for \"a\" must be a string"},
        {R"({"a": )", "not JSON"},
    };
    for (const auto& [json, words] : cases) {
        QString error;
        EXPECT_FALSE(AnswerBook::fromJson(json, {}, &error)) << json.constData();
        EXPECT_TRUE(error.contains(QString::fromUtf8(words))) << error.toStdString();
    }
    QString error;
    EXPECT_FALSE(AnswerBook::load(QStringLiteral("/no/such/answers.json"), &error));
    EXPECT_TRUE(error.contains(QStringLiteral("/no/such/answers.json")));
}

TEST(ScreenshotRecorder, NamesPicturesByOrderAndStep) {
    const std::tuple<int, const char*, const char*> cases[] = {
        {1, "personal-data", "01-personal-data.png"},
        {12, "Personal Data/Step 2", "12-personal-data-step-2.png"},
        {3, "лични-данни", "03-лични-данни.png"},
        {4, "../../etc", "04-etc.png"},
        {100, "", "100-screen.png"},
    };
    for (const auto& [index, name, file] : cases)
        EXPECT_EQ(ScreenshotRecorder::fileName(index, QString::fromUtf8(name)), QString::fromUtf8(file));
}

TEST(ScreenshotRecorder, AlertIsDrawnCentredOverTheDimmedScreen) {
    QImage screen(100, 200, QImage::Format_ARGB32_Premultiplied);
    screen.fill(Qt::white);
    QImage alert(40, 20, QImage::Format_ARGB32_Premultiplied);
    alert.fill(Qt::red);
    const QImage out = ScreenshotRecorder::composeAlert(screen, alert);
    ASSERT_EQ(out.size(), screen.size());
    EXPECT_EQ(QColor(out.pixel(50, 100)), QColor(Qt::red));
    EXPECT_LT(qGray(out.pixel(5, 5)), 255); // dimmed
    EXPECT_EQ(QColor(out.pixel(5, 5)), QColor(out.pixel(95, 195)));
}

TEST(SubmissionSummary, RecordAddressKeepsTheBackendsPath) {
    EXPECT_EQ(
        SubmissionSummary::recordUrl(QUrl(QStringLiteral("http://127.0.0.1:8080")), QStringLiteral("s1")),
        QUrl(QStringLiteral("http://127.0.0.1:8080/_demo/submissions/s1")));
    EXPECT_EQ(SubmissionSummary::recordUrl(QUrl(QStringLiteral("https://bank.example/api/?x=1")),
                                           QStringLiteral("s1")),
              QUrl(QStringLiteral("https://bank.example/api/_demo/submissions/s1")));
}

TEST(SubmissionSummary, ListsStepsValuesAndFiles) {
    const QJsonObject record = QJsonDocument::fromJson(R"({
        "submissionId": "s1", "processId": "credit-request",
        "steps": ["personal-data", "contact-data"],
        "values": [{"step": "personal-data", "to": "contact-data", "key": "firstName", "value": "Иван"}],
        "uploads": [{"key": "incomeDocument", "step": "documents", "fileName": "a.pdf", "size": 706,
                     "contentType": "application/pdf", "storedPath": "/tmp/x/a.pdf"}]})")
                                   .object();
    EXPECT_EQ(
        SubmissionSummary::format(record),
        (QStringList{"summary of submission s1 (process credit-request)",
                     "  steps visited (2): personal-data -> contact-data",
                     "  values received (1):", "    [personal-data] firstName = Иван", "  files stored (1):",
                     "    [documents] incomeDocument: a.pdf, 706 bytes, application/pdf -> /tmp/x/a.pdf"}));
}

TEST(SubmissionSummary, AddsWhatTheVerificationServiceSaw) {
    const char* seen = R"("script": "dropped-connection", "attempt": 2, "status": "KYC_STATUS_SELFIE_OK",
        "units": 230, "bytes": 612000, "pictures": 104, "width": 1440, "height": 1080, "keyFrames": 3,
        "profile": 66, "level": 41, "reconnects": 1, "streamPath": "")";
    const QStringList head{"summary of submission s1 (process p)",
                           "  steps visited (0): ", "  values received (0):", "  files stored (0):"};
    struct Case {
        const char* firstPicture;
        QStringList tail;
    };
    const Case cases[] = {
        {"120",
         {"  verification (script dropped-connection, attempt 2): KYC_STATUS_SELFIE_OK",
          "    104 pictures decoded, the last 1440x1080, 3 key frames; profile 66, level 41",
          "    230 units, 612000 bytes; first picture 120 ms after the join; 1 reconnects"}},
        {"null",
         {"  verification (script dropped-connection, attempt 2): KYC_STATUS_SELFIE_OK",
          "    104 pictures decoded, the last 1440x1080, 3 key frames; profile 66, level 41",
          "    230 units, 612000 bytes; first picture never; 1 reconnects"}},
    };
    for (const Case& c : cases) {
        const QByteArray json = QByteArray(R"({"submissionId": "s1", "processId": "p", "verification": {)") +
                                seen + R"(, "firstPictureMs": )" + c.firstPicture + "}}";
        EXPECT_EQ(SubmissionSummary::format(QJsonDocument::fromJson(json).object()), head + c.tail)
            << json.constData();
    }
}

TEST(SubmissionSummary, MeanStepTimeCountsOnlyStepsThatWereLeft) {
    const std::vector<StepTiming> timings = {
        {"a", "FORM", 100, 50, 50}, {"b", "FORM", 150, 100, 50}, {"c", "FORM", 120, -1, -1}};
    const QStringList lines = SubmissionSummary::formatTimings(timings);
    EXPECT_EQ(lines.at(3), QStringLiteral("  c (FORM): 120 / - / - / 120"));
    EXPECT_EQ(lines.last(), QStringLiteral("  2 steps left in 500 ms, 250 ms per step"));
}

TEST(UserGestures, TypesAnyTextKeyByKey) {
    // Latin, Cyrillic, typographic quotes and a character outside the basic plane.
    const QString text = QStringLiteral("ул. „Витоша“ 15 ☕ 😀 Ab@x");
    QLineEdit line;
    UserGestures::typeText(&line, text);
    EXPECT_EQ(line.text(), text);

    QPlainTextEdit area;
    UserGestures::typeText(&area, QStringLiteral("ред 1\nред 2"));
    EXPECT_EQ(area.toPlainText(), QStringLiteral("ред 1\nред 2"));
}

} // namespace
