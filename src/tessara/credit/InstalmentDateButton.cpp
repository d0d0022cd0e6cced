#include "tessara/credit/InstalmentDateButton.h"

#include "tessara/appearance/CurrentAppearance.h"
#include "tessara/ui/ActivityIndicator.h"
#include "tessara/ui/Glyphs.h"
#include "tessara/ui/MenuStyle.h"

#include <QActionGroup>
#include <QMenu>
#include <QPainter>
#include <QPainterPath>
#include <cstdio>

namespace tessara {

namespace {
constexpr int kHeight = 44;
constexpr int kPadding = 12;
constexpr int kImagePadding = 12;
constexpr int kChevron = 14;
constexpr int kTitlePixelSize = 20;
constexpr double kRadius = 10.0;
} // namespace

InstalmentDateButton::InstalmentDateButton(QWidget* parent)
    : BusyButton(parent) {
    QFont titleFont = currentAppearance().font();
    titleFont.setPixelSize(kTitlePixelSize);
    setFont(titleFont);
    setCursor(Qt::PointingHandCursor);
    setEnabled(false);
    menu_ = new QMenu(this);
    menu_->setObjectName(QStringLiteral("TSRCreditCalculatorController.dateMenu"));
    applyMenuStyle(menu_);
    connect(this, &QPushButton::clicked, this, &InstalmentDateButton::openMenu);
}

void InstalmentDateButton::showLoading() {
    QPalette p = palette();
    p.setColor(QPalette::ButtonText, currentAppearance().tintColor());
    setPalette(p);
    setShowsActivityIndicator(true);
    setEnabled(false);
}

void InstalmentDateButton::showDates(const std::vector<QDate>& dates, const std::optional<QDate>& selected,
                                     const QString& title,
                                     const std::function<QString(const QDate&)>& format) {
    setShowsActivityIndicator(false);
    showsChevrons_ = true;
    setTitle(title);
    setEnabled(true);

    menu_->clear();
    delete actions_;
    actions_ = new QActionGroup(menu_);
    actions_->setExclusive(true);
    for (const QDate& date : dates) {
        const QByteArray line = date.toString(Qt::ISODate).toUtf8();
        std::fprintf(stdout, "%s\n", line.constData());
        QAction* action = menu_->addAction(format(date));
        action->setObjectName(QStringLiteral("TSRCreditCalculatorController.date.") +
                              date.toString(Qt::ISODate));
        action->setData(date);
        action->setCheckable(true);
        action->setChecked(selected && *selected == date);
        actions_->addAction(action);
        connect(action, &QAction::triggered, this, [this, action, date] {
            action->setChecked(true);
            markCheckedActions(menu_);
            Q_EMIT dateChosen(date);
        });
    }
    std::fflush(stdout);
    markCheckedActions(menu_);
}

void InstalmentDateButton::setTitle(const QString& title) {
    title_ = title;
    setAccessibleName(title);
    updateGeometry();
    update();
}

void InstalmentDateButton::openMenu() {
    if (menu_->actions().isEmpty())
        return;
    menu_->setMinimumWidth(width());
    menu_->popup(mapToGlobal(QPoint(0, height() + 4)));
}

QSize InstalmentDateButton::sizeHint() const {
    const int text =
        fontMetrics().horizontalAdvance(title_.isEmpty() ? QStringLiteral("00.00.0000") : title_);
    return {kPadding + text + kImagePadding + kChevron + kPadding, kHeight};
}

void InstalmentDateButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor tint = currentAppearance().tintColor();
    QColor fill = TSRAppearance::isDarkStyle() ? QColor(118, 118, 128, 61) : QColor(118, 118, 128, 31);
    if (isDown())
        fill.setAlpha(fill.alpha() * 2);
    QPainterPath shape;
    shape.addRoundedRect(QRectF(rect()), kRadius, kRadius);
    painter.fillPath(shape, fill);
    if (showsActivityIndicator())
        return;

    QColor ink = tint;
    if (!isEnabled())
        ink.setAlphaF(0.4f);
    const QRect inner = rect().adjusted(kPadding, 0, -kPadding, 0);
    QRect textBox = inner;
    if (showsChevrons_) {
        const QRectF glyph(inner.right() - kChevron + 1, (height() - kChevron) / 2.0, kChevron, kChevron);
        drawGlyph(painter, Glyph::chevronUpChevronDown, glyph, ink);
        textBox.setRight(inner.right() - kChevron - kImagePadding);
    }
    painter.setPen(ink);
    painter.setFont(font());
    painter.drawText(textBox, Qt::AlignVCenter | Qt::AlignLeft,
                     fontMetrics().elidedText(title_, Qt::ElideRight, textBox.width()));
}

} // namespace tessara
