// The door of the STEP library.
#include "drafting_host/step/step_exchange.h"
#include "drafting_host/step/step_reader.h"
#include "drafting_host/step/step_writer.h"
#include "drafting_host/step/texts/step_strings.h"
#include "step_build.h"

extern "C" const char* brenvik_step_build() { return brenvik::step::StepBuild; }

extern "C" const brenvik::step::StepExchange* brenvik_step_exchange() {
    static const brenvik::step::StepExchange exchange{&brenvik::step::ReadStep, &brenvik::step::StepText,
                                                      &brenvik::step::IsWrittenHere};
    return &exchange;
}
