#include "tessara/appearance/TSRAppearance.h"

#include "support/DarkPalette.h"

#include <QApplication>
#include <QPalette>
#include <functional>
#include <gtest/gtest.h>

namespace tessara {
namespace {

using test::DarkPalette;

TEST(TSRAppearance, LazyPropertiesTakeTheirFallbackOnceAtFirstRead) {
    QFont otherFont = TSRAppearance().font();
    otherFont.setPixelSize(30);
    struct Case {
        const char* property;
        std::function<QVariant(TSRAppearance&)> read;
        std::function<void(TSRAppearance&)> changeFallback;
        std::function<void(TSRAppearance&)> writeOwn;
        QVariant changedFallback;
        QVariant own;
    };
    const std::vector<Case> cases{
        {"inputFont", [](TSRAppearance& t) { return QVariant(t.inputFont()); },
         [&](TSRAppearance& t) { t.setFont(otherFont); },
         [](TSRAppearance& t) { t.setInputFont(QFont("Serif", 9)); }, otherFont, QFont("Serif", 9)},
        {"buttonFont", [](TSRAppearance& t) { return QVariant(t.buttonFont()); },
         [&](TSRAppearance& t) { t.setFont(otherFont); },
         [](TSRAppearance& t) { t.setButtonFont(QFont("Serif", 9)); }, otherFont, QFont("Serif", 9)},
        {"inputTextColor", [](TSRAppearance& t) { return QVariant(t.inputTextColor()); },
         [](TSRAppearance& t) { t.setTextColor(Qt::darkRed); },
         [](TSRAppearance& t) { t.setInputTextColor(Qt::cyan); }, QColor(Qt::darkRed), QColor(Qt::cyan)},
        {"buttonTextColor", [](TSRAppearance& t) { return QVariant(t.buttonTextColor()); },
         [](TSRAppearance& t) { t.setTextColor(Qt::darkRed); },
         [](TSRAppearance& t) { t.setButtonTextColor(Qt::cyan); }, QColor(Qt::darkRed), QColor(Qt::cyan)},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.property);
        {
            // Read first: a later change of the fallback no longer reaches it.
            TSRAppearance theme;
            const QVariant first = c.read(theme);
            c.changeFallback(theme);
            EXPECT_EQ(c.read(theme), first);
            EXPECT_NE(c.read(theme), c.changedFallback);
        }
        {
            // Fallback changed before the first read: the read takes the new value, which
            // a host set, so it stays in the dark style too.
            TSRAppearance theme;
            c.changeFallback(theme);
            EXPECT_EQ(c.read(theme), c.changedFallback);
            DarkPalette dark;
            EXPECT_EQ(c.read(theme), c.changedFallback);
        }
        {
            // Written before the first read: the written value replaces the default.
            TSRAppearance theme;
            c.writeOwn(theme);
            c.changeFallback(theme);
            EXPECT_EQ(c.read(theme), c.own);
        }
    }
}

TEST(TSRAppearance, InputCornerRadiusReadsWithoutStoringAndWritesTheOptional) {
    TSRAppearance theme;
    EXPECT_EQ(theme.inputCornerRadius(), 8.0);
    EXPECT_FALSE(theme.internalTextFieldCornerRadius().has_value());

    theme.setInputCornerRadius(0.0);
    EXPECT_EQ(theme.internalTextFieldCornerRadius(), 0.0);
    EXPECT_EQ(theme.inputCornerRadius(), 0.0);

    theme.setInternalTextFieldCornerRadius(std::nullopt);
    EXPECT_EQ(theme.inputCornerRadius(), 8.0);
}

TEST(TSRAppearance, ButtonLeadingSpaceIsLeadingSpace) {
    TSRAppearance theme;
    theme.setButtonLeadingSpace(20.0);
    EXPECT_EQ(theme.leadingSpace(), 20.0);
    theme.setLeadingSpace(12.0);
    EXPECT_EQ(theme.buttonLeadingSpace(), 12.0);
}

TEST(TSRAppearance, NotANumberMeansUnset) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    struct Case {
        const char* property;
        std::function<double(TSRAppearance&)> read;
        std::function<void(TSRAppearance&, double)> write;
    };
    const std::vector<Case> cases{
        {"buttonMinimumHeight", [](TSRAppearance& t) { return t.buttonMinimumHeight(); },
         [](TSRAppearance& t, double v) { t.setButtonMinimumHeight(v); }},
        {"leadingSpace", [](TSRAppearance& t) { return t.leadingSpace(); },
         [](TSRAppearance& t, double v) { t.setLeadingSpace(v); }},
        {"buttonCornerRadius", [](TSRAppearance& t) { return t.buttonCornerRadius(); },
         [](TSRAppearance& t, double v) { t.setButtonCornerRadius(v); }},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.property);
        TSRAppearance theme;
        EXPECT_FALSE(TSRAppearance::isSet(c.read(theme)));
        c.write(theme, 0.0);
        EXPECT_TRUE(TSRAppearance::isSet(c.read(theme)));
        EXPECT_EQ(c.read(theme), 0.0);
        c.write(theme, nan);
        EXPECT_FALSE(TSRAppearance::isSet(c.read(theme)));
    }
}

