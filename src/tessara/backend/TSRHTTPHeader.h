#pragma once

#include <QString>

namespace tessara {

// One request header; a request keeps its headers as an ordered list, so a field may repeat.
struct TSRHTTPHeader {
    QString field;
    QString value;

    friend bool operator==(const TSRHTTPHeader&, const TSRHTTPHeader&) = default;
};

} // namespace tessara
