#include "ControlTestSupport.h"
#include "tessara/form/controls/TSRCheckbox.h"
#include "tessara/form/controls/TSRConsentToggle.h"
#include "tessara/form/controls/TSRDropdownButton.h"
#include "tessara/form/controls/TSRRadioButton.h"
#include "tessara/form/controls/TSRRadioButtonView.h"

#include <QAction>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QTest>
#include <QToolButton>
#include <QVBoxLayout>
#include <functional>
#include <gtest/gtest.h>

using namespace tessara;
using namespace tessara::test;
using Kind = ControlValidationError::Kind;

namespace {

FieldJSON choiceField(FieldType type, const QString& key) {
    FieldJSON field = makeField(type, key, QStringLiteral("Семейно положение"));
    field.options = makeOptions({{"Неженен", "single"}, {"Женен", "married"}, {"Вдовец", "widowed"}});
    return field;
}

QAction* actionTitled(QMenu* menu, const QString& title) {
    for (QAction* action : menu->actions()) {
        if (action->text() == title)
            return action;
    }
    return nullptr;
}

} // namespace

TEST(ChoiceControls, DropdownChoiceFromTheMenuSetsLabelValueAndAnnounces) {
    ScreenStub screen;
    auto* dropdown =
        makeControl<TSRDropdownButton>(choiceField(FieldType::dropdown, QStringLiteral("status")), &screen);
    screen.show();
    AnnouncementRecorder announcements(QStringLiteral("status"));

    auto* mainButton = screen.findChild<QPushButton*>(QStringLiteral("TSRDropdownButton.status.mainButton"));
    ASSERT_NE(mainButton, nullptr);
    EXPECT_NE(screen.findChild<QToolButton*>(QStringLiteral("TSRDropdownButton.status.arrowsButton")),
              nullptr);
    EXPECT_TRUE(dropdown->isReadOnly());

    QTest::mouseClick(mainButton, Qt::LeftButton);
    QMenu* menu = dropdown->menu();
    ASSERT_TRUE(menu->isVisible());
    ASSERT_EQ(menu->actions().size(), 3);
    EXPECT_EQ(menu->actions()[0]->text(), QStringLiteral("Неженен"));
    EXPECT_EQ(menu->actions()[2]->text(), QStringLiteral("Вдовец"));
    actionTitled(menu, QStringLiteral("Женен"))->trigger();
    menu->close();

    EXPECT_EQ(dropdown->text(), QStringLiteral("Женен"));
    EXPECT_EQ(dropdown->value, QStringLiteral("married"));
    EXPECT_TRUE(actionTitled(menu, QStringLiteral("Женен"))->isChecked());
    EXPECT_EQ(announcements.values, QStringList{QStringLiteral("married")});

    // The group is exclusive: a second choice replaces the first.
    actionTitled(menu, QStringLiteral("Вдовец"))->trigger();
    EXPECT_FALSE(actionTitled(menu, QStringLiteral("Женен"))->isChecked());
    EXPECT_EQ(dropdown->value, QStringLiteral("widowed"));
    EXPECT_EQ(announcements.values, (QStringList{QStringLiteral("married"), QStringLiteral("widowed")}));
}

TEST(ChoiceControlsDeathTest, DropdownValueWithoutOptionsEndsTheProcess) {
    EXPECT_DEATH(
        {
            auto dropdown =
                makeControl<TSRDropdownButton>(makeField(FieldType::dropdown, QStringLiteral("bare")));
            dropdown->value = QStringLiteral("x");
            (void)dropdown->validate(false);
        },
        "TSRDropdownButton.bare");
}

TEST(ChoiceControls, CheckboxStoresAndAnnouncesEverySetting) {
    ScreenStub screen;
    FieldJSON field =
        makeField(FieldType::checkbox, QStringLiteral("newsletter"), QStringLiteral("Искам бюлетин"));
    field.isRequired = true;
    auto* checkbox = makeControl<TSRCheckbox>(field, &screen);
    screen.show();
    AnnouncementRecorder announcements(QStringLiteral("newsletter"));

    // Never touched: no value, and a required box fails even with empty allowed.
    EXPECT_FALSE(checkbox->hasValue());
    ASSERT_TRUE(checkbox->validate(true).has_value());
    EXPECT_EQ(checkbox->validate(false)->kind, Kind::fieldValueInvalid);

    QTest::mouseClick(checkbox, Qt::LeftButton);
    EXPECT_TRUE(checkbox->isSelected());
    EXPECT_EQ(checkbox->value, QStringLiteral("true"));
    QTest::mouseClick(checkbox, Qt::LeftButton);
    EXPECT_EQ(checkbox->value, QStringLiteral("false"));
    // Ticked, then unticked: the user made a choice, so it passes holding "false".
    EXPECT_FALSE(checkbox->validate(false).has_value());

    checkbox->setSelected(true); // from code, announced alike
    checkbox->setSelected(true); // and again, even unchanged
    EXPECT_EQ(announcements.values, (QStringList{QStringLiteral("true"), QStringLiteral("false"),
                                                 QStringLiteral("true"), QStringLiteral("true")}));
    EXPECT_EQ(checkbox->objectName(), QStringLiteral("TSRCheckbox.newsletter"));

    // Qt's own ways of setting the state count as well, once per change.
    const struct {
        const char* way;
        std::function<void()> set;
        QString expected;
    } ways[] = {
        {"setChecked", [&] { checkbox->setChecked(false); }, QStringLiteral("false")},
        {"toggle", [&] { checkbox->toggle(); }, QStringLiteral("true")},
        {"click", [&] { checkbox->click(); }, QStringLiteral("false")},
        {"animateClick",
         [&] {
             checkbox->animateClick();
             ASSERT_TRUE(QTest::qWaitFor([&] { return !announcements.values.isEmpty(); }));
             QTest::qWait(50); // time for a second, wrong announcement
         },
         QStringLiteral("true")},
    };
    for (const auto& w : ways) {
        SCOPED_TRACE(w.way);
        announcements.values.clear();
        w.set();
        EXPECT_EQ(announcements.values, QStringList{w.expected});
        EXPECT_EQ(checkbox->value, w.expected);
    }
}

