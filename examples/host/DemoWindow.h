#pragma once

#include <QWidget>

namespace tessara::demo {

class BankHomeScreen;
class CallbackLogPanel;

// The demo's window: the phone-sized host app on the left, the callback log on the right.
class DemoWindow : public QWidget {
    Q_OBJECT
public:
    explicit DemoWindow(QWidget* parent = nullptr);

    BankHomeScreen* homeScreen() const { return home_; }
    CallbackLogPanel* logPanel() const { return log_; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    BankHomeScreen* home_ = nullptr;
    CallbackLogPanel* log_ = nullptr;
};

} // namespace tessara::demo
