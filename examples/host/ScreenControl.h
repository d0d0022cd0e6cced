#pragma once

#include <QPointer>
#include <QString>
#include <QWidget>
#include <optional>
#include <vector>

namespace tessara::demo {

// One control of an SDK screen as a host sees it: a widget named "<kind>.<field key>", its
// parts named after it with a role suffix (".mainButton", ".datePicker", ...). The names are
// the SDK's published identifiers; the widgets are used through their Qt base types only.
class ScreenControl {
public:
    enum class Kind {
        input,    // a QLineEdit
        dropdown, // a QLineEdit with a ".mainButton" that opens a ".menu"
        area,     // a QPlainTextEdit
        checkbox, // a checkable QAbstractButton
        consent,  // a checkbox (named as such) and a ".linkButton"
        radio,    // a group of checkable buttons named "TSRRadioButton.<key>.<value>"
        date,     // a QDateEdit as ".datePicker"
        upload,   // a ".chooseFileButton" whose menu opens a file dialog
        flow,     // a button leading to another step (properties "directionId", "opensPopup")
        closing,  // the closing screen's goodbye button
    };

    // The control `widget` is, when its name says it is one.
    static std::optional<ScreenControl> of(QWidget* widget);
    // Every control under `screen` (hidden ones too) in the order the screen holds them:
    // a section's controls in its place.
    static std::vector<ScreenControl> inOrder(QWidget& screen);

    Kind kind() const { return kind_; }
    QString key() const { return key_; }
    QWidget* widget() const { return widget_; }
    // The part of this control named with `role` ("mainButton", "menu", ...), or null.
    template <typename T> T* part(const char* role) const {
        if (!widget_)
            return nullptr;
        return widget_->findChild<T*>(widget_->objectName() + QLatin1Char('.') + QLatin1String(role));
    }
    // The control's own widget of another kind inside it, such as a consent's checkbox.
    QWidget* inner(Kind kind) const;
    // The name of the rows of radio group `key` up to the option's value.
    static QString radioRowPrefix(const QString& key);

private:
    ScreenControl(Kind kind, QString key, QWidget* widget);

    Kind kind_;
    QString key_;
    QPointer<QWidget> widget_;
};

} // namespace tessara::demo
