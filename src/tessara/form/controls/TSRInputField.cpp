#include "tessara/form/controls/TSRInputField.h"

#include "tessara/appearance/CurrentAppearance.h"
#include "tessara/ui/InputDecoration.h"
#include "tessara/form/TextTrimming.h"
#include "tessara/form/ValidationPattern.h"

namespace tessara {

namespace {
constexpr int kHeight = 46;
constexpr int kHorizontalPadding = 12;
} // namespace

TSRInputField::TSRInputField(QWidget* parent)
    : QLineEdit(parent) {
    setAttribute(Qt::WA_MacShowFocusRect, false);
}

void TSRInputField::setup() {
    applyAccessibilityIdentifier();
    setPlaceholderText(field->label.value_or(QString()));
    InputDecoration::apply(this);
    InputDecoration::applyTextStyle(this);
    setTextMargins(kHorizontalPadding, 0, kHorizontalPadding, 0);
    connect(this, &QLineEdit::textChanged, this, [this](const QString& text) {
        value = text.isEmpty() ? std::nullopt : std::optional<QString>(text);
    });
}

bool TSRInputField::hasValue() const {
    return value && !value->isEmpty();
}

std::optional<ControlValidationError> TSRInputField::validate(bool allowEmpty) {
    return validateText(*this, allowEmpty);
}

std::optional<ControlValidationError> TSRInputField::validateText(TSRControl& control, bool allowEmpty) {
    using Kind = ControlValidationError::Kind;
    const QString trimmed = control.value ? trimmedForSubmission(*control.value) : QString();
    if (trimmed.isEmpty()) {
        if (allowEmpty)
            return std::nullopt;
        return ControlValidationError{Kind::fieldValueIsEmpty, &control};
    }
    const std::optional<QString>& pattern = control.field->validation;
    if (!pattern || pattern->isEmpty())
        return std::nullopt;
    // A search, not a full match: patterns that must cover the whole text carry anchors.
    if (!ValidationPattern(*pattern).isFoundIn(trimmed))
        return ControlValidationError{Kind::fieldValueInvalid, &control};
    return std::nullopt;
}

QSize TSRInputField::sizeHint() const {
    QSize size = QLineEdit::sizeHint();
    size.setHeight(std::max(size.height(), kHeight));
    return size;
}

QSize TSRInputField::minimumSizeHint() const {
    QSize size = QLineEdit::minimumSizeHint();
    size.setHeight(std::max(size.height(), kHeight));
    return size;
}

} // namespace tessara
