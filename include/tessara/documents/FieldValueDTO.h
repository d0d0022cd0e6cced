#pragma once

#include <QString>

namespace tessara {

// One submitted value; every value travels as text.
struct FieldValueDTO {
    QString key;
    QString value;

    friend bool operator==(const FieldValueDTO&, const FieldValueDTO&) = default;
};

} // namespace tessara
