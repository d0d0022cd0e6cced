#pragma once

#include "tessara/api/TSRDelegate.h"
#include "tessara/api/TSRNavigationBar.h"
#include "tessara/api/TSRNavigationViewController.h"
#include "tessara/documents/SubmissionJSON.h"

#include <QPointer>
#include <QTest>
#include <memory>
#include <optional>
#include <vector>

namespace tessara::test {

// Records the steps the SDK reports closed.
class RecordingDelegate : public TSRDelegate {
public:
    void closedFormOnStepWithId(const QString& directionId) override { closedSteps.push_back(directionId); }
    std::vector<QString> closedSteps;
};

// A step screen of type `Controller` on a phone-sized navigation screen, gone with this object.
template <typename Controller> class ScreenOnPhone {
public:
    ScreenOnPhone() = default;
    ScreenOnPhone(const ScreenOnPhone&) = delete;
    ScreenOnPhone& operator=(const ScreenOnPhone&) = delete;
    ~ScreenOnPhone() {
        // Alerts and pickers are window-modal children; close them before the screen goes.
        delete navigation.data();
        QTest::qWait(1);
    }

    // The screen on top of the navigation stack (a transition replaces it).
    Controller* screen() const {
        return navigation ? qobject_cast<Controller*>(navigation->visibleViewController()) : nullptr;
    }

    // A widget of the current screen, or of the navigation bar that shows its close button.
    template <typename T = QWidget> T* find(const QString& objectName) const {
        T* found = screen() ? screen()->template findChild<T*>(objectName) : nullptr;
        if (!found && navigation)
            found = navigation->navigationBar()->template findChild<T*>(objectName);
        return found;
    }

    QPointer<TSRNavigationViewController> navigation;

protected:
    void present(const SubmissionJSON& step, TSRDelegate* delegate,
                 std::optional<QString> previousDirectionId = std::nullopt) {
        auto screen = std::make_unique<Controller>();
        screen->ui = step;
        screen->previousDirectionId = std::move(previousDirectionId);
        screen->setFormDelegate(delegate);
        navigation = new TSRNavigationViewController(std::move(screen));
        navigation->resize(390, 844);
        navigation->show();
        QTest::qWait(10);
    }
};

} // namespace tessara::test
