#include "backend/MultipartParser.h"

#include "tessara/backend/TSRMultipartData.h"

#include <gtest/gtest.h>

using tessara::MultipartParser;

namespace {

const QByteArray kBoundary = "----TessaraFormBoundaryTEST";

QByteArray crlf(const char* text) {
    return QByteArray(text).replace("\n", "\r\n");
}

} // namespace

TEST(MultipartParser, ReadsTheBodyTheSdkWrites) {
    tessara::TSRMultipartData data;
    // Looks like framing and holds a NUL byte: neither may confuse the parser.
    const char raw[] = "%PDF-1.4\r\n--not-a-boundary\r\n\r\n\0binary";
    const QByteArray pdf(raw, sizeof raw - 1);
    data.addPart(pdf, QStringLiteral("application/pdf"), QStringLiteral("file"),
                 QStringLiteral("Служебна бележка.PDF"));
    data.addPart(R"({"fromDirectionId":"documents","key":"incomeDocument","submissionId":"s"})",
                 QStringLiteral("application/json"), QStringLiteral("dto"), QStringLiteral("blob"));
    data.addPart({}, QStringLiteral("text/plain"), QStringLiteral("empty"), QStringLiteral("empty.txt"));
    data.isFinalized = true;

    const auto result = MultipartParser::parse(data.body(), data.boundary.toUtf8());
    ASSERT_TRUE(result.ok()) << result.error->toStdString();
    ASSERT_EQ(result.parts.size(), 3u);
    const auto* file = result.part("file");
    ASSERT_NE(file, nullptr);
    EXPECT_EQ(file->data, pdf);
    EXPECT_EQ(file->fileName, QStringLiteral("Служебна бележка.PDF"));
    EXPECT_EQ(file->contentType, "application/pdf");
    EXPECT_EQ(result.part("dto")->fileName, QStringLiteral("blob"));
    EXPECT_TRUE(result.part("empty")->data.isEmpty());
    EXPECT_EQ(result.part("missing"), nullptr);
}

TEST(MultipartParser, AcceptsWhatClientsLegitimatelyVary) {
    struct Case {
        const char* name;
        QByteArray body;
        QByteArray expectedData;
        std::optional<QString> expectedFileName;
        QByteArray expectedType;
    };
    const Case cases[] = {
        {"preamble and epilogue",
         crlf("ignored preamble\n------TessaraFormBoundaryTEST\nContent-Disposition: form-data; "
              "name=\"file\"\n\n"
              "abc\n------TessaraFormBoundaryTEST--\nepilogue"),
         "abc", std::nullopt, "text/plain"},
        {"bare parameters, header case, padding after the boundary",
         crlf("------TessaraFormBoundaryTEST  \ncontent-disposition: FORM-DATA;name=file;filename=a.pdf\n"
              "CONTENT-TYPE: application/pdf\n\nxyz\n------TessaraFormBoundaryTEST--"),
         "xyz", QStringLiteral("a.pdf"), "application/pdf"},
        {"RFC 5987 file name wins over the plain one",
         crlf("------TessaraFormBoundaryTEST\nContent-Disposition: form-data; name=\"file\"; "
              "filename=\"x.pdf\"; "
              "filename*=UTF-8''%D0%B4%D0%BE%D1%85%D0%BE%D0%B4.pdf\n\n1\n------TessaraFormBoundaryTEST--"),
         "1", QStringLiteral("доход.pdf"), "text/plain"},
        {"a backslash in a quoted name is kept",
         crlf("------TessaraFormBoundaryTEST\nContent-Disposition: form-data; name=\"file\"; "
              "filename=\"C:\\a.pdf\"\n\n"
              "\n------TessaraFormBoundaryTEST--"),
         "", QStringLiteral("C:\\a.pdf"), "text/plain"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const auto result = MultipartParser::parse(c.body, kBoundary);
        ASSERT_TRUE(result.ok()) << result.error->toStdString();
        ASSERT_EQ(result.parts.size(), 1u);
        EXPECT_EQ(result.parts[0].name, "file");
        EXPECT_EQ(result.parts[0].data, c.expectedData);
        EXPECT_EQ(result.parts[0].fileName, c.expectedFileName);
        EXPECT_EQ(result.parts[0].contentType, c.expectedType);
    }
}

TEST(MultipartParser, RefusesBrokenFraming) {
    struct Case {
        const char* name;
        QByteArray body;
        const char* reason; // a word of the error
    };
    const Case cases[] = {
        {"no boundary at all", "just text", "start"},
        {"no closing boundary",
         crlf("------TessaraFormBoundaryTEST\nContent-Disposition: form-data; name=\"file\"\n\nabc"),
         "closing"},
        {"truncated inside the headers", crlf("------TessaraFormBoundaryTEST\nContent-Disposition: form-da"),
         "empty line"},
        {"boundary line without CR LF",
         "------TessaraFormBoundaryTEST\nContent-Disposition: form-data; "
         "name=\"f\"\n\nx\n------TessaraFormBoundaryTEST--",
         "CR LF"},
        {"part without disposition",
         crlf(
             "------TessaraFormBoundaryTEST\nContent-Type: text/plain\n\nx\n------TessaraFormBoundaryTEST--"),
         "Content-Disposition"},
        {"part without name",
         crlf("------TessaraFormBoundaryTEST\nContent-Disposition: form-data; filename=\"a\"\n\nx\n"
              "------TessaraFormBoundaryTEST--"),
         "no name"},
        {"unterminated quote",
         crlf("------TessaraFormBoundaryTEST\nContent-Disposition: form-data; name=\"file\n\nx\n"
              "------TessaraFormBoundaryTEST--"),
         "malformed"},
        {"header line without colon",
         crlf("------TessaraFormBoundaryTEST\nContent-Disposition: form-data; name=\"f\"\nbroken\n\nx\n"
              "------TessaraFormBoundaryTEST--"),
         "field name"},
        {"not form-data",
         crlf("------TessaraFormBoundaryTEST\nContent-Disposition: attachment; name=\"f\"\n\nx\n"
              "------TessaraFormBoundaryTEST--"),
         "form-data"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const auto result = MultipartParser::parse(c.body, kBoundary);
        ASSERT_FALSE(result.ok());
        EXPECT_TRUE(result.error->contains(QLatin1String(c.reason))) << result.error->toStdString();
    }
    EXPECT_FALSE(MultipartParser::parse("x", "").ok());
}

TEST(MultipartParser, FindsTheBoundaryInTheContentType) {
    struct Case {
        const char* header;
        std::optional<QByteArray> boundary;
    };
    const Case cases[] = {
        {"multipart/form-data; boundary=----TessaraFormBoundaryAB-12",
         QByteArray("----TessaraFormBoundaryAB-12")},
        {"Multipart/Form-Data; charset=utf-8; boundary=\"a b\"", QByteArray("a b")},
        {"multipart/form-data;boundary=x", QByteArray("x")},
        {"multipart/form-data", std::nullopt},
        {"multipart/form-data; boundary=", std::nullopt},
        {"application/json; boundary=x", std::nullopt},
        {"multipart/form-data; boundary=\"unterminated", std::nullopt},
        {"", std::nullopt},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.header);
        EXPECT_EQ(MultipartParser::boundaryFromContentType(c.header), c.boundary);
    }
    EXPECT_FALSE(
        MultipartParser::boundaryFromContentType("multipart/form-data; boundary=" + QByteArray(71, 'a')));
}
