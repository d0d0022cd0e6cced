#pragma once

#include "tessara/backend/TSRError.h"
#include "tessara/documents/SubmitStepDTO.h"

#include <functional>
#include <optional>

namespace tessara {

class TSRViewController;

// The road of a step once a screen knows what it sends: POST "/step", the answer completed
// as every step is (sections, credit data), then the next screen in place of this one.
// Shared by every step screen; each keeps its own way of showing that it is busy.
class StepSubmission {
public:
    StepSubmission() = delete;

    // Called once the answer has been handled, on the main thread, and only while the screen
    // still exists: with no error after the next screen took its place, with the error when
    // the step failed (the screen then takes input again and the error is the screen's to
    // drop or print).
    using Finished = std::function<void(const std::optional<TSRError>& failure)>;

    // Sends `dto` for `screen`.
    static void send(TSRViewController& screen, const SubmitStepDTO& dto, Finished finished);
};

} // namespace tessara
