#pragma once

#include <QString>
#include <memory>

namespace tessara {

class TSRViewController;

// The one place that knows which screen shows which kind of step. Screens depend on their
// base class only; this table sits above them all.
class StepRouter {
public:
    StepRouter() = delete;

    // A new, empty screen for a step of `type` (the document's "type", compared exactly):
    // "KYC_ID" and "CREDIT_CALCULATOR" have screens of their own, every other type is a form.
    static std::unique_ptr<TSRViewController> makeScreen(const QString& type);
};

} // namespace tessara
