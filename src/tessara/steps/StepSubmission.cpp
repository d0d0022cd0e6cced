#include "tessara/steps/StepSubmission.h"

#include "tessara/api/TSRViewController.h"
#include "tessara/backend/TSRNetwork.h"
#include "tessara/steps/StepPreparation.h"

#include <QPointer>

namespace tessara {

void StepSubmission::send(TSRViewController& screen, const SubmitStepDTO& dto, Finished finished) {
    QPointer<TSRViewController> self(&screen);
    TSRNetwork& network = TSRNetwork::shared();
    network.submitStep(
        dto, [self, &network, finished = std::move(finished)](TSRResult<SubmissionJSON> answer) {
            prepareStep(std::move(answer), network, [self, finished](TSRResult<SubmissionJSON> prepared) {
                if (!self)
                    return;
                std::optional<TSRError> failure;
                if (prepared.isSuccess())
                    self->transitionToStep(prepared.value());
                else
                    failure = prepared.error();
                // The replaced screen is deleted later, so it normally still exists here.
                if (self && finished)
                    finished(failure);
            });
        });
}

} // namespace tessara
