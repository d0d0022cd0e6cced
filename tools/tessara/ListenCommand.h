#pragma once

#include "tessara/kyc/signalling/TSRNativeSignallingClient.h"

#include <QEventLoop>
#include <QObject>
#include <QUrl>
#include <memory>
#include <optional>

namespace tessara::tool {

// `tessara listen`: joins a verification service with the SDK's own socket and client and prints one
// line per event on standard output (the format is described in the command's --help).
class ListenCommand : public QObject, public TSRNativeSignallingDelegate {
    Q_OBJECT

public:
    ListenCommand(const QUrl& streamUrl, const QString& userHash, std::optional<double> seconds);
    ~ListenCommand() override;

    // Runs until a terminal status or the end of the time given; returns the exit status (0).
    int run();

    void didReceiveOverlayRectangle(const OverlayRectangle& rectangle) override;
    void didRemoveOverlayRectangle(const RemoveRectangle& message) override;
    void didReceiveTrackingCoordinates(double x, double y) override;
    void didReceiveOCRAction(OCRAction action) override;
    void didReceiveOCRProgress(float current, float max) override;
    void didReceiveQuality(const QString& msg) override;
    void didReceiveStatus(const QString& type) override;
    void didReceiveStartCamera(int capturePosition) override;
    void didConnectToService() override;
    void setSocketConnected(bool) override {}
    void setCurrentCameraPosition(int) override {}
    void setServerIsReadyForFrames(bool) override {}
    void stopFramesAfterSocketFailure() override {}

private:
    void printMessage(const SignalMessage& message);
    void finish();

    std::optional<double> seconds_;
    std::unique_ptr<TSRNativeSignallingClient> client_;
    QEventLoop loop_;
};

} // namespace tessara::tool