TEST(TSRAppearance, DefaultColoursFollowTheDarkStyleAndSetOnesDoNot) {
    struct Case {
        const char* property;
        std::function<QColor(TSRAppearance&)> read;
        std::function<void(TSRAppearance&, const QColor&)> write;
        QColor light;
        QColor dark;
    };
    const std::vector<Case> cases{
        {"tintColor", [](TSRAppearance& t) { return t.tintColor(); },
         [](TSRAppearance& t, const QColor& c) { t.setTintColor(c); }, QColor(0x00, 0x7a, 0xff),
         QColor(0x0a, 0x84, 0xff)},
        {"backgroundColor", [](TSRAppearance& t) { return t.backgroundColor(); },
         [](TSRAppearance& t, const QColor& c) { t.setBackgroundColor(c); }, Qt::white, Qt::black},
        {"textColor", [](TSRAppearance& t) { return t.textColor(); },
         [](TSRAppearance& t, const QColor& c) { t.setTextColor(c); }, Qt::black, Qt::white},
        {"inputBorderColor", [](TSRAppearance& t) { return t.inputBorderColor(); },
         [](TSRAppearance& t, const QColor& c) { t.setInputBorderColor(c); }, QColor::fromRgbF(0, 0, 0, 0.2f),
         QColor::fromRgbF(1, 1, 1, 0.2f)},
        {"inputBackgroundColor", [](TSRAppearance& t) { return t.inputBackgroundColor(); },
         [](TSRAppearance& t, const QColor& c) { t.setInputBackgroundColor(c); }, Qt::white, Qt::black},
        // Lazy ones: the light read below is their first, and must not freeze the light colour.
        {"inputTextColor", [](TSRAppearance& t) { return t.inputTextColor(); },
         [](TSRAppearance& t, const QColor& c) { t.setInputTextColor(c); }, Qt::black, Qt::white},
        {"buttonTextColor", [](TSRAppearance& t) { return t.buttonTextColor(); },
         [](TSRAppearance& t, const QColor& c) { t.setButtonTextColor(c); }, Qt::black, Qt::white},
        {"bubbleBackgroundColor", [](TSRAppearance& t) { return t.bubbleBackgroundColor(); },
         [](TSRAppearance& t, const QColor& c) { t.setBubbleBackgroundColor(c); }, QColor(0xf2, 0xf2, 0xf7),
         QColor(0x1c, 0x1c, 0x1e)},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.property);
        TSRAppearance theme;
        ASSERT_FALSE(TSRAppearance::isDarkStyle());
        EXPECT_EQ(c.read(theme), c.light);
        {
            DarkPalette dark;
            ASSERT_TRUE(TSRAppearance::isDarkStyle());
            EXPECT_EQ(c.read(theme), c.dark);
        }
        c.write(theme, QColor(0x11, 0x22, 0x33));
        DarkPalette dark;
        EXPECT_EQ(c.read(theme), QColor(0x11, 0x22, 0x33));
    }
}

} // namespace
} // namespace tessara
