#pragma once

#include "tessara/documents/SubmissionJSON.h"

#include <memory>

namespace tessara {

class TSRViewController;

// The one place that knows which screen shows which kind of step. Screens depend on their
// base class only; this table sits above them all.
class StepRouter {
public:
    StepRouter() = delete;

    // A new screen for `document`, chosen by its "type" (compared exactly): "KYC_ID" and
    // "CREDIT_CALCULATOR" have screens of their own, every other type is a form. The verification
    // screen takes the document as it is made (and may end the program over it); the caller still
    // hands every screen its document and delegate.
    static std::unique_ptr<TSRViewController> makeScreen(const SubmissionJSON& document);
};

} // namespace tessara
