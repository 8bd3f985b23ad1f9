// A part file as a picture: each operation as a shape in plan with what it is in words. Whoever draws needs
// to know nothing of layers and targets.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "cnc/part/target.h"
#include "session/ports/host_interface.h"
#include "session/ports/section_port.h"

namespace brenvik {

/// In the order in which they are drawn, the later ones over the earlier.
enum class PictureKind { Sheet, Outline, CutOut, Pocket, Route, ThroughHole, Hole, Bore, Unread };

/// How a kind is drawn: a name for programs, one for people, a colour for its lines and one for what lies
/// within them ("none" for nothing), as #rrggbb.
struct PictureStyle {
    std::string_view name, words, line, fill;
};
const PictureStyle& StyleOf(PictureKind kind);

struct PictureShape {
    PictureKind kind = PictureKind::Unread;
    std::string layer;
    /// The machine's work, such as "hole 5 mm, 13 mm deep"; of an unread one the fault.
    std::string words;
    /// As the file has them, in its plan. They follow each other where `closed` holds.
    std::vector<PlanSide> sides;
    bool closed = true;
};

struct PartPicture {
    Target target = Target::C2C;
    bool metric = true;
    /// Sorted by kind.
    std::vector<PictureShape> shapes;
    PlanPoint low, high;  ///< Of all shapes.
    /// How long and wide the board is: its sheet, without one its outline, and without either all shapes.
    double length = 0, width = 0;
    /// By the part's sheet; null in a file without one.
    std::optional<double> thickness;
    /// What in the file is no good operation, in words.
    std::vector<std::string> faults;

    std::size_t CountOf(PictureKind kind) const;
};

struct PictureContext {
    bool metric = true;
    /// The file is that of a second side: one target's names say other things there.
    bool secondSide = false;
    /// All tools that a name may have been made with.
    std::span<const std::string> tools = {};
};

/// Reads the operations of a written part file. The target is found by its names. In the picture of a drawing
/// that isn't a part file everything is unread.
PartPicture ReadPartPicture(AcadDocument& drawing, const PictureContext& context);

/// The length as people read it: "12.5 mm", "0.75 in".
std::string LengthInWords(double length, bool metric);

}  // namespace brenvik
