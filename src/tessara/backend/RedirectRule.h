#pragma once

#include <QByteArray>
#include <QUrl>
#include <optional>

namespace tessara {

// When and where a response sends the client on. Transfers are made with redirects
// switched off in Qt, because Qt drops the body of a 3xx answer it cannot follow (no
// Location), while such an answer must still reach the result table like any other.
class RedirectRule {
public:
    // Redirects followed for one call; the answer after the last one is taken as it is.
    static constexpr int kMaximumRedirects = 16;

    struct Step {
        QUrl url;
        QByteArray verb;
        bool keepsBody;
    };

    // The request to make after a response with `status` and `location` to a request with
    // `verb` at `current`; absent when the response is the answer. Followed: 301, 302, 303,
    // 307 and 308 with a Location of http or https, never from https down to http. A 303,
    // and a 301 or 302 to a POST, continue as GET without a body; the others repeat the
    // request unchanged.
    static std::optional<Step> next(int status, const QByteArray& verb, const QByteArray& location,
                                    const QUrl& current);
};

} // namespace tessara
