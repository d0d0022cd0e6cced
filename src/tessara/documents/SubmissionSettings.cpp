#include "tessara/documents/SubmissionSettings.h"

#include "tessara/documents/RecordTable.h"
#include "tessara/documents/SpecialCodecs.h"

namespace tessara {

namespace {
constexpr RecordTable kTable{
    field("calculatorSubmitDirectionStepId", &SubmissionSettings::calculatorSubmitDirectionStepId),
    field("endUserCreditProductSelection", &SubmissionSettings::endUserCreditProductSelection),
    field("failedNoVideoStream", &SubmissionSettings::failedNoVideoStream),
    field("idBackFailDirectionStepId", &SubmissionSettings::idBackFailDirectionStepId),
    field("idFaceFailDirectionStepId", &SubmissionSettings::idFaceFailDirectionStepId),
    field("livenessFailDirectionStepId", &SubmissionSettings::livenessFailDirectionStepId),
    field("noCameraAccessDirectionStepId", &SubmissionSettings::noCameraAccessDirectionStepId),
    field("noCameraDirectionId", &SubmissionSettings::noCameraDirectionId),
    field("noFaceDirectionStepId", &SubmissionSettings::noFaceDirectionStepId),
    field("noServiceDirectionStepId", &SubmissionSettings::noServiceDirectionStepId),
    field("products", &SubmissionSettings::products),
    field("signallingUrl", &SubmissionSettings::signallingUrl, absoluteUrl),
    field("streamUrl", &SubmissionSettings::streamUrl, absoluteUrl),
    field("userHash", &SubmissionSettings::userHash),
};
} // namespace

TESSARA_DEFINE_RECORD(SubmissionSettings, kTable)

} // namespace tessara
