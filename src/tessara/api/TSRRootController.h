#pragma once

#include "tessara/api/TSRNavigationViewController.h"
#include "tessara/api/TSRViewController.h"

#include <QPointer>
#include <memory>

namespace tessara {

class ActivityIndicator;

// The screen a start or open call puts over the host's widget: the theme background with a
// large spinning loader until the first step arrives, then that step's navigation screen.
// After a failed start it stays with its loader; the host removes it with dismiss() (reach
// it through Tessara::rootController()). Main thread only.
class TSRRootController : public TSRViewController {
    Q_OBJECT
public:
    explicit TSRRootController(QWidget* parent = nullptr);
    ~TSRRootController() override;

    // Becomes a child of `host`, fills it (following its size), is raised above the host's
    // other children and fades in.
    void presentOver(QWidget* host);

    // Embeds `navigation` as the root's only child screen, filling the root: the first call
    // stops the loader; a later one replaces the previous navigation screen (deleted later).
    // The navigation screen fades in.
    void presentStep(std::unique_ptr<TSRNavigationViewController> navigation);

    // Fades the root out, then deletes it with everything it shows. Nothing is reported to
    // the delegate: a closed step reports itself before it calls this.
    void dismiss();

    ActivityIndicator* loader() const { return loader_; }
    // The embedded navigation screen, or null while the loader shows.
    TSRNavigationViewController* navigationChild() const { return child_; }

protected:
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    // Default theme colours depend on the palette (light or dark), so a palette change
    // styles the root again.
    void applyTheme();
    void placeLoader();

    ActivityIndicator* loader_ = nullptr; // child
    QPointer<TSRNavigationViewController> child_;
    QPointer<QWidget> host_;
    bool dismissing_ = false;
    bool applyingTheme_ = false; // our own palette change must not restyle again
};

} // namespace tessara
