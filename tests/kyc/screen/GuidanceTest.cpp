#include "ScreenTestSupport.h"
#include "tessara/appearance/CurrentAppearance.h"
#include "tessara/kyc/CutoutImageView.h"
#include "tessara/kyc/InstructionsBubble.h"
#include "tessara/kyc/OCRProgressView.h"
#include "tessara/kyc/WhiteTouchTarget.h"
#include "tessara/kyc/video/TSRCameraPreviewView.h"
#include "tessara/ui/BusyButton.h"

#include <QFontMetrics>
#include <QLabel>
#include <cmath>

namespace tessara::test {
namespace {

FieldJSON textField(const char* specialType, std::optional<QString> label) {
    FieldJSON f;
    f.type = FieldType::text;
    f.specialType = QString::fromLatin1(specialType);
    f.label = std::move(label);
    return f;
}

TEST(Guidance, StatusMessagesComeFromTheFieldsAndLaterFieldsWin) {
    KYCGuidance guidance(nullptr);
    guidance.buildStatusMessages(
        {textField("A", QStringLiteral("first")), textField("B", QStringLiteral("b")),
         textField("A", QStringLiteral("second")), textField("B", std::nullopt), textField("C", QString())});
    EXPECT_EQ(guidance.statusMessages(),
              (QHash<QString, QString>{{QStringLiteral("A"), QStringLiteral("second")},
                                       {QStringLiteral("C"), {}}}));
}

TEST(Guidance, AWordWithoutTextHidesTheGuidanceWithOrWithoutBubble) {
    for (const bool bubble : {false, true}) {
        SCOPED_TRACE(bubble);
        currentAppearance().setEmbedInstructionsLabelInBubble(bubble);
        ScreenRig rig;
        QWidget* view = rig.screen->guidance()->messageView();
        EXPECT_EQ(view->objectName(), bubble ? "bubbleInstructionsView" : "instructionsLabel");
        EXPECT_EQ(rig.screen->guidance()->instructionsLabel()->text(), QStringLiteral("Свързване…"));
        rig.status("KYC_STATUS_ROI_NOT_FOUND"); // no field
        EXPECT_FALSE(view->isVisible());
        rig.status("KYC_STATUS_IMAGE_BLURRED");
        EXPECT_TRUE(view->isVisible());
        EXPECT_EQ(rig.screen->guidance()->instructionsLabel()->text(), QStringLiteral("Размазано"));
    }
    currentAppearance().setEmbedInstructionsLabelInBubble(false);
}

TEST(Guidance, QualityPicksThePhasesFrameOrItsErrorLook) {
    struct Row {
        bool selfie;
        const char* msg;
        const char* view;
        const char* image;
    };
    const Row rows[] = {
        {false, "OK", "idCardCutoutImageView", "id-card-cutout"},
        {false, "BLURRED", "idCardCutoutImageView", "id-card-error-cutout"},
        {true, "OK", "faceCutoutImageView", "face-cutout"},
        {true, "", "faceCutoutImageView", "face-error-cutout"},
    };
    ScreenRig rig;
    rig.screen->loadViewIfNeeded();
    for (const Row& row : rows) {
        SCOPED_TRACE(row.msg);
        rig.screen->guidance()->applyQuality(QStringLiteral("x"), row.selfie); // start from the other look
        rig.screen->guidance()->applyQuality(QString::fromLatin1(row.msg), row.selfie);
        auto* view = rig.screen->findChild<CutoutImageView*>(QString::fromLatin1(row.view));
        EXPECT_EQ(view->imageName(), QString::fromLatin1(row.image));
    }
}

TEST(Guidance, TheProgressBarShowsResetsOnANewMaximumAndIgnoresNegativeValues) {
    ScreenRig rig;
    TSRNativeKYCController& s = *rig.screen;
    OCRProgressView* bar = s.guidance()->progressView();
    EXPECT_FALSE(bar->isVisible());
    s.didReceiveOCRAction(OCRAction::start);
    EXPECT_TRUE(bar->isVisible());
    EXPECT_EQ(bar->progress(), 0.0);
    s.didReceiveOCRProgress(3, 4);
    EXPECT_EQ(bar->progress(), 0.75);
    s.didReceiveOCRProgress(-1, 10);
    EXPECT_EQ(bar->progress(), 0.75) << "a negative value leaves the bar alone";
    EXPECT_EQ(s.guidance()->progressMaxQuantity(), 4.0f);
    s.didReceiveOCRProgress(1, 10);
    EXPECT_FLOAT_EQ(bar->progress(), 0.1);
    s.didReceiveOCRAction(OCRAction::stop);
    EXPECT_FALSE(bar->isVisible());
    EXPECT_EQ(bar->progress(), 0.0);
    EXPECT_EQ(s.guidance()->progressMaxQuantity(), 1.0f);
}

// The box's origin is a fraction of the picture, its size plain points; the fingertip's x is
// mirrored; removing the box hides it but tracking still lights it.
TEST(Guidance, TheFingerFrameAndTheTracking) {
    ScreenRig rig;
    TSRNativeKYCController& s = *rig.screen;
    s.resize(400, 800); // picture area 400 x 300
    WhiteTouchTarget* target = s.guidance()->whiteWebView();
    ASSERT_NE(target, nullptr);
    s.didReceiveTrackingCoordinates(0.5, 0.5); // before any box: nothing
    EXPECT_EQ(target->alpha(), 1.0);

    s.didReceiveOverlayRectangle({WSCommand::overlayRectangle, 0.5, 0.1, 40, 20, std::nullopt});
    EXPECT_EQ(target->geometry(), QRect(200, 30, 40, 20));
    EXPECT_EQ(target->alpha(), 0.25);
    EXPECT_TRUE(rig.shown("rectangleContainerView"));

    struct Row {
        double x, y, alpha;
    };
    for (const Row& row : {Row{0.45, 0.15, 1.0}, Row{0.55, 0.15, 0.25}, Row{0.45, 0.5, 0.25}}) {
        s.didReceiveTrackingCoordinates(row.x, row.y);
        EXPECT_EQ(target->alpha(), row.alpha) << row.x << "," << row.y;
    }
    s.didRemoveOverlayRectangle({});
    EXPECT_FALSE(rig.shown("rectangleContainerView"));
    s.didReceiveTrackingCoordinates(0.45, 0.15);
    EXPECT_EQ(target->alpha(), 1.0);
}

TEST(Guidance, ThePictureAreaIsFourByThreeAndTheTextSits32BelowIt) {
    ScreenRig rig;
    TSRNativeKYCController& s = *rig.screen;
    s.resize(390, 700);
    QWidget* video = s.videoView();
    EXPECT_EQ(video->size(), QSize(390, 293));
    QLabel* label = s.guidance()->instructionsLabel();
    EXPECT_EQ(label->geometry().top(), 293 + 32);
    const QRect button = s.continueButton()->geometry();
    EXPECT_EQ(button.bottom() + 1, 700 - 16);
    EXPECT_EQ(button.left(), 16);
}

// Relative luminance and contrast ratio as accessibility checkers compute them.
double luminance(const QColor& c) {
    auto channel = [](double v) { return v <= 0.03928 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4); };
    return 0.2126 * channel(c.redF()) + 0.7152 * channel(c.greenF()) + 0.0722 * channel(c.blueF());
}

double contrast(const QColor& a, const QColor& b) {
    const double la = luminance(a), lb = luminance(b);
    return (std::max(la, lb) + 0.05) / (std::min(la, lb) + 0.05);
}

TEST(Guidance, TheBubbleOfTheDefaultThemeIsDarkUnderItsWhiteTextOnALightApplication) {
    currentAppearance().setEmbedInstructionsLabelInBubble(true);
    ScreenRig rig;
    ASSERT_FALSE(TSRAppearance::isDarkStyle()) << "the application is light";
    rig.screen->resize(390, 700);
    InstructionsBubble* bubble = rig.screen->guidance()->bubble();
    ASSERT_NE(bubble, nullptr);
    const QColor fill = bubble->grab().toImage().pixelColor(bubble->width() / 2, 3);
    const QColor text = rig.screen->guidance()->instructionsLabel()->palette().color(QPalette::WindowText);
    EXPECT_GE(contrast(fill, text), 4.5)
        << fill.name().toStdString() << " under " << text.name().toStdString();
    currentAppearance().setEmbedInstructionsLabelInBubble(false);
}

// Text a little too wide shrinks and stays on one line; text too wide even at three quarters of
// the size wraps at that size.
TEST(Guidance, TheTextShrinksToThreeQuartersBeforeItWraps) {
    const QFont saved = currentAppearance().font();
    QFont font = saved;
    font.setPixelSize(20);
    currentAppearance().setFont(font);
    ScreenRig rig;
    rig.screen->resize(390, 700);
    QLabel* label = rig.screen->guidance()->instructionsLabel();
    const int room = 390 - 2 * 16;
    // Words until the text on one line at the theme's size is `ratio` of the room.
    auto textOf = [&](double ratio) {
        QString text = QStringLiteral("Покажете");
        while (QFontMetrics(font).horizontalAdvance(text) < ratio * room)
            text += QStringLiteral(" карта");
        return text;
    };
    struct Row {
        double ratio;
        int smallest, largest; // pixel sizes
        bool wraps;
    };
    const Row rows[] = {{0.8, 20, 20, false}, {1.15, 15, 19, false}, {1.8, 15, 15, true}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.ratio);
        rig.screen->guidance()->setInstructionsText(textOf(row.ratio));
        EXPECT_GE(label->font().pixelSize(), row.smallest);
        EXPECT_LE(label->font().pixelSize(), row.largest);
        const int lineHeight = QFontMetrics(label->font()).lineSpacing();
        EXPECT_EQ(label->height() > lineHeight * 3 / 2, row.wraps) << label->height();
        EXPECT_LE(label->width(), room);
    }
    currentAppearance().setFont(saved);
}

} // namespace
} // namespace tessara::test
