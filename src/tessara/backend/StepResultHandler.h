#pragma once

#include "tessara/backend/TSRResult.h"
#include "tessara/backend/TSRTransferOutcome.h"
#include "tessara/documents/JsonCoding.h"

#include <QByteArray>
#include <optional>
#include <variant>

namespace tessara {

// Maps a finished transfer to the result of a typed call:
//
// | outcome                         | result                                            |
// |---------------------------------|---------------------------------------------------|
// | no HTTP response                | the transport error                               |
// | 400 with a body                 | the TSRBackendError it holds, or decodingFailure  |
// | 400 without a body              | nothing: the completion is never called           |
// | 404                             | notFound with the request URL                     |
// | any other status with a body    | the decoded document, or decodingFailure          |
// | any other status without a body | requestFailed                                     |
//
// A 500 whose body decodes is therefore a success: the status does not veto a document.
class StepResultHandler {
public:
    // The completion is not called at all.
    struct Silence {};
    // What to do with an outcome: stay silent, fail, or decode these bytes as the document.
    using Decision = std::variant<Silence, TSRError, QByteArray>;

    static Decision decide(const TSRTransferOutcome& outcome);

    // std::nullopt means the completion must not be called.
    template <typename T> static std::optional<TSRResult<T>> handle(const TSRTransferOutcome& outcome) {
        Decision decision = decide(outcome);
        if (std::holds_alternative<Silence>(decision))
            return std::nullopt;
        if (auto* error = std::get_if<TSRError>(&decision))
            return TSRResult<T>(std::move(*error));
        if (auto document = decodeDocument<T>(std::get<QByteArray>(decision)))
            return TSRResult<T>(std::move(*document));
        return TSRResult<T>(TSRNetworkError::decodingFailure());
    }
};

} // namespace tessara
