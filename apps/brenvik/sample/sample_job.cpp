// The cabinet's parts, one function for each kind. Sizes are those of a frameless cabinet in the 32 mm
// system: 18 mm carcass boards, 19 mm fronts, 5 mm shelf holes in rows 37 mm from the front edge, 35 mm hinge
// cups 22.5 mm from the door's edge.
#include "sample/sample_job.h"

#include <algorithm>
#include <array>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>

#include "base/text.h"
#include "parts/mautocad.h"
#include "parts/part_table.h"
#include "sample/sample_data.h"
#include "sample/workpiece.h"
#include "session/ports/host_interface.h"

namespace brenvik::app {

namespace {

constexpr double Width = 600, Depth = 560, Height = 720;
constexpr double Board = 18, Front = 19, ToeHeight = 100, ToeDepth = 50;
constexpr double BackThickness = 8, BackFront = 542;
constexpr double Dowel = 8, DowelInFace = 12, DowelInEdge = 24;
constexpr double GridHole = 5, GridStep = 32, GridEdge = 37, GridStart = 178;

constexpr std::string_view CarcassLayer = "CARCASS", FrontLayer = "FRONTS", DrawerLayer = "DRAWER";

/// Puts the data on the solid as an Apply leaves it: every key of the list, the extents as old values, and
/// the keys without a column repeating the value before them.
void ApplyData(Workpiece& part, std::string_view number) {
    const SampleData& data = SampleDataOf(number);
    const std::array<std::pair<std::string_view, std::string_view>, 18> values{{
        {"QUANTITY", "1"},
        {"PARTNAME", data.name},
        {"SUBASSEMBLY", data.subAssembly},
        {"MATERIAL", data.material},
        {"ORIE", data.letters},
        {"NOTES", data.notes},
        {"USERDATA1", ""},
        {"USERDATA2", ""},
        {"PN", data.number},
        {"PRICE", data.price},
        {"EB1", data.edgeBands[0]},
        {"EB2", data.edgeBands[1]},
        {"EB3", data.edgeBands[2]},
        {"EB4", data.edgeBands[3]},
        {"FACE", data.face},
        {"OLDVALUE1", data.extents[0]},
        {"OLDVALUE2", data.extents[1]},
        {"OLDVALUE3", data.extents[2]},
    }};
    std::string_view value;
    for (const std::string& key : Split(PartDataKeyList, ',')) {
        for (const auto& [known, text] : values)
            if (known == key) value = text;
        mAutoCAD::SetPartData(&part.Solid(), key, value);
    }
}

/// A name and nothing else, as a designer leaves a part that is still to be decided.
void NameOnly(Workpiece& part, std::string_view name) {
    mAutoCAD::SetPartData(&part.Solid(), "PARTNAME", name);
}

/// Left and right boards are drawn by the same hand: X runs from the outside of the cabinet inwards.
struct Handed {
    bool right;
    double X(double inwards) const { return right ? Width - inwards : inwards; }
    double Depth(double inwards) const { return right ? -inwards : inwards; }
    Point3 Min(double from, double to, double y, double z) const { return {std::min(X(from), X(to)), y, z}; }
    Point3 Max(double from, double to, double y, double z) const { return {std::max(X(from), X(to)), y, z}; }
};

void DrawSide(AcadBlock& space, const Handed& hand) {
    Workpiece side(space, hand.Min(0, Board, 0, 0), hand.Max(0, Board, Depth, Height), CarcassLayer);
    side.Cut(hand.Min(-1, Board + 1, -1, -1), hand.Max(-1, Board + 1, ToeDepth, ToeHeight));
    // The groove for the back runs through from top to bottom.
    side.Cut(hand.Min(Board - 8, Board + 1, BackFront, -1),
             hand.Max(Board - 8, Board + 1, BackFront + BackThickness, Height + 1));
    // Two rows of grid holes for the shelf; the front one carries the hinge plates as well.
    for (int hole = 0; hole < 11; ++hole)
        for (const double y : {GridEdge, GridEdge + 14 * GridStep})
            side.Drill({hand.X(Board), y, GridStart + hole * GridStep}, Axis::X, hand.Depth(-13), GridHole);
    // Dowels of bottom and rails meet the face.
    for (const double y : {50.0, 280.0, 500.0})
        side.Drill({hand.X(Board), y, ToeHeight + Board / 2}, Axis::X, hand.Depth(-DowelInFace), Dowel);
    for (const double y : {25.0, 75.0, 467.0, 517.0})
        side.Drill({hand.X(Board), y, Height - Board / 2}, Axis::X, hand.Depth(-DowelInFace), Dowel);
    ApplyData(side, hand.right ? "B600-02" : "B600-01");
}

/// A level board between the sides with dowel bores in both ends, at these Y.
Workpiece BoardBetweenSides(AcadBlock& space, double y0, double y1, double z0,
                            std::initializer_list<double> dowels) {
    Workpiece part(space, {Board, y0, z0}, {Width - Board, y1, z0 + Board}, CarcassLayer);
    for (const double y : dowels) {
        part.Drill({Board, y, z0 + Board / 2}, Axis::X, DowelInEdge, Dowel);
        part.Drill({Width - Board, y, z0 + Board / 2}, Axis::X, -DowelInEdge, Dowel);
    }
    return part;
}

void DrawCarcass(AcadBlock& space) {
    DrawSide(space, {false});
    DrawSide(space, {true});
    Workpiece bottom = BoardBetweenSides(space, 0, BackFront, ToeHeight, {50, 280, 500});
    ApplyData(bottom, "B600-03");
    Workpiece frontRail = BoardBetweenSides(space, 0, 100, Height - Board, {25, 75});
    ApplyData(frontRail, "B600-04");
    Workpiece backRail = BoardBetweenSides(space, 442, BackFront, Height - Board, {467, 517});
    ApplyData(backRail, "B600-05");
    Workpiece toeKick(space, {Board, ToeDepth, 0}, {Width - Board, ToeDepth + Board, ToeHeight},
                      CarcassLayer);
    ApplyData(toeKick, "B600-06");
    Workpiece back(space, {10.5, BackFront, ToeHeight}, {Width - 10.5, BackFront + BackThickness, Height},
                   CarcassLayer);
    // Cables of a built-in appliance pass here.
    back.CutRoundedWindow({240, BackFront, 520}, {360, BackFront + BackThickness, 580}, 10);
    ApplyData(back, "B600-07");
}

void DrawFronts(AcadBlock& space) {
    constexpr double inner = -2;  // The fronts stand off the carcass by the thickness of a bumper.
    Workpiece door(space, {2, inner - Front, 102}, {598, inner, 574}, FrontLayer);
    // A cup stands half way between two holes of the grid, where its plate is screwed on.
    for (const double z : {GridStart + 0.5 * GridStep, GridStart + 9.5 * GridStep}) {
        door.Drill({24.5, inner, z}, Axis::Y, -13, 35);
        for (const double screw : {-22.5, 22.5}) door.Drill({34, inner, z + screw}, Axis::Y, -11, Dowel);
    }
    for (const double z : {366.0, 494.0}) door.Drill({558, inner, z}, Axis::Y, -Front - 1, GridHole);
    ApplyData(door, "B600-08");
    Workpiece drawerFront(space, {2, inner - Front, 577}, {598, inner, 717}, FrontLayer);
    for (const double x : {236.0, 364.0}) drawerFront.Drill({x, inner, 647}, Axis::Y, -Front - 1, GridHole);
    ApplyData(drawerFront, "B600-09");
}

void DrawDrawerSide(AcadBlock& space, const Handed& hand) {
    // 31 mm from the cabinet's outside: an 18 mm side and 13 mm for the slide.
    Workpiece side(space, hand.Min(31, 46, 2, 587), hand.Max(31, 46, 502, 697), DrawerLayer);
    side.Cut(hand.Min(39, 47, 1, 597), hand.Max(39, 47, 503, 605));
    for (const double y : {GridEdge, GridEdge + 7 * GridStep})
        side.Drill({hand.X(31), y, 642}, Axis::X, hand.Depth(11), GridHole);
    ApplyData(side, hand.right ? "B600-11" : "B600-10");
}

void DrawDrawer(AcadBlock& space) {
    DrawDrawerSide(space, {false});
    DrawDrawerSide(space, {true});
    Workpiece subFront(space, {46, 2, 587}, {554, 17, 697}, DrawerLayer);
    subFront.Cut({45, 10, 597}, {555, 18, 605});
    for (const double x : {236.0, 364.0}) subFront.Drill({x, 17, 647}, Axis::Y, -16, GridHole);
    ApplyData(subFront, "B600-12");
    // Stands on the bottom, so that the bottom can be slid in from behind.
    Workpiece back(space, {46, 487, 605}, {554, 502, 697}, DrawerLayer);
    ApplyData(back, "B600-13");
    // New in the drawing: nothing has been typed for it yet.
    Workpiece(space, {39.5, 10.5, 597}, {560.5, 502, 605}, DrawerLayer);
}

void DrawInterior(AcadBlock& space) {
    // Lies on the pins of the grid's eighth holes.
    const double pins = GridStart + 7 * GridStep + GridHole / 2;
    Workpiece shelf(space, {19, 20, pins}, {581, 532, pins + Board}, CarcassLayer);
    NameOnly(shelf, "Adjustable Shelf");
    Workpiece divider(space, {424, 60, 118}, {436, 510, 388}, CarcassLayer);
    divider.TurnUpright({430, 285, 118}, 17.5);
    ApplyData(divider, "B600-14");
}

}  // namespace

void DrawSampleJob(AcadDocument& document) {
    AcadLayers& layers = document.Layers();
    layers.Add(CarcassLayer)->SetColor(8);
    layers.Add(FrontLayer)->SetColor(30);
    layers.Add(DrawerLayer)->SetColor(52);
    AcadBlock& space = document.ModelSpace();
    DrawCarcass(space);
    DrawFronts(space);
    DrawDrawer(space);
    DrawInterior(space);
}

}  // namespace brenvik::app
