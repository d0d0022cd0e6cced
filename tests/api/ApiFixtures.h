#pragma once

#include "support/LoopbackHttpServer.h"
#include "support/TestHelpers.h"
#include "tessara/api/TSRDelegate.h"
#include "tessara/backend/TSRNetwork.h"
#include "tessara/documents/JsonCoding.h"
#include "tessara/documents/SubmissionJSON.h"

#include <QTest>
#include <QWidget>
#include <functional>
#include <gtest/gtest.h>
#include <vector>

namespace tessara::test {

// The host application's window: a widget that is also the SDK's delegate.
class HostWidget : public QWidget, public TSRDelegate {
public:
    HostWidget() {
        resize(390, 844);
        show();
    }
    void closedFormOnStepWithId(const QString& directionId) override { closedSteps.push_back(directionId); }

    std::vector<QString> closedSteps;
};

// A delegate that is not a widget, which the SDK refuses.
class PlainDelegate : public TSRDelegate {
public:
    void closedFormOnStepWithId(const QString&) override {}
};

inline FieldJSON field(FieldType type, std::optional<QString> key = std::nullopt) {
    FieldJSON f;
    f.type = type;
    f.key = std::move(key);
    return f;
}

// Points the shared client at `server`, under the base path "/api".
inline void useServer(LoopbackHttpServer& server) {
    TSRNetwork::shared().setInstanceURL(server.url(QStringLiteral("/api")));
}

} // namespace tessara::test
