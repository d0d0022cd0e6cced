// A whole demo run with every logging category at debug level: the calling service token and what
// the user typed must not show up in any line the program logs or prints (the demo's own
// transcript of the answers aside, which is the host's record, not a log).

#include "DemoRun.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QLoggingCategory>
#include <QMutex>
#include <QTemporaryDir>
#include <QTemporaryFile>
#include <cstdio>
#include <gtest/gtest.h>
#include <unistd.h>

namespace {

const QString kSample = QStringLiteral(TESSARA_SOURCE_DIR "/examples/processes/credit-request");
const QString kToken = QStringLiteral("tok-Q7v3-ЖЪЛТ-5c1e9b");

// Text answers that appear nowhere else (the demo's home screen shows a customer's name, so the
// sample's own names would be found there); they pass the sample's validation patterns.
const std::pair<const char*, const char*> kTypedAnswers[] = {
    {"firstName", "Звездомир"},
    {"middleName", "Калоянов"},
    {"lastName", "Жеравненски"},
    {"egn", "8212319876"},
    {"birthDate", "1982-12-31"},
    {"spouseName", "Росица Чипровска"},
    {"spouseEgn", "8406061234"},
    {"employerName", "Зеленика Трейд ЕООД"},
    {"monthlyIncome", "3175.40"},
    {"phone", "0879314159"},
    {"email", "zvezdomir.k@primer-poshta.bg"},
    {"city", "Жеравна"},
    {"permanentAddress", "ул. „Каменица“ 42, ап. 9"},
    {"currentAddressText", "Жеравна, ул. „Лозарска“ 7"},
    {"iban", "BG31UBBS88881000123456"},
};

// Every message of every category, as the default handler would print it.
class MessageTap {
public:
    MessageTap() {
        lines().clear();
        previous_ =
            qInstallMessageHandler([](QtMsgType, const QMessageLogContext& context, const QString& text) {
                const QMutexLocker lock(&mutex());
                lines().append(QString::fromUtf8(context.category ? context.category : "default") +
                               QStringLiteral(": ") + text);
            });
        QLoggingCategory::setFilterRules(QStringLiteral("*.debug=true"));
    }
    ~MessageTap() {
        QLoggingCategory::setFilterRules(QString());
        qInstallMessageHandler(previous_);
    }
    static QStringList taken() {
        const QMutexLocker lock(&mutex());
        return lines();
    }

private:
    static QMutex& mutex() {
        static QMutex m;
        return m;
    }
    static QStringList& lines() {
        static QStringList l;
        return l;
    }
    QtMessageHandler previous_ = nullptr;
};

// Whatever the process writes to standard output and error while alive, by file descriptor, so
// direct prints are caught as well as Qt's.
class OutputTap {
public:
    OutputTap() {
        file_.open();
        std::fflush(stdout);
        std::fflush(stderr);
        for (int fd : {1, 2}) {
            saved_[fd - 1] = dup(fd);
            dup2(file_.handle(), fd);
        }
    }
    ~OutputTap() { restore(); }
    QString restore() {
        if (saved_[0] >= 0) {
            std::fflush(stdout);
            std::fflush(stderr);
            for (int fd : {1, 2}) {
                dup2(saved_[fd - 1], fd);
                close(saved_[fd - 1]);
                saved_[fd - 1] = -1;
            }
        }
        QFile written(file_.fileName());
        written.open(QIODevice::ReadOnly);
        return QString::fromUtf8(written.readAll());
    }

private:
    QTemporaryFile file_;
    int saved_[2] = {-1, -1};
};

TEST(SecretsInLogs, NeitherTheTokenNorATypedValueReachesAnyLogLineOfAWholeRun) {
    QTemporaryDir dir;
    QFile sampleAnswers(kSample + QStringLiteral("/answers.json"));
    ASSERT_TRUE(sampleAnswers.open(QIODevice::ReadOnly));
    QJsonObject answers = QJsonDocument::fromJson(sampleAnswers.readAll()).object();
    QStringList secrets{kToken};
    for (const auto& [key, value] : kTypedAnswers) {
        ASSERT_TRUE(answers.contains(QLatin1String(key))) << key;
        answers.insert(QLatin1String(key), QString::fromUtf8(value));
        secrets << QString::fromUtf8(value);
    }
    answers.insert(QStringLiteral("incomeDocument"),
                   kSample + QStringLiteral("/sample-income-statement.pdf"));
    QFile answersFile(dir.filePath(QStringLiteral("answers.json")));
    ASSERT_TRUE(answersFile.open(QIODevice::WriteOnly));
    answersFile.write(QJsonDocument(answers).toJson());
    answersFile.close();

    tessara::demo::DemoOptions options =
        DemoRun::autopilotOptions(QFileInfo(kSample).path(), QStringLiteral("credit-request"));
    options.answersFile = answersFile.fileName();
    options.token = kToken;

    DemoRun run;
    QString printed;
    QStringList logged;
    {
        OutputTap output;
        const MessageTap messages;
        run = DemoRun::run(options, 60000);
        logged = MessageTap::taken();
        printed = output.restore();
    }
    const std::string transcript = run.log.join(u'\n').toStdString();
    ASSERT_EQ(run.exitCode, 0) << run.message.toStdString() << "\n"
                               << transcript << "\n"
                               << printed.toStdString();

    // The run really carried the secrets: the token went with the start, the values with the steps.
    EXPECT_TRUE(run.record.value(QLatin1String("hasCallingServiceToken")).toBool());
    const QString received = QString::fromUtf8(QJsonDocument(run.record).toJson());
    for (const auto& [key, value] : kTypedAnswers) {
        if (QLatin1String(key) != QLatin1String("birthDate")) {
            EXPECT_TRUE(received.contains(QString::fromUtf8(value))) << key << " never reached the backend";
        }
    }
    EXPECT_GT(logged.size(), 100) << "debug logging was not on";

    const QStringList printedLines = printed.split(u'\n');
    for (const QString& secret : secrets) {
        for (const QStringList* lines : {&std::as_const(logged), &printedLines}) {
            for (const QString& line : *lines)
                EXPECT_FALSE(line.contains(secret)) << secret.toStdString() << " in: " << line.toStdString();
        }
    }
    EXPECT_FALSE(run.log.join(u'\n').contains(kToken)) << "the demo's transcript names the token";
}

} // namespace
