#pragma once

#include <QPointer>
#include <QWidget>

namespace tessara {

// A transparent cover over its parent that swallows every pointer and key event while
// engaged: a screen takes no input while its step is on its way, without greying out. The
// pressed button is disabled and shows its activity indicator meanwhile.
class InputShield : public QWidget {
    Q_OBJECT
public:
    explicit InputShield(QWidget* parent);

    // Covers the parent, comes to the front and takes the keyboard focus; `pressed`, when
    // given, is disabled and shows its activity indicator (a BusyButton) until release().
    void engage(QWidget* pressed = nullptr);
    void release();
    bool isEngaged() const { return engaged_; }

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    bool focusNextPrevChild(bool next) override;

private:
    void setPressedBusy(bool busy);

    bool engaged_ = false;
    QPointer<QWidget> pressed_;
};

} // namespace tessara
