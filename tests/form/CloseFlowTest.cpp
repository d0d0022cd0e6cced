// Closing a step: at once when nothing would be lost, after a confirmation otherwise.

#include "FormTestSupport.h"
#include "tessara/appearance/CurrentAppearance.h"
#include "tessara/form/controls/TSRCheckbox.h"
#include "tessara/form/controls/TSRConsentToggle.h"
#include "tessara/form/controls/TSRInputField.h"

#include <QPushButton>
#include <functional>

using namespace tessara;
using namespace tessara::test;

namespace {

const char* kStep = R"({"type":"FORM","submissionId":"s","directionId":"personal","fields":[
    {"type":"INPUT","key":"name","label":"Име"},
    {"type":"INPUT","key":"secret","label":"Скрито","hidden":true},
    {"type":"CHECKBOX","key":"news","label":"Новини"},
    {"type":"CONSENT","key":"terms","label":"Приемам","required":true},
    {"type":"DATE","key":"born","label":"Роден","value":"1990-01-01"},
    {"type":"SECTION","key":"extra"}]})";

SubmissionJSON closeStep() {
    SubmissionJSON step = decodeStep(kStep);
    step.fields[5].fields =
        decodeStep(R"({"fields":[{"type":"CHECKBOX","key":"inner","label":"Вътрешно"}]})").fields;
    return step;
}

struct CloseCase {
    const char* name;
    std::function<void(const FormScreen&)> enter;
    bool asks;
};

const CloseCase kCases[] = {
    {"UntouchedForm", nullptr, false},
    {"TopLevelTogglesAndDatesDoNotCount",
     [](const FormScreen& s) {
         s.find<TSRCheckbox>(QStringLiteral("TSRCheckbox.news"))->setSelected(true);
         s.find<TSRConsentToggle>(QStringLiteral("TSRConsentToggle.terms"))->checkbox()->setSelected(true);
     },
     false},
    {"HiddenInputDoesNotCount",
     [](const FormScreen& s) { s.find<TSRInputField>(QStringLiteral("TSRInputField.secret"))->setText("x"); },
     false},
    {"TypedTextCounts",
     [](const FormScreen& s) {
         s.find<TSRInputField>(QStringLiteral("TSRInputField.name"))->setText("Иван");
     },
     true},
    {"CheckboxInsideASectionCounts",
     [](const FormScreen& s) {
         s.find<TSRCheckbox>(QStringLiteral("TSRCheckbox.inner"))->setSelected(false);
     },
     true},
};

class CloseFlow : public ::testing::TestWithParam<CloseCase> {};

QAbstractButton* alertButton(const FormScreen& screen, const char* name) {
    return screen.alert() ? screen.alert()->findChild<QAbstractButton*>(QString::fromLatin1(name)) : nullptr;
}

} // namespace

TEST_P(CloseFlow, AsksOnlyWhenEnteredDataWouldBeLost) {
    RecordingDelegate delegate;
    FormScreen screen(closeStep(), std::nullopt, &delegate);
    if (GetParam().enter)
        GetParam().enter(screen);

    screen.click(QStringLiteral("TSRFormController.closeButton"));
    if (!GetParam().asks) {
        EXPECT_EQ(screen.alert(), nullptr);
        EXPECT_EQ(delegate.closedSteps, std::vector<QString>{QStringLiteral("personal")});
        ASSERT_TRUE(QTest::qWaitFor([&] { return screen.navigation.isNull(); }));
        return;
    }

    Alert* alert = screen.alert();
    ASSERT_NE(alert, nullptr);
    EXPECT_EQ(alert->text(), QStringLiteral("Сигурни ли сте, че искате да затворите формуляра?"));
    EXPECT_EQ(alert->informativeText(),
              QStringLiteral("Ако го затворите преди да го изпратите, попълнените данни ще се загубят."));
    EXPECT_TRUE(delegate.closedSteps.empty());
}

INSTANTIATE_TEST_SUITE_P(Form, CloseFlow, ::testing::ValuesIn(kCases),
                         [](const ::testing::TestParamInfo<CloseCase>& info) { return info.param.name; });

TEST(CloseFlowAlert, StayKeepsTheFormAndCloseReportsTheStep) {
    RecordingDelegate delegate;
    FormScreen screen(closeStep(), std::nullopt, &delegate);
    screen.find<TSRInputField>(QStringLiteral("TSRInputField.name"))->setText(QStringLiteral("Иван"));

    screen.click(QStringLiteral("TSRFormController.closeButton"));
    QAbstractButton* stay = alertButton(screen, "cancelAction");
    ASSERT_NE(stay, nullptr);
    EXPECT_EQ(stay->text(), QStringLiteral("Остани"));
    EXPECT_EQ(static_cast<QAbstractButton*>(screen.alert()->defaultButton()), stay);
    EXPECT_EQ(alertButton(screen, "destroyAction")->text(), QStringLiteral("Затвори"));
    QTest::mouseClick(stay, Qt::LeftButton);
    settle();
    EXPECT_EQ(screen.alert(), nullptr);
    EXPECT_TRUE(delegate.closedSteps.empty());
    ASSERT_NE(screen.form(), nullptr);
    EXPECT_TRUE(screen.form()->isVisible());

    screen.click(QStringLiteral("TSRFormController.closeButton"));
    QAbstractButton* close = alertButton(screen, "destroyAction");
    ASSERT_NE(close, nullptr);
    QTest::mouseClick(close, Qt::LeftButton);
    EXPECT_EQ(delegate.closedSteps, std::vector<QString>{QStringLiteral("personal")});
    ASSERT_TRUE(QTest::qWaitFor([&] { return screen.navigation.isNull(); }));
}

TEST(CloseFlowAlert, ThemeWithoutCloseButtonShowsNone) {
    TSRAppearance& theme = currentAppearance();
    theme.setShowCloseButton(false);
    {
        FormScreen screen(closeStep());
        EXPECT_EQ(screen.find(QStringLiteral("TSRFormController.closeButton")), nullptr);
        EXPECT_EQ(screen.form()->rightBarItem(), nullptr);
    }
    theme.setShowCloseButton(true);
}
