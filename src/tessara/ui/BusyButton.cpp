#include "tessara/ui/BusyButton.h"

#include "tessara/ui/ActivityIndicator.h"

namespace tessara {

BusyButton::BusyButton(QWidget* parent)
    : BusyButton(QString(), parent) {}

BusyButton::BusyButton(const QString& title, QWidget* parent)
    : QPushButton(title, parent)
    , indicator_(new ActivityIndicator(ActivityIndicator::Style::medium, this)) {
    indicator_->setHidesWhenStopped(true);
}

BusyButton::~BusyButton() = default;

void BusyButton::setShowsActivityIndicator(bool shows) {
    if (shows == showsActivityIndicator_)
        return;
    showsActivityIndicator_ = shows;
    if (shows) {
        // The title gives way to the spinner but the button keeps its size.
        savedTitle_ = text();
        setMinimumWidth(width());
        setText(QString());
        indicator_->setColor(palette().color(QPalette::ButtonText));
        placeIndicator();
        indicator_->startAnimating();
    } else {
        indicator_->stopAnimating();
        setText(savedTitle_);
        setMinimumWidth(0);
    }
}

void BusyButton::resizeEvent(QResizeEvent* event) {
    QPushButton::resizeEvent(event);
    placeIndicator();
}

void BusyButton::placeIndicator() {
    const QSize s = indicator_->sizeHint();
    indicator_->setGeometry((width() - s.width()) / 2, (height() - s.height()) / 2, s.width(), s.height());
}

} // namespace tessara
