#include "ApiFixtures.h"
#include "support/DarkPalette.h"
#include "tessara/api/TSRNavigationBar.h"
#include "tessara/api/TSRNavigationViewController.h"
#include "tessara/api/TSRRootController.h"
#include "tessara/api/Tessara.h"
#include "tessara/ui/ActivityIndicator.h"
#include "tessara/ui/CloseGlyphButton.h"
#include "tessara/ui/WidgetFade.h"

#include <QApplication>
#include <QDir>
#include <QImage>
#include <QLabel>
#include <optional>

namespace tessara::test {
namespace {

// Pictures land next to the build, for a person to look at; the checks below hold the
// parts of the look that must not regress.
QImage grabAndKeep(QWidget* widget, const QString& name) {
    const QImage image = widget->grab().toImage();
    const QString dir = QStringLiteral(TESSARA_BINARY_DIR "/screenshots");
    QDir().mkpath(dir);
    image.save(dir + QLatin1Char('/') + name);
    return image;
}

int pixelsNear(const QImage& image, const QRect& area, const QColor& colour) {
    int count = 0;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x) {
            const QColor c = image.pixelColor(x, y);
            if (qAbs(c.red() - colour.red()) < 40 && qAbs(c.green() - colour.green()) < 40 &&
                qAbs(c.blue() - colour.blue()) < 40)
                ++count;
        }
    }
    return count;
}

TEST(ScreenLook, RootWithItsLoader) {
    Tessara::setAppearance(std::make_shared<TSRAppearance>());
    HostWidget host;
    auto* root = new TSRRootController; // owned by host once presented
    root->presentOver(&host);
    QTest::qWait(kFadeDurationMs + 100);

    const QImage image = grabAndKeep(root, QStringLiteral("api-root-loader.png"));
    const QColor background = Tessara::appearance()->backgroundColor();
    EXPECT_EQ(image.pixelColor(5, 5), background);
    EXPECT_EQ(image.pixelColor(image.width() - 5, image.height() - 5), background);
    // The spinner is drawn in the tint, in the middle.
    const QRect middle(QPoint(195 - 20, 422 - 20), QSize(40, 40));
    EXPECT_GT(pixelsNear(image, middle, Tessara::appearance()->tintColor()), 20);
    EXPECT_EQ(pixelsNear(image, QRect(0, 0, 390, 300), Tessara::appearance()->tintColor()), 0);
}

TEST(ScreenLook, NavigationScreenWithAForm) {
    Tessara::setAppearance(std::make_shared<TSRAppearance>());
    HostWidget host;
    auto* root = new TSRRootController; // owned by host once presented
    root->presentOver(&host);
    root->setFormDelegate(&host);
    const SubmissionJSON document = decodeStep(
        R"({"type":"FORM","name":"Лични данни","submissionId":"s-1","directionId":"d-1","fields":[)"
        R"({"type":"TEXT","key":"intro","value":"Моля, попълнете данните си."},)"
        R"({"type":"INPUT","key":"name","label":"Име","required":true},)"
        R"({"type":"INPUT","key":"egn","label":"ЕГН","validation":"^[0-9]{10}$"},)"
        R"({"type":"DATE","key":"birth","label":"Дата на раждане"},)"
        R"({"type":"CHECKBOX","key":"terms","label":"Съгласен съм с общите условия"},)"
        R"({"type":"FLOW","key":"next","label":"Продължи","directionId":"d-2"}]})");
    std::unique_ptr<TSRViewController> form = root->makeStepController(document);
    form->setNavigationTitle(QStringLiteral("Лични данни"));
    root->presentStep(std::make_unique<TSRNavigationViewController>(std::move(form)));
    QTest::qWait(kFadeDurationMs + 150);

    TSRNavigationViewController* navigation = root->navigationChild();
    ASSERT_NE(navigation, nullptr);
    const QImage image = grabAndKeep(root, QStringLiteral("api-navigation-form.png"));
    const QColor background = Tessara::appearance()->backgroundColor();
    const int barHeight = TSRNavigationBar::kHeight;
    // Bar in the theme background, a hairline below it, the screen below that.
    EXPECT_EQ(image.pixelColor(3, 3), background);
    EXPECT_NE(image.pixelColor(3, barHeight - 1), background);
    EXPECT_EQ(image.pixelColor(3, barHeight + 2), background);
    // The title is drawn around the middle of the bar, in the text colour.
    const QRect titleArea(195 - 60, 8, 120, barHeight - 16);
    EXPECT_GT(pixelsNear(image, titleArea, Tessara::appearance()->textColor()), 30);
    // The close item sits at the trailing edge.
    QWidget* item = navigation->navigationBar()->rightItem();
    ASSERT_NE(item, nullptr);
    EXPECT_GT(item->geometry().left(), 300);
}

