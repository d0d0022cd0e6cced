#pragma once

#include "tessara/kyc/video/VideoDataOutput.h"

#include <QImage>
#include <QTimer>
#include <QWidget>
#include <memory>

class QVariantAnimation;

namespace tessara {

// The live camera picture inside the preview view: the newest frame the capture output handed
// over, drawn to fill the view (aspect fill), mirrored for the front camera. Frames are taken
// from the camera's thread into a one-frame mailbox and drawn at most once per screen refresh,
// so a slow screen never holds the camera back. Main thread, apart from the sink.
class LivePicture : public QWidget {
    Q_OBJECT
public:
    enum class FlipDirection { fromLeft, fromRight };
    static constexpr int kFlipDurationMs = 300;

    explicit LivePicture(QWidget* parent = nullptr);
    ~LivePicture() override;

    // For VideoDataOutput::setPreviewSink. It keeps only the mailbox, so it may outlive this view.
    VideoDataOutput::PreviewSink sink() const;

    void setMirrored(bool mirrored) { mirrored_ = mirrored; }
    bool isMirrored() const { return mirrored_; }

    // Turns the picture over like a card, as the camera changes sides.
    void flip(FlipDirection direction);
    bool isFlipping() const;
    int flipCount() const { return flipCount_; }
    FlipDirection lastFlipDirection() const { return lastFlip_; }

    // Frames drawn so far, and the picture on screen now.
    int framesShown() const { return framesShown_; }
    const QImage& picture() const { return picture_; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    struct Mailbox;
    void takeFrame();

    std::shared_ptr<Mailbox> mailbox_;
    QTimer refresh_;
    QImage picture_;
    bool mirrored_ = false;
    int framesShown_ = 0;
    QVariantAnimation* flip_ = nullptr; // child
    int flipCount_ = 0;
    FlipDirection lastFlip_ = FlipDirection::fromLeft;
};

} // namespace tessara
