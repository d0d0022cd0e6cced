#include "tessara/api/TSRNavigationBar.h"

#include "tessara/appearance/CurrentAppearance.h"

#include <QEvent>
#include <QLabel>
#include <QPainter>
#include <QScopedValueRollback>

namespace tessara {

namespace {
constexpr int kTitleToItemSpacing = 8;
} // namespace

TSRNavigationBar::TSRNavigationBar(QWidget* parent)
    : QWidget(parent)
    , titleLabel_(new QLabel(this)) {
    setObjectName(QStringLiteral("TSRNavigationViewController.navigationBar"));
    titleLabel_->setObjectName(QStringLiteral("TSRNavigationViewController.title"));
    titleLabel_->setAlignment(Qt::AlignCenter);
    titleLabel_->setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    applyTheme();
}

void TSRNavigationBar::applyTheme() {
    const QScopedValueRollback guard(applyingTheme_, true);
    const InterfaceStyle forced = TSRAppearance::interfaceStyle(this);
    const TSRAppearance::StyleScope style(forced);
    TSRAppearance& theme = currentAppearance();
    // A screen that forces the dark style (the camera screen) gets the system's dark bar: a
    // host's light background would leave the light glyphs of that style unreadable.
    const bool forcedDark = forced == InterfaceStyle::dark;
    background_ = forcedDark ? QColor(Qt::black) : theme.backgroundColor();
    hairline_ = TSRAppearance::separatorColor();
    titleLabel_->setFont(theme.navigationTitleFont());
    QPalette titlePalette = titleLabel_->palette();
    titlePalette.setColor(QPalette::WindowText, forcedDark ? QColor(Qt::white) : theme.textColor());
    titleLabel_->setPalette(titlePalette);
    // Bar items take the tint, as buttons in a mobile bar do.
    QPalette barPalette = palette();
    barPalette.setColor(QPalette::ButtonText, theme.tintColor());
    barPalette.setColor(QPalette::WindowText, theme.tintColor());
    setPalette(barPalette);
    update();
}

void TSRNavigationBar::setTitle(const QString& title) {
    title_ = title;
    layoutItems();
}

void TSRNavigationBar::setRightItem(QWidget* item) {
    if (item == rightItem_)
        return;
    if (rightItem_) {
        rightItem_->removeEventFilter(this);
        rightItem_->hide();
    }
    rightItem_ = item;
    if (item) {
        item->setParent(this);
        // The item may change its size (a title set later); keep it placed.
        item->installEventFilter(this);
        item->show();
    }
    layoutItems();
}

QSize TSRNavigationBar::sizeHint() const {
    return {320, kHeight};
}

QSize TSRNavigationBar::minimumSizeHint() const {
    return {0, kHeight};
}

void TSRNavigationBar::layoutItems() {
    int trailingReserve = kSideMargin;
    if (rightItem_) {
        const QSize hint = rightItem_->sizeHint().boundedTo(QSize(width() / 2, kHeight));
        rightItem_->setGeometry(width() - kSideMargin - hint.width(), (kHeight - hint.height()) / 2,
                                hint.width(), hint.height());
        trailingReserve += hint.width() + kTitleToItemSpacing;
    }
    // Equal room on both sides keeps the title centred on the bar, not on what is left.
    const int available = qMax(0, width() - 2 * trailingReserve);
    const QFontMetrics metrics(titleLabel_->font());
    titleLabel_->setText(metrics.elidedText(title_, Qt::ElideRight, available));
    titleLabel_->setGeometry(trailingReserve, 0, available, kHeight);
}

void TSRNavigationBar::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), background_);
    // A hairline: one device pixel on any screen.
    const qreal pixel = 1.0 / devicePixelRatioF();
    painter.fillRect(QRectF(0, height() - pixel, width(), pixel), hairline_);
}

void TSRNavigationBar::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    layoutItems();
}

void TSRNavigationBar::changeEvent(QEvent* event) {
    if (event->type() == QEvent::PaletteChange && !applyingTheme_)
        applyTheme();
    QWidget::changeEvent(event);
}

bool TSRNavigationBar::eventFilter(QObject* watched, QEvent* event) {
    if (watched == rightItem_ && event->type() == QEvent::LayoutRequest)
        layoutItems();
    return QWidget::eventFilter(watched, event);
}

} // namespace tessara
