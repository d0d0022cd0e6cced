// The simulator's scripts, without sockets: what each one sends for joins, pictures and waits.
#include "backend/VerificationSession.h"

#include "backend/ServiceMessages.h"
#include "support/TestHelpers.h"

using namespace tessara;

namespace {

using Action = VerificationSession::Action;

constexpr int W = VerificationScript::kWidth;
constexpr int H = VerificationScript::kHeight;

QStringList statusWords(const VerificationSession::Actions& actions) {
    QStringList words;
    for (const Action& action : actions) {
        if (const auto* status = std::get_if<KYCStatusSignal>(&action.message);
            status && action.kind == Action::Kind::send)
            words << status->type;
    }
    return words;
}

// Everything a run sends, with waits taken at once.
struct ScriptRun {
    VerificationSession::Actions actions;
    int picturesToFinish = -1; // the picture whose answer held the final word; 0 when none was needed

    void take(VerificationSession& session, VerificationSession::Actions more) {
        while (!more.empty()) {
            VerificationSession::Actions next;
            for (const Action& action : more) {
                if (action.kind == Action::Kind::wait) {
                    auto after = session.waitElapsed(action.token);
                    next.insert(next.end(), after.begin(), after.end());
                }
            }
            actions.insert(actions.end(), more.begin(), more.end());
            more = std::move(next);
        }
    }
};

ScriptRun runScript(const QString& name, int width, int height, int pictures) {
    VerificationSession session(*VerificationScript::named(name));
    ScriptRun run;
    run.take(session, session.join());
    if (session.finished())
        run.picturesToFinish = 0;
    for (int i = 1; i <= pictures && !session.finished(); ++i) {
        run.take(session, session.picture(width, height));
        if (session.finished())
            run.picturesToFinish = i;
    }
    return run;
}

int countOf(const VerificationSession::Actions& actions, WSCommand command) {
    int n = 0;
    for (const Action& action : actions)
        n += action.kind == Action::Kind::send && commandOf(action.message) == command;
    return n;
}

} // namespace

TEST(VerificationSession, ScriptsReachTheirWordOnlyWithEnoughPicturesOfTheExpectedSize) {
    const QStringList selfieOk = {"KYC_STATUS_ID_PREPARE_FACE",      "KYC_STATUS_ID_PREPARE_BACK",
                                  "KYC_STATUS_SELFIE_PREPARE_HEAD",  "KYC_STATUS_SELFIE_TURN_HEAD",
                                  "KYC_STATUS_SELFIE_TOUCH_ELEMENT", "KYC_STATUS_SELFIE_OK"};
    struct Case {
        const char* script;
        int width, height, pictures;
        QStringList words;
        int picturesToFinish;
        int nnConnected;
    };
    const Case cases[] = {
        {"happy", W, H, 500, selfieOk, 108, 1},
        {"happy", W, H, 107, QStringList(selfieOk.mid(0, 5)), -1, 1},
        {"happy", 640, 480, 500, {"KYC_STATUS_ID_PREPARE_FACE"}, -1, 1},
        {"happy", H, W, 500, {"KYC_STATUS_ID_PREPARE_FACE"}, -1, 1},
        {"happy", W, H, 0, {"KYC_STATUS_ID_PREPARE_FACE"}, -1, 1},
        {"failed",
         W,
         H,
         500,
         {"KYC_STATUS_ID_PREPARE_FACE", "KYC_STATUS_ID_PREPARE_BACK", "KYC_STATUS_SELFIE_PREPARE_HEAD",
          "KYC_STATUS_FAILED"},
         68,
         1},
        {"no-video", W, H, 500, {"KYC_WAIT_FOR_VIDEO_STREAM", "FAILED_NO_VIDEO_STREAM_CONNECTION"}, 0, 0},
        {"no-service", W, H, 500, {"NO_NN_SERVER", "PROCESS_FAIL"}, 0, 0},
        {"dropped-connection", W, H, 500, selfieOk, 108, 1},
        {"hold-document", W, H, 2000, {"KYC_STATUS_ID_PREPARE_FACE"}, -1, 1},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message()
                     << c.script << " " << c.width << "x" << c.height << " " << c.pictures);
        const ScriptRun run = runScript(QString::fromLatin1(c.script), c.width, c.height, c.pictures);
        EXPECT_EQ(statusWords(run.actions), c.words);
        EXPECT_EQ(run.picturesToFinish, c.picturesToFinish);
        EXPECT_EQ(countOf(run.actions, WSCommand::nnConnected), c.nnConnected);
        ASSERT_FALSE(run.actions.empty());
        EXPECT_EQ(commandOf(run.actions.front().message), WSCommand::startCamera);
    }
}

