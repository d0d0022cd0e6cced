#include "tessara/kyc/signalling/ByeSignal.h"
#include "tessara/kyc/signalling/JoinSignal.h"
#include "tessara/kyc/signalling/SignalCoding.h"
#include "tessara/kyc/signalling/SignalFrame.h"

#include <cmath>
#include <gtest/gtest.h>

namespace tessara {
namespace {

SignalFrame readFrame(const char* text) {
    return SignalFrame::read(QByteArrayView(text));
}

QByteArray encoded(const SignalMessage& message) {
    return encodeSignalMessage(message).value_or("<refused>");
}

TEST(SignalMessages, JoinAndByeBytesKeepTheKeyOrderAndSayFalse) {
    EXPECT_EQ(encodeDocument(JoinSignal{WSCommand::join, QStringLiteral("h-1"), false, false}),
              QByteArray(R"({"cmd":"join","from":"h-1","fromMobile":false,"techCheck":false})"));
    EXPECT_EQ(encodeDocument(ByeSignal{WSCommand::bye, QStringLiteral("Иван")}),
              QByteArray(R"({"cmd":"bye","from":"Иван"})"));
}

// Every command that reaches the screen, with the message it decodes to and how its own encoder
// writes it back (numbers as JSON numbers, keys sorted).
TEST(SignalMessages, EveryReceivedKindDecodesAndEncodesBack) {
    struct Row {
        const char* frame;
        SignalMessage message;
        const char* reencoded;
    };
    const Row rows[] = {
        {R"({"cmd":"rects","x":"0.25","y":"0.5","w":"40","h":"40"})",
         OverlayRectangle{WSCommand::overlayRectangle, 0.25, 0.5, 40, 40, std::nullopt},
         R"({"cmd":"rects","h":40,"w":40,"x":0.25,"y":0.5})"},
        {R"({"cmd":"rects","x":"0.1","y":"1e-7","w":"-3.5","h":"1e3","color":"#ff0000","extra":1})",
         OverlayRectangle{WSCommand::overlayRectangle, 0.1, 1e-7, -3.5, 1000, QStringLiteral("#ff0000")},
         R"({"cmd":"rects","color":"#ff0000","h":1000,"w":-3.5,"x":0.1,"y":0.0000001})"},
        {R"({"cmd":"removeRects"})", RemoveRectangle{}, R"({"cmd":"removeRects"})"},
        {R"({"cmd":"position","x":"0.75","y":"0.125"})",
         TrackingCoordinates{WSCommand::trackingCoordinates, 0.75, 0.125},
         R"({"cmd":"position","x":0.75,"y":0.125})"},
        {R"({"cmd":"ocr","type":"start"})", OCRActionSignal{WSCommand::ocrAction, OCRAction::start},
         R"({"cmd":"ocr","type":"start"})"},
        {R"({"cmd":"ocr","type":"stop"})", OCRActionSignal{WSCommand::ocrAction, OCRAction::stop},
         R"({"cmd":"ocr","type":"stop"})"},
        {R"({"cmd":"ocrProgress","current":"0.1","max":"100"})",
         OCRProgressSignal{WSCommand::ocrProgress, 0.1f, 100.0f},
         R"({"cmd":"ocrProgress","current":0.1,"max":100})"},
        {R"({"cmd":"quality","msg":"OK"})", OCRQualityMessage{WSCommand::quality, QStringLiteral("OK")},
         R"({"cmd":"quality","msg":"OK"})"},
        {R"({"cmd":"status","type":"KYC_STATUS_SELFIE_OK"})",
         KYCStatusSignal{WSCommand::status, QStringLiteral("KYC_STATUS_SELFIE_OK")},
         R"({"cmd":"status","type":"KYC_STATUS_SELFIE_OK"})"},
        {R"({"cmd":"startCamera","type":"front"})",
         KYCStartCameraSignal{WSCommand::startCamera, KYCCameraPosition::front},
         R"({"cmd":"startCamera","type":"front"})"},
        {R"({"cmd":"nn-connected"})", NNConnectedCommand{}, R"({"cmd":"nn-connected"})"},
        {R"({"cmd":"nn-connected","type":17})", NNConnectedCommand{}, R"({"cmd":"nn-connected"})"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.frame);
        const SignalFrame frame = readFrame(row.frame);
        ASSERT_EQ(frame.kind, SignalFrame::Kind::message) << frame.error.toStdString();
        EXPECT_EQ(*frame.message, row.message);
        EXPECT_EQ(encoded(*frame.message), QByteArray(row.reencoded));
    }
}

// Numbers arrive as strings. A text that is no number is 0.0 for rectangles and positions; a value
// of another JSON type fails the message in both families.
TEST(SignalMessages, NumberTextRules) {
    struct Row {
        const char* value;              // as written in the JSON
        std::optional<double> position; // x of "position"; nullopt: the message fails
        std::optional<float> progress;  // current of "ocrProgress"; nullopt: fails; NaN: any NaN
        bool progressIsFatal;
    };
    const double nan = std::nan("");
    const Row rows[] = {
        {R"("0.5")", 0.5, 0.5f, false},
        {R"("-2")", -2.0, -2.0f, false},
        {R"("1e3")", 1000.0, 1000.0f, false},
        {R"("nan")", nan, float(nan), false},
        {R"("inf")", HUGE_VAL, HUGE_VALF, false},
        {"0.5", std::nullopt, std::nullopt, false},
        {"null", std::nullopt, std::nullopt, false},
        {R"("abc")", 0.0, {}, true},
        {R"(" 0.5")", 0.0, {}, true},
        {R"("0.5 ")", 0.0, {}, true},
        {R"("")", 0.0, {}, true},
        {R"("+1")", 0.0, {}, true},
        {R"("0,5")", 0.0, {}, true},
        {R"("1e400")", 0.0, {}, true},
    };
    const auto same = [](double a, double b) { return (std::isnan(a) && std::isnan(b)) || a == b; };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.value);
        const QByteArray position = QByteArray(R"({"cmd":"position","y":"1","x":)") + row.value + "}";
        const SignalFrame frame = SignalFrame::read(position);
        if (row.position) {
            ASSERT_EQ(frame.kind, SignalFrame::Kind::message);
            const auto& decoded = std::get<TrackingCoordinates>(*frame.message);
            EXPECT_TRUE(same(decoded.x, *row.position)) << decoded.x;
            EXPECT_EQ(decoded.y, 1.0);
        } else {
            EXPECT_EQ(frame.kind, SignalFrame::Kind::undecodable);
        }

        const QByteArray progress =
            QByteArray(R"({"cmd":"ocrProgress","max":"1","current":)") + row.value + "}";
        if (row.progressIsFatal) {
            EXPECT_DEATH(SignalFrame::read(progress), "OCR progress value .* is no number");
        } else if (row.progress) {
            const SignalFrame read = SignalFrame::read(progress);
            ASSERT_EQ(read.kind, SignalFrame::Kind::message);
            EXPECT_TRUE(same(std::get<OCRProgressSignal>(*read.message).current, *row.progress));
        } else {
            EXPECT_EQ(SignalFrame::read(progress).kind, SignalFrame::Kind::undecodable);
        }
    }
}

TEST(SignalMessages, MalformedMessagesFailAndIgnoredFramesAreIgnored) {
    struct Row {
        const char* frame;
        SignalFrame::Kind kind;
    };
    const Row rows[] = {
        {R"({"cmd":"rects","x":"1","y":"1","w":"1"})", SignalFrame::Kind::undecodable},
        {R"({"cmd":"rects","x":"1","y":"1","w":"1","h":"1","color":5})", SignalFrame::Kind::undecodable},
        {R"({"cmd":"ocr","type":"pause"})", SignalFrame::Kind::undecodable},
        {R"({"cmd":"startCamera","type":"side"})", SignalFrame::Kind::undecodable},
        {R"({"cmd":"startCamera","type":"Back"})", SignalFrame::Kind::undecodable},
        {R"({"cmd":"quality"})", SignalFrame::Kind::undecodable},
        {R"({"cmd":"status","type":null})", SignalFrame::Kind::undecodable},
        // A progress that fails anyway never reaches the fatal number check.
        {R"({"cmd":"ocrProgress","current":1,"max":"abc"})", SignalFrame::Kind::undecodable},
        {R"({"cmd":"status","type":"x","current":"abc"})", SignalFrame::Kind::message},
        {R"({"type":"start"})", SignalFrame::Kind::ignored},
        {R"({"cmd":"bye","from":"x"})", SignalFrame::Kind::ignored},
        {R"({"cmd":"join"})", SignalFrame::Kind::ignored},
        {R"({"cmd":"hb"})", SignalFrame::Kind::ignored},
        {R"({"cmd":"heartbeat"})", SignalFrame::Kind::ignored},
        {R"({"cmd":"RECTS","x":"1"})", SignalFrame::Kind::ignored},
        {R"({"cmd":""})", SignalFrame::Kind::ignored},
    };
    for (const Row& row : rows) {
        const SignalFrame frame = readFrame(row.frame);
        EXPECT_EQ(frame.kind, row.kind) << row.frame;
        if (row.kind == SignalFrame::Kind::undecodable) {
            EXPECT_TRUE(frame.error.contains(QString::fromUtf8(row.frame))) << frame.error.toStdString();
        }
    }
}

TEST(SignalMessagesDeathTest, FramesThatAreNoJsonObjectOrHaveNoTextCommandEndTheProgram) {
    EXPECT_DEATH(readFrame("not json"), "no JSON: not json");
    EXPECT_DEATH(readFrame(R"([{"cmd":"rects"}])"), "no JSON object");
    EXPECT_DEATH(readFrame(R"({"cmd":null})"), "\"cmd\" of a signalling frame is no string");
}

TEST(SignalMessages, NumbersThatJsonCannotHoldAreRefusedByTheEncoder) {
    EXPECT_EQ(encodeSignalMessage(TrackingCoordinates{WSCommand::trackingCoordinates, std::nan(""), 0}),
              std::nullopt);
    EXPECT_EQ(encodeSignalMessage(OCRProgressSignal{WSCommand::ocrProgress, HUGE_VALF, 1}), std::nullopt);
}

} // namespace
} // namespace tessara
