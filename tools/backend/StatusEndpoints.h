#pragma once

#include "backend/BackendRequest.h"
#include "backend/BackendResponse.h"
#include "backend/RouteTable.h"
#include "backend/SubmissionStore.h"

#include <nlohmann/json_fwd.hpp>

namespace tessara {

// What can be read about a submission: its verification status, GET
// "/step/v3/status/kyc/{submission}/{hash}", and for demos and tests everything it has received,
// GET "/_demo/submissions" and "/_demo/submissions/{id}".
class StatusEndpoints {
public:
    explicit StatusEndpoints(const SubmissionStore& submissions);

    void addRoutes(RouteTable& routes);

    BackendResponse kycStatus(const QString& submissionId, const QString& userHash) const;
    BackendResponse submissionList() const;
    BackendResponse submissionRecord(const QString& submissionId) const;

    // The read-only record of /_demo/submissions/{id}.
    static nlohmann::json describe(const SubmissionRecord& submission);

private:
    const SubmissionStore& submissions_;
};

} // namespace tessara
