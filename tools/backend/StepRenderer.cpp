#include "backend/StepRenderer.h"

#include "tessara/documents/JsonCoding.h"

namespace tessara {

StepContext StepRenderer::standIn() {
    return {QStringLiteral("127.0.0.1:8080"), QStringLiteral("00000000-0000-0000-0000-000000000000"),
            QStringLiteral("00000000000000000000000000000000"), QString()};
}

QByteArray StepRenderer::expand(const QByteArray& source, const StepContext& context) {
    QByteArray text = source;
    text.replace("{{host}}", context.authority.toUtf8());
    text.replace("{{submissionId}}", context.submissionId.toUtf8());
    text.replace("{{userHash}}", context.userHash.toUtf8());
    return text;
}

std::optional<SubmissionJSON> StepRenderer::render(const StepDefinition& step, const StepContext& context,
                                                   const std::optional<QString>& directionId) {
    auto document = decodeDocument<SubmissionJSON>(expand(step.source, context));
    if (!document)
        return std::nullopt;
    document->submissionId = context.submissionId;
    document->processId = context.processId;
    if (directionId)
        document->directionId = *directionId;
    return document;
}

} // namespace tessara
