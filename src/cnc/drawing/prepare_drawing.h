// What an export does to a drawing ahead of its own work.
#pragma once

#include "session/ports/host_interface.h"

namespace brenvik {

enum class DrawingSave { AsSet, Never };

/// Sets world coordinates, saves the drawing unless that or the settings turn it off, and sets the host's
/// variables. If the drawing can't be saved, a message says so and the command continues.
void PrepareDrawing(AcadDocument& drawing, DrawingSave saving = DrawingSave::AsSet);

/// Saves the drawing if the settings ask for it; the same message if it can't be saved.
void SaveAsSet(AcadDocument& drawing);

/// In a part's own drawing: solids that are hidden, or on a layer that is frozen or off, come within reach of
/// the commands, and those on a layer that has the name of a work layer leave it. They go to layer 0. The
/// drawing that the part comes from isn't touched.
void BringWithinReach(AcadDocument& partDrawing);

/// From inches to millimetres for a setting of 3, the other way for 4; other settings leave the drawing.
void ScaleForExport(AcadDocument& drawing, int ExportScaleSetting);

}  // namespace brenvik
