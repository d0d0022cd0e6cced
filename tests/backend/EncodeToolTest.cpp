#include "kyc/video/VideoTestSupport.h"

#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace tessara {
namespace {

struct ToolRun {
    int exitCode = -1;
    QString out, err;
};

ToolRun runEncode(const QStringList& arguments) {
    QProcess process;
    process.start(QStringLiteral(TESSARA_BINARY_DIR "/bin/tessara"), QStringList{"encode"} + arguments);
    process.waitForFinished(60000);
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

// Splits an elementary stream into pictures: a new picture starts at an SPS or at a slice whose
// first_mb_in_slice is 0 (its first payload bit set).
QList<QList<QByteArray>> pictures(const QByteArray& stream) {
    QList<QList<QByteArray>> result;
    const QByteArray startCode("\0\0\0\1", 4);
    qsizetype at = stream.indexOf(startCode);
    bool parameterSetsPending = false;
    while (at >= 0) {
        const qsizetype next = stream.indexOf(startCode, at + 4);
        const QByteArray unit = stream.mid(at, next < 0 ? -1 : next - at);
        const int type = testing::unitType(unit);
        const bool firstSlice = (type == 1 || type == 5) && (uint8_t(unit[5]) & 0x80);
        if ((type == 7 || (firstSlice && !parameterSetsPending)) || result.isEmpty())
            result.append(QList<QByteArray>{});
        parameterSetsPending = type == 7 || type == 8;
        result.last().append(unit);
        at = next;
    }
    return result;
}

// The stream a service would receive: baseline 4.1, 1440x1080, SPS and PPS before every key frame,
// no more than 60 pictures between key frames, and a summary that agrees with it.
TEST(EncodeTool, WritesADecodableStreamAndSummarisesIt) {
    QTemporaryDir dir;
    const QString out = dir.filePath("out.h264");
    const ToolRun run = runEncode({out, "--frames", "62"});
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    QFile file(out);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray stream = file.readAll();
    EXPECT_EQ(uint8_t(stream[5]), 66);
    EXPECT_EQ(uint8_t(stream[7]), 41);

    testing::StreamDecoder decoder;
    const auto split = pictures(stream);
    ASSERT_EQ(split.size(), 62);
    std::vector<int> keyFrames;
    for (qsizetype i = 0; i < split.size(); ++i) {
        testing::DecodedPicture picture;
        ASSERT_TRUE(decoder.decode(split[i], picture)) << "picture " << i;
        EXPECT_EQ(picture.width, 1440);
        EXPECT_EQ(picture.height, 1080);
        if (testing::unitType(split[i][0]) == 7) {
            keyFrames.push_back(int(i));
            EXPECT_EQ(testing::unitType(split[i][1]), 8);
            EXPECT_EQ(testing::unitType(split[i][2]), 5);
        }
    }
    EXPECT_EQ(keyFrames, (std::vector<int>{0, 60}));

    const QRegularExpression summary(
        QStringLiteral("^pictures: 62\n"
                       "units: (\\d+)\n"
                       "bytes: %1\n"
                       "key frames: 2 at 0 60\n"
                       "largest key frame spacing: 60\n"
                       "bit rate: [\\d.]+ kbit/s at 30 fps\n"
                       "encode time per picture: median [\\d.]+ ms, p99 [\\d.]+ ms\n"
                       "capture to message: median [\\d.]+ ms, p99 [\\d.]+ ms\n$")
            .arg(stream.size()));
    const auto match = summary.match(run.out);
    ASSERT_TRUE(match.hasMatch()) << run.out.toStdString();
    EXPECT_EQ(match.captured(1).toInt(), stream.count(QByteArray("\0\0\0\1", 4)));
}

// A file camera loops over its frames; the front position works the same way.
TEST(EncodeTool, PlaysAFileCameraInALoop) {
    QTemporaryDir dir;
    QFile frames(dir.filePath("frames.nv12"));
    ASSERT_TRUE(frames.open(QIODevice::WriteOnly));
    frames.write(QByteArray(1440 * 1920 * 3 / 2 * 2, char(128)));
    frames.close();
    const ToolRun run = runEncode({dir.filePath("out.h264"), "--camera", "file:" + frames.fileName(),
                                   "--frames", "3", "--position", "front"});
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_TRUE(run.out.startsWith("pictures: 3\n")) << run.out.toStdString();
}

TEST(EncodeTool, RefusesWhatItCannotEncode) {
    struct Row {
        QStringList arguments;
        int exitCode;
        const char* words;
    };
    const Row rows[] = {
        {{"--size", "480x640"}, 1, "no NV12 4:3 format"},
        {{"--camera", "file:/nonexistent/frames.nv12"}, 1, "holds no whole frame"},
        {{"--camera", "webcam"}, 2, "--camera is synthetic or file:PATH."},
        {{"--position", "left"}, 2, "--position is back or front."},
        {{"--frames", "0"}, 2, "--frames wants a positive whole number."},
        {{"--size", "1440by1920"}, 2, "--size wants WxH"},
    };
    QTemporaryDir dir;
    for (const Row& row : rows) {
        const ToolRun run = runEncode(QStringList{dir.filePath("out.h264")} + row.arguments);
        EXPECT_EQ(run.exitCode, row.exitCode) << row.arguments.join(' ').toStdString();
        EXPECT_TRUE(run.err.contains(row.words)) << run.err.toStdString();
    }
}

} // namespace
} // namespace tessara
