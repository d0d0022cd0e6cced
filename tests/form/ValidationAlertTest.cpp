// Each way a step can fail validation: the alert the user sees, and that nothing is sent.

#include "FormTestSupport.h"
#include "tessara/form/ControlValidationError.h"
#include "tessara/form/controls/TSRInputField.h"
#include "tessara/form/controls/TSRUploadFileView.h"

#include <QMimeDatabase>
#include <QPushButton>
#include <functional>

using namespace tessara;
using namespace tessara::test;

namespace {

struct AlertCase {
    const char* name;
    const char* fields; // the step's fields before its flow button
    std::function<void(const FormScreen&)> prepare;
    QString title;
    QString message;
};

void attach(const FormScreen& screen, const char* key, const QString& filename, qsizetype size) {
    TSRFile file;
    file.data = QByteArray(size, 'x');
    file.type = QMimeDatabase().mimeTypeForFile(filename, QMimeDatabase::MatchExtension);
    file.filename = filename;
    file.filenameAlreadyHasExtension = true;
    screen.find<TSRUploadFileView>(QStringLiteral("TSRUploadFileView.") + QLatin1String(key))
        ->acceptFile(file);
}

void type(const FormScreen& screen, const char* key, const QString& text) {
    screen.find<TSRInputField>(QStringLiteral("TSRInputField.") + QLatin1String(key))->setText(text);
}

const QString kFallback = QStringLiteral("Някой не е въвел правилно съобщение за грешка 👀");

const AlertCase kCases[] = {
    {"EmptyInput", R"({"type":"INPUT","key":"name","label":"Име","validationError":"Въведете име."})",
     nullptr, QStringLiteral("Име"), QStringLiteral("Въведете име.")},
    {"NoMessageFallsBack", R"({"type":"INPUT","key":"name","label":"Име"})", nullptr, QStringLiteral("Име"),
     kFallback},
    {"FileTooBig",
     R"({"type":"UPLOAD_FILE","key":"scan","label":"Скан","allowedExt":["pdf"],"maxSize":1,"sizeError":"До 1 MB.","validationError":"Не"})",
     [](const FormScreen& s) { attach(s, "scan", QStringLiteral("scan.pdf"), 1048577); },
     QStringLiteral("Скан"), QStringLiteral("До 1 MB.")},
    {"FaultInsideASection", R"({"type":"INPUT","key":"ok","label":"Наред"},{"type":"SECTION","key":"extra"})",
     [](const FormScreen& s) { type(s, "ok", QStringLiteral("да")); }, QStringLiteral("Във секцията"),
     QStringLiteral("Попълнете и това.")},
};

class ValidationAlert : public ::testing::TestWithParam<AlertCase> {};

} // namespace

TEST_P(ValidationAlert, ShowsTheFieldsMessageAndSendsNothing) {
    const AlertCase& c = GetParam();
    SubmissionJSON step =
        decodeStep(QByteArray(R"({"type":"FORM","submissionId":"s","directionId":"d","fields":[)") +
                   c.fields + R"(,{"type":"FLOW","key":"go","label":"Напред","directionId":"n"}]})");
    for (FieldJSON& field : step.fields) {
        if (field.type == FieldType::section)
            field.fields = decodeStep(R"({"fields":[{"type":"INPUT","key":"inner","label":"Във секцията",
                                                        "validationError":"Попълнете и това."}]})")
                               .fields;
    }
    FormScreen screen(step);
    if (c.prepare)
        c.prepare(screen);

    screen.click(QStringLiteral("TSRFlowButton.go"));

    Alert* alert = screen.alert();
    ASSERT_NE(alert, nullptr);
    EXPECT_EQ(alert->text(), c.title);
    EXPECT_EQ(alert->informativeText(), c.message);
    const auto buttons = alert->findChildren<QAbstractButton*>(QStringLiteral("okAction"));
    ASSERT_EQ(buttons.size(), 1);
    EXPECT_EQ(buttons[0]->text(), QStringLiteral("OK"));
    EXPECT_EQ(alert->buttons().size(), 1);
    EXPECT_EQ(static_cast<QAbstractButton*>(alert->defaultButton()), buttons[0]);

    // The form stays as it was: open, nothing on the wire.
    EXPECT_FALSE(screen.form()->isLocked());
    EXPECT_TRUE(screen.find(QStringLiteral("TSRFlowButton.go"))->isEnabled());
    settle(100);
    EXPECT_EQ(screen.server.requestCount(), 0);

    QTest::mouseClick(buttons[0], Qt::LeftButton);
    settle(20);
    EXPECT_EQ(screen.alert(), nullptr);
    EXPECT_EQ(screen.form()->ui->directionId, QStringLiteral("d"));
}

INSTANTIATE_TEST_SUITE_P(Form, ValidationAlert, ::testing::ValuesIn(kCases),
                         [](const ::testing::TestParamInfo<AlertCase>& info) { return info.param.name; });
