// What a press of a flow button sends, and how the screen behaves while it is on its way.

#include "FormTestSupport.h"
#include "tessara/form/controls/TSRCheckbox.h"
#include "tessara/form/controls/TSRConsentToggle.h"
#include "tessara/form/controls/TSRDropdownButton.h"
#include "tessara/form/controls/TSRFlowButton.h"
#include "tessara/form/controls/TSRInputArea.h"
#include "tessara/form/controls/TSRInputField.h"
#include "tessara/form/controls/TSRRadioButton.h"
#include "tessara/form/controls/TSRRadioButtonView.h"
#include "tessara/form/controls/TSRUploadFileView.h"

#include <QMimeDatabase>

using namespace tessara;
using namespace tessara::test;

namespace {

const char* kPersonalStep = R"({"type":"FORM","submissionId":"sub-1","directionId":"personal","fields":[
  {"type":"TEXT","key":"intro","value":"Лични данни"},
  {"type":"INPUT","key":"name","label":"Име"},
  {"type":"INPUT","key":"hiddenInput","label":"Скрито","required":true,"hidden":true},
  {"type":"AREA","key":"address","label":"Адрес"},
  {"type":"DROPDOWN","key":"city","label":"Град","options":[{"id":1,"label":"София","value":"SOF"},
                                                          {"id":2,"label":"Варна","value":"VAR"}]},
  {"type":"NOMENCLATURE","key":"code","label":"Код","options":[{"id":1,"label":"Първи","value":" A1 "}]},
  {"type":"CHECKBOX","key":"newsletter","label":"Бюлетин"},
  {"type":"RADIO","key":"gender","label":"Пол","options":[{"id":1,"label":"Мъж","value":"M"},
                                                        {"id":2,"label":"Жена","value":"F"}]},
  {"type":"DATE","key":"birthDate","label":"Дата на раждане","value":"1990-05-17"},
  {"type":"SECTION","key":"employment"},
  {"type":"INPUT","key":"phone","label":"Телефон","styleClass":"position-top"},
  {"type":"CONSENT","key":"terms","required":true,"directionId":"consent-terms","directionLabel":"Общи условия"},
  {"type":"FLOW","key":"continue","label":"Продължи","directionId":"next","styleClass":"position-bottom"},
  {"type":"FLOW","key":"back","label":"Назад","directionId":"start"}
]})";

SubmissionJSON personalStep() {
    SubmissionJSON step = decodeStep(kPersonalStep);
    // Section contents arrive by section expansion, never inside the field's own JSON.
    for (FieldJSON& field : step.fields) {
        if (field.key == QStringLiteral("employment"))
            field.fields = decodeStep(R"({"fields":[
                {"type":"INPUT","key":"employer","label":"Работодател"},
                {"type":"CHECKBOX","key":"sectionBox","label":"На трудов договор"}]})")
                               .fields;
    }
    return step;
}

void fillPersonalStep(const FormScreen& screen) {
    screen.find<TSRInputField>(QStringLiteral("TSRInputField.name"))
        ->setText(QStringLiteral("  Иван Петров \n"));
    screen.find<TSRInputArea>(QStringLiteral("TSRInputArea.address"))
        ->setPlainText(QStringLiteral("ул. Витоша 1\nет. 3\t\n"));
    auto* city = screen.find<TSRDropdownButton>(QStringLiteral("TSRDropdownButton.city"));
    city->choose(city->field->options->at(0));
    auto* code = screen.find<TSRDropdownButton>(QStringLiteral("TSRDropdownButton.code"));
    code->choose(code->field->options->at(0));
    screen.find<TSRRadioButtonView>(QStringLiteral("TSRRadioButtonView.gender"))
        ->radioButtons()
        .at(1)
        ->click();
    screen.find<TSRInputField>(QStringLiteral("TSRInputField.employer"))->setText(QStringLiteral("Акме ООД"));
    screen.find<TSRInputField>(QStringLiteral("TSRInputField.phone"))
        ->setText(QStringLiteral("0888 123 456 "));
    screen.find<TSRConsentToggle>(QStringLiteral("TSRConsentToggle.terms"))->checkbox()->setSelected(true);
}

TSRFile fileNamed(const QString& name, const QByteArray& data) {
    TSRFile file;
    file.data = data;
    file.type = QMimeDatabase().mimeTypeForFile(name, QMimeDatabase::MatchExtension);
    file.filename = name;
    file.filenameAlreadyHasExtension = true;
    return file;
}

} // namespace

