// The sample credit request, run by the demo's autopilot through its form steps against the
// embedded reference backend; what the backend received is read back from its record.

#include "DemoRun.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

const QString kProcesses = QStringLiteral(TESSARA_SOURCE_DIR "/examples/processes");
const QString kSample = kProcesses + QStringLiteral("/credit-request");

struct Received {
    const char* step;
    const char* key;
    const char* value;
};

// What a user who answers as the sample answers file says must reach the backend, in order:
// hidden sections skipped, revealed ones entered in place, the optional region sent as chosen,
// the unticked optional checkbox sent as "false", the upload sending no value of its own.
const Received kExpectedValues[] = {
    {"personal-data", "firstName", "Иван"},
    {"personal-data", "middleName", "Петров"},
    {"personal-data", "lastName", "Иванов"},
    {"personal-data", "egn", "7501020018"},
    {"personal-data", "birthDate", "1975-01-02"},
    {"personal-data", "maritalStatus", "MARRIED"},
    {"personal-data", "spouseName", "Мария Иванова"},
    {"personal-data", "spouseEgn", "7803150032"},
    {"personal-data", "employmentStatus", "EMPLOYED"},
    {"personal-data", "employerName", "Примерна фирма ООД"},
    {"personal-data", "monthlyIncome", "2400"},
    {"contact-data", "phone", "0888123456"},
    {"contact-data", "email", "ivan.ivanov@example.bg"},
    {"contact-data", "region", "BG-22"},
    {"contact-data", "city", "София"},
    {"contact-data", "permanentAddress", "ул. „Витоша“ 15, ет. 3, ап. 7"},
    {"contact-data", "differentCurrentAddress", "true"},
    {"contact-data", "currentAddressText", "София, ж.к. „Младост“ 1, бл. 25, вх. А"},
    {"contact-data", "iban", "BG80BNBG96611020345678"},
    {"contact-data", "marketingConsent", "false"},
    {"contact-data", "dataAccuracy", "true"},
    {"documents", "termsConsent", "true"},
};

QStringList strings(const QJsonArray& array) {
    QStringList out;
    for (const QJsonValue& v : array)
        out << v.toString();
    return out;
}

TEST(CreditRequestFormSteps, BackendReceivesEveryValueAndFileInOrder) {
    QTemporaryDir pictures;
    tessara::demo::DemoOptions options =
        DemoRun::autopilotOptions(kProcesses, QStringLiteral("credit-request"));
    options.untilDirectionId = QStringLiteral("credit-calculator");
    options.screenshotsDir = pictures.path();
    const DemoRun run = DemoRun::run(options);

    ASSERT_EQ(run.exitCode, 0) << run.message.toStdString() << "\n" << run.log.join(u'\n').toStdString();
    EXPECT_EQ(run.message, QStringLiteral("reached step credit-calculator"));
    EXPECT_EQ(strings(run.record.value(QLatin1String("steps")).toArray()),
              (QStringList{"personal-data", "contact-data", "documents", "credit-calculator"}));

    const QJsonArray values = run.record.value(QLatin1String("values")).toArray();
    ASSERT_EQ(values.size(), qsizetype(std::size(kExpectedValues))) << run.log.join(u'\n').toStdString();
    for (qsizetype i = 0; i < values.size(); ++i) {
        const QJsonObject value = values.at(i).toObject();
        const Received& expected = kExpectedValues[i];
        SCOPED_TRACE(expected.key);
        EXPECT_EQ(value.value(QLatin1String("step")).toString(), QString::fromUtf8(expected.step));
        EXPECT_EQ(value.value(QLatin1String("key")).toString(), QString::fromUtf8(expected.key));
        EXPECT_EQ(value.value(QLatin1String("value")).toString(), QString::fromUtf8(expected.value));
    }

    const QJsonArray uploads = run.record.value(QLatin1String("uploads")).toArray();
    ASSERT_EQ(uploads.size(), 1);
    const QJsonObject upload = uploads.first().toObject();
    QFile sample(kSample + QStringLiteral("/sample-income-statement.pdf"));
    ASSERT_TRUE(sample.open(QIODevice::ReadOnly));
    const QByteArray sent = sample.readAll();
    EXPECT_EQ(upload.value(QLatin1String("key")).toString(), QStringLiteral("incomeDocument"));
    EXPECT_EQ(upload.value(QLatin1String("step")).toString(), QStringLiteral("documents"));
    EXPECT_EQ(upload.value(QLatin1String("fileName")).toString(),
              QStringLiteral("sample-income-statement.pdf"));
    EXPECT_EQ(upload.value(QLatin1String("contentType")).toString(), QStringLiteral("application/pdf"));
    EXPECT_EQ(qint64(upload.value(QLatin1String("size")).toDouble()), sent.size());
    const QString storedPath = upload.value(QLatin1String("storedPath")).toString();
    ASSERT_TRUE(run.storedFiles.contains(storedPath)) << storedPath.toStdString();
    EXPECT_EQ(run.storedFiles.value(storedPath), sent);

    // A picture of each screen as it appeared and once filled, the home first, the window last.
    EXPECT_EQ(QDir(pictures.path()).entryList({QStringLiteral("*.png")}, QDir::Files, QDir::Name),
              (QStringList{"01-home.png", "02-personal-data.png", "03-personal-data-filled.png",
                           "04-contact-data.png", "05-contact-data-filled.png", "06-documents.png",
                           "07-documents-filled.png", "08-window.png"}));
}

TEST(CreditRequestFormSteps, RefusedAnswerEndsWithTheAlertsWordsAndSendsNothing) {
    QTemporaryDir dir;
    QFile::copy(kSample + QStringLiteral("/answers.json"), dir.filePath(QStringLiteral("answers.json")));
    QFile answers(dir.filePath(QStringLiteral("answers.json")));
    ASSERT_TRUE(answers.open(QIODevice::ReadOnly));
    QByteArray json = answers.readAll();
    answers.close();
    json.replace("\"7501020018\"", "\"75010200\"");
    ASSERT_TRUE(answers.open(QIODevice::WriteOnly | QIODevice::Truncate));
    answers.write(json);
    answers.close();

    tessara::demo::DemoOptions options =
        DemoRun::autopilotOptions(kProcesses, QStringLiteral("credit-request"));
    options.answersFile = answers.fileName();
    const DemoRun run = DemoRun::run(options);

    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(
        run.message,
        QStringLiteral(
            "the answers were refused on step personal-data: ЕГН: ЕГН трябва да съдържа точно 10 цифри."));
    EXPECT_TRUE(run.log.contains(QStringLiteral("alert: ЕГН | ЕГН трябва да съдържа точно 10 цифри.")));
    EXPECT_TRUE(run.record.value(QLatin1String("values")).toArray().isEmpty());
    EXPECT_EQ(strings(run.record.value(QLatin1String("steps")).toArray()), QStringList{"personal-data"});
}

} // namespace
