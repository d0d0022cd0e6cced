#pragma once

#include <QString>

namespace tessara {

/// Answer of the verification status call; both keys required.
struct KYCStatusJSON {
    QString code;    ///< The status word, e.g. "KYC_STATUS_SELFIE_OK".
    QString message; ///< The backend's words for it; the SDK does not show them.

    /// Field-by-field equality.
    friend bool operator==(const KYCStatusJSON&, const KYCStatusJSON&) = default;
};

} // namespace tessara
