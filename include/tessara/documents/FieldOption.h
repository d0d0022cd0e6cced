#pragma once

#include <QString>
#include <optional>

namespace tessara {

/// One entry of a choice field (radio buttons, dropdown). "id" and "value" are required on the wire.
struct FieldOption {
    qint64 id = 0;                 ///< The backend's id of the entry.
    std::optional<QString> label;  ///< Shown to the user; the value when absent.
    QString value;                 ///< What the field submits when this entry is chosen.
    std::optional<QString> value2; ///< A second value the backend may attach; the SDK does not read it.

    /// Field-by-field equality.
    friend bool operator==(const FieldOption&, const FieldOption&) = default;
};

} // namespace tessara
