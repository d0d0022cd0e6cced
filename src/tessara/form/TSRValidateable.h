#pragma once

#include "tessara/form/ControlValidationError.h"
#include "tessara/form/TSRControl.h"

#include <optional>

namespace tessara {

// A control that holds user input and can check it.
class TSRValidateable : public TSRControl {
public:
    // True when the user has put something in the control.
    virtual bool hasValue() const = 0;
    // Checks the control; with `allowEmpty` an empty control passes. Returns the first
    // fault found, or nothing. Never changes `value`.
    virtual std::optional<ControlValidationError> validate(bool allowEmpty) = 0;
};

} // namespace tessara
