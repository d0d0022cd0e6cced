#include "host/ControlFiller.h"

#include "host/AnswerBook.h"
#include "host/UserGestures.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QDate>
#include <QDateEdit>
#include <QDialogButtonBox>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>

namespace tessara::demo {

namespace {

constexpr int kDialogWaitMs = 2000;

QString optionList(const QStringList& values) {
    QStringList quoted;
    for (const QString& value : values)
        quoted << QStringLiteral("\"%1\"").arg(value);
    return quoted.join(QStringLiteral(", "));
}

QString noOption(const QString& wanted, const QString& key, const QStringList& values) {
    return QStringLiteral("the answer \"%1\" for %2 is none of its options (%3)")
        .arg(wanted, key, optionList(values));
}

QFileDialog* openFileDialog() {
    for (QWidget* window : QApplication::topLevelWidgets()) {
        auto* dialog = qobject_cast<QFileDialog*>(window);
        if (dialog && dialog->isVisible())
            return dialog;
    }
    return nullptr;
}

} // namespace

ControlFiller::ControlFiller(const AnswerBook& answers)
    : answers_(answers) {}

ControlFiller::Result ControlFiller::fill(const ScreenControl& control) {
    if (!control.widget())
        return {};
    switch (control.kind()) {
    case ScreenControl::Kind::input:
    case ScreenControl::Kind::area:
        return fillText(control);
    case ScreenControl::Kind::dropdown:
        return fillDropdown(control);
    case ScreenControl::Kind::checkbox:
        return fillCheckbox(control, qobject_cast<QAbstractButton*>(control.widget()));
    case ScreenControl::Kind::consent:
        return fillCheckbox(control,
                            qobject_cast<QAbstractButton*>(control.inner(ScreenControl::Kind::checkbox)));
    case ScreenControl::Kind::radio:
        return fillRadio(control);
    case ScreenControl::Kind::date:
        return fillDate(control);
    case ScreenControl::Kind::upload:
        return fillUpload(control);
    case ScreenControl::Kind::flow:
    case ScreenControl::Kind::closing:
        break;
    }
    return {};
}

ControlFiller::Result ControlFiller::fillText(const ScreenControl& control) {
    const QString text = answers_.answer(control.key()).value_or(QString::fromUtf8(kDefaultText));
    QWidget* editor = control.widget();
    auto* line = qobject_cast<QLineEdit*>(editor);
    auto* area = qobject_cast<QPlainTextEdit*>(editor);
    if (!line && !area)
        return {true, text, QStringLiteral("%1 is no text editor").arg(control.key())};
    auto current = [&] { return line ? line->text() : area->toPlainText(); };
    if (current() == text)
        return {true, text, {}};
    editor->setFocus(Qt::OtherFocusReason);
    if (!current().isEmpty())
        UserGestures::clearText(editor);
    UserGestures::typeText(editor, text);
    if (current() != text)
        return {
            true, text,
            QStringLiteral("typing \"%1\" into %2 left the text \"%3\"").arg(text, control.key(), current())};
    return {true, text, {}};
}

ControlFiller::Result ControlFiller::fillDropdown(const ScreenControl& control) {
    const QString key = control.key();
    auto* menu = control.part<QMenu>("menu");
    const QList<QAction*> actions = menu ? menu->actions() : QList<QAction*>{};
    QStringList values;
    for (const QAction* action : actions)
        values << action->data().toString();
    if (values.isEmpty())
        return {true, {}, QStringLiteral("the choice %1 offers no options").arg(key)};
    const QString wanted = answers_.answer(key).value_or(values.front());
    const qsizetype index = values.indexOf(wanted);
    if (index < 0)
        return {true, wanted, noOption(wanted, key, values)};
    QAction* option = actions.at(index);
    const QString shown = option->text();
    if (option->isChecked())
        return {true, shown, {}};
    auto* opener = control.part<QAbstractButton>("mainButton");
    if (!opener)
        return {true, shown, QStringLiteral("the choice %1 has no button to open it").arg(key)};

    const UserGestures::MenuOutcome outcome = UserGestures::pickFromMenu(
        opener, [&](QAction* action) { return action->data().toString() == wanted; });
    if (!option->isChecked())
        return {true, shown,
                outcome == UserGestures::MenuOutcome::noMenu
                    ? QStringLiteral("clicking %1 opened no menu").arg(key)
                    : QStringLiteral("choosing \"%1\" in %2 did not take").arg(shown, key)};
    return {true, shown, {}};
}

ControlFiller::Result ControlFiller::fillCheckbox(const ScreenControl& control, QAbstractButton* box) {
    const QString key = control.key();
    const QString wanted = answers_.answer(key).value_or(QStringLiteral("true"));
    if (wanted != QLatin1String("true") && wanted != QLatin1String("false"))
        return {
            true, wanted,
            QStringLiteral("the answer for %1 must be \"true\" or \"false\", not \"%2\"").arg(key, wanted)};
    if (!box)
        return {true, wanted, QStringLiteral("the consent %1 has no checkbox").arg(key)};
    const bool tick = wanted == QLatin1String("true");
    auto flip = [box] {
        const bool before = box->isChecked();
        return UserGestures::clickUntil(box, [&] { return box->isChecked() != before; });
    };
    bool ok = true;
    if (box->isChecked() != tick)
        ok = flip();
    else if (!tick)
        // Whether the box is required does not show; ticked and unticked again it counts as
        // answered either way, and an optional box sends "false" all the same.
        ok = flip() && flip();
    if (!ok)
        return {true, wanted, QStringLiteral("clicking the checkbox of %1 did not change it").arg(key)};
    return {true, wanted, {}};
}

ControlFiller::Result ControlFiller::fillRadio(const ScreenControl& control) {
    const QString key = control.key();
    const QString prefix = ScreenControl::radioRowPrefix(key);
    QList<QAbstractButton*> rows;
    QStringList values;
    for (QAbstractButton* row : control.widget()->findChildren<QAbstractButton*>()) {
        if (!row->objectName().startsWith(prefix))
            continue;
        rows << row;
        values << row->objectName().mid(prefix.size());
    }
    if (rows.isEmpty())
        return {true, {}, QStringLiteral("the choice %1 offers no options").arg(key)};
    const QString wanted = answers_.answer(key).value_or(values.front());
    const qsizetype index = values.indexOf(wanted);
    if (index < 0)
        return {true, wanted, noOption(wanted, key, values)};
    QAbstractButton* row = rows.at(index);
    const QString shown = row->text();
    if (!row->isChecked() && !UserGestures::clickUntil(row, [row] { return row->isChecked(); }))
        return {true, shown, QStringLiteral("clicking \"%1\" in %2 did not select it").arg(shown, key)};
    return {true, shown, {}};
}

ControlFiller::Result ControlFiller::fillDate(const ScreenControl& control) {
    const QString key = control.key();
    const QString format = QString::fromLatin1(kDateFormat);
    const QString wanted = answers_.answer(key).value_or(QDate::currentDate().toString(format));
    const QDate date = QDate::fromString(wanted, format);
    if (!date.isValid())
        return {true, wanted,
                QStringLiteral("the answer for %1 must be a date written %2, not \"%3\"")
                    .arg(key, format, wanted)};
    auto* editor = control.part<QDateEdit>("datePicker");
    if (!editor)
        return {true, wanted, QStringLiteral("the date %1 has no editor").arg(key)};
    if (date < editor->minimumDate() || date > editor->maximumDate())
        return {
            true, wanted,
            QStringLiteral("%1 accepts no date before %2 or after %3")
                .arg(key, editor->minimumDate().toString(format), editor->maximumDate().toString(format))};
    editor->setDate(date);
    if (editor->date() != date)
        return {true, wanted, QStringLiteral("setting %1 to %2 did not take").arg(key, wanted)};
    return {true, wanted, {}};
}

ControlFiller::Result ControlFiller::fillUpload(const ScreenControl& control) {
    const QString key = control.key();
    const std::optional<QString> answer = answers_.answer(key);
    const QString path = answer ? answers_.resolvePath(*answer) : answers_.defaultUploadFile();
    if (path.isEmpty())
        return {true, {}, QStringLiteral("no file to upload for %1: name one in the answers").arg(key)};
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {true, path, QStringLiteral("cannot read %1 for %2: %3").arg(path, key, file.errorString())};
    const QFileInfo info(path);
    const QString entered = QStringLiteral("%1 (%2 bytes)").arg(info.fileName()).arg(file.size());
    file.close();

    auto* opener = control.part<QAbstractButton>("chooseFileButton");
    if (!opener)
        return {true, entered, QStringLiteral("the upload %1 has no button to choose a file").arg(key)};
    // The file browser, not the photo library: it takes any file the field allows.
    const UserGestures::MenuOutcome outcome = UserGestures::pickFromMenu(opener, [](QAction* action) {
        return action->objectName() == QLatin1String("openFileBrowserAction");
    });
    if (outcome != UserGestures::MenuOutcome::picked)
        return {true, entered, QStringLiteral("the upload %1 offers no file browser").arg(key)};
    QFileDialog* dialog = nullptr;
    UserGestures::waitFor([&] { return (dialog = openFileDialog()) != nullptr; }, kDialogWaitMs);
    if (!dialog)
        return {true, entered, QStringLiteral("choosing a file for %1 opened no file dialog").arg(key)};
    // The path written into the dialog's name field and confirmed with its own button, as a
    // user would; the dialog enables the button once it has found the file.
    auto* name = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    auto* buttons = dialog->findChild<QDialogButtonBox*>();
    QAbstractButton* open = buttons ? buttons->button(QDialogButtonBox::Open) : nullptr;
    if (name && open) {
        name->setText(info.absoluteFilePath());
        UserGestures::waitFor([open] { return open->isEnabled(); }, kDialogWaitMs);
    }
    if (!open || !open->isEnabled()) {
        dialog->close();
        return {true, entered, QStringLiteral("the file dialog for %1 cannot open %2").arg(key, path)};
    }
    UserGestures::click(open);
    // A window system hands the activation back to the window under a closed dialog; offscreen
    // nobody does, and the screen would then draw no focus.
    if (QWidget* window = control.widget()->window(); window && !window->isActiveWindow())
        window->activateWindow();

    auto* shown = control.part<QLabel>("filenameLabel");
    if (!shown || shown->text() != info.fileName())
        return {true, entered, QStringLiteral("choosing %1 for %2 did not take").arg(path, key)};
    return {true, entered, {}};
}

} // namespace tessara::demo
