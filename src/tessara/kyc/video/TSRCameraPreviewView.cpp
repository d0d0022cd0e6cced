#include "tessara/kyc/video/TSRCameraPreviewView.h"

namespace tessara {

TSRCameraPreviewView::TSRCameraPreviewView(QWidget* parent)
    : QWidget(parent) {
    setObjectName(QStringLiteral("TSRCameraPreviewView"));
}

} // namespace tessara
