#include "NetworkTestSupport.h"
#include "tessara/backend/LocalisationMatcher.h"
#include "tessara/backend/ShortestText.h"
#include "tessara/backend/UserAgentSources.h"

#include <QRegularExpression>

namespace tessara {
namespace {

TEST(PreferredLocalisation, MatchesTheAppsLocalisationsAgainstTheUsersLanguages) {
    struct Row {
        QStringList app;
        QStringList user;
        QString expected;
    };
    const Row rows[] = {
        // Without localisations of its own the app speaks Bulgarian.
        {{}, {QStringLiteral("en-US")}, QStringLiteral("bg;q=1.0")},
        {{QStringLiteral("Base")}, {QStringLiteral("en-US")}, QStringLiteral("bg;q=1.0")},
        {{QStringLiteral("Base"), QStringLiteral("Base")}, {}, QStringLiteral("bg;q=1.0")},
        // Only leading "Base" entries are dropped.
        {{QStringLiteral("Base"), QStringLiteral("en"), QStringLiteral("Base")},
         {QStringLiteral("de")},
         QStringLiteral("en;q=1.0")},
        // The first preference that matches decides.
        {{QStringLiteral("en"), QStringLiteral("bg")},
         {QStringLiteral("de-DE"), QStringLiteral("bg-BG")},
         QStringLiteral("bg;q=1.0")},
        {{QStringLiteral("en"), QStringLiteral("bg")},
         {QStringLiteral("en-GB"), QStringLiteral("bg")},
         QStringLiteral("en;q=1.0")},
        // Region match first, then the bare language: two entries, 1.0 and 0.9.
        {{QStringLiteral("en"), QStringLiteral("en-GB"), QStringLiteral("bg")},
         {QStringLiteral("en-GB")},
         QStringLiteral("en-GB;q=1.0, en;q=0.9")},
        {{QStringLiteral("en_GB"), QStringLiteral("en")},
         {QStringLiteral("en-gb")},
         QStringLiteral("en_GB;q=1.0, en;q=0.9")},
        // Script forms shorten step by step, other regions of the language come last.
        {{QStringLiteral("zh"), QStringLiteral("zh-Hant-HK"), QStringLiteral("zh-Hant")},
         {QStringLiteral("zh-Hant-TW")},
         QStringLiteral("zh-Hant;q=1.0, zh;q=0.9, zh-Hant-HK;q=0.8")},
        // Nothing matches: the app's first localisation.
        {{QStringLiteral("fr"), QStringLiteral("bg")}, {QStringLiteral("ja")}, QStringLiteral("fr;q=1.0")},
        {{QStringLiteral("fr"), QStringLiteral("bg")}, {}, QStringLiteral("fr;q=1.0")},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(TSRNetwork::preferredLocalisation(row.app, row.user), row.expected)
            << row.app.join(',').toStdString() << " / " << row.user.join(',').toStdString();
    }
}

TEST(PreferredLocalisation, QualitiesStepDownInSinglePrecision) {
    QStringList many;
    QStringList user;
    for (int i = 0; i < 12; ++i)
        many.append(QStringLiteral("en-X%1").arg(i));
    user.append(QStringLiteral("en"));
    const QStringList entries = TSRNetwork::preferredLocalisation(many, user).split(QStringLiteral(", "));
    ASSERT_EQ(entries.size(), 12);
    const char* qualities[] = {"1.0",        "0.9", "0.8",        "0.7",         "0.6", "0.5",
                               "0.39999998", "0.3", "0.19999999", "0.099999964", "0.0", "-0.100000024"};
    for (int i = 0; i < 12; ++i)
        EXPECT_EQ(entries[i], QStringLiteral("en-X%1;q=%2").arg(i).arg(QLatin1String(qualities[i])));
}

TEST(ShortestText, ReadsBackAsTheSameValueWithADecimalPart) {
    EXPECT_EQ(ShortestText::of(1.0f), QStringLiteral("1.0"));
    EXPECT_EQ(ShortestText::of(0.9f), QStringLiteral("0.9"));
    EXPECT_EQ(ShortestText::of(100.0f), QStringLiteral("100.0"));
    EXPECT_EQ(ShortestText::of(16777216.0f), QStringLiteral("1.6777216e+07"));
    EXPECT_EQ(ShortestText::of(0.0f), QStringLiteral("0.0"));
    EXPECT_EQ(ShortestText::of(1718000000.0), QStringLiteral("1718000000.0"));
    EXPECT_EQ(ShortestText::of(1718000000.125), QStringLiteral("1718000000.125"));
    EXPECT_EQ(ShortestText::of(1718003200.1234567), QStringLiteral("1718003200.1234567"));
    EXPECT_EQ(ShortestText::of(0.1 + 0.2), QStringLiteral("0.30000000000000004"));
    for (double value : {1718003200.1234567, 1.5e9 + 1.0 / 3.0, 0.000123, 12345.678})
        EXPECT_EQ(ShortestText::of(value).toDouble(), value);
}

TEST(UserAgent, IsAssembledFromTheHostAndTheFramework) {
    UserAgentSources sources;
    sources.hardwareModel = QStringLiteral("arm64");
    sources.systemName = QStringLiteral("android");
    sources.systemVersion = QStringLiteral("14");
    sources.applicationName = QStringLiteral(" My\tBank App\n");
    sources.applicationVersion = QStringLiteral("2.3");
    sources.applicationIdentifier = QStringLiteral("bg.bank.app");
    sources.applicationBuild = QStringLiteral("417");
    sources.frameworkVersion = QStringLiteral("0.1.0");
    sources.frameworkBuild = QStringLiteral("9");
    EXPECT_EQ(sources.text(),
              QStringLiteral("arm64/android14 MyBankApp/2.3 (bg.bank.app/417) TessaraSDK/0.1.0(9)"));

    // Unset host values leave their places empty; the shape stays.
    UserAgentSources bare = sources;
    bare.applicationVersion.clear();
    bare.applicationIdentifier.clear();
    EXPECT_EQ(bare.text(), QStringLiteral("arm64/android14 MyBankApp/ (/417) TessaraSDK/0.1.0(9)"));
}

TEST(UserAgent, TheSharedClientReportsThisProgram) {
    const QString agent = TSRNetwork::shared().userAgent();
    const QString app = QCoreApplication::applicationName().remove(QRegularExpression(QStringLiteral("\\s")));
    const QRegularExpression shape(
        QStringLiteral("^[^/ ]+/\\S* %1/\\S* \\(\\S*/\\S+\\) TessaraSDK/\\d+\\.\\d+\\.\\d+\\(\\d+\\)$")
            .arg(QRegularExpression::escape(app)));
    EXPECT_TRUE(shape.match(agent).hasMatch()) << agent.toStdString();
    EXPECT_TRUE(agent.startsWith(UserAgentSources::current().hardwareModel + QLatin1Char('/')));
}

} // namespace
} // namespace tessara