TEST(ScreenLook, TheBarFollowsADarkPalette) {
    Tessara::setAppearance(std::make_shared<TSRAppearance>());
    HostWidget host;
    auto screen = std::make_unique<TSRViewController>();
    screen->setNavigationTitle(QStringLiteral("Стъпка"));
    auto* navigation = new TSRNavigationViewController(std::move(screen), &host); // owned by host
    navigation->setGeometry(host.rect());
    navigation->show();
    HostWidget otherHost;
    auto* root = new TSRRootController; // owned by otherHost once presented
    root->presentOver(&otherHost);

    auto dark = std::make_optional<DarkPalette>(QColor(Qt::black));
    settle(); // the change reaches child widgets through the event loop
    const QImage image = grabAndKeep(navigation, QStringLiteral("api-navigation-dark.png"));
    const QColor darkRootBackground = root->palette().color(QPalette::Window);
    const QColor darkLoader = root->loader()->color();
    dark.reset();
    settle();

    EXPECT_EQ(image.pixelColor(3, 3), QColor(Qt::black));
    EXPECT_EQ(image.pixelColor(3, 400), QColor(Qt::black));
    EXPECT_GT(pixelsNear(image, QRect(195 - 40, 8, 80, TSRNavigationBar::kHeight - 16), Qt::white), 20);
    EXPECT_EQ(darkRootBackground, QColor(Qt::black));
    EXPECT_EQ(darkLoader, QColor(0x0a, 0x84, 0xff));
    // Back in the light palette, the screens are light again.
    EXPECT_EQ(root->palette().color(QPalette::Window), QColor(Qt::white));
    EXPECT_EQ(navigation->grab().toImage().pixelColor(3, 3), QColor(Qt::white));
}

// A screen that forces a style (the verification screen forces dark) gets a bar of that style on
// a light application, even when the host set a light background of its own; lifting the force
// brings the host's bar back.
TEST(ScreenLook, TheBarFollowsTheForcedStyleUntilItIsLifted) {
    auto look = std::make_shared<TSRAppearance>();
    look->setBackgroundColor(Qt::white);
    Tessara::setAppearance(look);
    HostWidget host;
    auto screen = std::make_unique<TSRViewController>();
    screen->setNavigationTitle(QStringLiteral("Стъпка"));
    screen->setRightBarItem(new CloseGlyphButton);                                // owned by the screen
    auto* navigation = new TSRNavigationViewController(std::move(screen), &host); // owned by host
    navigation->setGeometry(host.rect());
    navigation->show();
    using Style = TSRNavigationViewController::InterfaceStyle;
    struct Row {
        Style style;
        QColor bar;
        QColor title;
    };
    const Row rows[] = {{Style::dark, Qt::black, Qt::white}, {Style::unspecified, Qt::white, Qt::black}};
    for (const Row& row : rows) {
        SCOPED_TRACE(int(row.style));
        navigation->setOverrideUserInterfaceStyle(row.style);
        settle();
        const QImage image =
            grabAndKeep(navigation, QStringLiteral("api-navigation-forced-%1.png").arg(int(row.style)));
        EXPECT_EQ(image.pixelColor(3, 3), row.bar);
        EXPECT_GT(pixelsNear(image, QRect(195 - 40, 8, 80, TSRNavigationBar::kHeight - 16), row.title), 20);
        // The close glyph's cross stands out from the bar: lighter on dark, darker on light.
        QWidget* close = navigation->navigationBar()->rightItem();
        ASSERT_NE(close, nullptr);
        const QColor cross = image.pixelColor(close->geometry().center());
        if (row.bar == QColor(Qt::black))
            EXPECT_GT(cross.lightness(), 110);
        else
            EXPECT_LT(cross.lightness(), 160);
    }
}

} // namespace
} // namespace tessara::test
