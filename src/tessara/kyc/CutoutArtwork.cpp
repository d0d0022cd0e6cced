#include "tessara/kyc/CutoutArtwork.h"

#include <QHash>
#include <QPainter>
#include <QPainterPath>

namespace tessara {

namespace {

const QColor kDim(0, 0, 0, 115);
const QColor kGuide(255, 255, 255);
const QColor kError(255, 69, 58);

// An identity card is 85.6 x 54 mm; the window keeps that shape.
const QRectF kCardWindow(132, 155, 936, 590);
const double kCardRadius = 40;
const QRectF kFaceWindow(350, 120, 500, 660);

QPainterPath cardBrackets() {
    const double arm = 96;
    const QRectF r = kCardWindow.adjusted(-14, -14, 14, 14);
    const double k = kCardRadius + 14;
    QPainterPath path;
    // One bracket per corner, each an arc of the window's corner with two straight arms.
    path.moveTo(r.left(), r.top() + arm);
    path.lineTo(r.left(), r.top() + k);
    path.arcTo(QRectF(r.left(), r.top(), 2 * k, 2 * k), 180, -90);
    path.lineTo(r.left() + arm, r.top());
    path.moveTo(r.right() - arm, r.top());
    path.lineTo(r.right() - k, r.top());
    path.arcTo(QRectF(r.right() - 2 * k, r.top(), 2 * k, 2 * k), 90, -90);
    path.lineTo(r.right(), r.top() + arm);
    path.moveTo(r.right(), r.bottom() - arm);
    path.lineTo(r.right(), r.bottom() - k);
    path.arcTo(QRectF(r.right() - 2 * k, r.bottom() - 2 * k, 2 * k, 2 * k), 0, -90);
    path.lineTo(r.right() - arm, r.bottom());
    path.moveTo(r.left() + arm, r.bottom());
    path.lineTo(r.left() + k, r.bottom());
    path.arcTo(QRectF(r.left(), r.bottom() - 2 * k, 2 * k, 2 * k), 270, -90);
    path.lineTo(r.left(), r.bottom() - arm);
    return path;
}

QImage draw(bool face, bool error) {
    QImage image(CutoutArtwork::kWidth, CutoutArtwork::kHeight, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);

    QPainterPath window;
    if (face)
        window.addEllipse(kFaceWindow);
    else
        window.addRoundedRect(kCardWindow, kCardRadius, kCardRadius);
    QPainterPath surround;
    surround.addRect(0, 0, CutoutArtwork::kWidth, CutoutArtwork::kHeight);
    painter.fillPath(surround.subtracted(window), kDim);

    const QColor line = error ? kError : kGuide;
    if (face) {
        painter.setPen(QPen(line, 8));
        painter.drawPath(window);
    } else {
        painter.setPen(QPen(QColor(line.red(), line.green(), line.blue(), 110), 3));
        painter.drawPath(window);
        painter.setPen(QPen(line, 12, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.drawPath(cardBrackets());
    }
    painter.end();
    return image;
}

} // namespace

QImage CutoutArtwork::image(const QString& name) {
    static QHash<QString, QImage> drawn;
    if (const auto found = drawn.constFind(name); found != drawn.constEnd())
        return *found;
    QImage image;
    if (name == QLatin1String("id-card-cutout"))
        image = draw(false, false);
    else if (name == QLatin1String("id-card-error-cutout"))
        image = draw(false, true);
    else if (name == QLatin1String("face-cutout"))
        image = draw(true, false);
    else if (name == QLatin1String("face-error-cutout"))
        image = draw(true, true);
    else
        return {};
    image.setText(QStringLiteral("name"), name);
    drawn.insert(name, image);
    return image;
}

} // namespace tessara
