#include "ControlTestSupport.h"
#include "tessara/form/controls/TSRA1Button.h"
#include "tessara/form/controls/TSRA1ImageView.h"
#include "tessara/form/controls/TSRCheckbox.h"
#include "tessara/form/controls/TSRFlowButton.h"
#include "tessara/form/controls/TSRInputField.h"
#include "tessara/form/controls/TSRLabel.h"
#include "tessara/form/controls/TSRLinkButton.h"
#include "tessara/ui/ButtonAppearance.h"

#include <QLabel>
#include <QTest>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>

using namespace tessara;
using namespace tessara::test;

TEST(ActionControls, LinkValueBecomesAUrl) {
    struct Case {
        std::optional<QString> value;
        std::optional<QString> expected; // absent: nothing opens
    };
    const Case cases[] = {
        {QStringLiteral("https://example.com/terms?a=1"), QStringLiteral("https://example.com/terms?a=1")},
        {QStringLiteral("http://example.com"), QStringLiteral("http://example.com")},
        {QStringLiteral("www.example.com/terms"), QStringLiteral("https://www.example.com/terms")},
        {QStringLiteral("//cdn.example.com/a.pdf"), QStringLiteral("https://cdn.example.com/a.pdf")},
        {QStringLiteral("mailto:help@example.com"), QStringLiteral("mailto:help@example.com")},
        {QStringLiteral("tel:+359888123456"), QStringLiteral("tel:+359888123456")},
        {QStringLiteral("http://exa mple.com"), std::nullopt},
        {QString(), std::nullopt},
        {std::nullopt, std::nullopt},
    };
    for (const Case& c : cases) {
        ScreenStub screen;
        FieldJSON field = makeField(FieldType::link, QStringLiteral("terms"), QStringLiteral("Общи условия"));
        field.value = c.value;
        auto* link = makeControl<TSRLinkButton>(field, &screen);
        screen.show();
        QTest::mouseClick(link, Qt::LeftButton);
        const std::string name = c.value.value_or(QStringLiteral("<absent>")).toStdString();
        if (!c.expected) {
            EXPECT_TRUE(screen.openedUrls.empty()) << name;
            continue;
        }
        ASSERT_EQ(screen.openedUrls.size(), 1u) << name;
        EXPECT_EQ(screen.openedUrls[0].toString(), *c.expected) << name;
    }
}

TEST(ActionControls, FlowButtonFollowsItsDirectionAndPopupButtonNeverDoes) {
    ScreenStub screen;
    FieldJSON flow = makeField(FieldType::flowButton, QStringLiteral("next"), QStringLiteral("Напред"));
    flow.directionId = QStringLiteral("dir-2");
    auto* next = makeControl<TSRFlowButton>(flow, &screen);
    FieldJSON popup = flow;
    popup.key = QStringLiteral("more");
    popup.specialType = QStringLiteral("POPUP");
    auto* more = makeControl<TSRFlowButton>(popup, &screen);
    screen.show();

    QTest::mouseClick(more, Qt::LeftButton);
    EXPECT_TRUE(screen.flows.empty());
    ASSERT_EQ(screen.popups.size(), 1u);
    EXPECT_EQ(screen.popups[0], popup);
    EXPECT_TRUE(more->opensPopup());

    QTest::mouseClick(next, Qt::LeftButton);
    ASSERT_EQ(screen.flows.size(), 1u);
    EXPECT_EQ(screen.flows[0].button, next);
    EXPECT_EQ(screen.flows[0].directionId, QStringLiteral("dir-2"));
    EXPECT_EQ(screen.flows[0].fromFlowFieldId, QStringLiteral("next"));
    EXPECT_EQ(screen.popups.size(), 1u);

    // The spinner takes the title's place; asked for twice, it still gives the title back.
    next->setShowsActivityIndicator(true);
    next->setShowsActivityIndicator(true);
    EXPECT_TRUE(next->text().isEmpty());
    next->setShowsActivityIndicator(false);
    EXPECT_EQ(next->text(), QStringLiteral("Напред"));
}

TEST(ActionControls, ButtonsWithoutTitleSayMissingButtonTitle) {
    const QString missing = QStringLiteral("MISSING_BUTTON_TITLE");
    auto flow = makeControl<TSRFlowButton>(makeField(FieldType::flowButton, QStringLiteral("a")));
    auto link = makeControl<TSRLinkButton>(makeField(FieldType::link, QStringLiteral("b")));
    auto checkbox = makeControl<TSRCheckbox>(makeField(FieldType::checkbox, QStringLiteral("c")));
    TSRA1Button closing(std::nullopt);
    TSRA1Button thanks(QStringLiteral("Благодарим Ви"));
    EXPECT_EQ(flow->text(), missing);
    EXPECT_EQ(link->text(), missing);
    EXPECT_EQ(checkbox->text(), missing);
    EXPECT_EQ(closing.text(), missing);
    EXPECT_EQ(thanks.text(), QStringLiteral("Благодарим Ви"));
    EXPECT_EQ(thanks.objectName(), QStringLiteral("TSRA1Button"));
}

TEST(ActionControlsDeathTest, ControlOfAFieldWithoutKeyEndsTheProcess) {
    FieldJSON keyless;
    keyless.type = FieldType::inputField;
    EXPECT_DEATH(makeControl<TSRInputField>(keyless), "has no key");
    keyless.type = FieldType::text;
    EXPECT_DEATH(makeControl<TSRLabel>(keyless), "has no key");
}

