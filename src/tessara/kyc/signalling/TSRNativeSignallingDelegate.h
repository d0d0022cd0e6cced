#pragma once

#include "tessara/kyc/signalling/OCRAction.h"
#include "tessara/kyc/signalling/OverlayRectangle.h"
#include "tessara/kyc/signalling/RemoveRectangle.h"

#include <QString>

namespace tessara {

// What the signalling client asks of the verification screen. The screen should be a QObject: the
// client then holds it weakly, and a call still queued when it is destroyed is dropped. It must
// clear itself from the client (or destroy the client) before it goes away.
class TSRNativeSignallingDelegate {
public:
    virtual ~TSRNativeSignallingDelegate() = default;

    // Called on the main thread, one per message of the service.
    virtual void didReceiveOverlayRectangle(const OverlayRectangle& rectangle) = 0;
    virtual void didRemoveOverlayRectangle(const RemoveRectangle& message) = 0;
    virtual void didReceiveTrackingCoordinates(double x, double y) = 0;
    virtual void didReceiveOCRAction(OCRAction action) = 0;
    virtual void didReceiveOCRProgress(float current, float max) = 0;
    virtual void didReceiveQuality(const QString& msg) = 0;
    virtual void didReceiveStatus(const QString& type) = 0;
    // `capturePosition`: back 1, front 2.
    virtual void didReceiveStartCamera(int capturePosition) = 0;
    virtual void didConnectToService() = 0;

    // Plain flag writes, called on the socket's thread (setSocketConnected(false) also on the thread
    // that disconnects) before any main-thread call of the same message. Keep them to atomic stores.
    virtual void setSocketConnected(bool connected) = 0;
    virtual void setCurrentCameraPosition(int capturePosition) = 0;
    virtual void setServerIsReadyForFrames(bool ready) = 0;
    // The link failed: stop handing frames to the socket until the service says "nn-connected" again.
    virtual void stopFramesAfterSocketFailure() = 0;
};

} // namespace tessara
