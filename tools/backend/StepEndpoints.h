#pragma once

#include "backend/BackendRequest.h"
#include "backend/BackendResponse.h"
#include "backend/ProcessStore.h"
#include "backend/RouteTable.h"
#include "backend/SubmissionStore.h"

namespace tessara {

// The calls that start and move a process: POST "/submission", GET "/step/direction/{id}/current",
// GET "/step/{submission}/{key}" and POST "/step".
class StepEndpoints {
public:
    StepEndpoints(const ProcessStore& processes, SubmissionStore& submissions);

    void addRoutes(RouteTable& routes);

    BackendResponse createSubmission(const BackendRequest& request);
    BackendResponse currentStep(const BackendRequest& request, const QString& directionId);
    BackendResponse section(const BackendRequest& request, const QString& submissionId, const QString& key);
    BackendResponse submitStep(const BackendRequest& request);

private:
    // The step `directionId` rendered for `submission`, noted as visited.
    BackendResponse answerStep(const BackendRequest& request, SubmissionRecord& submission,
                               const ProcessDefinition& process, const QString& directionId);
    // Where asking for `directionId` from `fromDirectionId` leads: leaving a verification step
    // follows the submission's verification result through the process's kycRoutes.
    static QString resolveTarget(const ProcessDefinition& process, const SubmissionRecord& submission,
                                 const QString& directionId, const std::optional<QString>& fromDirectionId);

    const ProcessStore& processes_;
    SubmissionStore& submissions_;
};

} // namespace tessara
