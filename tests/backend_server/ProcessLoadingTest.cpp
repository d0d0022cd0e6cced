// What a process author is told when a definition is wrong: each problem names its file.
#include "backend/ProcessStore.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QTemporaryDir>
#include <functional>
#include <gtest/gtest.h>

using tessara::ProcessStore;

namespace {

const QString kSample = QStringLiteral(TESSARA_SOURCE_DIR "/examples/processes/credit-request");

void copyTree(const QString& from, const QString& to) {
    QDir().mkpath(to);
    QDirIterator it(from, QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString source = it.next();
        const QString target = to + source.mid(from.size());
        QDir().mkpath(QFileInfo(target).path());
        ASSERT_TRUE(QFile::copy(source, target)) << target.toStdString();
    }
}

QByteArray read(const QString& path) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return file.readAll();
}

void write(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate)) << path.toStdString();
    file.write(bytes);
}

// Replaces text that must be there: a sample that no longer has it fails here, not silently.
void replaceIn(const QString& path, const QByteArray& from, const QByteArray& to) {
    QByteArray text = read(path);
    ASSERT_TRUE(text.contains(from)) << path.toStdString() << " lacks " << from.toStdString();
    write(path, text.replace(from, to));
}

class ProcessLoading : public ::testing::Test {
protected:
    void SetUp() override { copyTree(kSample, dir()); }
    QString dir() const { return root.path() + QStringLiteral("/credit-request"); }
    QString file(const char* relative) const { return dir() + QLatin1Char('/') + QLatin1String(relative); }

    QTemporaryDir root;
};

} // namespace

TEST_F(ProcessLoading, TheSampleLoadsAndALoadIsAllOrNothing) {
    ProcessStore store;
    ASSERT_EQ(store.load(root.path()), QStringList());
    ASSERT_NE(store.process(QStringLiteral("credit-request")), nullptr);
    EXPECT_EQ(store.products().size(), 2u);

    replaceIn(file("process.json"), "\"firstStep\": \"personal-data\"", "\"firstStep\": \"nowhere\"");
    EXPECT_FALSE(store.load(root.path()).isEmpty());
    // The earlier definition is still served.
    ASSERT_NE(store.process(QStringLiteral("credit-request")), nullptr);
    EXPECT_EQ(store.process(QStringLiteral("credit-request"))->firstStep, QStringLiteral("personal-data"));
}

