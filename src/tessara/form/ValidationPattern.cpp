#include "tessara/form/ValidationPattern.h"

#include <algorithm>
#include <iterator>

namespace tessara {

namespace {

// Backslash letters the backends' engine knows. Qt's engine reads more (\K, \g, \o, \C, \N and
// others); a pattern using them is one the backend refuses, and accepting it here would check the
// text by rules the backend never meant. Character names (\N{...}) are not supported, so such a
// pattern stays invalid rather than match something else.
constexpr QStringView kKnownEscapes = u"aAbBcdDeEfGhHknpPQrRsStuUvVwWxXzZ";

// Group openers after "(?" that both engines read the same way. Recursion and subroutine calls,
// branch reset, conditionals, callouts and Python-style or quoted names are Qt-only.
constexpr QStringView kPlainGroups = u":=!>";

// Inline flags the backends' engine takes; `w` (Unicode word boundaries) has no counterpart and
// is dropped, since boundaries already follow Unicode word characters here.
constexpr QStringView kFlags = u"imsxw-";

// Names Qt's engine reads inside a class as `[:name:]`; any other name there is a property.
constexpr QStringView kPosixNames[] = {u"alnum", u"alpha", u"ascii", u"blank", u"cntrl", u"digit", u"graph",
                                       u"lower", u"print", u"punct", u"space", u"upper", u"word",  u"xdigit"};

// Property names the backends accept that Qt's engine spells otherwise: long general-category
// names and POSIX-style names. Scripts and binary properties are read alike and pass unchanged.
struct PropertyAlias {
    QStringView loose;
    QStringView qt;
};
constexpr PropertyAlias kPropertyAliases[] = {
    {u"letter", u"L"},
    {u"casedletter", u"LC"},
    {u"uppercaseletter", u"Lu"},
    {u"lowercaseletter", u"Ll"},
    {u"titlecaseletter", u"Lt"},
    {u"modifierletter", u"Lm"},
    {u"otherletter", u"Lo"},
    {u"mark", u"M"},
    {u"nonspacingmark", u"Mn"},
    {u"spacingmark", u"Mc"},
    {u"enclosingmark", u"Me"},
    {u"number", u"N"},
    {u"decimalnumber", u"Nd"},
    {u"letternumber", u"Nl"},
    {u"othernumber", u"No"},
    {u"punctuation", u"P"},
    {u"connectorpunctuation", u"Pc"},
    {u"dashpunctuation", u"Pd"},
    {u"openpunctuation", u"Ps"},
    {u"closepunctuation", u"Pe"},
    {u"initialpunctuation", u"Pi"},
    {u"finalpunctuation", u"Pf"},
    {u"otherpunctuation", u"Po"},
    {u"symbol", u"S"},
    {u"mathsymbol", u"Sm"},
    {u"currencysymbol", u"Sc"},
    {u"modifiersymbol", u"Sk"},
    {u"othersymbol", u"So"},
    {u"separator", u"Z"},
    {u"spaceseparator", u"Zs"},
    {u"lineseparator", u"Zl"},
    {u"paragraphseparator", u"Zp"},
    {u"other", u"C"},
    {u"control", u"Cc"},
    {u"format", u"Cf"},
    {u"privateuse", u"Co"},
    {u"unassigned", u"Cn"},
    {u"digit", u"Nd"},
    {u"punct", u"P"},
    {u"cntrl", u"Cc"},
    {u"alnum", u"Xan"},
    {u"word", u"Xwd"},
    {u"xdigit", u"Hex_Digit"},
};

// Property names match regardless of case, spaces, underscores and hyphens.
QString looseName(QStringView name) {
    QString loose;
    for (QChar c : name)
        if (c != u' ' && c != u'_' && c != u'-')
            loose += c.toLower();
    return loose;
}

QString qtProperty(QStringView name) {
    QString loose = looseName(name);
    for (QStringView prefix : {QStringView(u"gc="), QStringView(u"generalcategory=")}) {
        if (loose.startsWith(prefix)) {
            loose.remove(0, prefix.size());
            name = {}; // a bare short category such as "lu" is what Qt reads
        }
    }
    for (const PropertyAlias& alias : kPropertyAliases)
        if (loose == alias.loose)
            return alias.qt.toString();
    return name.isEmpty() ? loose : name.toString();
}

bool isAsciiLetter(QChar c) {
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z');
}

std::optional<char32_t> hexValue(QStringView digits, qsizetype count) {
    if (digits.size() < count)
        return std::nullopt;
    char32_t value = 0;
    for (qsizetype i = 0; i < count; ++i) {
        const int digit = QStringView(u"0123456789abcdef").indexOf(digits[i].toLower());
        if (digit < 0)
            return std::nullopt;
        value = value * 16 + char32_t(digit);
    }
    return value;
}

// One pass over the pattern, copying what both engines read alike and rewriting the rest.
struct Rewrite {
    QStringView in;
    QString out;
    qsizetype at = 0;
    bool inClass = false;

    QChar peek(qsizetype ahead) const { return at + ahead < in.size() ? in[at + ahead] : QChar(); }

    void copy(qsizetype count) {
        out += in.mid(at, std::min(count, in.size() - at));
        at += count;
    }

    bool run() {
        while (at < in.size()) {
            const QChar c = in[at];
            bool ok = true;
            if (c == u'\\')
                ok = escape();
            else if (inClass)
                ok = classMember();
            else if (c == u'[')
                openClass();
            else if (c == u'(')
                ok = group();
            else
                copy(1);
            if (!ok)
                return false;
        }
        return true;
    }

