#pragma once

#include "tessara/form/TSRValidateable.h"

#include <QPlainTextEdit>

namespace tessara {

// A multi-line text input (AREA). The field's label shows as placeholder while the text is
// empty, and `value` is absent then.
class TSRInputArea : public QPlainTextEdit, public TSRValidateable {
    Q_OBJECT
public:
    explicit TSRInputArea(QWidget* parent = nullptr);

    // The placeholder text (the field's label).
    std::optional<QString> placeholder;

    void setup() override;
    QWidget* widget() override { return this; }
    bool hasValue() const override;
    std::optional<ControlValidationError> validate(bool allowEmpty) override;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
};

} // namespace tessara
