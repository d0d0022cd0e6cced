#pragma once

#include "tessara/api/TSRDelegate.h"

#include <QWidget>

class QPushButton;

namespace tessara::demo {

// The host application's home screen, phone-sized: greeting, account card, quick actions, the
// credit offer with its start button, recent payments. It is the SDK's delegate: the SDK's
// screens are laid over it while a process runs.
class BankHomeScreen : public QWidget, public TSRDelegate {
    Q_OBJECT
public:
    static constexpr int kWidth = 390;
    static constexpr int kHeight = 844;

    explicit BankHomeScreen(QWidget* parent = nullptr);

    QPushButton* startButton() const { return startButton_; }
    // Greys out the start button while a process is being started or runs.
    void setBusy(bool busy);

    // TSRDelegate: the user closed the process on step `directionId`.
    void closedFormOnStepWithId(const QString& directionId) override;

Q_SIGNALS:
    void startRequested();
    void closedOnStep(const QString& directionId);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QWidget* makeHeader();
    QWidget* makeQuickActions();
    QWidget* makeOffer();
    QWidget* makeRecentPayments();
    QWidget* makeTabBar();

    QPushButton* startButton_ = nullptr;
};

} // namespace tessara::demo
