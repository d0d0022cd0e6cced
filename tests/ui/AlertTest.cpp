// How an alert arranges its actions and what pressing them (or Escape) does.

#include "tessara/ui/Alert.h"

#include <QAbstractButton>
#include <QPointer>
#include <QTest>
#include <QWidget>
#include <gtest/gtest.h>

using namespace tessara;

namespace {

struct Arrangement {
    const char* name;
    std::vector<const char*> actions;
    bool sideBySide;
};

const Arrangement kArrangements[] = {
    {"one", {"ok"}, false},
    {"twoSideBySide", {"stay", "close"}, true},
    {"threeStacked", {"a", "b", "c"}, false},
};

std::vector<AlertAction> actionsNamed(const std::vector<const char*>& names) {
    std::vector<AlertAction> actions;
    for (const char* name : names)
        actions.push_back(
            {QString::fromLatin1(name), QString::fromLatin1(name), AlertAction::Style::normal, false, {}});
    return actions;
}

} // namespace

TEST(Alert, ButtonsFillTheCardSideBySideForTwoAndStackedOtherwise) {
    for (const Arrangement& c : kArrangements) {
        SCOPED_TRACE(c.name);
        QWidget screen;
        screen.resize(390, 844);
        screen.show();
        Alert* alert = showAlert(&screen, QStringLiteral("Заглавие"), QStringLiteral("Съобщение"),
                                 actionsNamed(c.actions), Qt::blue);
        ASSERT_TRUE(QTest::qWaitForWindowExposed(alert));
        EXPECT_EQ(alert->objectName(), QStringLiteral("alert"));
        EXPECT_EQ(alert->width(), Alert::kWidth);
        const QList<QAbstractButton*> buttons = alert->buttons();
        ASSERT_EQ(buttons.size(), int(c.actions.size()));
        int covered = 0;
        for (int i = 0; i < buttons.size(); ++i) {
            EXPECT_EQ(buttons[i]->objectName(), QString::fromLatin1(c.actions[i]));
            EXPECT_EQ(buttons[i]->geometry().bottom(), c.sideBySide || i == buttons.size() - 1
                                                           ? alert->height() - 1
                                                           : buttons[i + 1]->geometry().top() - 1);
            if (c.sideBySide) {
                covered += buttons[i]->width();
            } else {
                EXPECT_EQ(buttons[i]->width(), alert->width());
            }
        }
        if (c.sideBySide) {
            EXPECT_EQ(covered, alert->width());
        }
        // The window under the alert is dimmed until it closes.
        auto* dim = screen.findChild<QWidget*>(QStringLiteral("alertDimming"));
        ASSERT_NE(dim, nullptr);
        EXPECT_TRUE(dim->isVisible());
        EXPECT_EQ(dim->geometry(), screen.rect());
        QPointer<Alert> guard(alert);
        QTest::mouseClick(buttons.back(), Qt::LeftButton);
        EXPECT_FALSE(dim->isVisible());
        EXPECT_TRUE(QTest::qWaitFor([&] { return guard.isNull(); }));
        EXPECT_EQ(screen.findChild<QWidget*>(QStringLiteral("alertDimming")), nullptr);
    }
}

TEST(Alert, EscapeRunsTheCancelActionOrTheOnlyOne) {
    const struct {
        const char* name;
        std::vector<AlertAction::Style> styles;
        int pressed; // index of the action Escape runs, -1 for none
    } cases[] = {
        {"cancelAmongOthers", {AlertAction::Style::destructive, AlertAction::Style::cancel}, 1},
        {"singleAction", {AlertAction::Style::normal}, 0},
        {"noCancel", {AlertAction::Style::normal, AlertAction::Style::destructive}, -1},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        QWidget screen;
        screen.show();
        std::vector<int> ran;
        std::vector<AlertAction> actions;
        for (size_t i = 0; i < c.styles.size(); ++i)
            actions.push_back({QStringLiteral("x"), QStringLiteral("a%1").arg(i), c.styles[i], i == 0,
                               [&ran, i] { ran.push_back(int(i)); }});
        QPointer<Alert> alert = showAlert(&screen, QStringLiteral("t"), {}, std::move(actions), Qt::blue);
        EXPECT_EQ(alert->defaultButton(), alert->buttons().front());
        QTest::keyClick(alert, Qt::Key_Escape);
        if (c.pressed < 0) {
            EXPECT_TRUE(ran.empty());
            EXPECT_TRUE(alert->isVisible());
        } else {
            EXPECT_EQ(ran, std::vector<int>{c.pressed});
            EXPECT_TRUE(QTest::qWaitFor([&] { return alert.isNull(); }));
        }
    }
}
