#include "ControlTestSupport.h"
#include "tessara/form/TextTrimming.h"
#include "tessara/form/controls/TSRDatePicker.h"
#include "tessara/form/controls/TSRInputArea.h"
#include "tessara/form/controls/TSRInputField.h"

#include <QDate>
#include <QDateEdit>
#include <QLocale>
#include <QTest>
#include <gtest/gtest.h>

using namespace tessara;
using namespace tessara::test;
using Kind = ControlValidationError::Kind;

namespace {

struct TextCase {
    const char* name;
    std::optional<QString> typed; // absent: never typed
    std::optional<QString> pattern;
    bool allowEmpty;
    std::optional<Kind> expected; // absent: passes
};

const TextCase kTextCases[] = {
    {"untouched", std::nullopt, std::nullopt, false, Kind::fieldValueIsEmpty},
    {"untouched, empty allowed", std::nullopt, std::nullopt, true, std::nullopt},
    {"three blanks", QStringLiteral(" \t\n"), std::nullopt, false, Kind::fieldValueIsEmpty},
    {"three blanks, empty allowed", QStringLiteral(" \t\n"), QStringLiteral("^x$"), true, std::nullopt},
    {"control and format characters only", QStringLiteral("\u200B\u0007\u00A0"), std::nullopt, false,
     Kind::fieldValueIsEmpty},
    {"any text without pattern", QStringLiteral("abc"), std::nullopt, false, std::nullopt},
    {"empty pattern", QStringLiteral("abc"), QString(), false, std::nullopt},
    {"match anywhere", QStringLiteral("my id 1234 here"), QStringLiteral("\\d{4}"), false, std::nullopt},
    {"no match", QStringLiteral("abcd"), QStringLiteral("\\d{4}"), false, Kind::fieldValueInvalid},
    {"anchors see the trimmed text", QStringLiteral("  12345 \n"), QStringLiteral("^\\d{5}$"), false,
     std::nullopt},
    {"anchors still bind inner text", QStringLiteral("12345 6"), QStringLiteral("^\\d{5}$"), false,
     Kind::fieldValueInvalid},
    {"pattern is case sensitive", QStringLiteral("ABC"), QStringLiteral("abc"), false,
     Kind::fieldValueInvalid},
    {"invalid pattern", QStringLiteral("abc"), QStringLiteral("(abc"), false, Kind::fieldValueInvalid},
    {"invalid pattern, empty allowed and empty", std::nullopt, QStringLiteral("(abc"), true, std::nullopt},
    {"Cyrillic text", QStringLiteral("Иван Петров"), QStringLiteral("^[А-Яа-я ]+$"), false, std::nullopt},
};

template <typename Control> void typeInto(Control* control, const QString& text) {
    control->setFocus();
    QTest::keyClicks(control, text);
}

} // namespace

TEST(TextControls, InputFieldAndAreaValidateTheSameWay) {
    for (const TextCase& c : kTextCases) {
        SCOPED_TRACE(c.name);
        FieldJSON field = makeField(FieldType::inputField, QStringLiteral("name"), QStringLiteral("Име"));
        field.validation = c.pattern;
        field.validationError = QStringLiteral("Невалидно име");

        auto input = makeControl<TSRInputField>(field);
        field.type = FieldType::inputArea;
        auto area = makeControl<TSRInputArea>(field);
        if (c.typed) {
            // Typed for the one-line field (its newlines would be dropped), set for the area.
            input->setText(*c.typed);
            area->setPlainText(*c.typed);
        }
        for (TSRValidateable* control :
             {static_cast<TSRValidateable*>(input.get()), static_cast<TSRValidateable*>(area.get())}) {
            const auto error = control->validate(c.allowEmpty);
            ASSERT_EQ(error.has_value(), c.expected.has_value())
                << control->widget()->objectName().toStdString();
            if (error) {
                EXPECT_EQ(error->kind, *c.expected);
                EXPECT_EQ(error->field, control);
                EXPECT_EQ(error->alertMessage(), QStringLiteral("Невалидно име"));
                EXPECT_EQ(error->alertTitle(), QStringLiteral("Име"));
            }
        }
    }
}

TEST(TextControls, ValueFollowsWhatTheUserTypes) {
    auto input = makeControl<TSRInputField>(makeField(FieldType::inputField, QStringLiteral("city")));
    input->show();
    EXPECT_FALSE(input->value.has_value());
    EXPECT_FALSE(input->hasValue());
    typeInto(input.get(), QStringLiteral("Sofia "));
    EXPECT_EQ(input->value, QStringLiteral("Sofia ")); // trimmed only at submission
    EXPECT_TRUE(input->hasValue());
    input->selectAll();
    QTest::keyClick(input.get(), Qt::Key_Backspace);
    EXPECT_FALSE(input->value.has_value());
    EXPECT_EQ(input->objectName(), QStringLiteral("TSRInputField.city"));
    EXPECT_EQ(input->accessibleName(), QStringLiteral("TSRInputField.city"));
}

