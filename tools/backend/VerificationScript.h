#pragma once

#include <QString>
#include <QStringList>
#include <optional>
#include <vector>

namespace tessara {

// One phase of a simulated verification: the status word that opens it, and what ends it.
struct VerificationPhase {
    // What the service shows while the phase runs.
    enum class Guidance {
        none,
        document, // the document cutout with its quality, and reading progress
        face,     // the face cutout with its quality
        touch,    // the touch target and the fingertip that moves onto it
    };

    QString status;
    Guidance guidance = Guidance::none;
    // Pictures of the expected size needed to end the phase; 0 for a phase that ends by time.
    int pictures = 0;
    // A phase without pictures ends after this long; -1 holds it for as long as the client stays.
    int waitMs = -1;
    // The connection is dropped once, after this many pictures of the phase; -1 never.
    int dropAfterPictures = -1;
};

// What a simulated verification service does with one user, from join to the final word. Chosen per
// process by the `verificationScript` key of process.json.
struct VerificationScript {
    // Every picture must have this size to count, which is what the client's encoder sends.
    static constexpr int kWidth = 1440;
    static constexpr int kHeight = 1080;

    QString name;
    // Whether the service ever says "nn-connected" (it can take frames).
    bool connectsService = true;
    std::vector<VerificationPhase> phases;
    // Sent after the last phase; empty for a script that never ends.
    QString finalStatus;

    // The script of that name: "happy", "failed", "no-video", "no-service", "dropped-connection",
    // "hold-document"; std::nullopt for any other.
    static std::optional<VerificationScript> named(const QString& name);
    static QStringList names();
    static QString defaultName() { return QStringLiteral("happy"); }
};

} // namespace tessara
