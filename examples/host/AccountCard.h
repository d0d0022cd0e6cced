#pragma once

#include <QWidget>

namespace tessara::demo {

// The current account on the home screen: a painted card with balance and masked IBAN.
class AccountCard : public QWidget {
    Q_OBJECT
public:
    explicit AccountCard(QWidget* parent = nullptr);
    QSize sizeHint() const override { return {358, 176}; }

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace tessara::demo
