#pragma once

#include <QString>

namespace tessara {

/// One submitted value; every value travels as text.
struct FieldValueDTO {
    QString key;   ///< The field's key.
    QString value; ///< Numbers, dates and booleans as the control writes them.

    /// Field-by-field equality.
    friend bool operator==(const FieldValueDTO&, const FieldValueDTO&) = default;
};

} // namespace tessara
