#include "tessara/kyc/video/H264EncoderParameters.h"

#include <algorithm>
#include <cmath>

namespace tessara {

int H264EncoderParameters::quantizerForQuality(double quality) {
    return int(std::lround(40.0 - 28.0 * std::clamp(quality, 0.0, 1.0)));
}

int H264EncoderParameters::threadsForCores(int cores) {
    // The encoder threads per slice, so a picture cut in as many slices as cores keeps them all
    // busy; beyond four the slices cost more bits than the threads win.
    return std::clamp(cores, 1, 4);
}

SEncParamExt H264EncoderParameters::make(VideoDimensions size, double frameRate, int cores) {
    SEncParamExt p{};
    p.iUsageType = CAMERA_VIDEO_REAL_TIME;
    p.iPicWidth = size.width;
    p.iPicHeight = size.height;
    // No bit rate: only the rate-control-off mode runs without one, at the layer's fixed QP.
    p.iRCMode = RC_OFF_MODE;
    p.iTargetBitrate = 0;
    p.iMaxBitrate = UNSPECIFIED_BIT_RATE;
    p.fMaxFrameRate = float(frameRate > 0 ? frameRate : 30.0);
    p.iTemporalLayerNum = 1;
    p.iSpatialLayerNum = 1;
    p.iComplexityMode = LOW_COMPLEXITY;
    p.uiIntraPeriod = kMaxKeyFrameInterval;
    p.iNumRefFrame = 1;
    p.eSpsPpsIdStrategy = CONSTANT_ID;
    p.bPrefixNalAddingCtrl = false;
    p.bSimulcastAVC = false;
    p.iPaddingFlag = 0;
    p.iEntropyCodingModeFlag = 0; // CAVLC: baseline has no CABAC
    p.bEnableFrameSkip = false;
    const int qp = quantizerForQuality(kQuality);
    p.iMaxQp = qp;
    p.iMinQp = qp;
    p.uiMaxNalSize = 0;
    p.bEnableLongTermReference = false;
    p.iLtrMarkPeriod = 30;
    const int threads = threadsForCores(cores);
    p.iMultipleThreadIdc = uint16_t(threads);
    p.bUseLoadBalancing = false;
    p.iLoopFilterDisableIdc = 0;
    p.iLoopFilterAlphaC0Offset = 0;
    p.iLoopFilterBetaOffset = 0;
    p.bEnableDenoise = false;
    p.bEnableBackgroundDetection = false;
    p.bEnableAdaptiveQuant = false;
    p.bEnableFrameCroppingFlag = true;
    // Key frames come on the interval and on demand only, never from the encoder's own guess.
    p.bEnableSceneChangeDetect = false;
    p.bIsLosslessLink = false;
    p.bFixRCOverShoot = false;
    p.iIdrBitrateRatio = 0;

    SSpatialLayerConfig& layer = p.sSpatialLayers[0];
    layer.iVideoWidth = size.width;
    layer.iVideoHeight = size.height;
    layer.fFrameRate = p.fMaxFrameRate;
    layer.iSpatialBitrate = 0;
    layer.iMaxSpatialBitrate = UNSPECIFIED_BIT_RATE;
    layer.uiProfileIdc = PRO_BASELINE;
    layer.uiLevelIdc = LEVEL_4_1;
    layer.iDLayerQp = qp;
    layer.sSliceArgument.uiSliceMode = threads > 1 ? SM_FIXEDSLCNUM_SLICE : SM_SINGLE_SLICE;
    layer.sSliceArgument.uiSliceNum = unsigned(threads);
    return p;
}

} // namespace tessara
