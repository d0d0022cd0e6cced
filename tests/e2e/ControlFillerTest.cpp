// Entering answers into real controls, one kind at a time.

#include "host/ControlFiller.h"

#include "host/AnswerBook.h"
#include "tessara/documents/JsonCoding.h"
#include "tessara/documents/SubmissionJSON.h"
#include "tessara/form/TSRControlFactory.h"
#include "tessara/form/TSRFormController.h"
#include "tessara/form/TSRValidateable.h"

#include <QDate>
#include <QTemporaryDir>
#include <QWidget>
#include <gtest/gtest.h>
#include <memory>

namespace {

using tessara::demo::AnswerBook;
using tessara::demo::ControlFiller;
using tessara::demo::ScreenControl;

// The filler sees the control as a host does: by its widget's name.
ControlFiller::Result fill(const AnswerBook& answers, tessara::TSRControl& control) {
    const std::optional<ScreenControl> seen = ScreenControl::of(control.widget());
    if (!seen)
        return {true, {}, QStringLiteral("no control named %1").arg(control.widget()->objectName())};
    return ControlFiller(answers).fill(*seen);
}

struct FillCase {
    const char* field;  // the field's JSON
    const char* answer; // nullptr: no answer, the default applies
    const char* value;  // the control's value afterwards; nullptr: stays absent
    const char* error;  // words of the error, nullptr when none
};

const FillCase kCases[] = {
    {R"({"type": "INPUT", "key": "k", "label": "Име"})", "  Иван  ", "  Иван  ", nullptr},
    {R"({"type": "INPUT", "key": "k", "label": "Име"})", nullptr, "Тест", nullptr},
    {R"({"type": "AREA", "key": "k", "label": "Адрес"})", "ред 1\nред 2", "ред 1\nред 2", nullptr},
    {R"({"type": "DROPDOWN", "key": "k", "options": [{"id": 1, "label": "А", "value": "A"},
                                                  {"id": 2, "label": "Б", "value": "B"}]})",
     "B", "B", nullptr},
    {R"({"type": "NOMENCLATURE", "key": "k", "options": [{"id": 1, "label": "А", "value": "A"}]})", nullptr,
     "A", nullptr},
    {R"({"type": "DROPDOWN", "key": "k", "options": [{"id": 1, "label": "А", "value": "A"}]})", "Z", nullptr,
     R"(the answer "Z" for k is none of its options ("A"))"},
    {R"({"type": "RADIO", "key": "k", "label": "Заетост", "options": [{"id": 1, "label": "Да", "value": "Y"},
                                                                    {"id": 2, "label": "Не", "value": "N"}]})",
     "N", "N", nullptr},
    {R"({"type": "CHECKBOX", "key": "k", "label": "Съгласен"})", nullptr, "true", nullptr},
    // A required box answered "false" has to be touched: ticked and unticked again.
    {R"({"type": "CHECKBOX", "key": "k", "label": "Съгласен", "required": true})", "false", "false", nullptr},
    // Whether a box is required does not show, so every "false" is ticked and unticked; an
    // optional box would send "false" untouched as well.
    {R"({"type": "CHECKBOX", "key": "k", "label": "Съгласен"})", "false", "false", nullptr},
    {R"({"type": "CHECKBOX", "key": "k", "label": "Съгласен"})", "yes", nullptr,
     R"(the answer for k must be "true" or "false", not "yes")"},
    {R"({"type": "CONSENT", "key": "k", "label": "Приемам", "directionId": "terms"})", "true", "true",
     nullptr},
    {R"({"type": "DATE", "key": "k", "label": "Дата", "value": "1990-01-01"})", "1975-01-02", "1975-01-02",
     nullptr},
    {R"({"type": "DATE", "key": "k", "label": "Дата"})", "02.01.1975", "TODAY",
     "the answer for k must be a date written yyyy-MM-dd, not \"02.01.1975\""},
    {R"({"type": "UPLOAD_FILE", "key": "k", "label": "Документ", "allowedExt": ["pdf"], "maxSize": 1})",
     "missing.pdf", nullptr, "cannot read"},
};

