#pragma once

#include "support/LoopbackHttpServer.h"
#include "support/TestHelpers.h"
#include "tessara/api/TSRDelegate.h"
#include "tessara/api/TSRNavigationBar.h"
#include "tessara/api/TSRNavigationViewController.h"
#include "tessara/backend/TSRNetwork.h"
#include "tessara/documents/JsonCoding.h"
#include "tessara/documents/SubmissionJSON.h"
#include "tessara/form/TSRFormController.h"
#include "tessara/ui/Alert.h"

#include <QAbstractButton>
#include <QPointer>
#include <QTest>
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <vector>

namespace tessara::test {

class RecordingDelegate : public TSRDelegate {
public:
    void closedFormOnStepWithId(const QString& directionId) override { closedSteps.push_back(directionId); }
    std::vector<QString> closedSteps;
};

// The answer of POST "/step" that the tests' backend gives: an empty next step.
inline CannedResponse nextStepAnswer(const char* directionId = "next") {
    return CannedResponse::json(200, QByteArray(R"({"type":"FORM","submissionId":"sub-1","directionId":")") +
                                         directionId + R"(","fields":[]})");
}

// A form step on screen, phone-sized, inside a navigation screen, with the shared client
// pointed at a loopback backend.
class FormScreen {
public:
    explicit FormScreen(const SubmissionJSON& step, std::optional<QString> previousDirectionId = std::nullopt,
                        TSRDelegate* delegate = nullptr) {
        TSRNetwork::shared().setInstanceURL(server.url());
        auto screen = std::make_unique<TSRFormController>();
        screen->ui = step;
        screen->previousDirectionId = std::move(previousDirectionId);
        screen->setFormDelegate(delegate);
        navigation = new TSRNavigationViewController(std::move(screen));
        navigation->resize(390, 844);
        navigation->show();
        QTest::qWait(10);
    }
    ~FormScreen() {
        // Alerts and pickers are window-modal children; close them before the screen goes.
        delete navigation.data();
        QTest::qWait(1);
    }

    // The screen on top of the navigation stack (a transition replaces it).
    TSRFormController* form() const {
        return navigation ? qobject_cast<TSRFormController*>(navigation->visibleViewController()) : nullptr;
    }

    // A widget of the current screen, or of the navigation bar that shows its close button.
    template <typename T = QWidget> T* find(const QString& objectName) const {
        T* found = form() ? form()->findChild<T*>(objectName) : nullptr;
        if (!found && navigation)
            found = navigation->navigationBar()->findChild<T*>(objectName);
        return found;
    }

    // Clicks the widget named `objectName` on the current screen.
    void click(const QString& objectName) const {
        QWidget* widget = find(objectName);
        ASSERT_NE(widget, nullptr) << objectName.toStdString();
        ASSERT_TRUE(widget->isVisible()) << objectName.toStdString() << " is not on screen";
        QTest::mouseClick(widget, Qt::LeftButton, {}, widget->rect().center());
    }

    // The alert the screen shows, if any.
    Alert* alert() const { return find<Alert>(QStringLiteral("alert")); }

    LoopbackHttpServer server;
    QPointer<TSRNavigationViewController> navigation;
};

} // namespace tessara::test
