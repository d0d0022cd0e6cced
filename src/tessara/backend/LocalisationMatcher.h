#pragma once

#include <QStringList>

namespace tessara {

// Picks which of an application's localisations to use for a user's ordered language
// preferences, the way a platform resource lookup does:
//
// 1. Preferences are tried in order; the first one that matches anything decides.
// 2. A preference matches, in this order: the localisation equal to it, then those equal
//    to its shorter forms ("zh-Hant-TW", then "zh-Hant", then "zh"), then every other
//    localisation of the same base language in the application's order. Tags compare
//    case-insensitively and "_" equals "-".
// 3. When no preference matches, the application's first localisation is used alone.
//
// The result holds each localisation once, in the application's own spelling.
class LocalisationMatcher {
public:
    static QStringList match(const QStringList& available, const QStringList& preferences);
};

} // namespace tessara
