#include "backend/StatusEndpoints.h"

#include "tessara/documents/KYCStatusJSON.h"

#include <nlohmann/json.hpp>

namespace tessara {

namespace {

std::string text(const QString& value) {
    return value.toStdString();
}

} // namespace

StatusEndpoints::StatusEndpoints(const SubmissionStore& submissions)
    : submissions_(submissions) {}

void StatusEndpoints::addRoutes(RouteTable& routes) {
    routes.add("GET", QStringLiteral("/step/v3/status/kyc/{submission}/{hash}"),
               [this](const BackendRequest&, const QStringList& p) { return kycStatus(p[0], p[1]); });
    routes.add("GET", QStringLiteral("/_demo/submissions"),
               [this](const BackendRequest&, const QStringList&) { return submissionList(); });
    routes.add("GET", QStringLiteral("/_demo/submissions/{id}"),
               [this](const BackendRequest&, const QStringList& p) { return submissionRecord(p[0]); });
}

BackendResponse StatusEndpoints::kycStatus(const QString& submissionId, const QString& userHash) const {
    const SubmissionRecord* submission = submissions_.find(submissionId);
    if (!submission)
        return BackendResponse::badRequest(QStringLiteral("Непозната заявка: \"%1\".").arg(submissionId));
    // The hash is what the verification session knows the user by; another one means another user.
    if (submission->userHash != userHash)
        return BackendResponse::badRequest(QStringLiteral("Потребителят не отговаря на заявката."));
    return BackendResponse::document(KYCStatusJSON{submission->kycCode, submission->kycMessage});
}

BackendResponse StatusEndpoints::submissionList() const {
    nlohmann::json list = nlohmann::json::array();
    for (const SubmissionRecord* submission : submissions_.all()) {
        list.push_back({{"submissionId", text(submission->submissionId)},
                        {"processId", text(submission->processId)},
                        {"createdAt", text(submission->createdAt.toString(Qt::ISODateWithMs))}});
    }
    return BackendResponse::fromJson(list);
}

BackendResponse StatusEndpoints::submissionRecord(const QString& submissionId) const {
    const SubmissionRecord* submission = submissions_.find(submissionId);
    if (!submission)
        return BackendResponse::error(404, QStringLiteral("Непозната заявка: \"%1\".").arg(submissionId));
    return BackendResponse::fromJson(describe(*submission));
}

nlohmann::json StatusEndpoints::describe(const SubmissionRecord& submission) {
    nlohmann::json steps = nlohmann::json::array();
    for (const QString& step : submission.visitedSteps)
        steps.push_back(text(step));
    nlohmann::json values = nlohmann::json::array();
    for (const SubmittedValue& value : submission.values) {
        nlohmann::json entry = {{"step", text(value.fromDirectionId)},
                                {"to", text(value.toDirectionId)},
                                {"key", text(value.key)},
                                {"value", text(value.value)}};
        if (value.fromFlowFieldId)
            entry["flowFieldId"] = text(*value.fromFlowFieldId);
        values.push_back(std::move(entry));
    }
    nlohmann::json uploads = nlohmann::json::array();
    for (const StoredUpload& upload : submission.uploads) {
        uploads.push_back({{"key", text(upload.key)},
                           {"step", text(upload.fromDirectionId)},
                           {"fileName", text(upload.fileName)},
                           {"size", upload.size},
                           {"contentType", text(upload.contentType)},
                           {"storedPath", text(upload.storedPath)}});
    }
    nlohmann::json result = {
        {"submissionId", text(submission.submissionId)},
        {"processId", text(submission.processId)},
        {"userHash", text(submission.userHash)},
        {"hasCallingServiceToken", submission.hasCallingServiceToken},
        {"createdAt", text(submission.createdAt.toString(Qt::ISODateWithMs))},
        {"kyc", {{"code", text(submission.kycCode)}, {"message", text(submission.kycMessage)}}},
        {"steps", std::move(steps)},
        {"values", std::move(values)},
        {"uploads", std::move(uploads)}};
    if (const auto& seen = submission.verification) {
        result["verification"] = {
            {"script", text(seen->script)},
            {"attempt", seen->attempt},
            {"status", text(seen->status)},
            {"units", seen->units},
            {"bytes", seen->bytes},
            {"pictures", seen->pictures},
            {"width", seen->width},
            {"height", seen->height},
            {"keyFrames", seen->keyFrames},
            {"profile", seen->profile},
            {"level", seen->level},
            {"firstPictureMs",
             seen->firstPictureMs < 0 ? nlohmann::json() : nlohmann::json(seen->firstPictureMs)},
            {"reconnects", seen->reconnects},
            {"streamPath", text(seen->streamPath)},
        };
    }
    return result;
}

} // namespace tessara
