#include "ApiFixtures.h"
#include "tessara/api/TSRLandscapeNavigationViewController.h"
#include "tessara/api/TSRNavigationBar.h"
#include "tessara/api/TSRNavigationViewController.h"
#include "tessara/api/TSRRootController.h"
#include "tessara/api/Tessara.h"
#include "tessara/ui/ActivityIndicator.h"
#include "tessara/ui/WidgetFade.h"

#include <QGraphicsOpacityEffect>
#include <QLabel>
#include <QPushButton>

namespace tessara::test {
namespace {

// A screen with its own rotation wishes.
class LandscapeOnlyScreen : public TSRViewController {
public:
    bool shouldAutorotate() const override { return false; }
    Qt::ScreenOrientations supportedInterfaceOrientations() const override {
        return Qt::LandscapeOrientation;
    }
    Qt::ScreenOrientation preferredInterfaceOrientationForPresentation() const override {
        return Qt::LandscapeOrientation;
    }
};

std::unique_ptr<TSRViewController> titledScreen(const QString& title) {
    auto screen = std::make_unique<TSRViewController>();
    screen->setNavigationTitle(title);
    return screen;
}

TEST(RootController, ShowsTheThemeBackgroundAndASpinningLoaderInTheMiddle) {
    auto theme = std::make_shared<TSRAppearance>();
    theme->setBackgroundColor(QColor(0xfa, 0xf0, 0xe6));
    theme->setTintColor(QColor(0x00, 0x80, 0x60));
    Tessara::setAppearance(theme);
    HostWidget host;
    auto* root = new TSRRootController; // owned by host once presented
    root->presentOver(&host);
    Tessara::setAppearance(std::make_shared<TSRAppearance>());

    EXPECT_EQ(root->palette().color(QPalette::Window), QColor(0xfa, 0xf0, 0xe6));
    EXPECT_TRUE(root->autoFillBackground());
    ActivityIndicator* loader =
        root->findChild<ActivityIndicator*>(QStringLiteral("TSRRootController.loader"));
    ASSERT_EQ(loader, root->loader());
    EXPECT_TRUE(loader->isAnimating());
    EXPECT_TRUE(loader->hidesWhenStopped());
    EXPECT_EQ(loader->color(), QColor(0x00, 0x80, 0x60));
    EXPECT_EQ(loader->size(), QSize(37, 37)); // the large style
    EXPECT_EQ(loader->geometry().center(), root->rect().center());

    // The loader stays centred when the host changes size (a rotation).
    host.resize(844, 390);
    EXPECT_EQ(root->size(), QSize(844, 390));
    EXPECT_EQ(loader->geometry().center(), root->rect().center());
}

TEST(RootController, TheFirstStepStopsTheLoaderAndALaterOneReplacesTheChild) {
    HostWidget host;
    auto* root = new TSRRootController; // owned by host once presented
    root->presentOver(&host);

    auto first = std::make_unique<TSRNavigationViewController>(titledScreen(QStringLiteral("Първа")));
    QPointer<TSRNavigationViewController> firstNavigation = first.get();
    root->presentStep(std::move(first));
    EXPECT_FALSE(root->loader()->isAnimating());
    EXPECT_FALSE(root->loader()->isVisible());
    EXPECT_EQ(root->navigationChild(), firstNavigation);
    EXPECT_EQ(firstNavigation->geometry(), root->rect());
    EXPECT_TRUE(waitUntil([&] { return firstNavigation->isVisible(); }));

    auto second = std::make_unique<TSRNavigationViewController>(titledScreen(QStringLiteral("Втора")));
    QPointer<TSRNavigationViewController> secondNavigation = second.get();
    root->presentStep(std::move(second));
    EXPECT_EQ(root->findChildren<TSRNavigationViewController*>(Qt::FindDirectChildrenOnly).size(), 1);
    EXPECT_EQ(root->navigationChild(), secondNavigation);
    EXPECT_EQ(secondNavigation->geometry(), root->rect());
    EXPECT_TRUE(waitUntil([&] { return firstNavigation.isNull(); }));
    EXPECT_TRUE(waitUntil([&] { return secondNavigation->isVisible(); }));
    EXPECT_FALSE(root->loader()->isAnimating());
}

TEST(NavigationViewController, RotationAnswersComeFromTheVisibleScreen) {
    struct Case {
        const char* name;
        std::function<std::unique_ptr<TSRNavigationViewController>()> make;
        bool autorotate;
        Qt::ScreenOrientations supported;
        Qt::ScreenOrientation preferred;
    };
    const Qt::ScreenOrientations all = Qt::PortraitOrientation | Qt::LandscapeOrientation |
                                       Qt::InvertedPortraitOrientation | Qt::InvertedLandscapeOrientation;
    const Qt::ScreenOrientations landscapes = Qt::LandscapeOrientation | Qt::InvertedLandscapeOrientation;
    const std::vector<Case> cases{
        {"no screen: the defaults", [] { return std::make_unique<TSRNavigationViewController>(); }, true, all,
         Qt::PortraitOrientation},
        {"a plain screen", [] { return std::make_unique<TSRNavigationViewController>(titledScreen("x")); },
         true, all, Qt::PortraitOrientation},
        {"a screen with wishes",
         [] {
             return std::make_unique<TSRNavigationViewController>(std::make_unique<LandscapeOnlyScreen>());
         },
         false, Qt::LandscapeOrientation, Qt::LandscapeOrientation},
        {"landscape navigation, whatever the screen wants",
         [] { return std::make_unique<TSRLandscapeNavigationViewController>(titledScreen("x")); }, false,
         landscapes, Qt::InvertedLandscapeOrientation},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        std::unique_ptr<TSRNavigationViewController> navigation = c.make();
        EXPECT_EQ(navigation->shouldAutorotate(), c.autorotate);
        EXPECT_EQ(navigation->supportedInterfaceOrientations(), c.supported);
        EXPECT_EQ(navigation->preferredInterfaceOrientationForPresentation(), c.preferred);
    }
}

TEST(NavigationViewController, TheBarShowsTheVisibleScreensTitleAndRightItem) {
    auto theme = std::make_shared<TSRAppearance>();
    QFont titleFont = theme->navigationTitleFont();
    titleFont.setPixelSize(21);
    theme->setNavigationTitleFont(titleFont);
    Tessara::setAppearance(theme);
    HostWidget host;
    auto first = titledScreen(QStringLiteral("Лични данни"));
    auto* close = new QPushButton(QStringLiteral("Затвори")); // owned by the screen from the next line on
    first->setRightBarItem(close);
    QPointer<QPushButton> closeButton(close);
    TSRViewController* firstScreen = first.get();
    auto* navigation = new TSRNavigationViewController(std::move(first), &host); // owned by host
    navigation->setGeometry(host.rect());
    navigation->show();
    Tessara::setAppearance(std::make_shared<TSRAppearance>());

    TSRNavigationBar* bar =
        navigation->findChild<TSRNavigationBar*>(QStringLiteral("TSRNavigationViewController.navigationBar"));
    ASSERT_NE(bar, nullptr);
    auto* title = bar->findChild<QLabel*>(QStringLiteral("TSRNavigationViewController.title"));
    ASSERT_NE(title, nullptr);
    EXPECT_EQ(title->text(), QStringLiteral("Лични данни"));
    EXPECT_EQ(title->font().pixelSize(), 21);
    EXPECT_EQ(bar->geometry(), QRect(0, 0, 390, TSRNavigationBar::kHeight));
    // Centred on the bar, the item at the trailing edge.
    EXPECT_EQ(title->geometry().center().x(), bar->rect().center().x());
    EXPECT_EQ(close->parentWidget(), bar);
    EXPECT_TRUE(close->isVisible());
    EXPECT_EQ(close->geometry().right(), bar->width() - TSRNavigationBar::kSideMargin - 1);
    EXPECT_EQ(firstScreen->mapTo(navigation, QPoint(0, 0)).y(), TSRNavigationBar::kHeight);

    firstScreen->setNavigationTitle(QStringLiteral("Адрес"));
    EXPECT_EQ(title->text(), QStringLiteral("Адрес"));

    // The next screen has no item: the old one leaves the bar with its screen.
    std::vector<std::unique_ptr<TSRViewController>> next;
    next.push_back(titledScreen(QStringLiteral("Готово")));
    navigation->setViewControllers(std::move(next), false);
    EXPECT_EQ(title->text(), QStringLiteral("Готово"));
    EXPECT_EQ(bar->rightItem(), nullptr);
    EXPECT_FALSE(close->isVisible());
    EXPECT_TRUE(waitUntil([&] { return closeButton.isNull(); }));
}

TEST(NavigationViewController, ALongTitleIsShortenedAndStaysClearOfTheItem) {
    HostWidget host;
    auto screen = titledScreen(QString(80, QChar(u'Ж')));
    screen->setRightBarItem(new QPushButton(QStringLiteral("Затвори")));          // owned by the screen
    auto* navigation = new TSRNavigationViewController(std::move(screen), &host); // owned by host
    navigation->setGeometry(host.rect());
    navigation->show();
    TSRNavigationBar* bar = navigation->navigationBar();
    QLabel* title = bar->titleLabel();
    EXPECT_TRUE(title->text().endsWith(QChar(0x2026)));
    EXPECT_FALSE(title->geometry().intersects(bar->rightItem()->geometry()));
}

TEST(WidgetFade, FadesRunTheirCourseAndLeaveNoEffectBehind) {
    HostWidget host;
    auto* panel = new QWidget(&host); // owned by host
    panel->setGeometry(10, 10, 100, 100);

    fadeIn(panel);
    EXPECT_TRUE(panel->isVisible());
    auto* effect = qobject_cast<QGraphicsOpacityEffect*>(panel->graphicsEffect());
    ASSERT_NE(effect, nullptr);
    EXPECT_LT(effect->opacity(), 1.0);
    EXPECT_TRUE(waitUntil([&] { return panel->graphicsEffect() == nullptr; }, 1000));

    bool finished = false;
    fadeOut(panel, [&] { finished = true; });
    EXPECT_TRUE(panel->isVisible());
    EXPECT_TRUE(waitUntil([&] { return finished; }, 1000));
    EXPECT_FALSE(panel->isVisible());
    EXPECT_EQ(panel->graphicsEffect(), nullptr);

    // A fade-in that interrupts a fade-out keeps the widget on screen.
    finished = false;
    panel->show();
    fadeOut(panel, [&] { finished = true; });
    QTest::qWait(50);
    fadeIn(panel);
    QTest::qWait(kFadeDurationMs * 2);
    EXPECT_FALSE(finished);
    EXPECT_TRUE(panel->isVisible());
    EXPECT_EQ(panel->graphicsEffect(), nullptr);
}

} // namespace
} // namespace tessara::test
