#pragma once

#include <QWidget>

namespace tessara {

class CaptureSession;

// Where the camera picture is shown. It learns its session on the main thread once the session is
// configured; drawing the picture is the verification screen's work.
class TSRCameraPreviewView : public QWidget {
    Q_OBJECT
public:
    explicit TSRCameraPreviewView(QWidget* parent = nullptr);

    // Main thread.
    void setSession(CaptureSession* session) { session_ = session; }
    CaptureSession* session() const { return session_; }

private:
    CaptureSession* session_ = nullptr;
};

} // namespace tessara
