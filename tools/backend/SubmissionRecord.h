#pragma once

#include "backend/VerificationReport.h"

#include <QDateTime>
#include <QString>
#include <optional>
#include <vector>

namespace tessara {

// One value a submission received, with the move that carried it.
struct SubmittedValue {
    QString fromDirectionId; // the step the value was entered on ("" when the client sent none)
    QString toDirectionId;   // the step the client asked for
    std::optional<QString> fromFlowFieldId; // the flow button that caused the move
    QString key;
    QString value;
};

// One file a submission received.
struct StoredUpload {
    QString key;
    QString fromDirectionId;
    QString fileName; // as the client named it
    qint64 size = 0;
    QString contentType;
    QString storedPath; // absolute path on this machine
};

// Everything the backend holds about one running submission.
struct SubmissionRecord {
    QString submissionId;
    QString processId;
    // Names this submission in the verification session and in the status call.
    QString userHash;
    bool hasCallingServiceToken = false; // the token itself is a credential and is not kept
    QDateTime createdAt;
    std::vector<QString> visitedSteps; // every step answered to this submission, in order
    std::vector<SubmittedValue> values;
    std::vector<StoredUpload> uploads;
    QString kycCode;
    QString kycMessage;
    // Filled in by the verification simulator once the user joins it.
    std::optional<VerificationReport> verification;
};

} // namespace tessara
