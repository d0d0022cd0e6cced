// A backend that dies in the middle of an upload, or answers a step only after the time-out: the
// form must come back usable, say no more than its failure route allows, send nothing twice, and
// work on the next press.

#include "FormTestSupport.h"
#include "tessara/form/controls/TSRFlowButton.h"
#include "tessara/form/controls/TSRInputField.h"
#include "tessara/form/controls/TSRUploadFileView.h"

#include <QElapsedTimer>
#include <QMimeDatabase>
#include <mutex>

using namespace tessara;
using namespace tessara::test;

namespace {

const char* kUploadStep = R"({"type":"FORM","submissionId":"sub-9","directionId":"docs","fields":[
  {"type":"UPLOAD_FILE","key":"idCard","label":"Лична карта","allowedExt":["pdf"],"maxSize":4},
  {"type":"UPLOAD_FILE","key":"payslip","label":"Фиш","allowedExt":["pdf"],"maxSize":4},
  {"type":"FLOW","key":"send","label":"Изпрати","directionId":"done"}]})";

TSRFile pdf(qsizetype size) {
    TSRFile file;
    file.data = QByteArray("%PDF-1.4\n") + QByteArray(size, 'x');
    file.type = QMimeDatabase().mimeTypeForName(QStringLiteral("application/pdf"));
    file.filename = QStringLiteral("scan.pdf");
    file.filenameAlreadyHasExtension = true;
    return file;
}

// Collects the SDK's log lines of one category while alive.
class LogCapture {
public:
    explicit LogCapture(QByteArray category) {
        std::lock_guard lock(mutex());
        wanted() = std::move(category);
        lines().clear();
        previous_ =
            qInstallMessageHandler([](QtMsgType, const QMessageLogContext& context, const QString& text) {
                std::lock_guard lock(mutex());
                if (wanted() == context.category)
                    lines().push_back(text);
            });
    }
    ~LogCapture() { qInstallMessageHandler(previous_); }
    static std::vector<QString> taken() {
        std::lock_guard lock(mutex());
        return lines();
    }

private:
    static std::mutex& mutex() {
        static std::mutex m;
        return m;
    }
    static QByteArray& wanted() {
        static QByteArray c;
        return c;
    }
    static std::vector<QString>& lines() {
        static std::vector<QString> l;
        return l;
    }
    QtMessageHandler previous_ = nullptr;
};

// The shared client's time-out, shortened for one test.
class ShortTimeout {
public:
    explicit ShortTimeout(double seconds) { TSRNetwork::shared().setTimeoutInterval(seconds); }
    ~ShortTimeout() { TSRNetwork::shared().setTimeoutInterval(TSRNetwork::TIMEOUT_INTERVAL_FOR_REQUEST); }
};

