#pragma once

#include "backend/BackendRequest.h"
#include "backend/BackendResponse.h"
#include "backend/ProcessStore.h"
#include "backend/RouteTable.h"
#include "backend/SubmissionStore.h"
#include "backend/UploadStorage.h"

namespace tessara {

// POST "/step/uploadFile": a multipart body with a "file" part and a "dto" part naming the
// submission, the field and the step. The file must belong to an upload field of that step and
// keep that field's limits, as the client checked them.
class UploadEndpoint {
public:
    UploadEndpoint(const ProcessStore& processes, SubmissionStore& submissions, const UploadStorage& storage);

    void addRoutes(RouteTable& routes);

    BackendResponse upload(const BackendRequest& request);

private:
    const ProcessStore& processes_;
    SubmissionStore& submissions_;
    const UploadStorage& storage_;
};

} // namespace tessara
