#pragma once

#include "tessara/documents/FieldJSON.h"

#include <QString>
#include <QWidget>
#include <optional>

namespace tessara {

// What every form control is. Implemented by widget classes (QLineEdit, QPushButton,
// QWidget subclasses), so the contract is a mixin and `widget()` gives the view.
class TSRControl {
public:
    virtual ~TSRControl() = default;

    // The field this control renders; set by the factory before anything reads it.
    std::optional<FieldJSON> field;
    // What the control holds, in the form that is submitted.
    std::optional<QString> value;
    // False when a position style places the control outside the form's stack.
    bool addToStackView = true;

    // The field's type. Fatal when `field` is empty.
    FieldType type() const;
    // The field's key. Fatal when `field` is empty or has no key.
    QString key() const;
    // The field's `isRequired`; absent counts as false. Fatal when `field` is empty.
    bool isRequired() const;

    // Builds the inner views from `field`; called once by the factory.
    virtual void setup() = 0;
    // The view of this control.
    virtual QWidget* widget() = 0;
    const QWidget* widget() const { return const_cast<TSRControl*>(this)->widget(); }

    // "<class name>.<key>", the name tests and the autopilot find the control by. Fatal
    // without a key.
    QString accessibilityIdentifier() const;

protected:
    // Sets the identifier as the widget's objectName and accessible name.
    void applyAccessibilityIdentifier();
    // The class name of the widget without the namespace ("TSRInputField").
    QString className() const;
    // Posts `value` under the field's key on the notification bus, for the sections that
    // watch this field. Fatal when `value` is absent: every caller has just set one.
    void announceValue();
};

} // namespace tessara
