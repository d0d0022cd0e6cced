#include "tessara/api/Tessara.h"

#include "ApiFixtures.h"
#include "support/DarkPalette.h"
#include "tessara/api/TSRNavigationViewController.h"
#include "tessara/api/TSRRootController.h"
#include "tessara/form/TSRFormController.h"
#include "tessara/ui/ActivityIndicator.h"

#include <QApplication>
#include <QLoggingCategory>
#include <memory>

namespace tessara::test {
namespace {

const QByteArray kFirstStep =
    R"({"type":"FORM","name":"Заявка","submissionId":"s-1","directionId":"d-1","processId":"p-1",)"
    R"("fields":[{"type":"TEXT","key":"intro","value":"Добре дошли"}]})";

struct Outcome {
    int calls = 0;
    std::optional<TSRResult<bool>> result;
    // What the screen looked like when the callback ran.
    bool stepEmbeddedAtCall = false;
};

TEST(TessaraStart, ShowsTheLoaderThenEmbedsTheFirstStepBeforeReportingSuccess) {
    LoopbackHttpServer server;
    server.enqueue(CannedResponse::json(200, kFirstStep).afterMs(150));
    HostWidget host;
    Tessara tessara(server.url(QStringLiteral("/api")), std::make_shared<TSRAppearance>());

    Outcome outcome;
    tessara.startProcess(QStringLiteral("p-1"), std::nullopt, &host, [&](TSRResult<bool> result) {
        ++outcome.calls;
        outcome.result = result;
        TSRRootController* root = tessara.rootController();
        outcome.stepEmbeddedAtCall =
            root && root->navigationChild() &&
            qobject_cast<TSRFormController*>(root->navigationChild()->visibleViewController());
    });

    // At once: the root covers the host with its spinning loader.
    TSRRootController* root = tessara.rootController();
    ASSERT_NE(root, nullptr);
    EXPECT_EQ(root->parentWidget(), &host);
    EXPECT_EQ(root->geometry(), host.rect());
    EXPECT_TRUE(root->isVisible());
    EXPECT_TRUE(root->loader()->isAnimating());
    EXPECT_TRUE(root->loader()->isVisible());
    EXPECT_EQ(root->navigationChild(), nullptr);
    EXPECT_EQ(tessara.delegate(), &host);

    ASSERT_TRUE(waitUntil([&] { return outcome.calls > 0; }));
    settle(100);
    EXPECT_EQ(outcome.calls, 1);
    ASSERT_TRUE(outcome.result->isSuccess());
    EXPECT_TRUE(outcome.result->value());
    EXPECT_TRUE(outcome.stepEmbeddedAtCall);

    TSRNavigationViewController* navigation = root->navigationChild();
    ASSERT_NE(navigation, nullptr);
    EXPECT_EQ(navigation->parentWidget(), root);
    EXPECT_EQ(navigation->geometry(), root->rect());
    ASSERT_EQ(navigation->viewControllers().size(), 1);
    auto* form = qobject_cast<TSRFormController*>(navigation->visibleViewController());
    ASSERT_NE(form, nullptr);
    EXPECT_EQ(form->ui, decodeStep(kFirstStep));
    EXPECT_EQ(form->formDelegate(), &host);
    EXPECT_EQ(form->previousDirectionId, std::nullopt);
    EXPECT_FALSE(root->loader()->isAnimating());
    EXPECT_FALSE(root->loader()->isVisible());

    // The root follows the host's size.
    host.resize(600, 900);
    EXPECT_EQ(root->geometry(), host.rect());
    EXPECT_EQ(navigation->geometry(), root->rect());
}

TEST(TessaraStart, AFailedStartLeavesTheSpinningRootAndReportsTheErrorOnce) {
    LoopbackHttpServer server;
    server.enqueue(CannedResponse::json(400, R"({"message":"Процесът не е намерен"})"));
    HostWidget host;
    Tessara tessara(server.url(QStringLiteral("/api")), std::make_shared<TSRAppearance>());

    struct {
        int calls = 0;
        bool success = true;
        std::optional<TSRError> error;
    } objcOutcome;
    tessara.objc_startProcess(QStringLiteral("missing"), std::nullopt, &host,
                              [&](bool success, std::optional<TSRError> error) {
                                  ++objcOutcome.calls;
                                  objcOutcome.success = success;
                                  objcOutcome.error = error;
                              });
    ASSERT_TRUE(waitUntil([&] { return objcOutcome.calls > 0; }));
    settle(300);
    EXPECT_EQ(objcOutcome.calls, 1);
    EXPECT_FALSE(objcOutcome.success);
    ASSERT_TRUE(objcOutcome.error.has_value());
    EXPECT_EQ(*objcOutcome.error, TSRError(TSRBackendError{QStringLiteral("Процесът не е намерен")}));

    TSRRootController* root = tessara.rootController();
    ASSERT_NE(root, nullptr);
    EXPECT_TRUE(root->isVisible());
    EXPECT_TRUE(root->loader()->isAnimating());
    EXPECT_EQ(root->navigationChild(), nullptr);

    // The host takes the root away when it decides to.
    QPointer<TSRRootController> watched(root);
    root->dismiss();
    EXPECT_TRUE(waitUntil([&] { return watched.isNull(); }));
    EXPECT_EQ(tessara.rootController(), nullptr);
}

TEST(TessaraStart, EachCallMakesAFreshRootAndTheLinksFollowTheNewest) {
    LoopbackHttpServer server;
    server.setHandler([](const RecordedRequest&) { return CannedResponse::json(200, kFirstStep); });
    HostWidget host;
    Tessara tessara(server.url(QStringLiteral("/api")), std::make_shared<TSRAppearance>());

    int calls = 0;
    tessara.startProcess(QStringLiteral("p-1"), std::nullopt, &host, [&](TSRResult<bool>) { ++calls; });
    QPointer<TSRRootController> first = tessara.rootController();
    tessara.openStep(QStringLiteral("d-1"), &host, [&](TSRResult<bool>) { ++calls; });
    QPointer<TSRRootController> second = tessara.rootController();
    ASSERT_TRUE(waitUntil([&] { return calls == 2; }));

    ASSERT_TRUE(first && second);
    EXPECT_NE(first, second);
    EXPECT_EQ(tessara.rootController(), second);
    // The newest root is on top of the host's other children.
    EXPECT_EQ(host.children().last(), second.data());
}

TEST(TessaraStart, TheCallbackArrivesEvenAfterTheTessaraObjectIsGone) {
    LoopbackHttpServer server;
    server.enqueue(CannedResponse::json(200, kFirstStep).afterMs(100));
    HostWidget host;
    auto tessara =
        std::make_unique<Tessara>(server.url(QStringLiteral("/api")), std::make_shared<TSRAppearance>());

    Outcome outcome;
    tessara->startProcess(QStringLiteral("p-1"), std::nullopt, &host, [&](TSRResult<bool> result) {
        ++outcome.calls;
        outcome.result = result;
    });
    tessara.reset();

    ASSERT_TRUE(waitUntil([&] { return outcome.calls > 0; }));
    settle(50);
    EXPECT_EQ(outcome.calls, 1);
    ASSERT_TRUE(outcome.result->isSuccess());
    // The root belongs to the host's widget, so the step is still shown.
    auto* root = host.findChild<TSRRootController*>();
    ASSERT_NE(root, nullptr);
    EXPECT_NE(root->navigationChild(), nullptr);
}

TEST(TessaraRequests, OpenStepAsksForTheCurrentStepOfTheDirection) {
    struct Case {
        QString directionId;
        QByteArray expectedTarget;
    };
    const std::vector<Case> cases{
        {QStringLiteral("d-42"), "/api/step/direction/d-42/current"},
        // Ids are put in the path as they are: a slash makes an extra segment.
        {QStringLiteral("a/b"), "/api/step/direction/a/b/current"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.directionId.toStdString());
        LoopbackHttpServer server;
        server.enqueue(CannedResponse::json(200, kFirstStep));
        HostWidget host;
        Tessara tessara(server.url(QStringLiteral("/api")), std::make_shared<TSRAppearance>());
        bool done = false;
        tessara.openStep(c.directionId, &host, [&](TSRResult<bool>) { done = true; });
        ASSERT_TRUE(waitUntil([&] { return done; }));
        ASSERT_EQ(server.requestCount(), 1);
        EXPECT_EQ(server.requests()[0].method, "GET");
        EXPECT_EQ(server.requests()[0].target, c.expectedTarget);
        EXPECT_TRUE(server.requests()[0].body.isEmpty());
    }
}

TEST(TessaraRequests, BothEntriesPassTheTokenAndObjcNullMeansAbsent) {
    enum class Entry { native, objc };
    struct Case {
        const char* name;
        Entry entry;
        std::optional<QString> token;
        QByteArray expectedBody;
    };
    const std::vector<Case> cases{
        {"token", Entry::native, QStringLiteral("tok-1"),
         R"({"callingServiceToken":"tok-1","processId":"p-7"})"},
        {"objc absent", Entry::objc, std::nullopt, R"({"processId":"p-7"})"},
        {"objc null", Entry::objc, QString(), R"({"processId":"p-7"})"},
        {"objc empty string", Entry::objc, QStringLiteral(""),
         R"({"callingServiceToken":"","processId":"p-7"})"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        LoopbackHttpServer server;
        server.enqueue(CannedResponse::json(200, kFirstStep));
        HostWidget host;
        Tessara tessara(server.url(QStringLiteral("/api")), std::make_shared<TSRAppearance>());
        bool done = false;
        if (c.entry == Entry::native)
            tessara.startProcess(QStringLiteral("p-7"), c.token, &host,
                                 [&](TSRResult<bool>) { done = true; });
        else
            tessara.objc_startProcess(QStringLiteral("p-7"), c.token, &host,
                                      [&](bool, std::optional<TSRError>) { done = true; });
        ASSERT_TRUE(waitUntil([&] { return done; }));
        ASSERT_EQ(server.requestCount(), 1);
        const RecordedRequest& request = server.requests()[0];
        EXPECT_EQ(request.method, "POST");
        EXPECT_EQ(request.target, "/api/submission");
        EXPECT_EQ(request.header("Content-Type"), "application/json");
        EXPECT_EQ(request.body, c.expectedBody);
    }
}

TEST(TessaraRequests, TheLastTessaraMadeDecidesTheBackendOfEveryInstance) {
    LoopbackHttpServer first;
    LoopbackHttpServer second;
    first.setHandler([](const RecordedRequest&) { return CannedResponse::json(200, kFirstStep); });
    second.setHandler([](const RecordedRequest&) { return CannedResponse::json(200, kFirstStep); });
    HostWidget host;

    Tessara older(first.url(QStringLiteral("/a")), std::make_shared<TSRAppearance>());
    Tessara newer(second.url(QStringLiteral("/b")), std::make_shared<TSRAppearance>());
    int done = 0;
    older.openStep(QStringLiteral("x"), &host, [&](TSRResult<bool>) { ++done; });
    newer.openStep(QStringLiteral("y"), &host, [&](TSRResult<bool>) { ++done; });
    ASSERT_TRUE(waitUntil([&] { return done == 2; }));
    EXPECT_EQ(first.requestCount(), 0);
    ASSERT_EQ(second.requestCount(), 2);
    EXPECT_EQ(second.requests()[0].target, "/b/step/direction/x/current");

    // One made without a URL sends everyone back to the compiled-in default.
    Tessara withoutURL(std::nullopt, std::make_shared<TSRAppearance>());
    EXPECT_EQ(TSRNetwork::shared().instanceURL(), std::nullopt);
    const QUrl base = TSRNetwork::shared().baseURL();
    EXPECT_TRUE(base.isValid());
    EXPECT_NE(base.port(), second.port());
}

TEST(TessaraEntry, AnnouncesStartAndOpenAtInfoLevel) {
    static std::vector<std::pair<QtMsgType, QString>> lines;
    lines.clear();
    const QtMessageHandler previous =
        qInstallMessageHandler([](QtMsgType type, const QMessageLogContext& context, const QString& message) {
            if (QByteArray(context.category) == "com.tessara.TessaraSDK.Tessara")
                lines.emplace_back(type, message);
        });

    LoopbackHttpServer server;
    server.setHandler([](const RecordedRequest&) { return CannedResponse::json(200, kFirstStep); });
    HostWidget host;
    Tessara tessara(server.url(), std::make_shared<TSRAppearance>());
    int done = 0;
    tessara.startProcess(QStringLiteral("p-1"), QStringLiteral("secret"), &host,
                         [&](TSRResult<bool>) { ++done; });
    tessara.openStep(QStringLiteral("d-1"), &host, [&](TSRResult<bool>) { ++done; });
    ASSERT_TRUE(waitUntil([&] { return done == 2; }));
    qInstallMessageHandler(previous);

    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[0].first, QtInfoMsg);
    EXPECT_EQ(lines[0].second, QStringLiteral("Starting process with id p-1…"));
    EXPECT_EQ(lines[1].first, QtInfoMsg);
    EXPECT_EQ(lines[1].second, QStringLiteral("Opening step with id d-1…"));
}

const QByteArray kStyledStep =
    R"({"type":"FORM","name":"Заявка","submissionId":"s-1","directionId":"d-1","processId":"p-1",)"
    R"("fields":[{"type":"INPUT","key":"name","label":"Име"},)"
    R"({"type":"FLOW","key":"go","label":"Напред","directionId":"next"}]})";

// The text colours of the input and the button on the screen that reopening "d-1" shows.
struct ShownTextColours {
    QColor input;
    QColor button;
};

ShownTextColours openStyledStep(Tessara& tessara, LoopbackHttpServer& server, HostWidget& host) {
    server.enqueue(CannedResponse::json(200, kStyledStep));
    bool done = false;
    tessara.openStep(QStringLiteral("d-1"), &host, [&](TSRResult<bool>) { done = true; });
    if (!waitUntil([&] { return done; }))
        ADD_FAILURE() << "the step did not open";
    settle();
    QWidget* screen = tessara.rootController()->navigationChild()->visibleViewController();
    auto* input = screen->findChild<QWidget*>(QStringLiteral("TSRInputField.name"));
    auto* button = screen->findChild<QWidget*>(QStringLiteral("TSRFlowButton.go"));
    if (!input || !button) {
        ADD_FAILURE() << "the step's input or button is missing";
        return {};
    }
    return {input->palette().color(QPalette::Text), button->palette().color(QPalette::ButtonText)};
}

TEST(TessaraTheme, TheHostKeepsItsThemeAndTheNextScreenShowsALaterChange) {
    LoopbackHttpServer server;
    HostWidget host;
    auto theme = std::make_shared<TSRAppearance>();
    Tessara tessara(server.url(QStringLiteral("/api")), theme);
    EXPECT_EQ(Tessara::appearance(), theme);

    theme->setInputTextColor(QColor(0x80, 0x10, 0x10));
    theme->setButtonTextColor(QColor(0x10, 0x50, 0x20));
    ShownTextColours shown = openStyledStep(tessara, server, host);
    EXPECT_EQ(shown.input, QColor(0x80, 0x10, 0x10));
    EXPECT_EQ(shown.button, QColor(0x10, 0x50, 0x20));

    theme->setInputTextColor(QColor(0x20, 0x20, 0x90));
    shown = openStyledStep(tessara, server, host);
    EXPECT_EQ(shown.input, QColor(0x20, 0x20, 0x90));
    Tessara::setAppearance(nullptr);
}

TEST(TessaraTheme, DefaultTextColoursOnTheNextScreenFollowASwitchToADarkPalette) {
    LoopbackHttpServer server;
    HostWidget host;
    Tessara tessara(server.url(QStringLiteral("/api")), std::make_shared<TSRAppearance>());

    // The light screen reads the lazy text colours first.
    ShownTextColours shown = openStyledStep(tessara, server, host);
    EXPECT_EQ(shown.input, QColor(Qt::black));
    EXPECT_EQ(shown.button, QColor(Qt::black));

    {
        DarkPalette dark;
        shown = openStyledStep(tessara, server, host);
    }
    EXPECT_EQ(shown.input, QColor(Qt::white));
    EXPECT_EQ(shown.button, QColor(Qt::white));
}

TEST(TessaraEntryDeathTest, ADelegateThatIsNoWidgetEndsTheProgram) {
    EXPECT_DEATH(
        {
            Tessara tessara(QUrl(QStringLiteral("http://127.0.0.1:9")), std::make_shared<TSRAppearance>());
            PlainDelegate delegate;
            tessara.startProcess(QStringLiteral("p"), std::nullopt, &delegate, [](TSRResult<bool>) {});
        },
        "not a QWidget");
}

} // namespace
} // namespace tessara::test
