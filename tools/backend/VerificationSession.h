#pragma once

#include "backend/VerificationScript.h"
#include "tessara/kyc/signalling/SignalFrame.h"

#include <vector>

namespace tessara {

// The steering of one verification attempt by a script, apart from any socket: it is told of joins,
// decoded pictures and elapsed waits, and answers with what the service does next. Pictures count
// only once the service has said "nn-connected" and only at the expected size, so the script moves
// on only while real video of the right size arrives.
class VerificationSession {
public:
    struct Action {
        enum class Kind {
            send, // send `message` to the client
            drop, // break the connection without a close handshake
            wait, // call waitElapsed(`token`) after `waitMs`
        };
        Kind kind = Kind::send;
        SignalMessage message;
        int waitMs = 0;
        int token = 0;
    };
    using Actions = std::vector<Action>;

    explicit VerificationSession(VerificationScript script);

    // A join of the user: the first opens the script, a later one is a reconnect and restarts the
    // camera and the stream where the script stands.
    Actions join();
    // One decoded picture.
    Actions picture(int width, int height);
    // A wait asked for by the action with this token has passed.
    Actions waitElapsed(int token);

    const VerificationScript& script() const { return script_; }
    bool finished() const { return finished_; }
    int reconnects() const { return joins_ > 1 ? joins_ - 1 : 0; }
    // The last status word sent; empty before the first.
    const QString& status() const { return status_; }

private:
    void enterPhase(size_t index, Actions& out);
    void guide(const VerificationPhase& phase, int count, Actions& out);
    void send(SignalMessage message, Actions& out);
    bool selfiePhase() const;

    VerificationScript script_;
    size_t phase_ = 0;
    int count_ = 0; // pictures counted in the current phase
    int joins_ = 0;
    bool dropped_ = false;
    bool finished_ = false;
    QString status_;
};

} // namespace tessara
