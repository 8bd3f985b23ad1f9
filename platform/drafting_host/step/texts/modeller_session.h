// The modeller's exchange settings are global to the program. This is the one place that sets them.
#pragma once

#include <Resource_FormatType.hxx>

#include "base/length_unit.h"
#include "drafting_host/step/texts/step_text.h"

namespace brenvik::step {

/// The modeller's word for a code page.
Resource_FormatType FormatOf(CodePage codePage);

/// Readies the modeller for one reading: silent on standard output, millimetres. The first call loads the
/// exchange tables (a few milliseconds).
void PrepareReading();

/// The unit that the bodies of the present reading come out in, from here on.
void BringBodiesTo(LengthUnit unit);

/// Readies the modeller for one writing: silent, AP214, one file for all, with bodies that are in `unit`
/// written in it.
void PrepareWriting(LengthUnit unit);

}  // namespace brenvik::step
