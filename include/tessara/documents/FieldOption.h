#pragma once

#include <QString>
#include <optional>

namespace tessara {

// One entry of a choice field. "id" and "value" are required on the wire.
struct FieldOption {
    qint64 id = 0;
    std::optional<QString> label;
    QString value;
    std::optional<QString> value2;

    friend bool operator==(const FieldOption&, const FieldOption&) = default;
};

} // namespace tessara
