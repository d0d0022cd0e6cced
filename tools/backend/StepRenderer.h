#pragma once

#include "backend/ProcessDefinition.h"

#include <QByteArray>
#include <QString>
#include <optional>

namespace tessara {

// The values a step document's placeholders stand for when it is answered to one submission.
struct StepContext {
    QString authority;    // {{host}}: host and port the client used to reach this server
    QString submissionId; // {{submissionId}}
    QString userHash;     // {{userHash}}
    QString processId;
};

// Turns stored step documents into the bytes a client receives. Placeholders are replaced in the
// document's text, and the ids are set on the decoded record, so what goes out has passed the
// SDK's own decoder and is written by its encoder (sorted keys, exact numbers).
class StepRenderer {
public:
    // Placeholder values used to check documents at load time, when no submission exists.
    static StepContext standIn();

    // `source` with every placeholder replaced. The values are inserted as they are, so they
    // must not contain characters that JSON escapes; the server's own values never do.
    static QByteArray expand(const QByteArray& source, const StepContext& context);

    // The document of `step` for one submission: submissionId and processId are set, and the
    // directionId too when `directionId` is given (steps; a section keeps what its file says).
    // std::nullopt when the expanded text no longer decodes.
    static std::optional<SubmissionJSON> render(const StepDefinition& step, const StepContext& context,
                                                const std::optional<QString>& directionId);
};

} // namespace tessara