TEST(ActionControls, ValidationAlertTexts) {
    using Kind = ControlValidationError::Kind;
    FieldJSON full = makeField(FieldType::uploadFile, QStringLiteral("f"), QStringLiteral("Документ"));
    full.validationError = QStringLiteral("Попълнете полето");
    full.fileExtensionError = QStringLiteral("Грешен тип");
    full.fileSizeError = QStringLiteral("Твърде голям");
    const FieldJSON bare = makeField(FieldType::uploadFile, QStringLiteral("f"));
    const QString fallback = QStringLiteral("Някой не е въвел правилно съобщение за грешка 👀");
    struct Case {
        Kind kind;
        QString withTexts;
    };
    const Case cases[] = {
        {Kind::fieldValueIsEmpty, QStringLiteral("Попълнете полето")},
        {Kind::fieldValueInvalid, QStringLiteral("Попълнете полето")},
        {Kind::fileWithUnsupportedExtension, QStringLiteral("Грешен тип")},
        {Kind::fileTooBig, QStringLiteral("Твърде голям")},
    };
    TSRLabel withTexts;
    withTexts.field = full;
    TSRLabel withoutTexts;
    withoutTexts.field = bare;
    for (const Case& c : cases) {
        const ControlValidationError texts{c.kind, &withTexts};
        const ControlValidationError none{c.kind, &withoutTexts};
        EXPECT_EQ(texts.alertMessage(), c.withTexts);
        EXPECT_EQ(texts.alertTitle(), QStringLiteral("Документ"));
        EXPECT_EQ(none.alertMessage(), fallback);
        EXPECT_EQ(none.alertTitle(), QString());
    }
}

TEST(ActionControls, LabelCentresOnlyPositionedText) {
    const std::pair<std::optional<QString>, Qt::Alignment> cases[] = {
        {std::nullopt, Qt::AlignLeading},
        {QStringLiteral("bold"), Qt::AlignLeading},
        {QStringLiteral("a1 position-middle"), Qt::AlignHCenter},
        {QStringLiteral("Position-Top"), Qt::AlignHCenter},
    };
    for (const auto& [style, horizontal] : cases) {
        FieldJSON field = makeField(FieldType::text, QStringLiteral("t"), QStringLiteral("Добре дошли"));
        field.styleClass = style;
        auto label = makeControl<TSRLabel>(field);
        EXPECT_EQ(label->alignment() & Qt::AlignHorizontal_Mask, horizontal);
        EXPECT_TRUE(label->wordWrap());
        EXPECT_EQ(label->text(), QStringLiteral("Добре дошли"));
    }
}

TEST(ActionControls, ButtonCornerRadiusFromSizeStyleAndTheme) {
    using Style = TSRAppearance::ButtonCornerStyle;
    using Size = TSRAppearance::ButtonSize;
    const double unset = std::numeric_limits<double>::quiet_NaN();
    struct Case {
        Style style;
        double radius;
        Size size;
        double height;
        double expected;
    };
    const Case cases[] = {
        {Style::capsule, unset, Size::medium, 50, 25},
        {Style::capsule, 4, Size::medium, 50, 4},    // a theme radius wins over the style
        {Style::dynamic, 100, Size::medium, 46, 23}, // never more than half the height
        {Style::small, unset, Size::large, 52, 6},
        {Style::large, unset, Size::mini, 20, 10},
        {Style::dynamic, unset, Size::mini, 28, 6},
        {Style::fixed, unset, Size::medium, 46, 12},
        {Style::fixed, 0, Size::medium, 46, 0},
    };
    for (const Case& c : cases)
        EXPECT_DOUBLE_EQ(ButtonAppearance::cornerRadiusFor(c.style, c.radius, c.size, c.height), c.expected);
}

TEST(ActionControls, ButtonMinimumHeightAppliesOnlyWhenSet) {
    ThemeGuard guard;
    auto first = makeControl<TSRFlowButton>(
        makeField(FieldType::flowButton, QStringLiteral("a"), QStringLiteral("A")));
    EXPECT_EQ(first->minimumHeight(), ButtonAppearance::heightFor(TSRAppearance::ButtonSize::medium));
    guard.theme().setButtonMinimumHeight(64.5);
    auto second = makeControl<TSRFlowButton>(
        makeField(FieldType::flowButton, QStringLiteral("b"), QStringLiteral("B")));
    EXPECT_EQ(second->minimumHeight(), 65);
    TSRA1Button closing(QStringLiteral("Благодарим Ви"));
    EXPECT_EQ(closing.minimumHeight(), 65);
    // Styled views keep their look: the first button was made before the change.
    EXPECT_EQ(first->minimumHeight(), ButtonAppearance::heightFor(TSRAppearance::ButtonSize::medium));
}

TEST(ActionControls, LogoViewWithoutHostImageKeepsItsProportions) {
    auto logo = makeControl<TSRA1ImageView>(makeField(FieldType::text, QStringLiteral("logo")));
    EXPECT_FALSE(logo->hasImage());
    EXPECT_EQ(logo->imageView()->size(), QSize(240, 240)); // ratio 1.0 without an image
    EXPECT_EQ(logo->sizeHint().height(), 720);
    logo->resize(390, logo->sizeHint().height());
    logo->show();
    EXPECT_EQ(logo->imageView()->geometry().center(), logo->rect().center());
}
