#include "tessara/kyc/video/H264Encoder.h"

#include "VideoTestSupport.h"
#include "tessara/kyc/video/SyntheticScene.h"

#include <gtest/gtest.h>

namespace tessara {
namespace {

using testing::DecodedPicture;
using testing::encodePicture;
using testing::StreamDecoder;
using testing::unitType;

constexpr int kSps = 7, kPps = 8, kIdrSlice = 5, kSlice = 1;

// Start codes, one unit per message, and SPS then PPS in front of every IDR picture, on real
// encoder output. Key frames come at the start, on demand (25) and 60 pictures after the last one,
// never from a scene cut (document to face at 50).
TEST(H264Encoder, EveryMessageIsOneUnitAndEveryKeyFrameCarriesItsParameterSets) {
    H264Encoder encoder(30.0, 2);
    encoder.configure({320, 240});
    SyntheticScene document(SyntheticScene::Subject::document, 320, 400);
    SyntheticScene face(SyntheticScene::Subject::face, 320, 400);
    std::vector<int> keyFrames;
    for (int i = 0; i < 150; ++i) {
        if (i == 25)
            encoder.forceKeyFrame();
        const QList<QByteArray> messages = encodePicture(encoder, (i < 50 ? document : face).render(i));
        ASSERT_FALSE(messages.isEmpty()) << "picture " << i;
        for (const QByteArray& m : messages) {
            ASSERT_TRUE(m.startsWith(QByteArray("\0\0\0\1", 4)));
            // Emulation prevention keeps start codes out of a unit: a second one means two units.
            EXPECT_EQ(m.indexOf(QByteArray("\0\0\1", 3), 4), -1);
        }
        const bool key = unitType(messages.first()) == kSps;
        if (key) {
            keyFrames.push_back(i);
            ASSERT_GE(messages.size(), 3);
            EXPECT_EQ(unitType(messages[1]), kPps);
            for (qsizetype k = 2; k < messages.size(); ++k)
                EXPECT_EQ(unitType(messages[k]), kIdrSlice);
        } else {
            for (const QByteArray& m : messages)
                EXPECT_EQ(unitType(m), kSlice);
        }
    }
    EXPECT_EQ(keyFrames, (std::vector<int>{0, 25, 85, 145}));
}

TEST(H264Encoder, WithoutAHandlerAKeyFrameGivesNothingAndNoFailure) {
    H264Encoder encoder(30.0, 1);
    encoder.configure({320, 240});
    SyntheticScene scene(SyntheticScene::Subject::face, 320, 400);
    std::vector<int> units;
    encoder.pictureObserver = [&](const H264Encoder::PictureReport& r) { units.push_back(r.units); };
    encoder.captureOutput(scene.render(0));
    // The stream still runs: the next picture with a handler decodes after a key frame.
    encoder.forceKeyFrame();
    EXPECT_EQ(unitType(encodePicture(encoder, scene.render(1)).first()), kSps);
    EXPECT_EQ(units, (std::vector<int>{0, 3}));
}

// The SPS names baseline profile (66) at level 4.1 (41), with the constrained-baseline flag.
TEST(H264Encoder, ParameterSetsNameBaselineLevel41) {
    H264Encoder encoder(30.0, 2);
    encoder.configure({1440, 1080});
    SyntheticScene scene(SyntheticScene::Subject::document, 1440, 1920);
    const QList<QByteArray> messages = encodePicture(encoder, scene.render(0));
    ASSERT_EQ(unitType(messages.first()), kSps);
    const QByteArray& sps = messages.first();
    EXPECT_EQ(uint8_t(sps[5]), 66);
    EXPECT_TRUE(uint8_t(sps[6]) & 0x40) << "constraint_set1_flag";
    EXPECT_EQ(uint8_t(sps[7]), 41);
}

// Portrait frames of 1440x1920 come back as 1440x1080 pictures close to their centre band, and a
// picture after a configure with the same size continues the stream (no new key frame).
TEST(H264Encoder, RoundTripDecodesTheCentreBandAboveThePsnrFloor) {
    // Measured against the noisy source: QP 26 keeps the scene and smooths much of the sensor
    // noise, 35.1 to 35.8 dB on these pictures; a wrong band or a broken picture falls far below.
    constexpr double kPsnrFloor = 33.0;
    H264Encoder encoder(30.0, 2);
    encoder.configure({1440, 1080});
    SyntheticScene scene(SyntheticScene::Subject::document, 1440, 1920);
    StreamDecoder decoder;
    for (int i = 0; i < 4; ++i) {
        if (i == 2)
            encoder.configure({1440, 1080});
        const VideoFrame frame = scene.render(i);
        const QList<QByteArray> messages = encodePicture(encoder, frame);
        EXPECT_EQ(unitType(messages.first()) == kSps, i == 0) << "picture " << i;
        DecodedPicture picture;
        ASSERT_TRUE(decoder.decode(messages, picture)) << "picture " << i;
        ASSERT_EQ(picture.width, 1440);
        ASSERT_EQ(picture.height, 1080);
        EXPECT_GT(testing::lumaPsnr(picture, frame, 420), kPsnrFloor) << "picture " << i;
    }
}

// Three bands (top, middle, bottom) in NV12 and in I420: only the middle colour survives the crop.
TEST(H264Encoder, CropKeepsTheMiddleBandOfEitherLayout) {
    struct Colour {
        uint8_t y, u, v;
    };
    const Colour top{82, 90, 240}, middle{145, 54, 34}, bottom{41, 240, 110};
    for (VideoFrame::Layout layout : {VideoFrame::Layout::nv12, VideoFrame::Layout::i420}) {
        VideoFrame frame = VideoFrame::allocate(layout, 1440, 1920);
        for (int row = 0; row < 1920; ++row) {
            const Colour& c = row < 420 ? top : row < 1500 ? middle : bottom;
            memset(frame.mutablePlane(0) + size_t(row) * 1440, c.y, 1440);
            if (row % 2)
                continue;
            for (int col = 0; col < 720; ++col) {
                if (layout == VideoFrame::Layout::nv12) {
                    frame.mutablePlane(1)[size_t(row / 2) * 1440 + 2 * col] = c.u;
                    frame.mutablePlane(1)[size_t(row / 2) * 1440 + 2 * col + 1] = c.v;
                } else {
                    frame.mutablePlane(1)[size_t(row / 2) * 720 + col] = c.u;
                    frame.mutablePlane(2)[size_t(row / 2) * 720 + col] = c.v;
                }
            }
        }
        H264Encoder encoder(30.0, 2);
        encoder.configure({1440, 1080});
        StreamDecoder decoder;
        DecodedPicture picture;
        ASSERT_TRUE(decoder.decode(encodePicture(encoder, frame), picture));
        for (int row : {0, 1, 540, 1078, 1079}) {
            const size_t c = size_t(row / 2) * 720 + 360;
            EXPECT_NEAR(picture.y[size_t(row) * 1440 + 700], middle.y, 3) << "row " << row;
            EXPECT_NEAR(picture.u[c], middle.u, 3) << "row " << row;
            EXPECT_NEAR(picture.v[c], middle.v, 3) << "row " << row;
        }
    }
}

// After frames were detached (a reconnect, a return from the background) the first picture is a
// key frame; the first attach of a fresh encoder needs none forced, it starts with one anyway.
TEST(H264Encoder, FramesResumingAfterADetachStartWithAKeyFrame) {
    H264Encoder encoder(30.0, 1);
    encoder.configure({320, 240});
    SyntheticScene scene(SyntheticScene::Subject::face, 320, 400);
    encoder.outputDidAttach();
    EXPECT_EQ(unitType(encodePicture(encoder, scene.render(0)).first()), kSps);
    for (int i = 1; i < 5; ++i)
        EXPECT_EQ(unitType(encodePicture(encoder, scene.render(i)).first()), kSlice);
    encoder.outputDidAttach();
    const QList<QByteArray> resumed = encodePicture(encoder, scene.render(5));
    ASSERT_GE(resumed.size(), 3);
    EXPECT_EQ(unitType(resumed[0]), kSps);
    EXPECT_EQ(unitType(resumed[1]), kPps);
    EXPECT_EQ(unitType(resumed[2]), kIdrSlice);
}

} // namespace
} // namespace tessara