TEST(ChoiceControls, ConsentPassesOnlyWhileTicked) {
    ScreenStub screen;
    FieldJSON field = makeField(FieldType::consent, QStringLiteral("gdpr"), QStringLiteral("Съгласен съм с"));
    field.directionLabel = QStringLiteral("условията");
    field.directionId = QStringLiteral("consent-terms");
    auto* consent = makeControl<TSRConsentToggle>(field, &screen);
    screen.resize(390, 200);
    screen.show();
    auto* box = screen.findChild<TSRCheckbox*>(QStringLiteral("TSRCheckbox.gdpr"));
    ASSERT_NE(box, nullptr);

    EXPECT_FALSE(consent->hasValue());
    EXPECT_EQ(consent->validate(true)->kind, Kind::fieldValueInvalid);
    QTest::mouseClick(box, Qt::LeftButton);
    EXPECT_EQ(consent->value, QStringLiteral("true"));
    EXPECT_TRUE(consent->hasValue());
    EXPECT_FALSE(consent->validate(false).has_value());
    QTest::mouseClick(box, Qt::LeftButton);
    EXPECT_EQ(consent->value, QStringLiteral("false"));
    EXPECT_TRUE(consent->hasValue());
    EXPECT_EQ(consent->validate(false)->kind, Kind::fieldValueInvalid);
    box->setChecked(true); // set in code, the consent follows just the same
    EXPECT_EQ(consent->value, QStringLiteral("true"));
    box->setChecked(false);

    // Only a string under "value" is copied.
    consent->handleNotification({{QStringLiteral("value"), 1}});
    consent->handleNotification({});
    EXPECT_EQ(consent->value, QStringLiteral("false"));
}

TEST(ChoiceControls, ConsentLinkAsksTheScreenForTheConsentDocument) {
    ScreenStub screen;
    FieldJSON field = makeField(FieldType::consent, QStringLiteral("gdpr"), QStringLiteral("Съгласен съм с"));
    field.directionId = QStringLiteral("consent-terms");
    makeControl<TSRConsentToggle>(field, &screen);
    screen.show();
    auto* link = screen.findChild<QPushButton*>(QStringLiteral("TSRConsentToggle.gdpr.linkButton"));
    ASSERT_NE(link, nullptr);
    EXPECT_EQ(link->text(), QStringLiteral("MISSING_BUTTON_TITLE"));
    QTest::mouseClick(link, Qt::LeftButton);
    ASSERT_EQ(screen.links.size(), 1u);
    EXPECT_EQ(screen.links[0].first, QStringLiteral("consent-terms"));
    EXPECT_EQ(screen.links[0].second, QStringLiteral("gdpr"));

    // Without a screen in the parent chain, nothing happens.
    auto lonely = makeControl<TSRConsentToggle>(field);
    lonely->resize(390, 60);
    lonely->show();
    QTest::mouseClick(lonely->linkButton(), Qt::LeftButton);
    EXPECT_EQ(screen.links.size(), 1u);
}

