// The modeller's exchange settings are global to the program. This is the one place that sets them.
#pragma once

#include "drafting_host/step/step_text.h"

namespace brenvik::step {

/// Readies the modeller for one reading: silent on standard output, millimetres, names in `codePage`.
/// The first call loads the exchange tables (a few milliseconds).
void PrepareReading(CodePage codePage);

/// Readies the modeller for one writing: silent, AP214, millimetres, one file for all.
void PrepareWriting();

}  // namespace brenvik::step
