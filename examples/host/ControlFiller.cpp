#include "host/ControlFiller.h"

#include "host/AnswerBook.h"
#include "tessara/backend/TSRFile.h"
#include "tessara/form/TSRControl.h"
#include "tessara/form/controls/TSRCheckbox.h"
#include "tessara/form/controls/TSRConsentToggle.h"
#include "tessara/form/controls/TSRDatePicker.h"
#include "tessara/form/controls/TSRDropdownButton.h"
#include "tessara/form/controls/TSRInputArea.h"
#include "tessara/form/controls/TSRInputField.h"
#include "tessara/form/controls/TSRRadioButton.h"
#include "tessara/form/controls/TSRRadioButtonView.h"
#include "tessara/form/controls/TSRUploadFileView.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDate>
#include <QDateEdit>
#include <QDeadlineTimer>
#include <QFile>
#include <QFileInfo>
#include <QMenu>
#include <QMimeDatabase>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QTest>
#include <QTimer>

namespace tessara::demo {

namespace {

constexpr int kMenuWaitMs = 2000;

QString optionList(const std::vector<FieldOption>& options) {
    QStringList values;
    for (const FieldOption& option : options)
        values << QStringLiteral("\"%1\"").arg(option.value);
    return values.join(QStringLiteral(", "));
}

// Clicks `button` like a user: at its centre first, then near its leading edge, where the glyph
// of a checkbox or radio row sits, until `changed` reports the click took.
bool clickUntil(QAbstractButton* button, const std::function<bool()>& changed) {
    const QPoint points[] = {button->rect().center(),
                             QPoint(std::min(16, button->width() / 2), button->height() / 2),
                             QPoint(std::min(16, button->width() / 2), std::min(16, button->height() / 2))};
    for (const QPoint& point : points) {
        QTest::mouseClick(button, Qt::LeftButton, Qt::NoModifier, point);
        if (changed())
            return true;
    }
    return false;
}

// Spins the event loop until `done` holds or the time is up; the menu and the controls answer
// through queued events.
bool waitFor(const std::function<bool()>& done, int milliseconds) {
    QDeadlineTimer deadline(milliseconds);
    while (!done()) {
        if (deadline.hasExpired())
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    }
    return true;
}

} // namespace

ControlFiller::ControlFiller(const AnswerBook& answers)
    : answers_(answers) {}

void ControlFiller::typeText(QWidget* widget, const QString& text) {
    for (qsizetype i = 0; i < text.size(); ++i) {
        QString unit(text.at(i));
        // A character outside the basic plane travels as its two halves in one event.
        if (text.at(i).isHighSurrogate() && i + 1 < text.size())
            unit.append(text.at(++i));
        if (unit == QLatin1String("\n")) {
            QTest::keyClick(widget, Qt::Key_Return);
            continue;
        }
        const QChar upper = unit.at(0).toUpper();
        const auto key = upper.unicode() < 0x80 ? Qt::Key(upper.unicode()) : Qt::Key_unknown;
        QTest::sendKeyEvent(QTest::Click, widget, key, unit, Qt::NoModifier);
    }
}

ControlFiller::Result ControlFiller::fill(TSRControl& control) {
    // The dropdown is an input field too: ask for it first.
    if (auto* dropdown = dynamic_cast<TSRDropdownButton*>(&control))
        return fillDropdown(*dropdown);
    if (auto* input = dynamic_cast<TSRInputField*>(&control))
        return fillText(control, input, false);
    if (auto* area = dynamic_cast<TSRInputArea*>(&control))
        return fillText(control, area, true);
    if (auto* consent = dynamic_cast<TSRConsentToggle*>(&control)) {
        if (!consent->checkbox())
            return {true, {}, QStringLiteral("the consent %1 has no checkbox").arg(control.key())};
        return fillCheckbox(control, *consent->checkbox(), answers_.answer(control.key()));
    }
    if (auto* box = dynamic_cast<TSRCheckbox*>(&control))
        return fillCheckbox(control, *box, answers_.answer(control.key()));
    if (dynamic_cast<TSRRadioButtonView*>(&control))
        return fillRadio(control);
    if (dynamic_cast<TSRDatePicker*>(&control))
        return fillDate(control);
    if (dynamic_cast<TSRUploadFileView*>(&control))
        return fillUpload(control);
    return {};
}

ControlFiller::Result ControlFiller::fillText(TSRControl& control, QWidget* editor, bool multiLine) {
    const QString text = answers_.answer(control.key()).value_or(QString::fromUtf8(kDefaultText));
    const QString current = multiLine ? static_cast<QPlainTextEdit*>(editor)->toPlainText()
                                      : static_cast<QLineEdit*>(editor)->text();
    if (current == text && control.value == text)
        return {true, text, {}};
    editor->setFocus(Qt::OtherFocusReason);
    if (!current.isEmpty()) {
        QTest::keyClick(editor, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(editor, Qt::Key_Backspace);
    }
    typeText(editor, text);
    if (control.value.value_or(QString()) != text)
        return {true, text,
                QStringLiteral("typing \"%1\" into %2 left the value \"%3\"")
                    .arg(text, control.key(), control.value.value_or(QStringLiteral("(absent)")))};
    return {true, text, {}};
}

ControlFiller::Result ControlFiller::fillDropdown(TSRDropdownButton& dropdown) {
    const std::vector<FieldOption> options = dropdown.field->options.value_or(std::vector<FieldOption>{});
    if (options.empty())
        return {true, {}, QStringLiteral("the choice %1 offers no options").arg(dropdown.key())};
    const QString wanted = answers_.answer(dropdown.key()).value_or(options.front().value);
    const auto option =
        std::find_if(options.begin(), options.end(), [&](const FieldOption& o) { return o.value == wanted; });
    if (option == options.end())
        return {true, wanted,
                QStringLiteral("the answer \"%1\" for %2 is none of its options (%3)")
                    .arg(wanted, dropdown.key(), optionList(options))};
    const QString shown = option->label.value_or(option->value);
    if (dropdown.value == wanted)
        return {true, shown, {}};
    if (!dropdown.mainButton())
        return {true, shown, QStringLiteral("the choice %1 has no button to open it").arg(dropdown.key())};

    // The menu opens on the click, possibly in a nested event loop; the item is picked from
    // inside the loop so both kinds of menu work.
    bool picked = false;
    QTimer chooser;
    chooser.setInterval(10);
    QObject::connect(&chooser, &QTimer::timeout, &chooser, [&] {
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        if (!menu)
            return;
        chooser.stop();
        for (QAction* action : menu->actions()) {
            if (action->data().toString() != wanted)
                continue;
            const QRect geometry = menu->actionGeometry(action);
            if (geometry.isValid())
                QTest::mouseClick(menu, Qt::LeftButton, Qt::NoModifier, geometry.center());
            if (dropdown.value != wanted) {
                action->trigger();
                menu->close();
            }
            picked = true;
            return;
        }
        menu->close();
    });
    chooser.start();
    QTest::mouseClick(dropdown.mainButton(), Qt::LeftButton);
    waitFor([&] { return picked || !chooser.isActive(); }, kMenuWaitMs);
    chooser.stop();
    if (auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget()))
        menu->close();
    if (dropdown.value != wanted)
        return {true, shown,
                picked ? QStringLiteral("choosing \"%1\" in %2 did not take").arg(shown, dropdown.key())
                       : QStringLiteral("clicking %1 opened no menu").arg(dropdown.key())};
    return {true, shown, {}};
}

ControlFiller::Result ControlFiller::fillCheckbox(TSRControl& control, TSRCheckbox& box,
                                                  std::optional<QString> answer) {
    const QString wanted = answer.value_or(QStringLiteral("true"));
    if (wanted != QLatin1String("true") && wanted != QLatin1String("false"))
        return {true, wanted,
                QStringLiteral("the answer for %1 must be \"true\" or \"false\", not \"%2\"")
                    .arg(control.key(), wanted)};
    const bool tick = wanted == QLatin1String("true");
    auto flip = [&box] {
        const bool before = box.isChecked();
        return clickUntil(&box, [&] { return box.isChecked() != before; });
    };
    bool ok = true;
    if (box.isChecked() != tick) {
        ok = flip();
    } else if (!tick && !control.value && control.isRequired()) {
        // A required box counts once touched; "false" means ticked and unticked again.
        ok = flip() && flip();
    }
    if (!ok)
        return {true, wanted,
                QStringLiteral("clicking the checkbox of %1 did not change it").arg(control.key())};
    return {true, wanted, {}};
}

ControlFiller::Result ControlFiller::fillRadio(TSRControl& control) {
    auto& view = dynamic_cast<TSRRadioButtonView&>(control);
    const std::vector<FieldOption> options = control.field->options.value_or(std::vector<FieldOption>{});
    if (options.empty())
        return {true, {}, QStringLiteral("the choice %1 offers no options").arg(control.key())};
    const QString wanted = answers_.answer(control.key()).value_or(options.front().value);
    for (TSRRadioButton* row : view.radioButtons()) {
        if (!row->fieldOption || row->fieldOption->value != wanted)
            continue;
        const QString shown = row->fieldOption->label.value_or(wanted);
        if (control.value == wanted)
            return {true, shown, {}};
        if (!clickUntil(row, [&] { return control.value == wanted; }))
            return {true, shown,
                    QStringLiteral("clicking \"%1\" in %2 did not select it").arg(shown, control.key())};
        return {true, shown, {}};
    }
    return {true, wanted,
            QStringLiteral("the answer \"%1\" for %2 is none of its options (%3)")
                .arg(wanted, control.key(), optionList(options))};
}

ControlFiller::Result ControlFiller::fillDate(TSRControl& control) {
    auto& picker = dynamic_cast<TSRDatePicker&>(control);
    const QString format = TSRDatePicker::dateFormat();
    const QString wanted = answers_.answer(control.key()).value_or(QDate::currentDate().toString(format));
    const QDate date = QDate::fromString(wanted, format);
    if (!date.isValid())
        return {true, wanted,
                QStringLiteral("the answer for %1 must be a date written %2, not \"%3\"")
                    .arg(control.key(), format, wanted)};
    QDateEdit* editor = picker.datePicker();
    if (!editor)
        return {true, wanted, QStringLiteral("the date %1 has no editor").arg(control.key())};
    if (date < editor->minimumDate() || date > editor->maximumDate())
        return {true, wanted,
                QStringLiteral("%1 accepts no date before %2 or after %3")
                    .arg(control.key(), editor->minimumDate().toString(format),
                         editor->maximumDate().toString(format))};
    editor->setDate(date);
    if (control.value != wanted)
        return {true, wanted, QStringLiteral("setting %1 to %2 did not take").arg(control.key(), wanted)};
    return {true, wanted, {}};
}

ControlFiller::Result ControlFiller::fillUpload(TSRControl& control) {
    auto& upload = dynamic_cast<TSRUploadFileView&>(control);
    const std::optional<QString> answer = answers_.answer(control.key());
    const QString path = answer ? answers_.resolvePath(*answer) : answers_.defaultUploadFile();
    if (path.isEmpty())
        return {
            true, {}, QStringLiteral("no file to upload for %1: name one in the answers").arg(control.key())};
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {true, path,
                QStringLiteral("cannot read %1 for %2: %3").arg(path, control.key(), file.errorString())};
    TSRFile chosen;
    chosen.data = file.readAll();
    chosen.type = QMimeDatabase().mimeTypeForFile(path);
    chosen.filename = QFileInfo(path).fileName();
    // The name is taken from the disk, extension included, as the file picker would.
    chosen.filenameAlreadyHasExtension = true;
    upload.acceptFile(chosen);
    return {true, QStringLiteral("%1 (%2 bytes)").arg(chosen.filename).arg(chosen.data.size()), {}};
}

} // namespace tessara::demo
