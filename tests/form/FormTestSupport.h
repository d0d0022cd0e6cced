#pragma once

#include "support/LoopbackHttpServer.h"
#include "support/ScreenOnPhone.h"
#include "support/TestHelpers.h"
#include "tessara/backend/TSRNetwork.h"
#include "tessara/documents/JsonCoding.h"
#include "tessara/documents/SubmissionJSON.h"
#include "tessara/form/TSRFormController.h"
#include "tessara/ui/Alert.h"

#include <QAbstractButton>
#include <QTest>
#include <gtest/gtest.h>
#include <optional>

namespace tessara::test {

// The answer of POST "/step" that the tests' backend gives: an empty next step.
inline CannedResponse nextStepAnswer(const char* directionId = "next") {
    return CannedResponse::json(200, QByteArray(R"({"type":"FORM","submissionId":"sub-1","directionId":")") +
                                         directionId + R"(","fields":[]})");
}

// A form step on screen, phone-sized, inside a navigation screen, with the shared client
// pointed at a loopback backend.
class FormScreen : public ScreenOnPhone<TSRFormController> {
public:
    explicit FormScreen(const SubmissionJSON& step, std::optional<QString> previousDirectionId = std::nullopt,
                        TSRDelegate* delegate = nullptr) {
        TSRNetwork::shared().setInstanceURL(server.url());
        present(step, delegate, std::move(previousDirectionId));
    }

    TSRFormController* form() const { return screen(); }

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
};

} // namespace tessara::test
