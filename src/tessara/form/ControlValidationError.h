#pragma once

#include <QString>

namespace tessara {

class TSRControl;

// A control's validation failure; the form turns it into an alert.
struct ControlValidationError {
    enum class Kind { fieldValueIsEmpty, fieldValueInvalid, fileWithUnsupportedExtension, fileTooBig };

    Kind kind;
    // The control that failed.
    TSRControl* field = nullptr;

    // The alert's title: the failing field's label (empty when it has none).
    QString alertTitle() const;
    // The alert's text: the field's message for this kind, or the shared fallback.
    QString alertMessage() const;

    static QString fallbackMessage();
};

} // namespace tessara
