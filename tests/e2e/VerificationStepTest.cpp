// The identity verification step driven by the demo's autopilot against the embedded reference
// backend, whose simulated service really decodes what the synthetic camera films.

#include "DemoRun.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

const QString kProcesses = QStringLiteral(TESSARA_SOURCE_DIR "/examples/processes");
const QString kSample = kProcesses + QStringLiteral("/credit-request");

QStringList strings(const QJsonArray& array) {
    QStringList list;
    for (const QJsonValue& v : array)
        list << v.toString();
    return list;
}

// The sample process started straight at its verification step, with `script` as the service's.
void writeVerificationProcess(const QString& root, const QString& script) {
    const QDir sample(kSample);
    const QDir target(root + QStringLiteral("/credit-request"));
    QDirIterator files(sample.path(), QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString relative = sample.relativeFilePath(files.next());
        target.mkpath(QFileInfo(relative).path());
        if (relative != QLatin1String("process.json")) {
            ASSERT_TRUE(QFile::copy(sample.filePath(relative), target.filePath(relative)));
        }
    }
    QFile in(sample.filePath(QStringLiteral("process.json")));
    ASSERT_TRUE(in.open(QIODevice::ReadOnly));
    QJsonObject process = QJsonDocument::fromJson(in.readAll()).object();
    process.insert(QStringLiteral("firstStep"), QStringLiteral("kyc-verification"));
    process.insert(QStringLiteral("verificationScript"), script);
    QFile out(target.filePath(QStringLiteral("process.json")));
    ASSERT_TRUE(out.open(QIODevice::WriteOnly));
    out.write(QJsonDocument(process).toJson());
}

TEST(VerificationStep, SampleRunsFromTheFirstFormToTheClosingStepThroughTheVerification) {
    QTemporaryDir pictures;
    tessara::demo::DemoOptions options =
        DemoRun::autopilotOptions(kProcesses, QStringLiteral("credit-request"));
    options.screenshotsDir = pictures.path();
    const DemoRun run = DemoRun::run(options, 60000);
    const std::string log = run.log.join(u'\n').toStdString();

    ASSERT_EQ(run.exitCode, 0) << run.message.toStdString() << "\n" << log;
    EXPECT_EQ(run.message, QStringLiteral("closed on step closing"));
    // The redirection the screen sent after the verdict reached the backend, which routed it on.
    const QStringList steps = strings(run.record.value(QLatin1String("steps")).toArray());
    ASSERT_GE(steps.size(), 2) << log;
    EXPECT_EQ(steps.mid(steps.size() - 2), (QStringList{"kyc-verification", "closing"}));
    EXPECT_EQ(run.record.value(QLatin1String("kyc")).toObject().value(QLatin1String("code")).toString(),
              QStringLiteral("KYC_STATUS_SELFIE_OK"));

    // The service reaches its verdict only on pictures it decoded, of the size the client crops to.
    const QJsonObject seen = run.record.value(QLatin1String("verification")).toObject();
    EXPECT_EQ(seen.value(QLatin1String("status")).toString(), QStringLiteral("KYC_STATUS_SELFIE_OK"));
    EXPECT_GE(seen.value(QLatin1String("pictures")).toInt(), 60) << log;
    EXPECT_EQ(seen.value(QLatin1String("width")).toInt(), 1440);
    EXPECT_EQ(seen.value(QLatin1String("height")).toInt(), 1080);
    EXPECT_EQ(seen.value(QLatin1String("reconnects")).toInt(), 0);

    // A picture of the document, the face and the touch target, and of the verdict.
    const QStringList files = QDir(pictures.path()).entryList({QStringLiteral("*kyc-verification*.png")});
    for (const char* phase : {"document", "selfie", "touch", "verdict"}) {
        const QString suffix = QStringLiteral("-kyc-verification-%1.png").arg(QLatin1String(phase));
        EXPECT_TRUE(
            std::any_of(files.begin(), files.end(), [&](const QString& f) { return f.endsWith(suffix); }))
            << phase << " in " << files.join(u' ').toStdString();
    }
}

struct Verdict {
    const char* script;
    const char* nextStep;
    // The line that tells how the step was left: by itself, or by a press of its button.
    const char* leaving;
    int reconnects;
};

// Each verdict of the service leads to its own step; only the lost video stream waits for the user.
// (The happy script is the sample run above.)
const Verdict kVerdicts[] = {
    {"dropped-connection", "closing", "  the step leads on by itself", 1},
    {"failed", "kyc-failed", "  the step leads on by itself", 0},
    {"no-service", "kyc-unavailable", "  the step leads on by itself", 0},
    {"no-video", "kyc-no-video", "  press \"", 0},
};

void PrintTo(const Verdict& verdict, std::ostream* out) {
    *out << verdict.script;
}

class VerificationVerdicts : public testing::TestWithParam<Verdict> {};

TEST_P(VerificationVerdicts, LeadToTheStepTheServiceChose) {
    const Verdict& verdict = GetParam();
    QTemporaryDir root;
    writeVerificationProcess(root.path(), QString::fromUtf8(verdict.script));
    tessara::demo::DemoOptions options =
        DemoRun::autopilotOptions(root.path(), QStringLiteral("credit-request"));
    options.untilDirectionId = QString::fromUtf8(verdict.nextStep);
    const DemoRun run = DemoRun::run(options, 60000);
    const std::string log = run.log.join(u'\n').toStdString();

    ASSERT_EQ(run.exitCode, 0) << run.message.toStdString() << "\n" << log;
    EXPECT_EQ(run.message, QStringLiteral("reached step %1").arg(QLatin1String(verdict.nextStep)));
    EXPECT_TRUE(std::any_of(run.log.begin(), run.log.end(), [&](const QString& line) {
        return line.startsWith(QLatin1String(verdict.leaving));
    })) << log;
    EXPECT_EQ(strings(run.record.value(QLatin1String("steps")).toArray()),
              (QStringList{"kyc-verification", QString::fromUtf8(verdict.nextStep)}));
    EXPECT_EQ(
        run.record.value(QLatin1String("verification")).toObject().value(QLatin1String("reconnects")).toInt(),
        verdict.reconnects);
}

INSTANTIATE_TEST_SUITE_P(Scripts, VerificationVerdicts, testing::ValuesIn(kVerdicts),
                         [](const testing::TestParamInfo<Verdict>& info) {
                             std::string name = info.param.script;
                             std::replace(name.begin(), name.end(), '-', '_');
                             return name;
                         });

} // namespace
