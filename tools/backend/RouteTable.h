#pragma once

#include "backend/BackendRequest.h"
#include "backend/BackendResponse.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <functional>
#include <vector>

namespace tessara {

// Maps a method and a path such as "/step/{submission}/{key}" to a handler. A "{name}" segment
// matches any one path segment and is handed to the handler, in order. Where two patterns match,
// the one with fewer such segments wins, so "/step/uploadFile" is never read as a step id.
class RouteTable {
public:
    using Handler = std::function<BackendResponse(const BackendRequest&, const QStringList& parameters)>;

    void add(const QByteArray& method, const QString& pattern, Handler handler);

    // 404 when no pattern matches the path, 405 when one does but not for this method.
    BackendResponse dispatch(const BackendRequest& request) const;

private:
    struct Route {
        QByteArray method;
        QStringList segments;
        int captures = 0;
        Handler handler;
    };
    static bool matches(const Route& route, const QStringList& path, QStringList* parameters);

    std::vector<Route> routes_;
};

} // namespace tessara
