// The state of one CNC run: what the run template, the recognisers and the writers share. Lengths are the
// units of the run: millimetres or inches by `ExportScaleSetting`.
#pragma once

#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "cnc/part/run_report.h"
#include "cnc/part/target.h"
#include "cnc/plan/removal.h"
#include "session/ports/host_interface.h"
#include "settings/bit_choice.h"
#include "settings/materials.h"

namespace brenvik {

/// What a stretch of the work on a part came to.
enum class PassOutcome {
    GoOn,
    SkipPart,  ///< The reason has been reported; the clean-up of the part follows.
    EndRun,    ///< The whole run ends at once, with no cleaning.
};

/// Where the run takes its parts from: the host's previous selection, or the list that the grid left.
enum class RunForm { A, B };

/// The part data that file names and work lists need, as the drawing has them, read before the solid is gone.
struct PartTexts {
    std::string PartName, PN, SubAssembly, ORIE, Notes, Face, UserData1, UserData2, Price, EB1, EB2, EB3, EB4;
};

/// A vertical hole that the first pass has drilled, as it lay then: from its rim down to its floor.
struct DrilledHole {
    double x = 0, y = 0, diameter = 0, rimZ = 0, floorZ = 0;
};

/// A contour that the first pass has made a path of, as it lay then.
struct CutContour {
    double minX = 0, minY = 0, maxX = 0, maxY = 0, z = 0, area = 0;
};

struct GatheredProof;

/// The part being worked on. Reset at the start of each pass, except for the values that both passes share.
struct PartState {
    int index = 0;                    ///< Among the parts of the run.
    AcadDocument* drawing = nullptr;  ///< The part's own; replaced when the origin is moved.
    bool SecondSidePass = false;
    /// `NeedSecondSide`: turn the part over. `ThroughRouteSeen` (a given name that misleads): requested on
    /// the first pass, by a through route or by anything but edge bores.
    bool NeedSecondSide = false, ThroughRouteSeen = false;
    int ExportScaleSetting = 0;
    double PartThickness = 0, PartBottomZ = 0, PartVolume = 0;
    double CircleSize = 0;
    int RouteCount = 0;
    MaterialRecord Material;
    std::string MaterialKeyText;  ///< The key that the material was found by.
    std::string MaterialName;
    std::string RouteDirection;  ///< "Clockwise" or "CounterClockwise".
    BitChoice bits;              ///< The selected tool and `SavedToolDiameters`.
    std::string DimL = "0", DimW = "0", DimT = "0";
    double QuarterThickness = 0;  ///< A given value: the thickness in 32nds. Nobody reads it.
    PartTexts texts;
    int Quantity = 0;                              ///< As the part has it, not multiplied.
    double ExtentX = 0, ExtentY = 0, ExtentZ = 0;  ///< Of the part as it lies, rounded to 6 decimals.
    Point3 LowestCorner;                           ///< Of the part as it lies, before its top is put on Z 0.
    std::string OutlineLayer;                      ///< The layer that the outside profile is named by.
    std::string writtenFile;                       ///< The DXF file of this pass, with its folder.
    /// The layer added last: it becomes the active one when the part is closed.
    std::string LastAddedLayer;
    int edgeBores = 0;  ///< Horizontal bores that this pass has made.
    /// What no recogniser took, in words for the operator, for the part as a whole.
    std::vector<std::string> unexplained;
    /// Where those are that have a place, by their text, in the frame of the first side.
    std::map<std::string, Box3> notePlaces;
    /// Those that are about the part as a whole and say no place.
    std::set<std::string> wholePartNotes;
    /// Where the part that comes of its files isn't the part of the drawing, in words.
    std::vector<std::string> differences;
    std::shared_ptr<GatheredProof> proof;
    /// The part needs a second side and a setting says that it gets none.
    bool LeavesSecondSide = false;
    /// How the part lies otherwise than lists measure it, in words; empty where it doesn't.
    std::string liesAslant;
    /// The texts that move the columns behind them in a work list, each once for the part.
    std::vector<std::string> shiftingTexts;
};

/// What the first pass of a part has made and the second pass must not make again.
struct FirstSide {
    std::vector<DrilledHole> holes;
    std::vector<DrilledHole> reported;  ///< Holes and pins that it has reported.
    std::vector<CutContour> paths;
    std::vector<Removal> removals;  ///< Of its operations, as its side has them.
};

/// One run: the values for all of its parts, the part at hand, and the first side of that part.
struct RunState {
    Target target = Target::C2C;
    RunForm form = RunForm::A;
    AcadApplication* app = nullptr;
    AcadDocument* sessionDrawing = nullptr;
    double SpoilAmount = 0;  ///< How far a through route cuts into the spoil board.
    /// BW's list has its header, by pass.
    bool ListHeaderWritten[2] = {false, false};
    RunReport report;
    PartState part;
    FirstSide firstSide;

    bool FirstPass() const { return !part.SecondSidePass; }
    bool Metric() const { return part.ExportScaleSetting == 2 || part.ExportScaleSetting == 3; }
};

/// The names of the run's folders and work drawings.
inline constexpr std::string_view OutputFolder = "c:\\BV-DXF\\";
inline constexpr std::string_view SecondSideFolder = "c:\\BV-DXF\\2-sided\\";
inline constexpr std::string_view WorkDrawing = "c:\\BV-DXF\\wblock.dwg";
inline constexpr std::string_view WorkDrawing2 = "c:\\BV-DXF\\wblock2.dwg";
inline constexpr std::string_view SecondSideWorkDrawing = "c:\\BV-DXF\\2-sided\\wblock.dwg";
inline constexpr std::string_view SecondSideWorkDrawing2 = "c:\\BV-DXF\\2-sided\\wblock2.dwg";

}  // namespace brenvik
