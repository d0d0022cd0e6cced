// Which flow button the autopilot presses on a form.

#include "host/FormScreenStrategy.h"

#include "tessara/documents/JsonCoding.h"
#include "tessara/documents/SubmissionJSON.h"
#include "tessara/form/TSRFormController.h"

#include <gtest/gtest.h>

namespace {

// Back first, then a popup, a hidden button and the real way on, as forms tend to order them.
const char* kStep = R"({"type": "FORM", "directionId": "contact", "submissionId": "s1", "fields": [
    {"type": "FLOW", "key": "back", "label": "Назад", "directionId": "personal"},
    {"type": "FLOW", "key": "why", "label": "Защо?", "specialType": "POPUP"},
    {"type": "FLOW", "key": "secret", "label": "Скрит", "directionId": "elsewhere", "hidden": true},
    {"type": "FLOW", "key": "next", "label": "Напред", "directionId": "documents"}]})";

struct Case {
    const char* name;
    std::optional<QString> previousDirectionId;
    QStringList shownSteps;
    const char* pressed; // key of the button
};

TEST(FormScreenStrategy, PressesTheButtonThatLeadsOn) {
    const Case cases[] = {
        {"reopened step: the last button", std::nullopt, {"contact"}, "next"},
        {"came from the previous step", QStringLiteral("personal"), {"personal", "contact"}, "next"},
        {"came back from the next step: only back is left",
         QStringLiteral("documents"),
         {"personal", "contact", "documents", "contact"},
         "back"},
        {"next step seen already, the other one not", std::nullopt, {"documents", "contact"}, "back"},
    };
    const auto document = tessara::decodeDocument<tessara::SubmissionJSON>(QByteArray(kStep));
    ASSERT_TRUE(document);
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        tessara::TSRFormController form;
        form.ui = *document;
        form.previousDirectionId = c.previousDirectionId;
        form.loadViewIfNeeded();
        QAbstractButton* button =
            tessara::demo::FormScreenStrategy::forwardButton(tessara::demo::StepScreen(&form), c.shownSteps);
        ASSERT_NE(button, nullptr);
        EXPECT_EQ(button->objectName(), QStringLiteral("TSRFlowButton.") + QString::fromUtf8(c.pressed));
    }
}

TEST(FormScreenStrategy, NoButtonWhenEveryWayLeadsBack) {
    // The form follows nothing for a button without a direction, so it is no way on either.
    const auto document = tessara::decodeDocument<tessara::SubmissionJSON>(QByteArray(R"({"type": "FORM",
        "directionId": "b", "fields": [{"type": "FLOW", "key": "back", "label": "Назад", "directionId": "a"},
                                       {"type": "FLOW", "key": "stay", "label": "Остани"}]})"));
    ASSERT_TRUE(document);
    tessara::TSRFormController form;
    form.ui = *document;
    form.previousDirectionId = QStringLiteral("a");
    form.loadViewIfNeeded();
    EXPECT_EQ(tessara::demo::FormScreenStrategy::forwardButton(tessara::demo::StepScreen(&form), {}),
              nullptr);
}

} // namespace