TEST(Submission, SendsGatheredValuesByteForByteAndShowsTheAnswer) {
    FormScreen screen(personalStep());
    screen.server.enqueue(nextStepAnswer("employment-details"));
    fillPersonalStep(screen);

    screen.click(QStringLiteral("TSRFlowButton.continue"));
    ASSERT_TRUE(screen.server.waitForRequests(1));

    const RecordedRequest& request = screen.server.requests().at(0);
    EXPECT_EQ(request.method, "POST");
    EXPECT_EQ(request.path(), "/step");
    EXPECT_EQ(request.header("Content-Type"), "application/json");
    // Hidden input left out, the section's values in its place, optional checkboxes "false",
    // the code untrimmed, every other value trimmed, the pinned phone still sent.
    EXPECT_EQ(QString::fromUtf8(request.body),
              QStringLiteral(
                  R"({"directionId":"next","fields":[)"
                  R"({"key":"name","value":"Иван Петров"},)"
                  R"({"key":"address","value":"ул. Витоша 1\nет. 3"},)"
                  R"({"key":"city","value":"SOF"},)"
                  R"({"key":"code","value":" A1 "},)"
                  R"({"key":"newsletter","value":"false"},)"
                  R"({"key":"gender","value":"F"},)"
                  R"({"key":"birthDate","value":"1990-05-17"},)"
                  R"({"key":"employer","value":"Акме ООД"},)"
                  R"({"key":"sectionBox","value":"false"},)"
                  R"({"key":"phone","value":"0888 123 456"},)"
                  R"({"key":"terms","value":"true"}],)"
                  R"("fromDirectionId":"personal","fromFlowFieldId":"continue","submissionId":"sub-1"})"));

    ASSERT_TRUE(QTest::qWaitFor(
        [&] { return screen.form() && screen.form()->ui->directionId == "employment-details"; }));
    EXPECT_EQ(screen.form()->previousDirectionId, QStringLiteral("personal"));
    EXPECT_EQ(screen.navigation->viewControllers().size(), 1);
}

TEST(Submission, HiddenSectionIsNeitherValidatedNorSent) {
    SubmissionJSON step = decodeStep(R"({"type":"FORM","submissionId":"s","directionId":"d","fields":[
        {"type":"SECTION","key":"extra","hidden":true},
        {"type":"FLOW","key":"go","label":"Напред","directionId":"n"}]})");
    step.fields[0].fields =
        decodeStep(R"({"fields":[{"type":"INPUT","key":"required","label":"Задължително"}]})").fields;
    FormScreen screen(step);
    screen.server.enqueue(nextStepAnswer());

    screen.click(QStringLiteral("TSRFlowButton.go"));
    ASSERT_TRUE(screen.server.waitForRequests(1));
    EXPECT_EQ(
        screen.server.requests()[0].body,
        R"({"directionId":"n","fields":[],"fromDirectionId":"d","fromFlowFieldId":"go","submissionId":"s"})");
    EXPECT_EQ(screen.alert(), nullptr);
}

TEST(Submission, StepBackSendsNoValuesAndValidatesNothing) {
    // Every input here would fail validation; going back to where the user came from skips it.
    FormScreen screen(decodeStep(R"({"type":"FORM","submissionId":"sub-9","directionId":"second","fields":[
        {"type":"INPUT","key":"empty","label":"Празно","required":true},
        {"type":"CONSENT","key":"consent","required":true},
        {"type":"FLOW","key":"back","label":"Назад","directionId":"first"}]})"),
                      QStringLiteral("first"));
    screen.server.enqueue(nextStepAnswer("first"));

    screen.click(QStringLiteral("TSRFlowButton.back"));
    ASSERT_TRUE(screen.server.waitForRequests(1));
    EXPECT_EQ(screen.server.requests()[0].body,
              R"({"directionId":"first","fields":[],"fromDirectionId":"second",)"
              R"("fromFlowFieldId":"back","submissionId":"sub-9"})");
    EXPECT_EQ(screen.alert(), nullptr);
}

TEST(Submission, FlowWithoutDirectionDoesNothing) {
    FormScreen screen(decodeStep(R"({"type":"FORM","submissionId":"s","directionId":"d","fields":[
        {"type":"INPUT","key":"empty","label":"Празно"},
        {"type":"FLOW","key":"nowhere","label":"Никъде"}]})"));

    screen.click(QStringLiteral("TSRFlowButton.nowhere"));
    settle(100);
    EXPECT_EQ(screen.server.requestCount(), 0);
    EXPECT_EQ(screen.alert(), nullptr);
    EXPECT_FALSE(screen.form()->isLocked());
}

