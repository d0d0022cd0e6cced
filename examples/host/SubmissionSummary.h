#pragma once

#include "host/StepTiming.h"

#include <QJsonObject>
#include <QStringList>
#include <QUrl>
#include <functional>
#include <optional>
#include <vector>

class QNetworkAccessManager;

namespace tessara::demo {

// What the backend received for one submission, read from its read-only record
// GET "/_demo/submissions/{id}" and written as a few readable lines.
class SubmissionSummary {
public:
    using Callback = std::function<void(std::optional<QJsonObject> record, QString error)>;

    // The record's address under `backend`, which may carry a path of its own.
    static QUrl recordUrl(const QUrl& backend, const QString& submissionId);
    // Asks the backend; `callback` runs on the main thread.
    static void fetch(QNetworkAccessManager& network, const QUrl& backend, const QString& submissionId,
                      Callback callback);

    // Steps visited, values received in order, files stored.
    static QStringList format(const QJsonObject& record);
    // One line per step and a total with the mean per step.
    static QStringList formatTimings(const std::vector<StepTiming>& timings);
};

} // namespace tessara::demo