TEST_F(ProcessLoading, EachProblemIsReportedWithItsFile) {
    struct Case {
        const char* name;
        std::function<void()> breakIt;
        const char* file;  // the file the message must name
        const char* words; // what it must say
    };
    const Case cases[] = {
        {"JSON syntax", [&] { write(file("steps/closing.json"), "{ \"fields\": [ }"); }, "steps/closing.json",
         "is not valid JSON"},
        {"no fields", [&] { write(file("steps/closing.json"), "{\"type\": \"FORM\"}"); },
         "steps/closing.json", "\"fields\" is missing"},
        {"unknown field type", [&] { replaceIn(file("steps/closing.json"), "\"TEXT\"", "\"TEXTT\""); },
         "steps/closing.json", "field 1 (key \"closingMessage\") does not decode"},
        {"flow to a missing step",
         [&] {
             replaceIn(file("steps/contact-data.json"), "\"directionId\": \"documents\"",
                       "\"directionId\": \"documentz\"");
         },
         "steps/contact-data.json", "names \"documentz\", which is no step"},
        {"control without key",
         [&] {
             write(file("steps/extra.json"), R"({"type":"FORM","fields":[{"type":"INPUT","label":"x"}]})");
         },
         "steps/extra.json", "field 1 (INPUT): has no \"key\""},
        {"key used twice on a screen",
         [&] {
             replaceIn(file("sections/spouseData.json"), "\"key\": \"spouseName\"", "\"key\": \"firstName\"");
         },
         "sections/spouseData.json", "the key is used twice on step \"personal-data\""},
        {"rule without operator",
         [&] { replaceIn(file("sections/spouseData.json"), "\"operator\": \"NOT_EQ\",", ""); },
         "sections/spouseData.json", "needs both \"operator\" and \"hide\""},
        {"rule for another section",
         [&] {
             replaceIn(file("sections/spouseData.json"), "\"sectionKey\": \"spouseData\"",
                       "\"sectionKey\": \"other\"");
         },
         "sections/spouseData.json", "must be \"spouseData\""},
        {"rule watching a text field",
         [&] {
             replaceIn(file("sections/spouseData.json"), "\"fieldKey\": \"maritalStatus\"",
                       "\"fieldKey\": \"egn\"");
         },
         "sections/spouseData.json", "watches \"egn\""},
        {"missing section", [&] { QFile::remove(file("sections/currentAddress.json")); },
         "steps/contact-data.json", "section \"currentAddress\" has no file"},
        {"section inside itself",
         [&] {
             replaceIn(file("sections/currentAddress.json"), "\"fields\": [",
                       "\"fields\": [{\"type\": \"SECTION\", \"key\": \"currentAddress\"},");
         },
         "sections/currentAddress.json", "contains itself"},
        {"unknown key in process.json",
         [&] { replaceIn(file("process.json"), "\"firstStep\"", "\"firstStpe\": \"x\", \"firstStep\""); },
         "process.json", "unknown key \"firstStpe\""},
        {"unknown verification script",
         [&] {
             replaceIn(file("process.json"), "\"firstStep\"",
                       "\"verificationScript\": \"sad\", \"firstStep\"");
         },
         "process.json", "\"verificationScript\" must be one of happy, failed"},
        {"first step missing", [&] { replaceIn(file("process.json"), "\"personal-data\"", "\"nowhere\""); },
         "process.json", "\"firstStep\" names \"nowhere\""},
        {"verification without user",
         [&] { replaceIn(file("steps/kyc-verification.json"), "\"userHash\": \"{{userHash}}\",", ""); },
         "steps/kyc-verification.json", "needs settings.userHash"},
        {"unusable stream address",
         [&] {
             replaceIn(file("steps/kyc-verification.json"), "\"streamUrl\": \"ws://{{host}}/\"",
                       "\"streamUrl\": \"ws://bad host/\"");
         },
         "steps/kyc-verification.json", "\"settings\" does not decode"},
        {"calculator offering an unknown product",
         [&] {
             replaceIn(file("steps/credit-calculator.json"), "\"itemValue\": \"102\"",
                       "\"itemValue\": \"103\"");
         },
         "steps/credit-calculator.json", "names \"103\", which is no product"},
        {"verification route to a missing step",
         [&] {
             replaceIn(file("process.json"), "\"PROCESS_FAIL\": \"kyc-failed\"",
                       "\"PROCESS_FAIL\": \"kyc-fail\"");
         },
         "process.json", "kycRoutes.kyc-verification.PROCESS_FAIL names \"kyc-fail\""},
        {"direction id against the file name",
         [&] {
             replaceIn(file("steps/closing.json"), "\"type\": \"FORM\"",
                       "\"type\": \"FORM\", \"directionId\": \"finale\"");
         },
         "steps/closing.json", "\"directionId\" is \"finale\""},
        {"pattern that cannot compile",
         [&] { replaceIn(file("steps/personal-data.json"), "\"^[0-9]{10}$\"", "\"^[0-9{10}$\""); },
         "steps/personal-data.json", "no valid regular expression"},
        {"pattern only Qt's own engine reads",
         [&] { replaceIn(file("steps/personal-data.json"), "\"^[0-9]{10}$\"", "\"^(?|[0-9]{10})$\""); },
         "steps/personal-data.json", "no valid regular expression"},
        {"upload without a size limit",
         [&] { replaceIn(file("steps/documents.json"), "\"maxSize\": 5,", ""); }, "steps/documents.json",
         "needs \"maxSize\""},
        {"product of the wrong shape",
         [&] { replaceIn(file("products.json"), "\"productId\": 102", "\"productId\": \"102\""); },
         "products.json", "product 2 does not decode"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        QDir(dir()).removeRecursively();
        copyTree(kSample, dir());
        c.breakIt();
        ProcessStore store;
        const QStringList errors = store.load(root.path());
        ASSERT_FALSE(errors.isEmpty());
        const QString expectedFile = dir() + QLatin1Char('/') + QLatin1String(c.file);
        const bool named = std::any_of(errors.begin(), errors.end(), [&](const QString& error) {
            return error.startsWith(expectedFile) && error.contains(QString::fromUtf8(c.words));
        });
        EXPECT_TRUE(named) << errors.join(QLatin1Char('\n')).toStdString();
        EXPECT_EQ(store.process(QStringLiteral("credit-request")), nullptr);
    }
}

TEST_F(ProcessLoading, ProcessesMustNotClash) {
    // A second copy under the same id.
    copyTree(dir(), root.path() + QStringLiteral("/copy"));
    ProcessStore store;
    QStringList errors = store.load(root.path());
    ASSERT_EQ(errors.size(), 1);
    EXPECT_TRUE(errors[0].contains(QLatin1String("processId \"credit-request\" is also used")))
        << errors[0].toStdString();

    // Another process may share a product only when it is the same product.
    replaceIn(root.path() + QStringLiteral("/copy/process.json"), "\"processId\": \"credit-request\"",
              "\"processId\": \"credit-request-2\"");
    EXPECT_EQ(store.load(root.path()), QStringList());
    EXPECT_EQ(store.products().size(), 2u);
    replaceIn(root.path() + QStringLiteral("/copy/products.json"), "\"annualInterestRate\": 11.9",
              "\"annualInterestRate\": 9.9");
    ProcessStore fresh;
    errors = fresh.load(root.path());
    ASSERT_EQ(errors.size(), 1);
    EXPECT_TRUE(errors[0].contains(QLatin1String("product 101 differs"))) << errors[0].toStdString();
}

TEST_F(ProcessLoading, AFolderWithoutProcessesIsAnError) {
    ProcessStore store;
    QTemporaryDir empty;
    EXPECT_TRUE(store.load(empty.path()).join(QString()).contains(QLatin1String("holds no process.json")));
    EXPECT_TRUE(store.load(empty.path() + QStringLiteral("/absent"))
                    .join(QString())
                    .contains(QLatin1String("no such directory")));
}
