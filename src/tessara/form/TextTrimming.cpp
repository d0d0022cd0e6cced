#include "tessara/form/TextTrimming.h"

#include <QChar>

namespace tessara {

namespace {
// Separators (spaces, line and paragraph separators), control characters (tab, CR, LF, NEL
// among them) and format characters such as zero-width spaces and byte-order marks.
bool isTrimmed(char32_t codePoint) {
    switch (QChar::category(codePoint)) {
    case QChar::Separator_Space:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
    case QChar::Other_Control:
    case QChar::Other_Format:
        return true;
    default:
        return false;
    }
}

// Code point starting at `i` and its length in UTF-16 units.
std::pair<char32_t, int> codePointAt(const QString& s, qsizetype i) {
    const QChar c = s.at(i);
    if (c.isHighSurrogate() && i + 1 < s.size() && s.at(i + 1).isLowSurrogate())
        return {QChar::surrogateToUcs4(c, s.at(i + 1)), 2};
    return {c.unicode(), 1};
}

// Code point ending just before `end` and its length in UTF-16 units.
std::pair<char32_t, int> codePointBefore(const QString& s, qsizetype end) {
    const QChar c = s.at(end - 1);
    if (c.isLowSurrogate() && end >= 2 && s.at(end - 2).isHighSurrogate())
        return {QChar::surrogateToUcs4(s.at(end - 2), c), 2};
    return {c.unicode(), 1};
}
} // namespace

QString trimmedForSubmission(const QString& text) {
    qsizetype begin = 0;
    qsizetype end = text.size();
    while (begin < end) {
        const auto [cp, len] = codePointAt(text, begin);
        if (!isTrimmed(cp))
            break;
        begin += len;
    }
    while (end > begin) {
        const auto [cp, len] = codePointBefore(text, end);
        if (!isTrimmed(cp))
            break;
        end -= len;
    }
    return text.mid(begin, end - begin);
}

} // namespace tessara
