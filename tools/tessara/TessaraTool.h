#pragma once

#include "CommandSpec.h"
#include "tessara/backend/TSRResult.h"

#include <QCommandLineParser>
#include <QStringList>
#include <functional>
#include <memory>

namespace tessara::tool {

// Runs one command line: parses it, performs the command through the client and
// returns the exit status (0 success, 1 failure, 2 wrong usage).
class TessaraTool {
public:
    explicit TessaraTool(QStringList arguments);

    int run();

private:
    // Ends the wait for a backend answer with an exit status; only the first call counts.
    using Finish = std::function<void(int)>;

    int usageError(const QString& message) const;
    int runDecode();
    int runListen();
    int runEncode();
    // Configures the client from --backend, starts `call`, and waits for it to finish or
    // for --timeout to run out.
    int runNetwork(const std::function<void(const Finish&)>& call);

    // A completion that prints a successful document, or the error's words.
    template <typename T> static std::function<void(TSRResult<T>)> printer(const Finish& finish);
    static void printError(const TSRError& error);

    QStringList arguments_;
    const CommandSpec* command_ = nullptr;
    QCommandLineParser parser_;
};

} // namespace tessara::tool
