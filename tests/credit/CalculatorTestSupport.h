#pragma once

#include "support/LoopbackHttpServer.h"
#include "tessara/api/TSRDelegate.h"
#include "tessara/api/TSRNavigationBar.h"
#include "tessara/api/TSRNavigationViewController.h"
#include "tessara/backend/TSRNetwork.h"
#include "tessara/credit/TSRCreditCalculatorController.h"
#include "tessara/documents/JsonCoding.h"

#include <QAbstractButton>
#include <QTest>
#include <gtest/gtest.h>

namespace tessara::test {

class RecordingDelegate : public TSRDelegate {
public:
    void closedFormOnStepWithId(const QString& directionId) override { closedSteps.push_back(directionId); }
    std::vector<QString> closedSteps;
};

inline SubmissionJSON calculatorStep(const QByteArray& json) {
    auto document = decodeDocument<SubmissionJSON>(json);
    if (!document)
        ADD_FAILURE() << "test document does not decode: " << json.constData();
    return document.value_or(SubmissionJSON{});
}

// A backend for the calculator: plans echo the amount and period with fixed sums, dates come
// from `datesBody` (or fail with `datesStatus`), a submitted step answers an empty form.
struct CalculatorBackend {
    LoopbackHttpServer server;
    QByteArray planBody = R"({"selectedCreditAmount":1,"selectedPeriod":1,"installmentAmount":237.50,)"
                          R"("totalDueAmount":2750.00,"acruals":[]})";
    QByteArray datesBody = R"({"productId":"5","defaultFirstInstallmentDate":"2030-03-20",)"
                           R"("availableDates":["2030-03-25","2030-03-15"]})";
    int datesStatus = 200;

    CalculatorBackend() {
        server.setHandler([this](const RecordedRequest& request) {
            const QByteArray path = request.path();
            if (path.endsWith("/installmentDetails"))
                return CannedResponse::json(200, planBody);
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
class CalculatorScreen {
public:
    explicit CalculatorScreen(const SubmissionJSON& step, TSRDelegate* delegate = nullptr) {
        auto screen = std::make_unique<TSRCreditCalculatorController>();
        screen->ui = step;
        screen->setFormDelegate(delegate);
        navigation = new TSRNavigationViewController(std::move(screen));
        navigation->resize(390, 844);
        navigation->show();
        QTest::qWait(10);
    }
    ~CalculatorScreen() {
        delete navigation.data();
        QTest::qWait(1);
    }
    TSRCreditCalculatorController* calculator() const {
        return navigation ? qobject_cast<TSRCreditCalculatorController*>(navigation->visibleViewController())
                          : nullptr;
    }
    template <typename T = QWidget> T* find(const QString& objectName) const {
        T* found = calculator() ? calculator()->findChild<T*>(objectName) : nullptr;
        if (!found && navigation)
            found = navigation->navigationBar()->findChild<T*>(objectName);
        return found;
    }
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

    QPointer<TSRNavigationViewController> navigation;
};

} // namespace tessara::test
