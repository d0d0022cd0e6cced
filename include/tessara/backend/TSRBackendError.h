#pragma once

#include <QByteArrayView>
#include <QString>
#include <optional>

namespace tessara {

/// The backend's own account of a refused request (the body of an HTTP 400). Its words
/// are shown to the user unchanged.
struct TSRBackendError {
    QString localizedDescription; ///< The backend's "message".

    /// Reads {"message": "..."}; the key is required and must hold a string. Other keys
    /// are ignored. Absent when the bytes are no such object.
    static std::optional<TSRBackendError> decode(QByteArrayView json);

    /// Field-by-field equality.
    friend bool operator==(const TSRBackendError&, const TSRBackendError&) = default;
};

} // namespace tessara
