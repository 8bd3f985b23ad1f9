// The modeller's exchange settings are global to the program. This is the one place that sets them.
#pragma once

#include <Resource_FormatType.hxx>

#include "drafting_host/step/step_text.h"

namespace brenvik::step {

/// The modeller's word for a code page.
Resource_FormatType FormatOf(CodePage codePage);

/// Readies the modeller for one reading: silent on standard output, millimetres. The first call loads the
/// exchange tables (a few milliseconds).
void PrepareReading();

/// Readies the modeller for one writing: silent, AP214, millimetres, one file for all.
void PrepareWriting();

}  // namespace brenvik::step
