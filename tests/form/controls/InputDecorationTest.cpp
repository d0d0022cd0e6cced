#include "tessara/ui/InputDecoration.h"

#include "ControlTestSupport.h"
#include "support/DarkPalette.h"
#include "tessara/form/controls/TSRDropdownButton.h"
#include "tessara/form/controls/TSRInputArea.h"
#include "tessara/form/controls/TSRInputField.h"
#include "tessara/ui/Hairline.h"

#include <QApplication>
#include <QImage>
#include <QPalette>
#include <QToolButton>
#include <gtest/gtest.h>

using namespace tessara;
using namespace tessara::test;
using Style = TSRAppearance::InputBorderStyle;

namespace {

QImage render(QWidget* widget) {
    QImage image(widget->size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    widget->render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
    return image;
}

} // namespace

TEST(InputDecoration, CornerRadiusFollowsTheTheme) {
    struct Case {
        Style style;
        std::optional<double> radius;
        double expected;
    };
    const Case cases[] = {
        {Style::none, std::nullopt, 8.0},
        {Style::none, 5.0, 5.0},
        {Style::none, 0.0, 23.0}, // half of the 46 px height
        {Style::none, 80.0, 23.0},
        {Style::roundedRect, 0.0, 10.0}, // the theme radius belongs to style none only
        {Style::line, 5.0, 0.0},
    };
    for (const Case& c : cases) {
        ThemeGuard guard;
        guard.theme().setInputBorderStyle(c.style);
        guard.theme().setInternalTextFieldCornerRadius(c.radius);
        auto input = makeControl<TSRInputField>(makeField(FieldType::inputField, QStringLiteral("x")));
        input->resize(300, 46);
        const InputDecoration* decoration = InputDecoration::of(input.get());
        ASSERT_NE(decoration, nullptr);
        EXPECT_DOUBLE_EQ(decoration->cornerRadius(), c.expected) << int(c.style);
    }
}

TEST(InputDecoration, StyleNoneDrawsTheThemesBorderAndBackground) {
    ThemeGuard guard;
    guard.theme().setInputBorderStyle(Style::none);
    guard.theme().setInternalTextFieldCornerRadius(0.0);
    guard.theme().setInputBorderColor(QColor(255, 0, 0));
    guard.theme().setInputBackgroundColor(QColor(0, 0, 255));

    for (const double width : {0.0, 3.0}) {
        guard.theme().setInputBorderWidth(width);
        auto input = makeControl<TSRInputField>(makeField(FieldType::inputField, QStringLiteral("x")));
        input->resize(200, 46);
        const QImage image = render(input.get());
        const QColor edge = image.pixelColor(100, 1);    // on the top border
        const QColor inside = image.pixelColor(100, 23); // the middle
        const QColor corner = image.pixelColor(1, 1);    // outside the rounded corner
        EXPECT_EQ(inside, QColor(0, 0, 255));
        EXPECT_EQ(corner.alpha(), 0);
        if (width == 0.0)
            EXPECT_EQ(edge, QColor(0, 0, 255)) << "no border although a colour is set";
        else
            EXPECT_EQ(edge, QColor(255, 0, 0));
    }
}

TEST(InputDecoration, DefaultBorderColourFollowsTheDarkStyle) {
    ThemeGuard guard;
    guard.theme().setInputBorderStyle(Style::none);
    guard.theme().setInputBorderWidth(1.0);
    QWidget screen;
    auto* input = makeControl<TSRInputField>(makeField(FieldType::inputField, QStringLiteral("x")), &screen);
    const InputDecoration* decoration = InputDecoration::of(input);
    EXPECT_EQ(decoration->borderColor(), QColor::fromRgbF(0, 0, 0, 0.2f));

    DarkPalette dark;
    QCoreApplication::processEvents(); // the palette change reaches widgets as a posted event
    EXPECT_EQ(decoration->borderColor(), QColor::fromRgbF(1, 1, 1, 0.2f));
    EXPECT_DOUBLE_EQ(decoration->borderWidth(), 1.0);
}

TEST(InputDecoration, TextAreaFrameIsAHairlineOutsideStyleNone) {
    ThemeGuard guard;
    guard.theme().setInputBorderWidth(4.0);
    auto area = makeControl<TSRInputArea>(makeField(FieldType::inputArea, QStringLiteral("a")));
    EXPECT_DOUBLE_EQ(InputDecoration::of(area.get())->borderWidth(), hairlineWidth(area.get()));

    guard.theme().setInputBorderStyle(Style::none);
    auto themed = makeControl<TSRInputArea>(makeField(FieldType::inputArea, QStringLiteral("b")));
    EXPECT_DOUBLE_EQ(InputDecoration::of(themed.get())->borderWidth(), 4.0);
}

TEST(InputDecoration, DropdownArrowsSitInsideTheFieldOnTheRight) {
    FieldJSON field = makeField(FieldType::dropdown, QStringLiteral("d"), QStringLiteral("Избор"));
    field.options = makeOptions({{"A", "a"}});
    auto dropdown = makeControl<TSRDropdownButton>(field);
    dropdown->resize(300, 46);
    dropdown->show();
    const QRect arrows = dropdown->arrowsButton()->geometry();
    EXPECT_EQ(arrows.right(), 300 - 5 - 1);
    EXPECT_EQ(arrows.height(), 36);
    EXPECT_TRUE(dropdown->arrowsButton()->testAttribute(Qt::WA_TransparentForMouseEvents));
    // The chosen label never runs under the arrows.
    EXPECT_GE(dropdown->textMargins().right(), arrows.width());
}
