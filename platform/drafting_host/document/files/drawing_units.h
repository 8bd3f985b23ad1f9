// The one rule of units where drawings are read and written. Lengths of a drawing are in the unit of the
// shop's drawings. A file that names another unit is converted when it is opened, a file without a unit is in
// the shop's already, and a unit that the user gives overrides the file's own. Each change is reported.
#pragma once

#include <optional>
#include <vector>

#include "base/length_unit.h"
#include "drafting_host/dxf/data/drawing_data.h"

namespace brenvik {

class HostDocument;
class HostEntity;

/// The unit's number in a DXF's $INSUNITS.
int InsertUnitsOf(LengthUnit unit);
/// The unit of a drawing by its $INSUNITS: inches or millimetres, empty for any other.
std::optional<LengthUnit> UnitOfInsertUnits(int insertUnits);

/// How the lengths of a file are taken.
struct UnitChoice {
    /// The unit of the shop's drawings; without one everything stays as the file has it.
    std::optional<LengthUnit> drawing;
    /// The unit of the file by the user's word.
    std::optional<LengthUnit> given;
};

/// The unit that a size stands for where it was written with four digits only; else the size itself.
double AsNamedUnit(double millimetres);

/// What brings the lengths of a file to the unit of the drawing.
struct UnitStep {
    double factor = 1;            ///< Exactly 1 where nothing changes.
    std::vector<ReadNote> notes;  ///< A remark for the user; it stands for no loss.
};

/// `fileMillimetres` is the length of the unit that the file states, empty if it states none.
UnitStep StepToDrawing(const UnitChoice& choice, std::optional<double> fileMillimetres);

/// Brings a document that was just read from a DXF to the drawing's unit, and names that unit in it if it
/// changed. Solids keep the letters that they have: the saved extents follow. An unknown unit is reported,
/// and counts as a loss unless the user has given one.
void BringToUnit(HostDocument& document, const UnitChoice& choice);

/// Part data whose saved extents have grown by a factor with their solid, so that the letters still name the
/// sizes. Saved ones are rounded; one that is an extent of the solid but for that becomes this extent.
std::vector<XDataOfApp> WithScaledExtents(std::vector<XDataOfApp> data, double factor,
                                          const HostEntity& grown);

/// Extended data with what grows with their entity by the format: places in the world (1011), displacements
/// (1012), distances (1041) and scale factors (1042). Plain numbers and points, and directions, stay.
std::vector<XDataOfApp> WithScaledLengths(std::vector<XDataOfApp> data, double factor);

}  // namespace brenvik
