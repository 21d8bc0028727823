#include "e2e/steps/Steps.h"

Journey wholeJourney()
{
    Journey journey;
    for (const auto tell : {launchSteps, loginSteps, portalSteps, uploadSteps, bridgeSteps,
             deviceSteps, sessionSteps, accountSteps})
        tell(journey);
    return journey;
}
