#!/usr/bin/env bash
# The video path against its peers, in one run and on the same frames: the SDK's whole path and a
# bare OpenH264 loop (bench_video), then ffmpeg with libx264 on the raw frames, one thread and then
# all cores each; then the stream `tessara encode` writes, as ffprobe reads it.
# Usage: bench/video_bench.sh [FRAMES]   (FRAMES per content for the ffmpeg peer, default 150)
set -euo pipefail
cd "$(dirname "$0")/.."
export CCACHE_BASEDIR="$PWD" CCACHE_NOHASHDIR=1
frames=${1:-150}
qp=26 # the SDK's fixed quantiser (quality 0.5); the peer gets the same

# ffmpeg is only the peer the figures are compared with: never linked, never needed by ./run test.
if ! dpkg-query -W -f='${Status}' ffmpeg 2>/dev/null | grep -q "install ok installed"; then
    sudo=""
    [ "$(id -u)" -ne 0 ] && sudo="sudo"
    export DEBIAN_FRONTEND=noninteractive
    $sudo apt-get update -qq
    $sudo apt-get install -y -qq --no-install-recommends ffmpeg
fi

cmake --preset release >/dev/null
cmake --build build-release -j2 --target bench_video tessara-cli >/dev/null
bench=build-release/bench/bench_video
tool=build-release/bin/tessara
cores=$(nproc)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

echo "== SDK path and bare OpenH264 (items_per_second = pictures/s; threads 0 = all $cores cores)"
# Three interleaved repetitions, medians reported: the machine's load drifts, and interleaving
# spreads the drift over both sides instead of favouring whichever runs first.
"$bench" --benchmark_filter='WholePath|BareOpenH264' --benchmark_repetitions=3 \
    --benchmark_enable_random_interleaving=true --benchmark_report_aggregates_only=true |
    tee "$work/sdk.txt"
"$bench" --benchmark_filter='PathVsBare|BitRateByQp|Paced30' | tee "$work/more.txt"

rate() { # median pictures/s of one bench_video benchmark: rate NAME
    grep -E "^$1/.*_median" "$work/sdk.txt" | head -1 | grep -o 'items_per_second=[0-9.k]*' | cut -d= -f2 |
        awk '{ v = $1; if (v ~ /k$/) { sub(/k$/, "", v); v *= 1000 } print v }'
}

echo
echo "== ffmpeg + libx264 ultrafast, same frames, QP $qp ($frames pictures per run)"
printf '%-8s %-8s %12s %12s %12s %10s\n' content threads ffmpeg_fps sdk_fps bare_fps sdk/ffmpeg
for content in 0 1; do
    "$bench" --write-frames "$work/frames.nv12" "$frames" "$content"
    for threads in 1 0; do
        runs=()
        for _ in 1 2 3; do # median of three, like the SDK's side
            start=$(date +%s.%N)
            ffmpeg -v error -y -f rawvideo -pix_fmt nv12 -video_size 1440x1920 -i "$work/frames.nv12" \
                -vf crop=1440:1080:0:420 -filter_threads "$([ "$threads" = 1 ] && echo 1 || echo "$cores")" \
                -c:v libx264 -preset ultrafast -tune zerolatency -profile:v baseline -level:v 4.1 -g 60 \
                -qp "$qp" -threads "$threads" -f h264 "$work/peer.h264"
            end=$(date +%s.%N)
            runs+=("$(awk -v n="$frames" -v a="$start" -v b="$end" 'BEGIN { printf "%.1f", n / (b - a) }')")
        done
        peer=$(printf '%s\n' "${runs[@]}" | sort -n | sed -n 2p)
        sdk=$(rate "BM_WholePath/$threads/$content")
        bare=$(rate "BM_BareOpenH264/$threads/$content")
        ratio=$(awk -v s="$sdk" -v p="$peer" 'BEGIN { printf "%.2f", s / p }')
        printf '%-8s %-8s %12s %12.1f %12.1f %10s\n' "$content" "$([ "$threads" = 1 ] && echo 1 || echo "$cores")" \
            "$peer" "$sdk" "$bare" "$ratio"
    done
done
echo "(content 0: synthetic camera in good light; 1: a dim room's noise)"
echo
echo "== the path against the bare encoder, picture for picture in one loop (goal: at least 0.95)"
grep -E '^BM_PathVsBare' "$work/more.txt" | sed -E 's/^BM_PathVsBare\/([0-9])\/([0-9]).* bare_fps=([0-9.k]+).* path_fps=([0-9.k]+).* path_over_bare=([0-9.]+).*/threads \1 (0 = all cores) content \2: path \4 fps, bare \3 fps, path\/bare \5/'

echo
echo "== tessara encode, as ffprobe reads it"
"$tool" encode "$work/sdk.h264" --frames 150
ffprobe -v error -select_streams v:0 -show_entries stream=codec_name,profile,level,width,height \
    -of default=noprint_wrappers=1 "$work/sdk.h264"
ffprobe -v error -select_streams v:0 -show_entries frame=key_frame,pict_type -of csv=p=0 "$work/sdk.h264" |
    awk -F, '$1 == 1 { if (n) { gap = i - last; if (gap > max) max = gap } last = i; n++ } { i++ }
             END { printf "key frames: %d, largest spacing: %d pictures\n", n, max }'
