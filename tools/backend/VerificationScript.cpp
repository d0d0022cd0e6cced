#include "backend/VerificationScript.h"

namespace tessara {

namespace {

using Guidance = VerificationPhase::Guidance;

// About a second of video per phase at 30 fps: a run takes a few seconds, and a client that sends
// nothing, or pictures of another size, stays in the first phase.
constexpr int kDocumentPictures = 24;
constexpr int kFacePictures = 20;

std::vector<VerificationPhase> documentPhases() {
    return {
        {QStringLiteral("KYC_STATUS_ID_PREPARE_FACE"), Guidance::document, kDocumentPictures},
        {QStringLiteral("KYC_STATUS_ID_PREPARE_BACK"), Guidance::document, kDocumentPictures},
    };
}

std::vector<VerificationPhase> selfiePhases() {
    return {
        {QStringLiteral("KYC_STATUS_SELFIE_PREPARE_HEAD"), Guidance::face, kFacePictures},
        {QStringLiteral("KYC_STATUS_SELFIE_TURN_HEAD"), Guidance::face, kFacePictures},
        {QStringLiteral("KYC_STATUS_SELFIE_TOUCH_ELEMENT"), Guidance::touch, kFacePictures},
    };
}

std::vector<VerificationScript> allScripts() {
    std::vector<VerificationScript> scripts;

    VerificationScript happy{QStringLiteral("happy"), true, documentPhases(),
                             QStringLiteral("KYC_STATUS_SELFIE_OK")};
    for (VerificationPhase& phase : selfiePhases())
        happy.phases.push_back(phase);
    scripts.push_back(happy);

    // The face does not match: the service gives up after the first look at it.
    VerificationScript failed{QStringLiteral("failed"), true, documentPhases(),
                              QStringLiteral("KYC_STATUS_FAILED")};
    failed.phases.push_back(selfiePhases().front());
    scripts.push_back(failed);

    // The service never gets the video and gives up waiting.
    scripts.push_back({QStringLiteral("no-video"),
                       false,
                       {{QStringLiteral("KYC_WAIT_FOR_VIDEO_STREAM"), Guidance::none, 0, 2000}},
                       QStringLiteral("FAILED_NO_VIDEO_STREAM_CONNECTION")});

    // The recognition service is down: the client is told, and the attempt ends.
    scripts.push_back({QStringLiteral("no-service"),
                       false,
                       {{QStringLiteral("NO_NN_SERVER"), Guidance::none, 0, 1500}},
                       QStringLiteral("PROCESS_FAIL")});

    // The link breaks while the back of the document is shown; the client reconnects and goes on.
    VerificationScript dropped = happy;
    dropped.name = QStringLiteral("dropped-connection");
    dropped.phases[1].dropAfterPictures = 8;
    scripts.push_back(dropped);

    // The document phase never ends: for long sessions that watch the client's resources.
    VerificationScript hold{QStringLiteral("hold-document"), true, {documentPhases().front()}, QString()};
    hold.phases.front().pictures = 0;
    scripts.push_back(hold);

    return scripts;
}

const std::vector<VerificationScript>& scripts() {
    static const std::vector<VerificationScript> all = allScripts();
    return all;
}

} // namespace

std::optional<VerificationScript> VerificationScript::named(const QString& name) {
    for (const VerificationScript& script : scripts()) {
        if (script.name == name)
            return script;
    }
    return std::nullopt;
}

QStringList VerificationScript::names() {
    QStringList result;
    for (const VerificationScript& script : scripts())
        result << script.name;
    return result;
}

} // namespace tessara
