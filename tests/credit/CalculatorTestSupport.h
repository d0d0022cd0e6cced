#pragma once

#include "support/LoopbackHttpServer.h"
#include "support/ScreenOnPhone.h"
#include "support/TestHelpers.h"
#include "tessara/backend/TSRNetwork.h"
#include "tessara/credit/TSRCreditCalculatorController.h"

#include <QTest>
#include <gtest/gtest.h>

namespace tessara::test {

// A backend for the calculator: plans echo the amount and period with fixed sums, dates come
// from `datesBody` (or fail with `datesStatus`), a submitted step answers an empty form.
struct CalculatorBackend {
    LoopbackHttpServer server;
    QByteArray planBody = R"({"selectedCreditAmount":1,"selectedPeriod":1,"installmentAmount":237.50,)"
                          R"("totalDueAmount":2750.00,"acruals":[]})";
    QByteArray datesBody = R"({"productId":"5","defaultFirstInstallmentDate":"2030-03-20",)"
                           R"("availableDates":["2030-03-25","2030-03-15"]})";
    int datesStatus = 200;
    int planDelayMs = 0;

    CalculatorBackend() {
        server.setHandler([this](const RecordedRequest& request) {
            const QByteArray path = request.path();
            if (path.endsWith("/installmentDetails"))
                return CannedResponse::json(200, planBody).afterMs(planDelayMs);
            if (path.endsWith("/installmentDates"))
                return datesStatus == 200 ? CannedResponse::json(200, datesBody)
                                          : CannedResponse::noBody(datesStatus);
            if (path.endsWith("/step"))
                return CannedResponse::json(
                    200, R"({"type":"FORM","submissionId":"sub-1","directionId":"next","fields":[]})");
            return CannedResponse::noBody(404);
        });
        TSRNetwork::shared().setInstanceURL(server.url());
    }

    int count(const QByteArray& pathEnd) const {
        int n = 0;
        for (const RecordedRequest& r : server.requests())
            n += r.path().endsWith(pathEnd) ? 1 : 0;
        return n;
    }
    const RecordedRequest* last(const QByteArray& pathEnd) const {
        for (auto it = server.requests().rbegin(); it != server.requests().rend(); ++it) {
            if (it->path().endsWith(pathEnd))
                return &*it;
        }
        return nullptr;
    }
    // Waits until no request arrived for a moment.
    void quiet(int ms = 150) {
        int seen = -1;
        while (seen != server.requestCount()) {
            seen = server.requestCount();
            QTest::qWait(ms);
        }
    }
};

// A calculator on screen, phone-sized, inside a navigation screen.
class CalculatorScreen : public ScreenOnPhone<TSRCreditCalculatorController> {
public:
    explicit CalculatorScreen(const SubmissionJSON& step, TSRDelegate* delegate = nullptr) {
        present(step, delegate);
    }
    TSRCreditCalculatorController* calculator() const { return screen(); }
    // Drags `slider` to `value` as a finger does: changes while moving, one release at the end.
    static void drag(FloatSlider* slider, float value) {
        const int target =
            int(std::lround((value - slider->minimumValue()) /
                            (slider->maximumValue() - slider->minimumValue()) * slider->maximum()));
        slider->setSliderDown(true);
        slider->setSliderPosition((slider->sliderPosition() + target) / 2);
        slider->setSliderPosition(target);
        slider->setSliderDown(false);
    }
};

} // namespace tessara::test
