#include "tessara/form/ControlValidationError.h"

#include "tessara/form/TSRControl.h"

namespace tessara {

QString ControlValidationError::fallbackMessage() {
    return QStringLiteral("Някой не е въвел правилно съобщение за грешка 👀");
}

QString ControlValidationError::alertTitle() const {
    if (!field || !field->field)
        return {};
    return field->field->label.value_or(QString());
}

QString ControlValidationError::alertMessage() const {
    if (!field || !field->field)
        return fallbackMessage();
    const FieldJSON& f = *field->field;
    std::optional<QString> text;
    switch (kind) {
    case Kind::fieldValueIsEmpty:
    case Kind::fieldValueInvalid:
        text = f.validationError;
        break;
    case Kind::fileWithUnsupportedExtension:
        text = f.fileExtensionError;
        break;
    case Kind::fileTooBig:
        text = f.fileSizeError;
        break;
    }
    return text ? *text : fallbackMessage();
}

} // namespace tessara
