#pragma once

#include "tessara/api/InterfaceOrientations.h"
#include "tessara/appearance/DynamicColor.h"

#include <QList>
#include <QPointer>
#include <QWidget>
#include <memory>
#include <vector>

class QVBoxLayout;

namespace tessara {

class TSRNavigationBar;
class TSRViewController;

// A navigation screen: a bar (title and right bar item of the visible screen) over the
// screen on top of its stack. Steps never push: each step replaces the stack, so there is
// no way back through the bar. Main thread only.
class TSRNavigationViewController : public QWidget {
    Q_OBJECT
public:
    // Light or dark look forced on everything inside, bar included; `unspecified` follows the
    // application.
    using InterfaceStyle = tessara::InterfaceStyle;

    // `rootViewController` (may be null) becomes the only screen of the stack.
    explicit TSRNavigationViewController(std::unique_ptr<TSRViewController> rootViewController = nullptr,
                                         QWidget* parent = nullptr);
    ~TSRNavigationViewController() override;

    // Replaces the stack with `viewControllers`; the last one is shown. Screens that leave
    // the stack are hidden and deleted later (the call may come from one of them). With
    // `animated` the new visible screen fades in.
    void setViewControllers(std::vector<std::unique_ptr<TSRViewController>> viewControllers, bool animated);
    QList<TSRViewController*> viewControllers() const;
    // The screen on top of the stack, or null when the stack is empty.
    TSRViewController* visibleViewController() const;

    TSRNavigationBar* navigationBar() const { return bar_; }

    void setOverrideUserInterfaceStyle(InterfaceStyle style);
    InterfaceStyle overrideUserInterfaceStyle() const { return interfaceStyle_; }

    // Rotation answers of the visible screen; with none, the defaults of any screen.
    virtual bool shouldAutorotate() const;
    virtual Qt::ScreenOrientations supportedInterfaceOrientations() const;
    virtual Qt::ScreenOrientation preferredInterfaceOrientationForPresentation() const;

protected:
    void changeEvent(QEvent* event) override;

private:
    void applyStyle();
    // Shows the visible screen's title and right bar item; hands the item shown before
    // back to the screen that owns it.
    void refreshBar();

    TSRNavigationBar* bar_ = nullptr; // child
    QWidget* content_ = nullptr;      // child; holds the visible screen
    QVBoxLayout* contentLayout_ = nullptr;
    std::vector<QPointer<TSRViewController>> stack_;
    QPointer<TSRViewController> barScreen_;
    QPointer<QWidget> barItem_;
    InterfaceStyle interfaceStyle_ = InterfaceStyle::unspecified;
    bool applyingStyle_ = false; // our own palette change must not restyle again
};

} // namespace tessara
