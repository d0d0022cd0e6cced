#include "host/ScreenshotRecorder.h"

#include <QDir>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QRegularExpression>
#include <QWidget>

namespace tessara::demo {

ScreenshotRecorder::ScreenshotRecorder(QString directory)
    : directory_(std::move(directory)) {}

QString ScreenshotRecorder::fileName(int index, const QString& name) {
    QString safe = name.toLower();
    // Direction ids are free text: keep letters, digits, '-' and '_', fold the rest into '-'.
    static const QRegularExpression unsafe(QStringLiteral("[^\\p{L}\\p{N}_-]+"));
    safe.replace(unsafe, QStringLiteral("-"));
    while (safe.startsWith(u'-'))
        safe.remove(0, 1);
    while (safe.endsWith(u'-'))
        safe.chop(1);
    if (safe.isEmpty())
        safe = QStringLiteral("screen");
    return QStringLiteral("%1-%2.png").arg(index, 2, 10, QLatin1Char('0')).arg(safe);
}

QImage ScreenshotRecorder::composeAlert(const QImage& background, const QImage& alert) {
    QImage out = background.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    QPainter p(&out);
    p.setRenderHint(QPainter::Antialiasing);
    const qreal dpr = out.devicePixelRatio();
    const QSizeF area = QSizeF(out.size()) / dpr;
    p.fillRect(QRectF(QPointF(0, 0), area), QColor(0, 0, 0, 72));
    QSizeF size = QSizeF(alert.size()) / alert.devicePixelRatio();
    // A box wider than the screen is drawn scaled down to keep a margin, as a phone would.
    const qreal maxWidth = area.width() - 32;
    if (size.width() > maxWidth)
        size = size * (maxWidth / size.width());
    const QRectF target(QPointF((area.width() - size.width()) / 2, (area.height() - size.height()) / 2),
                        size);
    QPainterPath clip;
    clip.addRoundedRect(target, 14, 14);
    p.setClipPath(clip);
    p.drawImage(target, alert);
    p.setClipping(false);
    p.setPen(QPen(QColor(0, 0, 0, 40), 1));
    p.drawPath(clip);
    return out;
}

QString ScreenshotRecorder::captureWidget(QWidget* widget, const QString& name) {
    if (!enabled() || !widget)
        return {};
    return save(widget->grab().toImage(), name);
}

QString ScreenshotRecorder::captureAlert(QWidget* background, QWidget* alert, const QString& name) {
    if (!enabled() || !background || !alert)
        return {};
    return save(composeAlert(background->grab().toImage(), alert->grab().toImage()), name);
}

QString ScreenshotRecorder::save(const QImage& image, const QString& name) {
    if (!prepared_) {
        QDir().mkpath(directory_);
        // Pictures of an earlier run would mix with this run's numbering.
        const QDir dir(directory_);
        for (const QString& old : dir.entryList({QStringLiteral("[0-9][0-9]-*.png")}, QDir::Files))
            QFile::remove(dir.filePath(old));
        prepared_ = true;
    }
    const QString path = QDir(directory_).filePath(fileName(next_, name));
    if (!image.save(path, "PNG"))
        return {};
    ++next_;
    return path;
}

} // namespace tessara::demo
