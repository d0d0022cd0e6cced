#include "ScreenTestSupport.h"
#include "tessara/appearance/CurrentAppearance.h"
#include "tessara/kyc/LivePicture.h"
#include "tessara/kyc/video/TSRCameraPreviewView.h"

#include <QDir>

namespace tessara::test {
namespace {

// The screen in its phases, with the camera's picture behind the frames. With
// TESSARA_KYC_SHOTS=DIR the pictures are written there as PNG for a look.
TEST(ScreenLook, ThePreviewShowsTheCameraBehindEachPhase) {
    currentAppearance().setEmbedInstructionsLabelInBubble(true);
    ScreenRig rig;
    rig.host.resize(390, 844);
    rig.navigation->setGeometry(rig.host.rect());
    ASSERT_TRUE(rig.streaming());
    const QString dir = qEnvironmentVariable("TESSARA_KYC_SHOTS");
    auto shoot = [&](const char* name) {
        const int shown = rig.screen->livePicture()->framesShown();
        EXPECT_TRUE(waitUntil([&] { return rig.screen->livePicture()->framesShown() > shown + 2; }));
        settle(400); // past the flip
        const QImage shot = rig.host.grab().toImage();
        // The middle of the picture area is the camera's, not the black of an empty preview.
        // A patch rather than one pixel: the moving scene may put a dark edge right at the centre.
        const QImage view = rig.screen->videoView()->grab().toImage();
        const QPoint centre = view.rect().center();
        int lightness = 0, pixels = 0;
        for (int y = centre.y() - 20; y <= centre.y() + 20; y += 4)
            for (int x = centre.x() - 20; x <= centre.x() + 20; x += 4, ++pixels)
                lightness += view.pixelColor(x, y).lightness();
        EXPECT_GT(lightness / pixels, 20) << name;
        if (!dir.isEmpty())
            shot.save(QDir(dir).filePath(QString::fromLatin1(name) + QStringLiteral(".png")));
    };
    rig.status("KYC_STATUS_ID_PREPARE_FACE");
    rig.screen->didReceiveOCRAction(OCRAction::start);
    rig.screen->didReceiveOCRProgress(2, 5);
    shoot("kyc-document");
    rig.status("KYC_STATUS_SELFIE_PREPARE_HEAD");
    rig.screen->didReceiveOCRAction(OCRAction::stop);
    shoot("kyc-selfie");
    rig.status("KYC_STATUS_IMAGE_BLURRED");
    rig.screen->didReceiveQuality(QStringLiteral("BAD"));
    shoot("kyc-guidance");
    currentAppearance().setEmbedInstructionsLabelInBubble(false);
}

} // namespace
} // namespace tessara::test
