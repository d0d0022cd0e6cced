// The sample credit request driven through its calculator by the demo's autopilot: the values
// the embedded backend receives are those a user who answers so would have seen on screen.

#include "DemoRun.h"
#include "backend/AnnuityCalculator.h"
#include "backend/WorkingDays.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

const QString kProcesses = QStringLiteral(TESSARA_SOURCE_DIR "/examples/processes");
const QString kSample = kProcesses + QStringLiteral("/credit-request");

// The sample's answers plus the calculator's, the date being one the backend offers today.
QString answersWith(const QTemporaryDir& dir, const QJsonObject& calculator) {
    QFile sample(kSample + QStringLiteral("/answers.json"));
    EXPECT_TRUE(sample.open(QIODevice::ReadOnly));
    QJsonObject answers = QJsonDocument::fromJson(sample.readAll()).object();
    for (auto it = calculator.begin(); it != calculator.end(); ++it)
        answers.insert(it.key(), it.value());
    const QString path = dir.filePath(QStringLiteral("answers.json"));
    QFile out(path);
    EXPECT_TRUE(out.open(QIODevice::WriteOnly));
    out.write(QJsonDocument(answers).toJson());
    QFile::copy(kSample + QStringLiteral("/sample-income-statement.pdf"),
                dir.filePath(QStringLiteral("sample-income-statement.pdf")));
    return path;
}

QHash<QString, QString> calculatorValues(const DemoRun& run) {
    QHash<QString, QString> values;
    for (const QJsonValue& v : run.record.value(QLatin1String("values")).toArray()) {
        const QJsonObject value = v.toObject();
        if (value.value(QLatin1String("step")).toString() == QLatin1String("credit-calculator"))
            values.insert(value.value(QLatin1String("key")).toString(),
                          value.value(QLatin1String("value")).toString());
    }
    return values;
}

TEST(CreditCalculatorStep, TheBackendReceivesWhatTheAutopilotChoseOnTheCalculator) {
    const tessara::FirstInstalmentWindow window =
        tessara::WorkingDays::firstInstalmentWindow(QDate::currentDate(), QStringLiteral("MONTHLY"));
    ASSERT_GE(window.availableDates.size(), 2u);
    const QDate date = window.availableDates.back();

    QTemporaryDir dir;
    tessara::demo::DemoOptions options =
        DemoRun::autopilotOptions(kProcesses, QStringLiteral("credit-request"));
    options.answersFile = answersWith(dir, QJsonObject{{"creditProduct", "102"},
                                                       {"creditAmount", "2750"},
                                                       {"creditPeriods", "18"},
                                                       {"firstInstalmentDate", date.toString(Qt::ISODate)}});
    options.untilDirectionId = QStringLiteral("kyc-verification");
    const DemoRun run = DemoRun::run(options);
    ASSERT_EQ(run.exitCode, 0) << run.message.toStdString() << "\n" << run.log.join(u'\n').toStdString();

    // Product 102 lends in steps of 50 at 15.5 % a year.
    const auto plan = tessara::AnnuityCalculator::plan(*tessara::Decimal::fromString("2750"),
                                                       *tessara::Decimal::fromString("15.5"), 18);
    ASSERT_TRUE(plan.has_value());
    const QHash<QString, QString> values = calculatorValues(run);
    EXPECT_EQ(values.value(QStringLiteral("creditAmount")), QStringLiteral("2750"));
    EXPECT_EQ(values.value(QStringLiteral("creditPeriods")), QStringLiteral("18"));
    EXPECT_EQ(values.value(QStringLiteral("selectedProductId")), QStringLiteral("102"));
    EXPECT_EQ(values.value(QStringLiteral("monthlyInstalment")), plan->instalment.description());
    EXPECT_EQ(values.value(QStringLiteral("totalDue")), plan->totalDue.description());
    EXPECT_EQ(values.value(QStringLiteral("firstInstalmentDate")),
              QString::number(QDateTime(date, QTime(0, 0)).toMSecsSinceEpoch()));
    EXPECT_EQ(values.size(), 6);
    EXPECT_TRUE(run.log.contains(QStringLiteral("  creditAmount: drag to 2750")));
}

TEST(CreditCalculatorStep, AnOfferedDateIsRequiredOfTheAnswers) {
    QTemporaryDir dir;
    tessara::demo::DemoOptions options =
        DemoRun::autopilotOptions(kProcesses, QStringLiteral("credit-request"));
    options.answersFile = answersWith(dir, QJsonObject{{"firstInstalmentDate", "1999-01-04"}});
    const DemoRun run = DemoRun::run(options);
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(
        run.message,
        QStringLiteral(
            "calculator step credit-calculator: the date 1999-01-04 is not offered for firstInstalmentDate"));
}

} // namespace
