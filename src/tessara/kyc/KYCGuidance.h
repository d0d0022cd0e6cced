#pragma once

#include "tessara/documents/FieldJSON.h"
#include "tessara/kyc/KYCScreenLayout.h"
#include "tessara/kyc/signalling/OverlayRectangle.h"

#include <QFont>
#include <QHash>
#include <QImage>
#include <QPointer>
#include <QString>
#include <functional>
#include <optional>
#include <vector>

class QLabel;
class QWidget;

namespace tessara {

class CutoutImageView;
class InstructionsBubble;
class OCRProgressView;
class WhiteTouchTarget;

// What the user reads and sees over the picture during a verification step: the guidance text
// (on its bubble when the theme asks), the document and face frames with their error looks, the
// progress of the document reading, and the touch target of the liveness check. The views are
// children of the screen; this object only steers them. Main thread only.
class KYCGuidance {
public:
    enum class Cutout { idCard, face };

    explicit KYCGuidance(QWidget* screen);

    // Called when the text changes size, so the screen can lay it out again.
    std::function<void()> textChanged;

    // Status word to text, from the document's fields that carry a word as their special type:
    // a label sets the word's text, a field without one removes it; later fields win.
    void buildStatusMessages(const std::vector<FieldJSON>& fields);
    const QHash<QString, QString>& statusMessages() const { return statusMessages_; }

    // Building, in the screen's order.
    void setupInstructions();
    void setupCutoutImageView(Cutout cutout);
    void setupProgressView();
    void setupRectangleContainer();
    void setupWhiteWebView();
    void layout(const KYCScreenLayout::Frames& frames);
    // Shrinks the text's font so it stays on one line in `maxWidth`, as far as LabelFontFit allows.
    void fitText(int maxWidth);
    // What the layout needs to know of the text, in the font it has now.
    int labelNaturalWidth() const;
    int labelHeight(int width) const;

    // The text of `status` in the label, or the guidance hidden when the word has none.
    void showMessage(const QString& status);
    void setInstructionsText(const QString& text);
    // "OK" shows the plain frame of the phase, anything else its error frame.
    void applyQuality(const QString& msg, bool checkingSelfie);
    void updateProgress(float current, float max);
    void stopProgress();
    // The service's finger frame; none removes it.
    void setFingerFrameRectangle(const std::optional<OverlayRectangle>& rectangle);
    // The fingertip at (x, y), fractions of the picture as the camera sees it (so x is mirrored).
    void track(double x, double y);

    void showCutout(Cutout cutout);
    void hideCutout(Cutout cutout);
    // Both frames and the finger frame go.
    void hideGuidance();

    QLabel* instructionsLabel() const { return label_; }
    InstructionsBubble* bubble() const { return bubble_; }
    // The bubble when there is one, otherwise the label: what a message shows or hides.
    QWidget* messageView() const;
    CutoutImageView* cutoutView(Cutout cutout) const;
    OCRProgressView* progressView() const { return progress_; }
    QWidget* rectangleContainer() const { return container_; }
    WhiteTouchTarget* whiteWebView() const { return white_; }
    float progressMaxQuantity() const { return progressMaxQuantity_; }

private:
    void showFingerFrame(const OverlayRectangle& rectangle);
    void removeFingerFrame();

    QWidget* screen_;
    QHash<QString, QString> statusMessages_;
    QLabel* label_ = nullptr;              // child of the screen or of the bubble
    QFont baseFont_;                       // the theme's, before any shrinking
    InstructionsBubble* bubble_ = nullptr; // child of the screen
    QPointer<CutoutImageView> idCardCutout_;
    QPointer<CutoutImageView> faceCutout_;
    QImage idCardCutoutImage_, idCardErrorCutoutImage_, faceCutoutImage_, faceErrorCutoutImage_;
    OCRProgressView* progress_ = nullptr; // child of the screen
    QWidget* container_ = nullptr;        // child of the screen
    WhiteTouchTarget* white_ = nullptr;   // child of container_
    QRect pictureArea_;
    float progressMaxQuantity_ = 1.0f;
    std::optional<OverlayRectangle> fingerFrameRectangle_;
    // Set by the first finger frame and kept: tracking works from then on, shown or not.
    bool fingerFrameMade_ = false;
};

} // namespace tessara
