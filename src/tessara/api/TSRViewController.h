#pragma once

#include "tessara/api/InterfaceOrientations.h"
#include "tessara/api/TSRDelegate.h"
#include "tessara/documents/SubmissionJSON.h"

#include <QPointer>
#include <QString>
#include <QWidget>
#include <memory>
#include <optional>

namespace tessara {

class TSRNavigationViewController;

// Base of every step screen and of the root screen. A screen owns a copy of its step
// document (`ui`), holds the host delegate weakly, and remembers the step it replaced.
// Main thread only.
class TSRViewController : public QWidget {
    Q_OBJECT
    // The step on screen, read-only, for hosts that drive the screens through QObject::property
    // (test robots, the demo's autopilot). Empty when the document has none.
    Q_PROPERTY(QString directionId READ directionIdText)
    Q_PROPERTY(QString stepType READ stepTypeText)
    Q_PROPERTY(QString submissionId READ submissionIdText)
    Q_PROPERTY(QString previousDirectionId READ previousDirectionIdText)
public:
    explicit TSRViewController(QWidget* parent = nullptr);
    ~TSRViewController() override;

    std::optional<SubmissionJSON> ui;
    std::optional<QString> previousDirectionId;

    QString directionIdText() const { return ui ? ui->directionId.value_or(QString()) : QString(); }
    QString stepTypeText() const { return ui ? ui->type.value_or(QString()) : QString(); }
    QString submissionIdText() const { return ui ? ui->submissionId.value_or(QString()) : QString(); }
    QString previousDirectionIdText() const { return previousDirectionId.value_or(QString()); }

    // The host delegate, or nullptr once the host destroyed it. Held weakly.
    TSRDelegate* formDelegate() const;
    void setFormDelegate(TSRDelegate* delegate);

    // Chooses the screen for `document` by its type; fatal when the type is absent.
    // The new screen gets this screen's delegate and, as previousDirectionId, this
    // screen's ui.directionId.
    virtual std::unique_ptr<TSRViewController> makeStepController(const SubmissionJSON& document);

    // Replaces the whole navigation stack with the screen made for `document`.
    virtual void transitionToStep(const SubmissionJSON& document);

    // The navigation screen this screen is shown in, if any.
    TSRNavigationViewController* navigationController() const;

    // Title and right bar item that the navigation bar shows for this screen.
    QString navigationTitle() const { return navigationTitle_; }
    void setNavigationTitle(const QString& title);
    QWidget* rightBarItem() const { return rightBarItem_; }
    // Takes ownership (the widget is reparented to this screen until the bar shows it).
    void setRightBarItem(QWidget* item);

    // Dismisses the screen (animated fade, then deleted) and at once tells the delegate,
    // if still there, on which step the user closed. Fatal when a delegate exists and
    // ui or ui.directionId is absent.
    void dismissAndReportClose();

    // Rotation answers that the navigation screen passes on from its visible screen.
    // Defaults: may rotate, to every orientation, portrait preferred.
    virtual bool shouldAutorotate() const { return kDefaultShouldAutorotate; }
    virtual Qt::ScreenOrientations supportedInterfaceOrientations() const {
        return kAllInterfaceOrientations;
    }
    virtual Qt::ScreenOrientation preferredInterfaceOrientationForPresentation() const {
        return kDefaultPreferredOrientation;
    }

Q_SIGNALS:
    void navigationItemChanged();

private:
    QPointer<QObject> delegateObject_;
    TSRDelegate* delegate_ = nullptr;
    // A delegate that is a QObject is followed through delegateObject_; one that is not
    // can only be held as a plain pointer.
    bool delegateIsQObject_ = false;
    QString navigationTitle_;
    QPointer<QWidget> rightBarItem_;
};

} // namespace tessara
