#include "tessara/credit/ContinueButtonRow.h"

#include "tessara/appearance/CurrentAppearance.h"
#include "tessara/ui/ActivityIndicator.h"
#include "tessara/ui/ButtonAppearance.h"

#include <QPushButton>

namespace tessara {

ContinueButtonRow::ContinueButtonRow(const QString& title, QWidget* parent)
    : QWidget(parent)
    , button_(new QPushButton(title, this))
    , indicator_(new ActivityIndicator(ActivityIndicator::Style::large, this)) {
    indicator_->setObjectName(QStringLiteral("TSRCreditCalculatorController.loadingIndicator"));
    indicator_->setColor(currentAppearance().tintColor());
    indicator_->setHidesWhenStopped(true);
    indicator_->stopAnimating();
    button_->setObjectName(QStringLiteral("TSRCreditCalculatorController.continueButton"));
    button_->setAccessibleName(button_->objectName());
    ButtonAppearance::apply(button_);
    button_->raise();
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void ContinueButtonRow::setButtonAlpha(double alpha) {
    // A view that cannot be seen cannot be tapped either.
    const bool visible = alpha > 0.01;
    button_->setVisible(visible);
    button_->setEnabled(visible);
}

QSize ContinueButtonRow::sizeHint() const {
    const QSize hint = button_->sizeHint();
    return {hint.width(), std::max(hint.height(), button_->minimumHeight())};
}

void ContinueButtonRow::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    button_->setGeometry(rect());
    const QSize s = indicator_->sizeHint();
    indicator_->setGeometry((width() - s.width()) / 2, (height() - s.height()) / 2, s.width(), s.height());
}

} // namespace tessara
