#pragma once

#include "tessara/form/TSRValidateable.h"

#include <QLineEdit>

namespace tessara {

// A one-line text input (INPUT). `value` follows the text; no text gives an absent value.
class TSRInputField : public QLineEdit, public TSRValidateable {
    Q_OBJECT
public:
    explicit TSRInputField(QWidget* parent = nullptr);

    void setup() override;
    QWidget* widget() override { return this; }
    bool hasValue() const override;
    std::optional<ControlValidationError> validate(bool allowEmpty) override;

    // The text rule shared by one-line and multi-line inputs: the trimmed value must be
    // non-empty (unless `allowEmpty`) and contain a match of the field's `validation`.
    static std::optional<ControlValidationError> validateText(TSRControl& control, bool allowEmpty);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
};

} // namespace tessara
