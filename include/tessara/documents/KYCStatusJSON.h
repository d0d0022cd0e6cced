#pragma once

#include <QString>

namespace tessara {

// Answer of the verification status call; both keys required.
struct KYCStatusJSON {
    QString code;
    QString message;

    friend bool operator==(const KYCStatusJSON&, const KYCStatusJSON&) = default;
};

} // namespace tessara
