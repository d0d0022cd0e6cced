#include "backend/StepEndpoints.h"

#include "backend/StepRenderer.h"
#include "tessara/documents/SubmissionCreateDTO.h"
#include "tessara/documents/SubmitStepDTO.h"

namespace tessara {

StepEndpoints::StepEndpoints(const ProcessStore& processes, SubmissionStore& submissions)
    : processes_(processes)
    , submissions_(submissions) {}

void StepEndpoints::addRoutes(RouteTable& routes) {
    routes.add(
        "POST", QStringLiteral("/submission"),
        [this](const BackendRequest& request, const QStringList&) { return createSubmission(request); });
    routes.add(
        "GET", QStringLiteral("/step/direction/{id}/current"),
        [this](const BackendRequest& request, const QStringList& p) { return currentStep(request, p[0]); });
    routes.add(
        "GET", QStringLiteral("/step/{submission}/{key}"),
        [this](const BackendRequest& request, const QStringList& p) { return section(request, p[0], p[1]); });
    routes.add("POST", QStringLiteral("/step"),
               [this](const BackendRequest& request, const QStringList&) { return submitStep(request); });
}

BackendResponse StepEndpoints::createSubmission(const BackendRequest& request) {
    const auto dto = decodeDocument<SubmissionCreateDTO>(request.body);
    if (!dto)
        return BackendResponse::badRequest(
            QStringLiteral("Тялото трябва да е JSON обект с текстово поле \"processId\"."));
    const ProcessDefinition* process = processes_.process(dto->processId);
    if (!process)
        return BackendResponse::badRequest(QStringLiteral("Непознат процес: \"%1\".").arg(dto->processId));
    SubmissionRecord& submission =
        submissions_.create(process->processId, dto->callingServiceToken.has_value());
    return answerStep(request, submission, *process, process->firstStep);
}

BackendResponse StepEndpoints::currentStep(const BackendRequest& request, const QString& directionId) {
    const SubmissionRecord* latest = submissions_.latestVisitorOf(directionId);
    if (!latest)
        return BackendResponse::badRequest(
            QStringLiteral("Няма заявка, която да е достигнала стъпка \"%1\".").arg(directionId));
    SubmissionRecord& submission = *submissions_.find(latest->submissionId);
    const ProcessDefinition* process = processes_.process(submission.processId);
    if (!process || !process->step(directionId))
        return BackendResponse::badRequest(
            QStringLiteral("Стъпка \"%1\" вече не е част от процеса на заявката.").arg(directionId));
    return answerStep(request, submission, *process, directionId);
}

BackendResponse StepEndpoints::section(const BackendRequest& request, const QString& submissionId,
                                       const QString& key) {
    const SubmissionRecord* submission = submissions_.find(submissionId);
    if (!submission)
        return BackendResponse::badRequest(QStringLiteral("Непозната заявка: \"%1\".").arg(submissionId));
    const ProcessDefinition* process = processes_.process(submission->processId);
    const StepDefinition* section = process ? process->section(key) : nullptr;
    if (!section)
        return BackendResponse::badRequest(QStringLiteral("Непозната секция: \"%1\".").arg(key));
    const StepContext context{request.authority, submission->submissionId, submission->userHash,
                              process->processId};
    auto document = StepRenderer::render(*section, context, std::nullopt);
    if (!document)
        return BackendResponse::error(500, QStringLiteral("%1 no longer decodes.").arg(section->filePath));
    // The client reads a list and takes its first entry.
    return BackendResponse::document(std::vector<SubmissionJSON>{std::move(*document)});
}

BackendResponse StepEndpoints::submitStep(const BackendRequest& request) {
    const auto dto = decodeDocument<SubmitStepDTO>(request.body);
    if (!dto)
        return BackendResponse::badRequest(QStringLiteral(
            "Тялото трябва да е SubmitStepDTO: \"submissionId\", \"directionId\" и списък \"fields\"."));
    SubmissionRecord* submission = submissions_.find(dto->submissionId);
    if (!submission)
        return BackendResponse::badRequest(
            QStringLiteral("Непозната заявка: \"%1\".").arg(dto->submissionId));
    const ProcessDefinition* process = processes_.process(submission->processId);
    if (!process)
        return BackendResponse::badRequest(
            QStringLiteral("Процесът \"%1\" вече не се предлага.").arg(submission->processId));
    const QString target = resolveTarget(*process, *submission, dto->directionId, dto->fromDirectionId);
    const StepDefinition* step = process->step(target);
    if (!step)
        return BackendResponse::badRequest(
            QStringLiteral("Непозната стъпка \"%1\" в процес \"%2\".").arg(target, process->processId));

    // Values are kept only once the move is known to be valid, so a refused request leaves no trace.
    for (const FieldValueDTO& field : dto->fields) {
        submission->values.push_back(SubmittedValue{dto->fromDirectionId.value_or(QString()),
                                                    dto->directionId, dto->fromFlowFieldId, field.key,
                                                    field.value});
    }
    // Arriving at a verification step from elsewhere starts a new attempt.
    if (step->document.type == QLatin1String("KYC_ID") && dto->fromDirectionId != target)
        submissions_.setKycStatus(submission->submissionId,
                                  QString::fromLatin1(SubmissionStore::kInitialKycCode));
    return answerStep(request, *submission, *process, target);
}

QString StepEndpoints::resolveTarget(const ProcessDefinition& process, const SubmissionRecord& submission,
                                     const QString& directionId,
                                     const std::optional<QString>& fromDirectionId) {
    // The verification screen submits to its own direction id once the service has decided; the
    // decision is the backend's, so the verification result picks the next step. Without a route
    // for the current word the verification step is answered again.
    if (fromDirectionId != directionId)
        return directionId;
    const auto routes = process.kycRoutes.find(directionId);
    if (routes == process.kycRoutes.end())
        return directionId;
    const auto route = routes->second.find(submission.kycCode);
    return route == routes->second.end() ? directionId : route->second;
}

BackendResponse StepEndpoints::answerStep(const BackendRequest& request, SubmissionRecord& submission,
                                          const ProcessDefinition& process, const QString& directionId) {
    const StepDefinition* step = process.step(directionId);
    if (!step)
        return BackendResponse::badRequest(QStringLiteral("Непозната стъпка \"%1\".").arg(directionId));
    const StepContext context{request.authority, submission.submissionId, submission.userHash,
                              process.processId};
    auto document = StepRenderer::render(*step, context, directionId);
    if (!document)
        return BackendResponse::error(500, QStringLiteral("%1 no longer decodes.").arg(step->filePath));
    submissions_.recordVisit(submission, directionId);
    return BackendResponse::document(*document);
}

} // namespace tessara
