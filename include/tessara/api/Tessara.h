#pragma once

#include "tessara/api/TSRDelegate.h"
#include "tessara/appearance/TSRAppearance.h"
#include "tessara/backend/TSRError.h"
#include "tessara/backend/TSRResult.h"

#include <QObject>
#include <QPointer>
#include <QString>
#include <QUrl>
#include <functional>
#include <memory>
#include <optional>

/// The SDK. A host needs Tessara and TSRDelegate (api/); the theme, TSRAppearance (appearance/);
/// and, to read an error, TSRError (backend/). The step and credit records (documents/) and the
/// backend client TSRNetwork are public for hosts and tools that talk to the backend themselves.
///
/// What the SDK never does: it keeps nothing on disk (no files, no settings, no cache; the step on
/// screen is the whole client-side state), it never logs or stores the calling service token, and
/// it never ignores a TLS certificate error.
namespace tessara {

class TSRRootController;

/// The SDK's entry point. A host makes one with its backend address and theme, then starts
/// a process or reopens a step. Everything after the call (which screen, which step next)
/// is decided by the backend. All calls are made on the main thread, and every callback
/// arrives on the main thread. A QApplication must exist before a Tessara is made.
///
/// The delegate passed to the calls must also be a QWidget: the SDK's root screen is placed
/// over it as a child widget filling it, with a loader until the first step arrives. A
/// delegate that is not a QWidget ends the program.
///
/// Removing a root left on screen after a failed start is up to the host: call
/// dismissRoot() (it fades out and is deleted).
class Tessara : public QObject {
    Q_OBJECT
public:
    /// Stores `tessaraInstanceURL` as the backend base of the one shared client (absent: the
    /// compiled-in default endpoint; the last Tessara made wins, for every instance) and
    /// installs `appearance` itself as the process-wide theme (null: a fresh default one).
    /// The host may keep the pointer and change the theme later; screens styled after a
    /// change show it.
    Tessara(std::optional<QUrl> tessaraInstanceURL, std::shared_ptr<TSRAppearance> appearance,
            QObject* parent = nullptr);
    Tessara() = delete;
    /// Cancels nothing: a start or open in progress still completes (see startProcess).
    ~Tessara() override;

    /// The process-wide theme every screen reads when it styles a view (created with all
    /// defaults on first use), and its replacement. A host may keep the object and change it
    /// at any time: screens styled after a change show it. Main thread.
    ///@{
    static std::shared_ptr<TSRAppearance> appearance();
    static void setAppearance(std::shared_ptr<TSRAppearance> appearance);
    ///@}

    /// Which camera verification steps opened from now on film with: "system" (the device's
    /// camera, the default), "synthetic" (a drawn document and face) or "file:PATH" (raw NV12
    /// frames played in a loop). An unknown choice ends the program when such a step opens.
    /// Main thread.
    static void setCamera(const QString& choice);

    /// Told how a start or open went: true once the first step is on screen, or the error.
    using Completion = std::function<void(TSRResult<bool>)>;
    /// The same as a flag and an optional error: (true, none) or (false, the error).
    using ObjcCompletion = std::function<void(bool success, std::optional<TSRError> error)>;

    /// Starts the process `processId` (POST "/submission") and shows its first step over the
    /// delegate's widget. Returns at once, with the root and its loader laid over the widget.
    ///
    /// `callingServiceToken`, when present, is sent in the body of that one request only (a 307
    /// or 308 redirect repeats it at the new address, never from https down to http). It is
    /// never logged, never written to disk, and held in memory only while the request runs.
    ///
    /// `didStartProcess` is called at most once, on the main thread and never during the call
    /// itself: with true after the first step screen is on screen, or with the error (the root
    /// then stays with its loader, see above). It is not called at all when the backend answers
    /// HTTP 400 without a body. The call is not tied to this object's lifetime: the callback is
    /// delivered, and the first step shown, even if the Tessara object was destroyed in the
    /// meantime (the root belongs to the delegate's widget). A host whose callback must not run
    /// after it is gone guards it itself, e.g. with a QPointer to its own object.
    void startProcess(const QString& processId, std::optional<QString> callingServiceToken,
                      TSRDelegate* delegate, Completion didStartProcess);
    /// Reopens the current step of direction `directionId` (GET "/step/direction/<id>/current");
    /// otherwise as startProcess.
    void openStep(const QString& directionId, TSRDelegate* delegate, Completion didOpenStep);

    /// The same calls for hosts that take a flag and an optional error. An absent token and
    /// a null QString token are both left out of the request; an empty one is sent as "".
    ///@{
    void objc_startProcess(const QString& processId, std::optional<QString> callingServiceToken,
                           TSRDelegate* delegate, ObjcCompletion didStartProcess);
    void objc_openStep(const QString& directionId, TSRDelegate* delegate, ObjcCompletion didOpenStep);
    ///@}

    /// The delegate of the latest call while it exists. Held weakly.
    TSRDelegate* delegate() const;
    /// The root screen of the latest call while it exists. Held weakly.
    TSRRootController* rootController() const;
    /// Removes the root screen of the latest call, if it still exists: it fades out and is
    /// deleted with everything it shows. Nothing is reported to the delegate. Main thread.
    void dismissRoot();

private:
    template <typename Request> void run(TSRDelegate* delegate, Completion completion, Request request);

    QPointer<QWidget> delegateWidget_;
    TSRDelegate* delegate_ = nullptr;
    QPointer<TSRRootController> rootController_;
};

} // namespace tessara