TEST(TextControls, AreaShowingItsPlaceholderHoldsNothing) {
    auto area = makeControl<TSRInputArea>(
        makeField(FieldType::inputArea, QStringLiteral("notes"), QStringLiteral("Бележки")));
    area->show();
    EXPECT_EQ(area->placeholder, QStringLiteral("Бележки"));
    EXPECT_EQ(area->placeholderText(), QStringLiteral("Бележки"));
    EXPECT_FALSE(area->value.has_value());
    EXPECT_EQ(area->validate(false)->kind, Kind::fieldValueIsEmpty);

    typeInto(area.get(), QStringLiteral("row"));
    EXPECT_EQ(area->value, QStringLiteral("row"));
    EXPECT_FALSE(area->validate(false).has_value());

    // Erasing everything brings the placeholder back and the value goes away again.
    for (int i = 0; i < 3; ++i)
        QTest::keyClick(area.get(), Qt::Key_Backspace);
    EXPECT_TRUE(area->toPlainText().isEmpty());
    EXPECT_FALSE(area->value.has_value());
    EXPECT_FALSE(area->hasValue());
}

TEST(TextControls, TrimmingRemovesBlanksNewlinesAndControlCharactersAtBothEnds) {
    const std::pair<QString, QString> cases[] = {
        {QStringLiteral(""), QStringLiteral("")},
        {QStringLiteral(" a "), QStringLiteral("a")},
        {QStringLiteral("\r\n\ta b\t\r\n"), QStringLiteral("a b")},
        {QStringLiteral("\u00A0\u2003x\u2028\u2029"), QStringLiteral("x")}, // no-break, em space, separators
        {QStringLiteral("\u200Bx\uFEFF"), QStringLiteral("x")},             // zero-width space, BOM
        {QStringLiteral("\u0000\u001Fx\u007F\u0085"), QStringLiteral("x")}, // C0, DEL, NEL
        {QStringLiteral("x \u0007 y"), QStringLiteral("x \u0007 y")},       // inner ones stay
        {QString::fromUcs4(U"\U000E0001x\U000E0001"), QStringLiteral("x")}, // astral format character
        {QString::fromUcs4(U"\U0001F600 "), QString::fromUcs4(U"\U0001F600")}, // emoji is text
    };
    for (const auto& [input, expected] : cases)
        EXPECT_EQ(trimmedForSubmission(input), expected) << input.toStdString();
}

TEST(TextControls, DatePickerShowsTheDateInTheApplicationsLocale) {
    const struct {
        QLocale locale;
        QString shown;
    } cases[] = {
        {QLocale(QLocale::Bulgarian, QLocale::Bulgaria), QStringLiteral("17.05.1990 г.")},
        {QLocale(QLocale::German, QLocale::Germany), QStringLiteral("17.05.1990")},
        {QLocale(QLocale::English, QLocale::UnitedStates), QStringLiteral("5/17/1990")},
    };
    const QLocale before;
    for (const auto& c : cases) {
        QLocale::setDefault(c.locale);
        FieldJSON field = makeField(FieldType::date, QStringLiteral("birthDate"), QStringLiteral("Роден"));
        field.value = QStringLiteral("1990-05-17");
        auto picker = makeControl<TSRDatePicker>(field);
        EXPECT_EQ(picker->datePicker()->text(), c.shown) << c.locale.name().toStdString();
        EXPECT_EQ(picker->value, QStringLiteral("1990-05-17"));
    }
    QLocale::setDefault(before);
}

TEST(TextControls, DatePickerStartsWithTheFieldsDateOrToday) {
    struct Case {
        std::optional<QString> fieldValue;
        QDate expected;
    };
    const Case cases[] = {
        {QStringLiteral("1990-02-28"), QDate(1990, 2, 28)},
        {QStringLiteral("28.02.1990"), QDate::currentDate()},
        {QStringLiteral("2023-02-30"), QDate::currentDate()},
        {std::nullopt, QDate::currentDate()},
    };
    for (const Case& c : cases) {
        FieldJSON field =
            makeField(FieldType::date, QStringLiteral("birthDate"), QStringLiteral("Дата на раждане"));
        field.value = c.fieldValue;
        auto picker = makeControl<TSRDatePicker>(field);
        EXPECT_TRUE(picker->hasValue());
        EXPECT_EQ(picker->value, c.expected.toString(QStringLiteral("yyyy-MM-dd")));
        EXPECT_FALSE(picker->validate(false).has_value());
    }

    auto picker = makeControl<TSRDatePicker>(makeField(FieldType::date, QStringLiteral("issued")));
    picker->datePicker()->setDate(QDate(2001, 9, 3));
    EXPECT_EQ(picker->value, QStringLiteral("2001-09-03"));
    EXPECT_EQ(picker->datePicker()->objectName(), QStringLiteral("TSRDatePicker.issued.datePicker"));
}