    void openClass() {
        inClass = true;
        copy(peek(1) == u'^' ? 2 : 1);
        if (peek(0) == u']') // a leading bracket is a member, not the end
            copy(1);
    }

    bool classMember() {
        const QChar c = in[at];
        if (c == u']') {
            inClass = false;
        } else if (c == u'[') {
            // Nested sets and set operations have no counterpart in Qt's engine, which would read
            // the bracket as a member and match other text.
            return peek(1) == u':' && posixClass();
        } else if (c == u'&' && peek(1) == u'&') {
            return false;
        }
        copy(1);
        return true;
    }

    bool posixClass() {
        const qsizetype end = in.indexOf(u":]", at + 2);
        if (end < 0)
            return false;
        QStringView name = in.mid(at + 2, end - at - 2);
        const bool negated = name.startsWith(u'^');
        if (negated)
            name = name.mid(1);
        const QString loose = looseName(name);
        if (std::find(std::begin(kPosixNames), std::end(kPosixNames), loose) != std::end(kPosixNames))
            out += QStringLiteral("[:%1%2:]").arg(negated ? QStringLiteral("^") : QString(), loose);
        else
            out += QStringLiteral("\\%1{%2}").arg(QChar(negated ? u'P' : u'p')).arg(qtProperty(name));
        at = end + 2;
        return true;
    }

    bool escape() {
        const QChar kind = peek(1);
        switch (kind.unicode()) {
        case u'Q': {
            // Quoted text is literal to both engines; nothing in it is rewritten.
            const qsizetype end = in.indexOf(u"\\E", at + 2);
            copy(end < 0 ? in.size() - at : end + 2 - at);
            return true;
        }
        case u'u':
            return codePoint(4);
        case u'U':
            return codePoint(8);
        case u'p':
        case u'P':
            return property();
        case u'c':
            copy(3); // the control letter may itself be a backslash
            return true;
        case u'k':
            if (peek(2) != u'<')
                return false;
            break;
        default:
            if (isAsciiLetter(kind) && !kKnownEscapes.contains(kind))
                return false;
        }
        copy(2);
        return true;
    }

    bool codePoint(qsizetype digits) {
        std::optional<char32_t> value = hexValue(in.mid(at + 2), digits);
        if (!value)
            return false;
        qsizetype length = 2 + digits;
        // Patterns written for UTF-16 engines spell characters beyond the BMP as a pair.
        if (digits == 4 && QChar::isHighSurrogate(*value) && in.mid(at + length).startsWith(u"\\u")) {
            const std::optional<char32_t> low = hexValue(in.mid(at + length + 2), 4);
            if (low && QChar::isLowSurrogate(*low)) {
                value = QChar::surrogateToUcs4(char16_t(*value), char16_t(*low));
                length += 6;
            }
        }
        out += QStringLiteral("\\x{%1}").arg(uint(*value), 0, 16);
        at += length;
        return true;
    }

    bool property() {
        if (peek(2) != u'{') {
            copy(3);
            return true;
        }
        const qsizetype end = in.indexOf(u'}', at + 3);
        if (end < 0)
            return false;
        bool negated = peek(1) == u'P';
        QStringView name = in.mid(at + 3, end - at - 3);
        if (name.startsWith(u'^')) {
            negated = !negated;
            name = name.mid(1);
        }
        out += QStringLiteral("\\%1{%2}").arg(QChar(negated ? u'P' : u'p')).arg(qtProperty(name));
        at = end + 1;
        return true;
    }

    bool group() {
        if (peek(1) == u'*') // backtracking verbs and engine options
            return false;
        if (peek(1) != u'?') {
            copy(1);
            return true;
        }
        const QChar kind = peek(2);
        if (kPlainGroups.contains(kind)) {
            copy(3);
            return true;
        }
        if (kind == u'#') { // a comment, copied whole so its text is not read as syntax
            const qsizetype end = in.indexOf(u')', at);
            if (end < 0)
                return false;
            copy(end + 1 - at);
            return true;
        }
        if (kind == u'<') {
            const QChar next = peek(3);
            if (next != u'=' && next != u'!' && !isAsciiLetter(next))
                return false;
            copy(3);
            return true;
        }
        return flags();
    }

    bool flags() {
        qsizetype end = at + 2;
        QString kept;
        for (; end < in.size() && kFlags.contains(in[end]); ++end)
            if (in[end] != u'w')
                kept += in[end];
        if (end >= in.size() || (in[end] != u':' && in[end] != u')'))
            return false;
        if (kept == u"-")
            kept.clear();
        if (in[end] == u':')
            out += QStringLiteral("(?%1:").arg(kept);
        else if (!kept.isEmpty())
            out += QStringLiteral("(?%1)").arg(kept);
        at = end + 1;
        return true;
    }
};

} // namespace

ValidationPattern::ValidationPattern(const QString& pattern) {
    const std::optional<QString> rewritten = translated(pattern);
    if (!rewritten)
        return;
    // Without Unicode properties Qt's classes, boundaries and POSIX names see ASCII only.
    QRegularExpression expression(*rewritten, QRegularExpression::UseUnicodePropertiesOption);
    if (expression.isValid())
        expression_ = std::move(expression);
}

bool ValidationPattern::isFoundIn(const QString& text) const {
    return expression_ && expression_->match(text).hasMatch();
}

std::optional<QString> ValidationPattern::translated(const QString& pattern) {
    // Any of CR, LF, CRLF, NEL and the Unicode line and paragraph separators ends a line, as
    // the backends' engine has it; Qt's default is LF alone.
    Rewrite rewrite{pattern, QStringLiteral("(*ANY)")};
    if (!rewrite.run())
        return std::nullopt;
    return rewrite.out;
}

} // namespace tessara
