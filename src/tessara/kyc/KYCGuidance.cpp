#include "tessara/kyc/KYCGuidance.h"

#include "tessara/appearance/CurrentAppearance.h"
#include "tessara/kyc/CutoutArtwork.h"
#include "tessara/kyc/CutoutImageView.h"
#include "tessara/kyc/InstructionsBubble.h"
#include "tessara/kyc/LabelFontFit.h"
#include "tessara/kyc/OCRProgressView.h"
#include "tessara/kyc/WhiteTouchTarget.h"
#include "tessara/resources/BundledResources.h"

#include <QFile>
#include <QLabel>
#include <cmath>

namespace tessara {

KYCGuidance::KYCGuidance(QWidget* screen)
    : screen_(screen)
    , idCardCutoutImage_(CutoutArtwork::image(QStringLiteral("id-card-cutout")))
    , idCardErrorCutoutImage_(CutoutArtwork::image(QStringLiteral("id-card-error-cutout")))
    , faceCutoutImage_(CutoutArtwork::image(QStringLiteral("face-cutout")))
    , faceErrorCutoutImage_(CutoutArtwork::image(QStringLiteral("face-error-cutout"))) {}

void KYCGuidance::buildStatusMessages(const std::vector<FieldJSON>& fields) {
    for (const FieldJSON& field : fields) {
        if (!field.specialType)
            continue;
        if (field.label)
            statusMessages_.insert(*field.specialType, *field.label);
        else
            statusMessages_.remove(*field.specialType);
    }
}

void KYCGuidance::setupInstructions() {
    TSRAppearance& theme = currentAppearance();
    QWidget* parent = screen_;
    if (theme.embedInstructionsLabelInBubble()) {
        bubble_ = new InstructionsBubble(theme.bubbleBackgroundColor(), theme.bubbleCornerRadius(), screen_);
        parent = bubble_;
    }
    label_ = new QLabel(parent);
    label_->setObjectName(QStringLiteral("instructionsLabel"));
    baseFont_ = theme.font();
    label_->setFont(baseFont_);
    QPalette palette = label_->palette();
    palette.setColor(QPalette::WindowText, Qt::white);
    label_->setPalette(palette);
    label_->setWordWrap(true);
    label_->setAlignment(Qt::AlignCenter);
    label_->setText(statusMessages_.value(QStringLiteral("KYC_WAIT_FOR_VIDEO_STREAM")));
}

void KYCGuidance::setupCutoutImageView(Cutout cutout) {
    auto* view = new CutoutImageView(screen_);
    const bool face = cutout == Cutout::face;
    view->setObjectName(face ? QStringLiteral("faceCutoutImageView")
                             : QStringLiteral("idCardCutoutImageView"));
    view->setImage(face ? faceCutoutImage_ : idCardCutoutImage_);
    view->hide();
    view->lower();
    (face ? faceCutout_ : idCardCutout_) = view;
}

void KYCGuidance::setupProgressView() {
    progress_ = new OCRProgressView(screen_);
    progress_->setProgressTintColor(currentAppearance().tintColor());
    progress_->hide();
}

void KYCGuidance::setupRectangleContainer() {
    container_ = new QWidget(screen_);
    container_->setObjectName(QStringLiteral("rectangleContainerView"));
    container_->setAttribute(Qt::WA_TransparentForMouseEvents);
    // Nothing to show before the service sends a finger frame.
    container_->hide();
}

void KYCGuidance::setupWhiteWebView() {
    ensureBundledResources();
    if (!QFile::exists(QStringLiteral(":/tessara/assets/white.html")))
        return;
    white_ = new WhiteTouchTarget(container_);
    white_->setGeometry(0, 0, 1, 1);
}

void KYCGuidance::layout(const KYCScreenLayout::Frames& frames) {
    pictureArea_ = frames.backing;
    for (CutoutImageView* view : {idCardCutout_.data(), faceCutout_.data()})
        if (view)
            view->setGeometry(frames.backing);
    if (bubble_) {
        bubble_->setGeometry(frames.bubble);
        label_->setGeometry(frames.label.translated(-frames.bubble.topLeft()));
    } else if (label_) {
        label_->setGeometry(frames.label);
    }
    if (progress_)
        progress_->setGeometry(frames.progress);
    if (container_)
        container_->setGeometry(frames.backing);
}

void KYCGuidance::fitText(int maxWidth) {
    if (label_)
        label_->setFont(LabelFontFit::fit(baseFont_, label_->text(), maxWidth));
}

int KYCGuidance::labelNaturalWidth() const {
    return label_ ? LabelFontFit::lineWidth(label_->font(), label_->text()) : 0;
}

int KYCGuidance::labelHeight(int width) const {
    return label_ && !label_->text().isEmpty() ? label_->heightForWidth(width) : 0;
}

QWidget* KYCGuidance::messageView() const {
    return bubble_ ? static_cast<QWidget*>(bubble_) : label_;
}

void KYCGuidance::showMessage(const QString& status) {
    const QString text = statusMessages_.value(status);
    messageView()->setVisible(!text.isEmpty());
    setInstructionsText(text);
}

void KYCGuidance::setInstructionsText(const QString& text) {
    label_->setText(text);
    if (textChanged)
        textChanged();
}

void KYCGuidance::applyQuality(const QString& msg, bool checkingSelfie) {
    const bool ok = msg == QLatin1String("OK");
    CutoutImageView* view = checkingSelfie ? faceCutout_ : idCardCutout_;
    if (!view)
        return;
    if (checkingSelfie)
        view->setImage(ok ? faceCutoutImage_ : faceErrorCutoutImage_);
    else
        view->setImage(ok ? idCardCutoutImage_ : idCardErrorCutoutImage_);
}

void KYCGuidance::updateProgress(float current, float max) {
    if (progress_->isHidden())
        progress_->show();
    if (current < 0)
        return;
    if (max != progressMaxQuantity_) {
        progressMaxQuantity_ = max;
        progress_->setProgress(0.0, false);
    }
    progress_->setProgress(double(current) / double(progressMaxQuantity_), true);
}

void KYCGuidance::stopProgress() {
    progress_->hide();
    progress_->setProgress(0.0, false);
    progressMaxQuantity_ = 1.0f;
}

void KYCGuidance::setFingerFrameRectangle(const std::optional<OverlayRectangle>& rectangle) {
    const bool hadOne = fingerFrameRectangle_.has_value();
    fingerFrameRectangle_ = rectangle;
    if (!rectangle) {
        removeFingerFrame();
        return;
    }
    if (hadOne)
        removeFingerFrame();
    showFingerFrame(*rectangle);
}

void KYCGuidance::showFingerFrame(const OverlayRectangle& rectangle) {
    const double width = pictureArea_.width();
    const double height = pictureArea_.height();
    if (white_) {
        white_->setAlpha(0.25);
        // The origin is a fraction of the picture, the size plain points.
        white_->setGeometry(int(std::lround(rectangle.x * width)), int(std::lround(rectangle.y * height)),
                            int(std::lround(rectangle.w)), int(std::lround(rectangle.h)));
    }
    container_->stackUnder(messageView());
    container_->show();
    fingerFrameMade_ = true;
}

void KYCGuidance::removeFingerFrame() {
    container_->hide();
    container_->lower();
}

void KYCGuidance::track(double x, double y) {
    if (!fingerFrameMade_ || !white_)
        return;
    // The front camera is in use, and the picture is mirrored for the user.
    const QPointF point((1.0 - x) * pictureArea_.width(), y * pictureArea_.height());
    white_->setAlpha(QRectF(white_->geometry()).contains(point) ? 1.0 : 0.25);
}

CutoutImageView* KYCGuidance::cutoutView(Cutout cutout) const {
    return cutout == Cutout::face ? faceCutout_ : idCardCutout_;
}

void KYCGuidance::showCutout(Cutout cutout) {
    if (CutoutImageView* view = cutoutView(cutout)) {
        view->stackUnder(container_);
        view->show();
    }
}

void KYCGuidance::hideCutout(Cutout cutout) {
    if (CutoutImageView* view = cutoutView(cutout)) {
        view->hide();
        view->lower();
    }
}

void KYCGuidance::hideGuidance() {
    hideCutout(Cutout::idCard);
    hideCutout(Cutout::face);
    removeFingerFrame();
}

} // namespace tessara