TEST(Submission, ScreenIsLockedWhileTheStepIsOnItsWay) {
    FormScreen screen(decodeStep(R"({"type":"FORM","submissionId":"s","directionId":"d","fields":[
        {"type":"INPUT","key":"note","label":"Бележка"},
        {"type":"FLOW","key":"first","label":"Първи","directionId":"a"},
        {"type":"FLOW","key":"second","label":"Втори","directionId":"b"}]})"));
    screen.server.enqueue(CannedResponse::json(400, R"({"message":"Стъпката е отказана"})").afterMs(300));
    screen.find<TSRInputField>(QStringLiteral("TSRInputField.note"))->setText(QStringLiteral("x"));

    auto* first = screen.find<TSRFlowButton>(QStringLiteral("TSRFlowButton.first"));
    auto* second = screen.find<TSRFlowButton>(QStringLiteral("TSRFlowButton.second"));
    screen.click(QStringLiteral("TSRFlowButton.first"));
    EXPECT_TRUE(screen.form()->isLocked());
    EXPECT_FALSE(first->isEnabled());
    EXPECT_TRUE(first->showsActivityIndicator());

    // Neither the pressed button again nor another one, clicked where the user would, gets through.
    QTest::mouseClick(first, Qt::LeftButton, {}, first->rect().center());
    QWindow* window = screen.navigation->windowHandle();
    ASSERT_NE(window, nullptr);
    const QPoint onSecond = second->mapTo(screen.navigation, second->rect().center());
    QTest::mouseClick(window, Qt::LeftButton, {}, onSecond);

    ASSERT_TRUE(screen.server.waitForRequests(1));
    settle(500);
    EXPECT_EQ(screen.server.requestCount(), 1);

    // The refused step is dropped: same screen, no alert, input taken again.
    EXPECT_FALSE(screen.form()->isLocked());
    EXPECT_TRUE(first->isEnabled());
    EXPECT_FALSE(first->showsActivityIndicator());
    EXPECT_EQ(screen.form()->ui->directionId, QStringLiteral("d"));
    EXPECT_EQ(screen.alert(), nullptr);

    // Unlocked, the other button works again through the window.
    screen.server.enqueue(nextStepAnswer());
    QTest::mouseClick(window, Qt::LeftButton, {}, onSecond);
    ASSERT_TRUE(screen.server.waitForRequests(2));
    EXPECT_TRUE(screen.server.requests()[1].body.startsWith(R"({"directionId":"b")"));
}

TEST(Submission, UploadsGoOneByOneBeforeTheStep) {
    FormScreen screen(decodeStep(R"({"type":"FORM","submissionId":"sub-3","directionId":"docs","fields":[
        {"type":"UPLOAD_FILE","key":"idFront","label":"Лична карта","allowedExt":["jpg","pdf"],"maxSize":2},
        {"type":"UPLOAD_FILE","key":"payslip","label":"Фиш","allowedExt":["pdf"],"maxSize":2},
        {"type":"FLOW","key":"send","label":"Изпрати","directionId":"done"}]})"));
    screen.find<TSRUploadFileView>(QStringLiteral("TSRUploadFileView.idFront"))
        ->acceptFile(fileNamed(QStringLiteral("front.jpg"), "JPEGDATA"));
    screen.find<TSRUploadFileView>(QStringLiteral("TSRUploadFileView.payslip"))
        ->acceptFile(fileNamed(QStringLiteral("фиш.pdf"), "%PDF-1.4"));
    // The second upload only answers late: the step must wait for it.
    screen.server.enqueue(CannedResponse::noBody(200));
    screen.server.enqueue(CannedResponse::noBody(201).afterMs(200));
    screen.server.enqueue(nextStepAnswer("done"));

    screen.click(QStringLiteral("TSRFlowButton.send"));
    ASSERT_TRUE(screen.server.waitForRequests(3));
    const auto& requests = screen.server.requests();
    EXPECT_EQ(requests[0].path(), "/step/uploadFile");
    EXPECT_EQ(requests[1].path(), "/step/uploadFile");
    EXPECT_EQ(requests[2].path(), "/step");

    const QByteArray expectedDtos[] = {
        R"({"fromDirectionId":"docs","key":"idFront","submissionId":"sub-3"})",
        R"({"fromDirectionId":"docs","key":"payslip","submissionId":"sub-3"})"};
    const QByteArray expectedData[] = {"JPEGDATA", "%PDF-1.4"};
    for (int i = 0; i < 2; ++i) {
        const auto parts = requests[i].multipartParts();
        ASSERT_TRUE(parts.has_value());
        ASSERT_EQ(parts->size(), 2);
        EXPECT_EQ(parts->at(0).data, expectedData[i]);
        EXPECT_EQ(parts->at(1).data, expectedDtos[i]);
    }
    // Files are not values of the step.
    EXPECT_EQ(
        requests[2].body,
        R"({"directionId":"done","fields":[],"fromDirectionId":"docs","fromFlowFieldId":"send","submissionId":"sub-3"})");
}

