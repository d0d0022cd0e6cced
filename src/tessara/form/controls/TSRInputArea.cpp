#include "tessara/form/controls/TSRInputArea.h"

#include "tessara/appearance/CurrentAppearance.h"
#include "tessara/ui/InputDecoration.h"
#include "tessara/form/controls/TSRInputField.h"

#include <QTextDocument>

namespace tessara {

namespace {
constexpr int kPadding = 8;  // around the document, which adds its own margin
constexpr int kHeight = 112; // about four lines of body text
} // namespace

TSRInputArea::TSRInputArea(QWidget* parent)
    : QPlainTextEdit(parent) {
    setTabChangesFocus(true);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void TSRInputArea::setup() {
    applyAccessibilityIdentifier();
    placeholder = field->label;
    // The native placeholder keeps the rule a user sees: while it shows, nothing is held.
    setPlaceholderText(placeholder.value_or(QString()));
    InputDecoration::apply(this);
    InputDecoration::applyTextStyle(this);
    setViewportMargins(kPadding, kPadding / 2, kPadding, kPadding / 2);
    connect(this, &QPlainTextEdit::textChanged, this, [this] {
        const QString text = toPlainText();
        value = text.isEmpty() ? std::nullopt : std::optional<QString>(text);
    });
}

bool TSRInputArea::hasValue() const {
    return value && !value->isEmpty();
}

std::optional<ControlValidationError> TSRInputArea::validate(bool allowEmpty) {
    return TSRInputField::validateText(*this, allowEmpty);
}

QSize TSRInputArea::sizeHint() const {
    return {QPlainTextEdit::sizeHint().width(), kHeight};
}

QSize TSRInputArea::minimumSizeHint() const {
    return {QPlainTextEdit::minimumSizeHint().width(), kHeight};
}

} // namespace tessara
