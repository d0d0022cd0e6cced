#pragma once

#include <QWidget>

namespace tessara {

// A transparent cover over its parent that swallows every pointer and key event while
// engaged: the form takes no input while a step is on its way, without greying out.
class InputShield : public QWidget {
    Q_OBJECT
public:
    explicit InputShield(QWidget* parent);

    // Covers the parent, comes to the front and takes the keyboard focus.
    void engage();
    void release();
    bool isEngaged() const { return engaged_; }

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    bool focusNextPrevChild(bool next) override;

private:
    bool engaged_ = false;
};

} // namespace tessara