TEST(ChoiceControls, ConsentShowsItsWholeTitleAndLinkInAFormColumn) {
    const struct {
        const char* name;
        const char* label;
        const char* link;
        bool linkBelow;
    } cases[] = {
        {"short", "Приемам", "общите условия", false},
        {"longTitleWraps", "Запознах се с Общите условия и Тарифата на банката и ги приемам", "Прочетете ги",
         false},
        {"longLinkGoesBelow", "Запознах се с Общите условия", "Прочетете Общите условия", true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        ScreenStub screen;
        auto* column = new QVBoxLayout(&screen);
        column->setContentsMargins(16, 0, 16, 0);
        FieldJSON field = makeField(FieldType::consent, QStringLiteral("terms"), QString::fromUtf8(c.label));
        field.directionLabel = QString::fromUtf8(c.link);
        auto* consent = makeControl<TSRConsentToggle>(field, &screen);
        column->addWidget(consent);
        column->addStretch(1);
        screen.resize(390, 600);
        screen.show();
        QTest::qWait(1);

        TSRCheckbox* box = consent->checkbox();
        QPushButton* link = consent->linkButton();
        EXPECT_EQ(consent->height(), consent->heightForWidth(consent->width()));
        EXPECT_GE(box->height(), box->heightForWidth(box->width())) << "the title is cut";
        EXPECT_TRUE(consent->rect().contains(box->geometry()));
        EXPECT_TRUE(consent->rect().contains(link->geometry()));
        EXPECT_EQ(link->width(), link->sizeHint().width()) << "the link is cut";
        if (c.linkBelow) {
            EXPECT_GE(link->y(), box->firstBaseline());
            EXPECT_EQ(link->x(), TSRCheckbox::titleIndent());
        } else {
            EXPECT_GE(link->x(), box->geometry().right());
            EXPECT_LT(link->y(), box->firstBaseline());
        }
    }
}

TEST(ChoiceControls, RadioRowsFollowTheOptionsAndStoreTheChosenValue) {
    ScreenStub screen;
    auto* radio = makeControl<TSRRadioButtonView>(
        choiceField(FieldType::radioButtons, QStringLiteral("family")), &screen);
    screen.resize(390, 400);
    screen.show();
    AnnouncementRecorder announcements(QStringLiteral("family"));

    ASSERT_EQ(radio->radioButtons().size(), 3u);
    EXPECT_EQ(radio->radioButtons()[1]->text(), QStringLiteral("Женен"));
    EXPECT_EQ(radio->headerLabel()->text(), QStringLiteral("Семейно положение"));
    auto* married = screen.findChild<TSRRadioButton*>(QStringLiteral("TSRRadioButton.family.married"));
    auto* single = screen.findChild<TSRRadioButton*>(QStringLiteral("TSRRadioButton.family.single"));
    ASSERT_NE(married, nullptr);
    ASSERT_NE(single, nullptr);

    QTest::mouseClick(married, Qt::LeftButton);
    QTest::mouseClick(single, Qt::LeftButton);
    EXPECT_EQ(radio->value, QStringLiteral("single"));
    EXPECT_TRUE(single->isChecked());
    EXPECT_FALSE(married->isChecked());
    EXPECT_EQ(announcements.values, (QStringList{QStringLiteral("married"), QStringLiteral("single")}));
    // Every row is shown whole: the view is as tall as its rows need.
    EXPECT_GE(radio->sizeHint().height(), 3 * married->sizeHint().height());
}

// A dropdown reads an empty text as nothing chosen; a radio group only an absent value.
TEST(ChoiceControls, ChoiceValidation) {
    enum Control { dropdown, radio };
    struct Case {
        const char* name;
        Control control;
        std::optional<QString> value;
        bool allowEmpty;
        std::optional<Kind> expected;
    };
    const Case cases[] = {
        {"dropdown: nothing chosen", dropdown, std::nullopt, false, Kind::fieldValueIsEmpty},
        {"dropdown: nothing chosen, empty allowed", dropdown, std::nullopt, true, std::nullopt},
        {"dropdown: empty text", dropdown, QString(), false, Kind::fieldValueIsEmpty},
        {"dropdown: an option", dropdown, QStringLiteral("married"), false, std::nullopt},
        {"dropdown: not trimmed", dropdown, QStringLiteral(" married"), false, Kind::fieldValueInvalid},
        {"dropdown: the label is not the value", dropdown, QStringLiteral("Женен"), false,
         Kind::fieldValueInvalid},
        {"dropdown: unknown, empty allowed", dropdown, QStringLiteral("divorced"), true,
         Kind::fieldValueInvalid},
        {"radio: nothing chosen", radio, std::nullopt, false, Kind::fieldValueIsEmpty},
        {"radio: nothing chosen, empty allowed", radio, std::nullopt, true, std::nullopt},
        {"radio: an option", radio, QStringLiteral("married"), false, std::nullopt},
        {"radio: unknown", radio, QStringLiteral("divorced"), false, Kind::fieldValueInvalid},
        {"radio: present though empty", radio, QString(), true, Kind::fieldValueInvalid},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        std::optional<ControlValidationError> error;
        if (c.control == dropdown) {
            FieldJSON field = choiceField(FieldType::nomenclature, QStringLiteral("status"));
            field.validation = QStringLiteral("^never$"); // plays no part for a choice
            auto control = makeControl<TSRDropdownButton>(field);
            control->value = c.value;
            error = control->validate(c.allowEmpty);
        } else {
            auto control = makeControl<TSRRadioButtonView>(
                choiceField(FieldType::radioButtons, QStringLiteral("family")));
            control->value = c.value;
            error = control->validate(c.allowEmpty);
        }
        ASSERT_EQ(error.has_value(), c.expected.has_value());
        if (error) {
            EXPECT_EQ(error->kind, *c.expected);
        }
    }
}
