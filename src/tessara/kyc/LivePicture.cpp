#include "tessara/kyc/LivePicture.h"

#include "tessara/kyc/FramePicture.h"

#include <QPainter>
#include <QVariantAnimation>
#include <mutex>
#include <optional>

namespace tessara {

// Written by the camera's thread, read by the main thread; the mutex is held only to move a frame
// (a shared pointer to its pixels) in or out.
struct LivePicture::Mailbox {
    struct Entry {
        VideoFrame frame;
        bool portrait = false;
        int rotation = 0;
    };
    std::mutex mutex;
    std::optional<Entry> newest;
};

LivePicture::LivePicture(QWidget* parent)
    : QWidget(parent)
    , mailbox_(std::make_shared<Mailbox>())
    , flip_(new QVariantAnimation(this)) {
    setObjectName(QStringLiteral("livePicture"));
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    refresh_.setInterval(16);
    connect(&refresh_, &QTimer::timeout, this, &LivePicture::takeFrame);
    refresh_.start();
    flip_->setDuration(kFlipDurationMs);
    flip_->setStartValue(0.0);
    flip_->setEndValue(180.0);
    flip_->setEasingCurve(QEasingCurve::InOutQuad);
    connect(flip_, &QVariantAnimation::valueChanged, this, qOverload<>(&QWidget::update));
    connect(flip_, &QVariantAnimation::finished, this, qOverload<>(&QWidget::update));
}

LivePicture::~LivePicture() = default;

VideoDataOutput::PreviewSink LivePicture::sink() const {
    return [mailbox = mailbox_](const VideoFrame& frame, bool portrait, int rotation) {
        std::lock_guard lock(mailbox->mutex);
        mailbox->newest = Mailbox::Entry{frame, portrait, rotation};
    };
}

void LivePicture::flip(FlipDirection direction) {
    lastFlip_ = direction;
    ++flipCount_;
    flip_->stop();
    flip_->start();
}

bool LivePicture::isFlipping() const {
    return flip_->state() == QAbstractAnimation::Running;
}

void LivePicture::takeFrame() {
    std::optional<Mailbox::Entry> entry;
    {
        std::lock_guard lock(mailbox_->mutex);
        entry.swap(mailbox_->newest);
    }
    if (!entry || !isVisible())
        return;
    const QSize target = (QSizeF(size()) * devicePixelRatioF()).toSize();
    picture_ = FramePicture::render(entry->frame, entry->portrait, entry->rotation, target, mirrored_);
    picture_.setDevicePixelRatio(devicePixelRatioF());
    ++framesShown_;
    update();
}

void LivePicture::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), Qt::black);
    if (picture_.isNull())
        return;
    if (!isFlipping()) {
        painter.drawImage(rect(), picture_);
        return;
    }
    // Past the half turn the card shows its other side, so the angle folds back.
    double angle = flip_->currentValue().toDouble();
    if (angle > 90.0)
        angle -= 180.0;
    if (lastFlip_ == FlipDirection::fromRight)
        angle = -angle;
    const QPointF centre = QRectF(rect()).center();
    QTransform turn;
    turn.translate(centre.x(), centre.y());
    turn.rotate(angle, Qt::YAxis);
    turn.translate(-centre.x(), -centre.y());
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.setTransform(turn);
    painter.drawImage(rect(), picture_);
}

} // namespace tessara