TEST(VerificationSession, AJoinAfterADropRestartsTheCameraOfThePhaseAndTheScriptGoesOn) {
    struct Case {
        const char* script;
        int picturesBefore; // pictures before the second join
        KYCCameraPosition camera;
    };
    const Case cases[] = {
        {"dropped-connection", 32, KYCCameraPosition::back}, // the drop comes 8 pictures into the back
        {"happy", 60, KYCCameraPosition::front},             // a reconnect during the selfie
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.script);
        VerificationSession session(*VerificationScript::named(QString::fromLatin1(c.script)));
        session.join();
        int drops = 0;
        for (int i = 1; i <= c.picturesBefore; ++i) {
            for (const Action& action : session.picture(W, H))
                drops += action.kind == Action::Kind::drop;
        }
        EXPECT_EQ(drops, QString::fromLatin1(c.script) == QLatin1String("dropped-connection") ? 1 : 0);
        const QString statusBefore = session.status();

        const auto again = session.join();
        ASSERT_EQ(again.size(), 2u);
        EXPECT_EQ(std::get<KYCStartCameraSignal>(again[0].message).type, c.camera);
        EXPECT_EQ(commandOf(again[1].message), WSCommand::nnConnected);
        EXPECT_EQ(session.reconnects(), 1);
        EXPECT_EQ(session.status(), statusBefore);

        for (int i = 0; i < 200 && !session.finished(); ++i) {
            for (const Action& action : session.picture(W, H))
                drops += action.kind == Action::Kind::drop;
        }
        EXPECT_EQ(session.status(), QStringLiteral("KYC_STATUS_SELFIE_OK"));
        EXPECT_LE(drops, 1) << "the connection is dropped once per attempt";
        EXPECT_TRUE(session.join().empty()) << "a finished attempt answers no join";
    }
}

TEST(VerificationSession, GuidanceReadsBackAsTheClientDecodesItAndOpensBeforeItCloses) {
    const ScriptRun run = runScript(QStringLiteral("happy"), W, H, 500);
    // Per phase, in order: what opens a kind of guidance comes before what updates and closes it.
    QStringList sequence;
    for (const Action& action : run.actions) {
        ASSERT_EQ(action.kind, Action::Kind::send);
        const QByteArray text = ServiceMessages::encode(action.message);
        const SignalFrame frame = SignalFrame::read(text);
        ASSERT_EQ(frame.kind, SignalFrame::Kind::message)
            << text.constData() << " " << frame.error.toStdString();
        EXPECT_EQ(commandOf(*frame.message), commandOf(action.message)) << text.constData();
        if (const auto* sent = std::get_if<TrackingCoordinates>(&action.message)) {
            const auto& read = std::get<TrackingCoordinates>(*frame.message);
            EXPECT_DOUBLE_EQ(read.x, sent->x);
            EXPECT_DOUBLE_EQ(read.y, sent->y);
        }
        std::visit(
            [&](const auto& m) {
                using T = std::decay_t<decltype(m)>;
                if constexpr (std::is_same_v<T, KYCStatusSignal>)
                    sequence << m.type;
                else if constexpr (std::is_same_v<T, OCRActionSignal>)
                    sequence << (m.type == OCRAction::start ? "ocr start" : "ocr stop");
                else if constexpr (std::is_same_v<T, OverlayRectangle>)
                    sequence << "rects";
                else if constexpr (std::is_same_v<T, RemoveRectangle>)
                    sequence << "removeRects";
            },
            action.message);
    }
    EXPECT_EQ(
        sequence,
        QStringList({"KYC_STATUS_ID_PREPARE_FACE", "ocr start", "ocr stop", "KYC_STATUS_ID_PREPARE_BACK",
                     "ocr start", "ocr stop", "KYC_STATUS_SELFIE_PREPARE_HEAD", "KYC_STATUS_SELFIE_TURN_HEAD",
                     "KYC_STATUS_SELFIE_TOUCH_ELEMENT", "rects", "removeRects", "KYC_STATUS_SELFIE_OK"}));

    // The fingertip ends over the touch target as the client places both (x mirrored).
    const TrackingCoordinates* last = nullptr;
    const OverlayRectangle* target = nullptr;
    for (const Action& action : run.actions) {
        if (const auto* p = std::get_if<TrackingCoordinates>(&action.message))
            last = p;
        if (const auto* r = std::get_if<OverlayRectangle>(&action.message))
            target = r;
    }
    ASSERT_TRUE(last && target);
    const double previewWidth = 390, previewHeight = 292.5;
    const double px = (1.0 - last->x) * previewWidth, py = last->y * previewHeight;
    EXPECT_GE(px, target->x * previewWidth);
    EXPECT_LE(px, target->x * previewWidth + target->w);
    EXPECT_GE(py, target->y * previewHeight);
    EXPECT_LE(py, target->y * previewHeight + target->h);
}