TEST(ControlFiller, EntersAnswersIntoEachKindOfControl) {
    for (const FillCase& c : kCases) {
        SCOPED_TRACE(c.field);
        SCOPED_TRACE(c.answer ? c.answer : "(default)");
        const auto field = tessara::decodeDocument<tessara::FieldJSON>(QByteArray(c.field));
        ASSERT_TRUE(field);
        QWidget screen;
        screen.resize(390, 600);
        tessara::TSRControl* control = tessara::TSRControlFactory::makeControl(*field, &screen);
        ASSERT_NE(control, nullptr);
        control->widget()->setGeometry(0, 0, 390, 120);
        screen.show();

        AnswerBook answers;
        if (c.answer)
            answers.setAnswer(QStringLiteral("k"), QString::fromUtf8(c.answer));
        const ControlFiller::Result result = fill(answers, *control);

        EXPECT_TRUE(result.acted);
        if (c.error) {
            ASSERT_TRUE(result.error);
            EXPECT_TRUE(result.error->contains(QString::fromUtf8(c.error))) << result.error->toStdString();
        } else {
            EXPECT_FALSE(result.error) << result.error->toStdString();
        }
        const QString expected = QString::fromUtf8(c.value ? c.value : "");
        if (expected == QLatin1String("TODAY"))
            EXPECT_EQ(control->value, QDate::currentDate().toString(QStringLiteral("yyyy-MM-dd")));
        else if (c.value)
            EXPECT_EQ(control->value, expected);
        else
            EXPECT_EQ(control->value, std::nullopt);
    }
}

TEST(ControlFiller, UploadTakesTheNamedFileOrTheDefaultOne) {
    QTemporaryDir dir;
    QFile named(dir.filePath(QStringLiteral("named.pdf")));
    ASSERT_TRUE(named.open(QIODevice::WriteOnly));
    named.write("%PDF-1.4 named");
    named.close();
    QFile fallback(dir.filePath(QStringLiteral("default.pdf")));
    ASSERT_TRUE(fallback.open(QIODevice::WriteOnly));
    fallback.write("%PDF-1.4 the default");
    fallback.close();

    // The file is chosen in the dialog the form opens, so the control sits on a form.
    const auto document = tessara::decodeDocument<tessara::SubmissionJSON>(QByteArray(R"({"type": "FORM",
        "directionId": "d", "submissionId": "s", "fields": [
        {"type": "UPLOAD_FILE", "key": "doc", "label": "Документ", "allowedExt": ["pdf"], "maxSize": 1}]})"));
    ASSERT_TRUE(document);
    QString error;
    auto answers = AnswerBook::fromJson(R"({"doc": "named.pdf"})", dir.path(), &error);
    ASSERT_TRUE(answers);
    AnswerBook none;
    none.setDefaultUploadFile(fallback.fileName());

    const std::pair<const AnswerBook*, QByteArray> cases[] = {{&*answers, "%PDF-1.4 named"},
                                                              {&none, "%PDF-1.4 the default"}};
    for (const auto& [book, bytes] : cases) {
        tessara::TSRFormController form;
        form.ui = *document;
        form.loadViewIfNeeded();
        form.resize(390, 600);
        form.show();
        auto* widget = form.findChild<QWidget*>(QStringLiteral("TSRUploadFileView.doc"));
        ASSERT_NE(widget, nullptr);
        const ControlFiller::Result result = ControlFiller(*book).fill(*ScreenControl::of(widget));
        ASSERT_FALSE(result.error) << result.error->toStdString();
        auto* upload = dynamic_cast<tessara::TSRValidateable*>(widget);
        ASSERT_NE(upload, nullptr);
        // The file as a picker would hand it over: it passes the control's own checks.
        EXPECT_FALSE(upload->validate(false));
        EXPECT_TRUE(upload->hasValue());
        EXPECT_TRUE(result.entered.endsWith(QStringLiteral("(%1 bytes)").arg(bytes.size())));
    }
}

} // namespace
