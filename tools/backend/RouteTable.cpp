#include "backend/RouteTable.h"

namespace tessara {

namespace {

bool isCapture(const QString& segment) {
    return segment.size() > 2 && segment.startsWith(QLatin1Char('{')) && segment.endsWith(QLatin1Char('}'));
}

} // namespace

void RouteTable::add(const QByteArray& method, const QString& pattern, Handler handler) {
    Route route;
    route.method = method;
    route.segments = pattern.split(QLatin1Char('/'), Qt::SkipEmptyParts);
    for (const QString& segment : route.segments)
        route.captures += isCapture(segment) ? 1 : 0;
    route.handler = std::move(handler);
    routes_.push_back(std::move(route));
}

bool RouteTable::matches(const Route& route, const QStringList& path, QStringList* parameters) {
    if (route.segments.size() != path.size())
        return false;
    QStringList captured;
    for (qsizetype i = 0; i < path.size(); ++i) {
        if (isCapture(route.segments[i]))
            captured << path[i];
        else if (route.segments[i] != path[i])
            return false;
    }
    *parameters = captured;
    return true;
}

BackendResponse RouteTable::dispatch(const BackendRequest& request) const {
    const Route* best = nullptr;
    QStringList bestParameters;
    bool pathKnown = false;
    for (const Route& route : routes_) {
        QStringList parameters;
        if (!matches(route, request.pathSegments, &parameters))
            continue;
        pathKnown = true;
        if (route.method != request.method)
            continue;
        if (!best || route.captures < best->captures) {
            best = &route;
            bestParameters = parameters;
        }
    }
    const QString what = QString::fromLatin1(request.method) + QLatin1Char(' ') + QLatin1Char('/') +
                         request.pathSegments.join(QLatin1Char('/'));
    if (best)
        return best->handler(request, bestParameters);
    if (pathKnown)
        return BackendResponse::error(405,
                                      QStringLiteral("Методът не се поддържа за този адрес: %1").arg(what));
    return BackendResponse::error(404, QStringLiteral("Няма такъв адрес: %1").arg(what));
}

} // namespace tessara
