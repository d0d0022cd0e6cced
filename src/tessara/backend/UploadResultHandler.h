#pragma once

#include "tessara/backend/TSRResult.h"
#include "tessara/backend/TSRTransferOutcome.h"

namespace tessara {

// Maps a finished upload to its result. Unlike typed calls, the status decides and the
// body of a success is never read:
//
// | outcome                        | result                                           |
// |--------------------------------|--------------------------------------------------|
// | no HTTP response               | the transport error                              |
// | 400 with a body                | the TSRBackendError it holds, or decodingFailure |
// | 400 without a body             | httpCode(400)                                    |
// | 404                            | notFound with the request URL                    |
// | any other status 400-599       | httpCode(status)                                 |
// | any status outside 400-599     | success                                          |
class UploadResultHandler {
public:
    static TSRResult<void> handle(const TSRTransferOutcome& outcome);
};

} // namespace tessara
