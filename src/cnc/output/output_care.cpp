// A caller's care, kept as long as the library is loaded.
#include "cnc/output/output_care.h"

#include "session/module_state.h"

namespace brenvik {

namespace {

struct CareInForce {
    const OutputCare* care = nullptr;
};

}  // namespace

void CareForOutput(const OutputCare* care) { StateOf<CareInForce>().care = care; }

const OutputCare& CareOfOutput() {
    static const OutputCare nobody;
    const OutputCare* care = StateOf<CareInForce>().care;
    return care == nullptr ? nobody : *care;
}

}  // namespace brenvik
