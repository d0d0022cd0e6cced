#pragma once

#include "tessara/documents/SubmissionJSON.h"

#include <QNetworkReply>
#include <QObject>
#include <QPointer>
#include <functional>

namespace tessara {

// One question to the verification service about the step's status, over plain HTTP. Nothing
// schedules it: the host (or a test) asks when it wants to.
class KYCStatusPolling {
public:
    KYCStatusPolling() = delete;

    // Asks for the status of `document`'s submission for the current user hash; fatal when the
    // document has no submissionId. `apply` gets the status word on the main thread while
    // `context` exists; a failed request is dropped silently.
    static QPointer<QNetworkReply> request(const SubmissionJSON& document, QObject* context,
                                           std::function<void(const QString& code)> apply);
};

} // namespace tessara
