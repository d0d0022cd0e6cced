// How a run ends, on small processes written for each case: a closing screen, a close that
// asks for confirmation, an answer the form cannot take.

#include "DemoRun.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QTcpServer>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

struct Ending {
    const char* name;
    // File path under the process folder -> its content.
    std::vector<std::pair<const char*, const char*>> files;
    const char* answers; // nullptr: no answers file, every control gets its default
    int exitCode;
    const char* message;
    const char* logLine; // a line the run must have printed
    // The values the backend received, as "step/key=value".
    std::vector<const char*> received;
};

const char* kProcessFile = R"({"processId": "p", "name": "Проба", "firstStep": "ask"})";

const Ending kEndings[] = {
    {"ClosingScreenButtonEndsTheRun",
     {{"process.json", kProcessFile},
      {"steps/ask.json", R"({"type": "FORM", "name": "Въпрос", "fields": [
           {"type": "INPUT", "key": "nickname", "label": "Псевдоним"},
           {"type": "FLOW", "key": "askNext", "label": "Напред", "directionId": "done"}]})"},
      {"steps/done.json", R"({"type": "FORM", "name": "Край", "fields": [
           {"type": "TEXT", "key": "bye", "label": "Готово.", "styleClass": "a1 position-middle"}]})"}},
     nullptr,
     0,
     "closed on step done",
     "closedFormOnStepWithId: done",
     {"ask/nickname=Тест"}},
    {"CloseWithEnteredDataIsConfirmed",
     {{"process.json", kProcessFile}, {"steps/ask.json", R"({"type": "FORM", "name": "Бележка", "fields": [
           {"type": "AREA", "key": "note", "label": "Бележка"}]})"}},
     R"({"note": "Ще се обадя\nутре"})",
     0,
     "closed on step ask",
     "alert: Сигурни ли сте, че искате да затворите формуляра? | Ако го затворите преди да го изпратите, "
     "попълнените данни ще се загубят.",
     {}},
    {"AnswerThatIsNoOptionStopsBeforeSending",
     {{"process.json", kProcessFile}, {"steps/ask.json", R"({"type": "FORM", "name": "Избор", "fields": [
           {"type": "DROPDOWN", "key": "colour", "label": "Цвят", "required": true,
            "options": [{"id": 1, "label": "Син", "value": "BLUE"}, {"id": 2, "label": "Зелен", "value": "GREEN"}]},
           {"type": "FLOW", "key": "askNext", "label": "Напред", "directionId": "ask"}]})"}},
     R"({"colour": "RED"})",
     1,
     R"(the answer "RED" for colour is none of its options ("BLUE", "GREEN"))",
     "step shown: ask (FORM)",
     {}},
};

// Names the case in test listings instead of dumping its bytes.
void PrintTo(const Ending& ending, std::ostream* out) {
    *out << ending.name;
}

class AutopilotEndings : public testing::TestWithParam<Ending> {};

TEST_P(AutopilotEndings, EndsAsExpected) {
    const Ending& ending = GetParam();
    QTemporaryDir root;
    const QDir process(root.filePath(QStringLiteral("p")));
    for (const auto& [path, content] : ending.files) {
        const QString file = process.filePath(QString::fromUtf8(path));
        QDir().mkpath(QFileInfo(file).absolutePath());
        QFile out(file);
        ASSERT_TRUE(out.open(QIODevice::WriteOnly));
        out.write(content);
    }
    tessara::demo::DemoOptions options = DemoRun::autopilotOptions(root.path(), QStringLiteral("p"));
    if (ending.answers) {
        QFile answers(root.filePath(QStringLiteral("answers.json")));
        ASSERT_TRUE(answers.open(QIODevice::WriteOnly));
        answers.write(ending.answers);
        options.answersFile = answers.fileName();
    }

    const DemoRun run = DemoRun::run(options);

    const std::string log = run.log.join(u'\n').toStdString();
    EXPECT_EQ(run.exitCode, ending.exitCode) << log;
    EXPECT_EQ(run.message, QString::fromUtf8(ending.message)) << log;
    EXPECT_TRUE(run.log.contains(QString::fromUtf8(ending.logLine))) << log;
    QStringList received;
    for (const QJsonValue& v : run.record.value(QLatin1String("values")).toArray()) {
        const QJsonObject value = v.toObject();
        received << value.value(QLatin1String("step")).toString() + u'/' +
                        value.value(QLatin1String("key")).toString() + u'=' +
                        value.value(QLatin1String("value")).toString();
    }
    QStringList expected;
    for (const char* line : ending.received)
        expected << QString::fromUtf8(line);
    EXPECT_EQ(received, expected) << log;
}

INSTANTIATE_TEST_SUITE_P(Cases, AutopilotEndings, testing::ValuesIn(kEndings),
                         [](const testing::TestParamInfo<Ending>& info) {
                             return std::string(info.param.name);
                         });

} // namespace

namespace {

TEST(AutopilotWatchdog, BackendThatNeverAnswersEndsWithExitCode2) {
    // Takes connections and says nothing, as a hung backend would.
    QTcpServer silent;
    ASSERT_TRUE(silent.listen(QHostAddress::LocalHost));
    tessara::demo::DemoOptions options = DemoRun::autopilotOptions(QString(), QStringLiteral("p"));
    options.backendUrl = QUrl(QStringLiteral("http://127.0.0.1:%1").arg(silent.serverPort()));
    options.timeoutSeconds = 1;

    const DemoRun run = DemoRun::run(options, 10000);

    EXPECT_EQ(run.exitCode, 2);
    EXPECT_EQ(run.message, QStringLiteral("no progress within 1 s (last step: none yet)"));
    EXPECT_TRUE(run.record.isEmpty());
}

} // namespace
