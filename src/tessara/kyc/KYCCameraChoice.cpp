#include "tessara/kyc/KYCCameraChoice.h"

#include "tessara/kyc/video/FileCaptureSystem.h"
#include "tessara/kyc/video/QtCaptureSystem.h"
#include "tessara/kyc/video/SyntheticCaptureSystem.h"
#include "tessara/platform/FatalError.h"
#include "tessara/platform/HostHooks.h"

namespace tessara {

std::shared_ptr<CaptureSystem> KYCCameraChoice::make(const QString& choice) {
    if (choice == QLatin1String("system"))
        return std::make_shared<QtCaptureSystem>();
    if (choice == QLatin1String("synthetic"))
        return std::make_shared<SyntheticCaptureSystem>();
    if (choice.startsWith(QLatin1String("file:")) && choice.size() > 5) {
        FileCaptureSystem::Options options;
        options.path = choice.mid(5);
        return std::make_shared<FileCaptureSystem>(options);
    }
    fatalError(QStringLiteral("Unknown camera \"%1\": use system, synthetic or file:PATH.").arg(choice));
}

std::shared_ptr<CaptureSystem> KYCCameraChoice::fromHostHooks() {
    return make(HostHooks::instance().camera);
}

} // namespace tessara
