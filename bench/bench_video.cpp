// The video path's figures: pictures per second of the whole path (NV12 1440x1920 in, Annex B
// messages out) against a bare OpenH264 loop with the same settings on the same frames, at one
// thread and at all cores; bit rate and PSNR by quantiser on the synthetic camera (what the fixed QP
// rests on); capture-to-message latency and CPU use with a camera paced at 30 frames/s. The ffmpeg
// peer runs from bench/video_bench.sh on frames this program writes
// (--write-frames PATH COUNT CONTENT).

#include "BenchMain.h"
#include "tessara/kyc/video/FileCaptureSystem.h"
#include "tessara/kyc/video/H264Encoder.h"
#include "tessara/kyc/video/H264EncoderParameters.h"
#include "tessara/kyc/video/SyntheticScene.h"
#include "tessara/kyc/video/VideoClient.h"

#include <QCoreApplication>
#include <QTemporaryDir>
#include <QThread>
#include <algorithm>
#include <atomic>
#include <benchmark/benchmark.h>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <libyuv/planar_functions.h>
#include <sys/resource.h>
#include <thread>
#include <wels/codec_api.h>

using namespace tessara;

namespace {

constexpr int kWidth = 1440, kHeight = 1920, kBandHeight = 1080, kTop = 420;
constexpr int kFrames = 32;

int hostCores() {
    return int(std::max(1u, std::thread::hardware_concurrency()));
}

// Content 0: the synthetic camera in good light (noise 4); content 1: a dim room (noise 12), whose
// noise survives the quantiser and makes every picture cost real work, as a camera's would.
constexpr int kNoise[2] = {4, 12};

const std::vector<VideoFrame>& frames(int content = 0) {
    static const std::vector<VideoFrame> made[2] = {
        [] {
            SyntheticScene scene(SyntheticScene::Subject::document, kWidth, kHeight, 1, kNoise[0]);
            std::vector<VideoFrame> list;
            for (int i = 0; i < kFrames; ++i)
                list.push_back(scene.render(i));
            return list;
        }(),
        [] {
            SyntheticScene scene(SyntheticScene::Subject::document, kWidth, kHeight, 1, kNoise[1]);
            std::vector<VideoFrame> list;
            for (int i = 0; i < kFrames; ++i)
                list.push_back(scene.render(i));
            return list;
        }()};
    return made[content];
}

// The centre band of each frame as I420, made before timing: what the bare encoder loop is fed.
struct I420Band {
    std::vector<uint8_t> y, u, v;
};
const std::vector<I420Band>& bands(int content = 0) {
    static std::vector<I420Band> made[2];
    if (!made[content].empty())
        return made[content];
    made[content] = [content] {
        std::vector<I420Band> list;
        for (const VideoFrame& f : frames(content)) {
            I420Band b;
            b.y.assign(f.planes[0] + size_t(kTop) * kWidth,
                       f.planes[0] + size_t(kTop + kBandHeight) * kWidth);
            b.u.resize(size_t(kWidth / 2) * kBandHeight / 2);
            b.v.resize(b.u.size());
            libyuv::SplitUVPlane(f.planes[1] + size_t(kTop / 2) * kWidth, kWidth, b.u.data(), kWidth / 2,
                                 b.v.data(), kWidth / 2, kWidth / 2, kBandHeight / 2);
            list.push_back(std::move(b));
        }
        return list;
    }();
    return made[content];
}

int threadsArg(const benchmark::State& state) {
    return state.range(0) == 0 ? hostCores() : int(state.range(0));
}

// The SDK's path: crop, encode, frame each unit into its own message.
void BM_WholePath(benchmark::State& state) {
    H264Encoder encoder(30.0, threadsArg(state));
    encoder.configure({kWidth, kBandHeight});
    int64_t bytes = 0;
    encoder.naluHandling = [&](QByteArray unit) { bytes += unit.size(); };
    const auto& input = frames(int(state.range(1)));
    size_t i = 0;
    for (auto _ : state)
        encoder.captureOutput(input[i++ % kFrames]);
    state.SetItemsProcessed(state.iterations());
    state.counters["kbit_s_at_30"] = double(bytes) * 8 * 30 / 1000 / double(state.iterations());
    state.counters["threads"] = threadsArg(state);
}
// Arguments: threads (0 = all cores), content.
BENCHMARK(BM_WholePath)
    ->ArgsProduct({{1, 0}, {0, 1}})
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->MinTime(3);

std::unique_ptr<ISVCEncoder, void (*)(ISVCEncoder*)> bareEncoder(int threads, int qp) {
    ISVCEncoder* raw = nullptr;
    WelsCreateSVCEncoder(&raw);
    int traceLevel = WELS_LOG_ERROR;
    raw->SetOption(ENCODER_OPTION_TRACE_LEVEL, &traceLevel);
    SEncParamExt p = H264EncoderParameters::make({kWidth, kBandHeight}, 30.0, threads);
    p.iMinQp = p.iMaxQp = p.sSpatialLayers[0].iDLayerQp = qp;
    raw->InitializeExt(&p);
    int format = videoFormatI420;
    raw->SetOption(ENCODER_OPTION_DATAFORMAT, &format);
    return {raw, [](ISVCEncoder* e) {
                e->Uninitialize();
                WelsDestroySVCEncoder(e);
            }};
}

// OpenH264's view of a ready band; it only reads the planes.
SSourcePicture bandPicture(const I420Band& band) {
    SSourcePicture picture{};
    picture.iColorFormat = videoFormatI420;
    picture.iPicWidth = kWidth;
    picture.iPicHeight = kBandHeight;
    picture.iStride[0] = kWidth;
    picture.iStride[1] = picture.iStride[2] = kWidth / 2;
    picture.pData[0] = const_cast<uint8_t*>(band.y.data());
    picture.pData[1] = const_cast<uint8_t*>(band.u.data());
    picture.pData[2] = const_cast<uint8_t*>(band.v.data());
    return picture;
}

int64_t encodeBand(ISVCEncoder& encoder, const I420Band& band) {
    SSourcePicture picture = bandPicture(band);
    SFrameBSInfo out{};
    encoder.EncodeFrame(&picture, &out);
    return out.iFrameSizeInBytes;
}

// OpenH264 alone, same settings, fed ready I420 bands: the ceiling the path is measured against.
void BM_BareOpenH264(benchmark::State& state) {
    auto encoder = bareEncoder(threadsArg(state), H264EncoderParameters::quantizerForQuality(0.5));
    const auto& input = bands(int(state.range(1)));
    size_t i = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(encodeBand(*encoder, input[i++ % kFrames]));
    state.SetItemsProcessed(state.iterations());
    state.counters["threads"] = threadsArg(state);
}
BENCHMARK(BM_BareOpenH264)
    ->ArgsProduct({{1, 0}, {0, 1}})
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->MinTime(3);

// The path and the bare loop in one loop, picture for picture: a load that drifts while the
// benchmark runs falls on both alike, so the ratio holds on a busy machine where separate runs
// differ by tens of per cent.
void BM_PathVsBare(benchmark::State& state) {
    const int threads = threadsArg(state);
    const int content = int(state.range(1));
    H264Encoder path(30.0, threads);
    path.configure({kWidth, kBandHeight});
    path.naluHandling = [](QByteArray unit) { benchmark::DoNotOptimize(unit.data()); };
    auto bare = bareEncoder(threads, H264EncoderParameters::quantizerForQuality(0.5));
    const auto& input = frames(content);
    const auto& ready = bands(content);
    using Clock = std::chrono::steady_clock;
    Clock::duration pathTime{}, bareTime{};
    size_t i = 0;
    for (auto _ : state) {
        const size_t k = i++ % kFrames;
        const auto t0 = Clock::now();
        path.captureOutput(input[k]);
        const auto t1 = Clock::now();
        benchmark::DoNotOptimize(encodeBand(*bare, ready[k]));
        const auto t2 = Clock::now();
        pathTime += t1 - t0;
        bareTime += t2 - t1;
    }
    const double n = double(state.iterations());
    state.counters["path_fps"] = n / std::chrono::duration<double>(pathTime).count();
    state.counters["bare_fps"] = n / std::chrono::duration<double>(bareTime).count();
    state.counters["path_over_bare"] =
        std::chrono::duration<double>(bareTime).count() / std::chrono::duration<double>(pathTime).count();
    state.counters["threads"] = threads;
}
BENCHMARK(BM_PathVsBare)
    ->ArgsProduct({{1, 0}, {0, 1}})
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->MinTime(4);

double lumaPsnr(const uint8_t* decoded, int stride, const I420Band& band) {
    double squared = 0;
    for (int r = 0; r < kBandHeight; ++r)
        for (int c = 0; c < kWidth; ++c) {
            const double d = double(decoded[size_t(r) * stride + c]) - band.y[size_t(r) * kWidth + c];
            squared += d * d;
        }
    return 10.0 * std::log10(255.0 * 255.0 * kWidth * kBandHeight / squared);
}

// Bit rate at 30 pictures/s and luma PSNR by quantiser, over 60 pictures (one key frame interval).
void BM_BitRateByQp(benchmark::State& state) {
    const int qp = int(state.range(0));
    double kbits = 0, psnr = 0;
    for (auto _ : state) {
        auto encoder = bareEncoder(hostCores(), qp);
        ISVCDecoder* decoder = nullptr;
        WelsCreateDecoder(&decoder);
        SDecodingParam dp{};
        dp.sVideoProperty.eVideoBsType = VIDEO_BITSTREAM_AVC;
        decoder->Initialize(&dp);
        int64_t bytes = 0;
        double psnrSum = 0;
        constexpr int kPictures = 60;
        for (int i = 0; i < kPictures; ++i) {
            const I420Band& band = bands()[size_t(i % kFrames)];
            SSourcePicture picture = bandPicture(band);
            SFrameBSInfo out{};
            encoder->EncodeFrame(&picture, &out);
            std::vector<uint8_t> access;
            for (int l = 0; l < out.iLayerNum; ++l) {
                int size = 0;
                for (int n = 0; n < out.sLayerInfo[l].iNalCount; ++n)
                    size += out.sLayerInfo[l].pNalLengthInByte[n];
                access.insert(access.end(), out.sLayerInfo[l].pBsBuf, out.sLayerInfo[l].pBsBuf + size);
            }
            bytes += int64_t(access.size());
            unsigned char* planes[3] = {};
            SBufferInfo info{};
            decoder->DecodeFrameNoDelay(access.data(), int(access.size()), planes, &info);
            if (info.iBufferStatus == 1)
                psnrSum += lumaPsnr(planes[0], info.UsrData.sSystemBuffer.iStride[0], band);
        }
        decoder->Uninitialize();
        WelsDestroyDecoder(decoder);
        kbits = double(bytes) * 8 * 30 / 1000 / kPictures;
        psnr = psnrSum / kPictures;
    }
    state.counters["kbit_s_at_30"] = kbits;
    state.counters["psnr_db"] = psnr;
}
BENCHMARK(BM_BitRateByQp)->DenseRange(20, 32, 3)->Iterations(1)->Unit(benchmark::kMillisecond);

// The SDK as a user runs it: a file camera paced at 30 frames/s through the capture manager, the
// output queue, the encoder and the framing, for 10 seconds. Latency runs from the camera's time
// stamp to the picture's last message; CPU is the process's user + system time over wall time.
void BM_Paced30(benchmark::State& state) {
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("frames.nv12"));
    {
        std::FILE* f = std::fopen(QFile::encodeName(path).constData(), "wb");
        for (const VideoFrame& frame : frames(int(state.range(0))))
            std::fwrite(frame.planes[0], 1, size_t(kWidth) * kHeight * 3 / 2, f);
        std::fclose(f);
    }
    constexpr int kPictures = 300;
    std::vector<int64_t> latencies;
    double cpu = 0;
    for (auto _ : state) {
        latencies.clear();
        FileCaptureSystem::Options options;
        options.path = path;
        options.paced = true;
        options.frameLimit = kPictures;
        std::atomic<int> reported{0};
        VideoClient client(
            nullptr, [](QByteArray) {}, std::make_shared<FileCaptureSystem>(options));
        client.pictureObserver = [&](const H264Encoder::PictureReport& r) {
            latencies.push_back(r.lastMessageNs - r.captureTimeNs);
            ++reported;
        };
        client.compressionIsRunning = true;
        VideoCaptureManager& manager = client.captureManager();
        manager.sessionQueue().sync([] {});
        QCoreApplication::processEvents();
        rusage before{}, after{};
        getrusage(RUSAGE_SELF, &before);
        const auto start = std::chrono::steady_clock::now();
        manager.startRunning({});
        while (reported.load() < kPictures - int(manager.videoOutput().droppedFrames()))
            QThread::msleep(5);
        const double wall = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
        getrusage(RUSAGE_SELF, &after);
        auto seconds = [](const timeval& t) { return double(t.tv_sec) + double(t.tv_usec) / 1e6; };
        cpu = (seconds(after.ru_utime) - seconds(before.ru_utime) + seconds(after.ru_stime) -
               seconds(before.ru_stime)) /
              wall;
        client.stopCompression();
        client.resetCaptureManager();
        state.counters["dropped"] = double(kPictures - reported.load());
    }
    std::sort(latencies.begin(), latencies.end());
    state.counters["latency_median_ms"] = double(latencies[latencies.size() / 2]) / 1e6;
    state.counters["latency_p99_ms"] =
        double(latencies[std::min(latencies.size() - 1, latencies.size() * 99 / 100)]) / 1e6;
    state.counters["cpu_cores_used"] = cpu;
}
// Argument: content.
BENCHMARK(BM_Paced30)->Arg(0)->Arg(1)->Iterations(1)->Unit(benchmark::kSecond)->UseRealTime();

int writeFrames(const char* path, int count, int content) {
    std::FILE* f = std::fopen(path, "wb");
    if (!f)
        return 1;
    for (int i = 0; i < count; ++i)
        std::fwrite(frames(content)[size_t(i % kFrames)].planes[0], 1, size_t(kWidth) * kHeight * 3 / 2, f);
    std::fclose(f);
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    // The ffmpeg peer's input: the very frames the benchmarks encode, as raw NV12.
    if (argc == 5 && std::strcmp(argv[1], "--write-frames") == 0)
        return writeFrames(argv[2], std::atoi(argv[3]), std::atoi(argv[4]) ? 1 : 0);
    QCoreApplication app(argc, argv);
    return tessara::bench::runBenchmarks(argc, argv);
}