TEST(Submission, FailedUploadSendsNoStepUnlocksAndRestartsFromTheFirstFile) {
    FormScreen screen(decodeStep(R"({"type":"FORM","submissionId":"sub-4","directionId":"docs","fields":[
        {"type":"UPLOAD_FILE","key":"a","label":"А","allowedExt":["pdf"],"maxSize":1},
        {"type":"UPLOAD_FILE","key":"b","label":"Б","allowedExt":["pdf"],"maxSize":1},
        {"type":"FLOW","key":"send","label":"Изпрати","directionId":"done"}]})"));
    for (const char* name : {"TSRUploadFileView.a", "TSRUploadFileView.b"})
        screen.find<TSRUploadFileView>(QString::fromLatin1(name))
            ->acceptFile(fileNamed(QStringLiteral("doc.pdf"), "%PDF"));
    screen.server.enqueue(CannedResponse::noBody(200));
    screen.server.enqueue(CannedResponse::json(500, R"({"message":"Грешка при запис"})"));

    static std::vector<QtMsgType> levels;
    levels.clear();
    const QtMessageHandler previous =
        qInstallMessageHandler([](QtMsgType type, const QMessageLogContext& context, const QString& message) {
            if (QByteArray(context.category) == "com.tessara.TessaraSDK.Tessara" &&
                message.startsWith(QStringLiteral("File upload failed")))
                levels.push_back(type);
        });
    screen.click(QStringLiteral("TSRFlowButton.send"));
    ASSERT_TRUE(screen.server.waitForRequests(2));
    auto* button = screen.find<TSRFlowButton>(QStringLiteral("TSRFlowButton.send"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return !screen.form()->isLocked(); }));
    settle(200);
    qInstallMessageHandler(previous);
    EXPECT_EQ(levels, std::vector<QtMsgType>{QtCriticalMsg}) << "the failure is logged once, at error level";
    EXPECT_EQ(screen.server.requestCount(), 2);
    EXPECT_TRUE(button->isEnabled());
    EXPECT_FALSE(button->showsActivityIndicator());
    EXPECT_EQ(screen.alert(), nullptr);

    // A new press sends both files again, then the step.
    screen.server.enqueue(CannedResponse::noBody(200));
    screen.server.enqueue(CannedResponse::noBody(200));
    screen.server.enqueue(nextStepAnswer("done"));
    screen.click(QStringLiteral("TSRFlowButton.send"));
    ASSERT_TRUE(screen.server.waitForRequests(5));
    const auto& requests = screen.server.requests();
    EXPECT_TRUE(requests[2].multipartParts()->at(1).data.contains(R"("key":"a")"));
    EXPECT_TRUE(requests[3].multipartParts()->at(1).data.contains(R"("key":"b")"));
    EXPECT_EQ(requests[4].path(), "/step");
}

using SubmissionDeathTest = ::testing::Test;

TEST_F(SubmissionDeathTest, AnUploadFieldWithoutFileOnAStepBackEndsTheProgram) {
    EXPECT_DEATH(
        {
            FormScreen screen(decodeStep(R"({"type":"FORM","submissionId":"s","directionId":"d","fields":[
                {"type":"UPLOAD_FILE","key":"scan","label":"Скан","allowedExt":["pdf"],"maxSize":1},
                {"type":"FLOW","key":"back","label":"Назад","directionId":"prev"}]})"),
                              QStringLiteral("prev"));
            screen.click(QStringLiteral("TSRFlowButton.back"));
        },
        "upload field has no file");
}

TEST_F(SubmissionDeathTest, AStepWithoutSubmissionIdEndsTheProgramWhenSent) {
    EXPECT_DEATH(
        {
            FormScreen screen(decodeStep(R"({"type":"FORM","directionId":"d","fields":[
                {"type":"FLOW","key":"go","label":"Напред","directionId":"n"}]})"));
            screen.click(QStringLiteral("TSRFlowButton.go"));
        },
        "no submissionId");
}
