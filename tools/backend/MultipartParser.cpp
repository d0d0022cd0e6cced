#include "backend/MultipartParser.h"

namespace tessara {

namespace {

constexpr QByteArrayView kCrLf("\r\n");
// RFC 2046 caps a boundary at 70 characters.
constexpr qsizetype kMaxBoundaryLength = 70;

struct HeaderParameters {
    QByteArray value; // the part before the first ';', lower-cased
    QList<QPair<QByteArray, QByteArray>> parameters;

    std::optional<QByteArray> parameter(QByteArrayView name) const {
        for (const auto& [key, value] : parameters) {
            if (QByteArrayView(key).compare(name, Qt::CaseInsensitive) == 0)
                return value;
        }
        return std::nullopt;
    }
};

// Splits `value; a=b; c="d; e"` into its leading value and parameters. A quoted text runs to the
// next quotation mark: clients do not escape inside it, so a backslash is an ordinary character
// (file names from some systems carry them).
std::optional<HeaderParameters> parseParameters(QByteArrayView text) {
    const auto isBlank = [](char c) { return c == ' ' || c == '\t'; };
    HeaderParameters result;
    const qsizetype firstSemicolon = text.indexOf(';');
    result.value =
        text.first(firstSemicolon < 0 ? text.size() : firstSemicolon).trimmed().toByteArray().toLower();
    qsizetype pos = firstSemicolon < 0 ? text.size() : firstSemicolon + 1;
    while (pos < text.size()) {
        while (pos < text.size() && isBlank(text[pos]))
            ++pos;
        if (pos == text.size())
            break;
        if (text[pos] == ';') { // an empty parameter, as in "a;;b" or a trailing ";"
            ++pos;
            continue;
        }
        qsizetype nameEnd = pos;
        while (nameEnd < text.size() && text[nameEnd] != '=' && text[nameEnd] != ';')
            ++nameEnd;
        const QByteArray name = text.sliced(pos, nameEnd - pos).trimmed().toByteArray();
        if (nameEnd == text.size() || text[nameEnd] != '=' || name.isEmpty())
            return std::nullopt;
        pos = nameEnd + 1;
        while (pos < text.size() && isBlank(text[pos]))
            ++pos;
        QByteArray value;
        if (pos < text.size() && text[pos] == '"') {
            const qsizetype closing = text.indexOf('"', pos + 1);
            if (closing < 0)
                return std::nullopt;
            value = text.sliced(pos + 1, closing - pos - 1).toByteArray();
            pos = closing + 1;
            while (pos < text.size() && isBlank(text[pos]))
                ++pos;
            if (pos < text.size() && text[pos] != ';')
                return std::nullopt;
        } else {
            qsizetype valueEnd = text.indexOf(';', pos);
            if (valueEnd < 0)
                valueEnd = text.size();
            value = text.sliced(pos, valueEnd - pos).trimmed().toByteArray();
            pos = valueEnd;
        }
        result.parameters.append({name, value});
    }
    return result;
}

// RFC 5987 ext-value: charset'language'percent-encoded-bytes. Only UTF-8 is read.
std::optional<QString> decodeExtendedValue(const QByteArray& value) {
    const qsizetype first = value.indexOf('\'');
    const qsizetype second = first < 0 ? -1 : value.indexOf('\'', first + 1);
    if (second < 0 || value.first(first).toLower() != "utf-8")
        return std::nullopt;
    return QString::fromUtf8(QByteArray::fromPercentEncoding(value.sliced(second + 1)));
}

std::optional<QString> parseHeaders(QByteArrayView block, MultipartPart& part) {
    qsizetype pos = 0;
    while (pos < block.size()) {
        qsizetype end = block.indexOf(kCrLf, pos);
        if (end < 0)
            end = block.size();
        const QByteArrayView line = block.sliced(pos, end - pos);
        pos = end + kCrLf.size();
        const qsizetype colon = line.indexOf(':');
        if (colon <= 0)
            return QStringLiteral("a part header line has no field name: \"%1\"")
                .arg(QString::fromUtf8(line));
        part.headers.append(
            {line.first(colon).trimmed().toByteArray(), line.sliced(colon + 1).trimmed().toByteArray()});
    }
    return std::nullopt;
}

std::optional<QString> readDisposition(MultipartPart& part) {
    std::optional<QByteArray> disposition;
    for (const auto& [field, value] : part.headers) {
        if (field.compare("Content-Disposition", Qt::CaseInsensitive) == 0)
            disposition = value;
        else if (field.compare("Content-Type", Qt::CaseInsensitive) == 0)
            part.contentType = value;
    }
    if (!disposition)
        return QStringLiteral("a part has no Content-Disposition header");
    const auto parsed = parseParameters(*disposition);
    if (!parsed)
        return QStringLiteral("the Content-Disposition header of a part is malformed");
    if (parsed->value != "form-data")
        return QStringLiteral("a part is not form-data");
    const auto name = parsed->parameter("name");
    if (!name || name->isEmpty())
        return QStringLiteral("a part has no name");
    part.name = *name;
    if (const auto extended = parsed->parameter("filename*")) {
        part.fileName = decodeExtendedValue(*extended);
        if (!part.fileName)
            return QStringLiteral("the filename* of part \"%1\" is not UTF-8")
                .arg(QString::fromUtf8(part.name));
    } else if (const auto fileName = parsed->parameter("filename")) {
        part.fileName = QString::fromUtf8(*fileName);
    }
    // RFC 7578: a part without a type is text/plain.
    if (part.contentType.isEmpty())
        part.contentType = "text/plain";
    return std::nullopt;
}

MultipartParseResult failure(QString reason) {
    MultipartParseResult result;
    result.error = std::move(reason);
    return result;
}

} // namespace

const MultipartPart* MultipartParseResult::part(QByteArrayView name) const {
    for (const MultipartPart& candidate : parts) {
        if (candidate.name == name)
            return &candidate;
    }
    return nullptr;
}

std::optional<QByteArray> MultipartParser::boundaryFromContentType(QByteArrayView contentType) {
    const auto parsed = parseParameters(contentType);
    if (!parsed || parsed->value != "multipart/form-data")
        return std::nullopt;
    const auto boundary = parsed->parameter("boundary");
    if (!boundary || boundary->isEmpty() || boundary->size() > kMaxBoundaryLength)
        return std::nullopt;
    return boundary;
}

MultipartParseResult MultipartParser::parse(QByteArrayView body, QByteArrayView boundary) {
    if (boundary.isEmpty() || boundary.size() > kMaxBoundaryLength)
        return failure(QStringLiteral("the boundary is empty or longer than 70 characters"));
    const QByteArray dashBoundary = "--" + boundary.toByteArray();
    const QByteArray delimiter = kCrLf.toByteArray() + dashBoundary;

    qsizetype pos = 0;
    if (body.startsWith(dashBoundary)) {
        pos = dashBoundary.size();
    } else {
        // Anything before the first delimiter is a preamble and is skipped.
        const qsizetype first = body.indexOf(delimiter);
        if (first < 0)
            return failure(QStringLiteral("the body does not start with the boundary"));
        pos = first + delimiter.size();
    }

    MultipartParseResult result;
    while (true) {
        if (body.sliced(pos).startsWith("--"))
            return result; // closing delimiter; an epilogue after it is ignored
        while (pos < body.size() && (body[pos] == ' ' || body[pos] == '\t'))
            ++pos;
        if (!body.sliced(pos).startsWith(kCrLf))
            return failure(QStringLiteral("a boundary line does not end in CR LF"));
        pos += kCrLf.size();

        MultipartPart part;
        qsizetype dataStart = 0;
        if (body.sliced(pos).startsWith(kCrLf)) {
            dataStart = pos + kCrLf.size();
        } else {
            const qsizetype headerEnd = body.indexOf("\r\n\r\n", pos);
            if (headerEnd < 0)
                return failure(QStringLiteral("the headers of a part are not followed by an empty line"));
            if (auto error = parseHeaders(body.sliced(pos, headerEnd - pos), part))
                return failure(*error);
            dataStart = headerEnd + 4;
        }
        const qsizetype dataEnd = body.indexOf(delimiter, dataStart);
        if (dataEnd < 0)
            return failure(QStringLiteral("the body ends before the closing boundary"));
        part.data = body.sliced(dataStart, dataEnd - dataStart).toByteArray();
        if (auto error = readDisposition(part))
            return failure(*error);
        result.parts.push_back(std::move(part));
        pos = dataEnd + delimiter.size();
    }
}

} // namespace tessara