TEST(BackendFault, BackendKilledDuringAnUploadUnlocksTheFormSendsNothingTwiceAndTheNextPressWorks) {
    struct Row {
        const char* name;
        qsizetype payslipBytes;
        qsizetype dropAfter; // bytes of the payslip's request the backend reads before it dies
    };
    // The first file always arrives, so the second travels on a connection that was used before,
    // which is where an HTTP stack is tempted to try again by itself.
    const Row rows[] = {
        {"killed while the body is still streaming", 1 << 20, 8 * 1024},
        {"killed after the whole body was written", 600, 300},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        FormScreen screen(decodeStep(kUploadStep));
        screen.find<TSRUploadFileView>(QStringLiteral("TSRUploadFileView.idCard"))->acceptFile(pdf(100));
        screen.find<TSRUploadFileView>(QStringLiteral("TSRUploadFileView.payslip"))
            ->acceptFile(pdf(row.payslipBytes));
        auto* button = screen.find<TSRFlowButton>(QStringLiteral("TSRFlowButton.send"));

        screen.server.enqueue(CannedResponse::noBody(200));
        screen.server.dropRequest(1, row.dropAfter);
        LogCapture log("com.tessara.TessaraSDK.Tessara");
        screen.click(QStringLiteral("TSRFlowButton.send"));
        ASSERT_TRUE(waitUntil([&] { return screen.server.droppedCount() == 1; }));
        ASSERT_TRUE(waitUntil([&] { return !screen.form()->isLocked(); }));
        // Long enough for a silent second attempt to reach the backend.
        settle(400);

        EXPECT_EQ(screen.server.requestCount(), 1) << "no step and no second attempt of the upload";
        EXPECT_EQ(screen.server.droppedCount(), 1);
        EXPECT_TRUE(button->isEnabled());
        EXPECT_FALSE(button->showsActivityIndicator());
        EXPECT_EQ(screen.alert(), nullptr) << "a failed upload is not shown";
        EXPECT_EQ(screen.form()->ui->directionId, QStringLiteral("docs"));
        EXPECT_EQ(LogCapture::taken(), std::vector<QString>{QStringLiteral(
                                           "File upload failed: The network connection was lost.")});

        // The backend is back: the press sends both files again from the first, then the step.
        screen.server.enqueue(CannedResponse::noBody(200));
        screen.server.enqueue(CannedResponse::noBody(200));
        screen.server.enqueue(nextStepAnswer("done"));
        screen.click(QStringLiteral("TSRFlowButton.send"));
        ASSERT_TRUE(waitUntil([&] { return screen.form() && screen.form()->ui->directionId == "done"; }));
        const auto& requests = screen.server.requests();
        ASSERT_EQ(requests.size(), 4u);
        EXPECT_TRUE(requests[1].multipartParts()->at(1).data.contains(R"("key":"idCard")"));
        EXPECT_TRUE(requests[2].multipartParts()->at(1).data.contains(R"("key":"payslip")"));
        EXPECT_EQ(requests[2].multipartParts()->at(0).data.size(), row.payslipBytes + 9);
        EXPECT_EQ(requests[3].path(), "/step");
    }
}

TEST(BackendFault, StepAnsweredAfterTheTimeoutIsIgnoredAndTheNextPressWorks) {
    const ShortTimeout timeout(0.3);
    FormScreen screen(decodeStep(R"({"type":"FORM","submissionId":"s","directionId":"here","fields":[
        {"type":"INPUT","key":"note","label":"Бележка"},
        {"type":"FLOW","key":"send","label":"Напред","directionId":"late"}]})"));
    screen.find<TSRInputField>(QStringLiteral("TSRInputField.note"))->setText(QStringLiteral("x"));
    auto* button = screen.find<TSRFlowButton>(QStringLiteral("TSRFlowButton.send"));
    QPointer<TSRFormController> form = screen.form();
    screen.server.enqueue(nextStepAnswer("late").afterMs(800));

    QElapsedTimer clock;
    clock.start();
    screen.click(QStringLiteral("TSRFlowButton.send"));
    ASSERT_TRUE(waitUntil([&] { return !form->isLocked(); }, 3000));
    EXPECT_LT(clock.elapsed(), 800) << "the form gave up at the time-out, not at the answer";

    // The late answer arrives at a request that is over: nothing moves.
    settle(int(std::max<qint64>(0, 1100 - clock.elapsed())));
    EXPECT_EQ(screen.form(), form.data()) << "still the same screen";
    EXPECT_EQ(form->ui->directionId, QStringLiteral("here"));
    EXPECT_TRUE(button->isEnabled());
    EXPECT_FALSE(button->showsActivityIndicator());
    EXPECT_EQ(screen.alert(), nullptr);
    EXPECT_EQ(screen.server.requestCount(), 1);

    screen.server.enqueue(nextStepAnswer("next"));
    screen.click(QStringLiteral("TSRFlowButton.send"));
    ASSERT_TRUE(waitUntil([&] { return screen.form() && screen.form()->ui->directionId == "next"; }));
    EXPECT_EQ(screen.server.requestCount(), 2);
}

} // namespace
