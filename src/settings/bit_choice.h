// Which of a material's three router bits cuts a path. Every path needs a bit that fits its tightest place;
// where none fits, the user chooses one or gives the part up.
//
// The choices proper are functions of the material and a measure. Around them stand the operations of a run:
// they set the selected tool, show the messages and the choice dialog, and say whether the part goes on.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "settings/materials.h"

namespace brenvik {

/// What a path is for the receiving machine.
enum class PathKind {
    None,  ///< No bit was found.
    RT,    ///< A route along the line.
    PKC,   ///< A pocket: the same line, its inside cleared.
    PKS,   ///< A circle that is pocketed.
};

/// "none", "RT", "PKC" or "PKS".
std::string_view PathKindText(PathKind kind);

/// The run's selected tool and what the choice dialog gets and leaves.
struct BitChoice {
    double ToolDiameter = 0;
    std::string ToolDiameterText;  ///< As layer names have it: "p25".
    std::string ToolNumber, ToolSpeed, ToolFeed;
    PathKind kind = PathKind::None;
    /// The material's diameters, copied before the dialog opens.
    std::array<double, MaterialToolCount> SavedToolDiameters{};
    /// Whether the part is to be given up. Raised before the dialog opens; accepting lowers it.
    bool RouteSkip = false;
};

/// Sets the five values of the selected tool.
void UseTool(BitChoice& choice, const MaterialTool& tool);

// The choices proper. Tools are counted from 0. An empty slot is never chosen. A tool "fits" when its
// diameter is at most the measure. All lengths are in the units of the run.

struct ThroughContourBit {
    std::optional<std::size_t> tool;
    /// Tools 2 and 3 of one diameter are never tried against each other: then a bit may fit and none is
    /// taken, and the tool selected before stays.
    bool anyFits = false;
};
/// For a contour cut through the part, by its shortest side: the first tool, else the smaller of the others
/// that fits.
ThroughContourBit BitForThroughContour(const MaterialRecord& material, double shortestSide);

struct InsideRouteBit {
    std::optional<std::size_t> tool;
    PathKind kind = PathKind::None;
};
/// For a contour that stops inside the part: a bit of more than about half the shortest side clears it by
/// following its line ("RT"); without one it is a pocket ("PKC") for the widest that fits. Sides are rounded
/// to 5 decimals.
InsideRouteBit BitForInsideRoute(const MaterialRecord& material, double shortestSide);

/// For a circle cut through the part. Null if every bit is wider than it.
std::optional<std::size_t> BitForThroughCircle(const MaterialRecord& material, double circleDiameter);

/// For a circle that is pocketed: the smallest of the bits that are smaller than it.
std::optional<std::size_t> BitForCirclePocket(const MaterialRecord& material, double circleDiameter);

// The operations of a run. `key` is the material's, for the messages. They return false if the part is to be
// skipped; the reason has been reported then.

/// Which dialog asks: the plain one, or `frmChoicetherm`, whose answer can stand for the rest of a run.
enum class ChoiceDialog { Plain, WithStandingAnswer };

bool ChooseThroughContourBit(BitChoice& choice, const MaterialRecord& material, std::string_view key,
                             double shortestSide);
/// Sets the kind of the path too. `dialog` is WithStandingAnswer for the targets C2C, THERM and ABC.
bool ChooseInsideRouteBit(BitChoice& choice, const MaterialRecord& material, std::string_view key,
                          double shortestSide, ChoiceDialog dialog);
bool ChooseThroughCircleBit(BitChoice& choice, const MaterialRecord& material, std::string_view key,
                            double circleDiameter);
/// Sets the kind to PKS.
bool ChooseCirclePocketBit(BitChoice& choice, const MaterialRecord& material, std::string_view key,
                           double circleDiameter);

/// The options of the choice dialog, 1 to 6: a route and a pocket option for each bit.
inline constexpr int ChoiceOptionCount = 6;

/// Takes the bit and the kind of path that an option stands for. False, and nothing is changed, for a number
/// that is no option and for an empty slot.
bool TakeOption(BitChoice& choice, const MaterialRecord& material, int option);

}  // namespace brenvik
