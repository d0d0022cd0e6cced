#pragma once

#include <QString>

namespace tessara {

// The "dto" part of a file upload; all three keys always written and required.
struct UploadFileDTO {
    QString submissionId;
    QString key;
    QString fromDirectionId;

    friend bool operator==(const UploadFileDTO&, const UploadFileDTO&) = default;
};

} // namespace tessara
