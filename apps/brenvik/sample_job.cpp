// The cabinet's parts, one function for each kind. Sizes are those of a frameless cabinet in the 32 mm
// system: 18 mm carcass boards, 19 mm fronts, 5 mm shelf holes in rows 37 mm from the front edge, 35 mm hinge
// cups 22.5 mm from the door's edge.
#include "sample_job.h"

#include <algorithm>
#include <array>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>

#include "base/text.h"
#include "parts/mautocad.h"
#include "parts/part_table.h"
#include "sample_data.h"
#include "session/ports/host_interface.h"
#include "workpiece.h"

namespace brenvik::app {

namespace {

constexpr double width = 600, depth = 560, height = 720;
constexpr double board = 18, front = 19, toeHeight = 100, toeDepth = 50;
constexpr double backThickness = 8, backFront = 542;
constexpr double dowel = 8, dowelInFace = 12, dowelInEdge = 24;
constexpr double gridHole = 5, gridStep = 32, gridEdge = 37, gridStart = 178;

constexpr std::string_view carcassLayer = "CARCASS", frontLayer = "FRONTS", drawerLayer = "DRAWER";

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
    double X(double inwards) const { return right ? width - inwards : inwards; }
    double Depth(double inwards) const { return right ? -inwards : inwards; }
    Point3 Min(double from, double to, double y, double z) const { return {std::min(X(from), X(to)), y, z}; }
    Point3 Max(double from, double to, double y, double z) const { return {std::max(X(from), X(to)), y, z}; }
};

void DrawSide(AcadBlock& space, const Handed& hand) {
    Workpiece side(space, hand.Min(0, board, 0, 0), hand.Max(0, board, depth, height), carcassLayer);
    side.Cut(hand.Min(-1, board + 1, -1, -1), hand.Max(-1, board + 1, toeDepth, toeHeight));
    // The groove for the back runs through from top to bottom.
    side.Cut(hand.Min(board - 8, board + 1, backFront, -1),
             hand.Max(board - 8, board + 1, backFront + backThickness, height + 1));
    // Two rows of grid holes for the shelf; the front one carries the hinge plates as well.
    for (int hole = 0; hole < 11; ++hole)
        for (const double y : {gridEdge, gridEdge + 14 * gridStep})
            side.Drill({hand.X(board), y, gridStart + hole * gridStep}, Axis::X, hand.Depth(-13), gridHole);
    // Dowels of bottom and rails meet the face.
    for (const double y : {50.0, 280.0, 500.0})
        side.Drill({hand.X(board), y, toeHeight + board / 2}, Axis::X, hand.Depth(-dowelInFace), dowel);
    for (const double y : {25.0, 75.0, 467.0, 517.0})
        side.Drill({hand.X(board), y, height - board / 2}, Axis::X, hand.Depth(-dowelInFace), dowel);
    ApplyData(side, hand.right ? "B600-02" : "B600-01");
}

/// A level board between the sides with dowel bores in both ends, at these Y.
Workpiece BoardBetweenSides(AcadBlock& space, double y0, double y1, double z0,
                            std::initializer_list<double> dowels) {
    Workpiece part(space, {board, y0, z0}, {width - board, y1, z0 + board}, carcassLayer);
    for (const double y : dowels) {
        part.Drill({board, y, z0 + board / 2}, Axis::X, dowelInEdge, dowel);
        part.Drill({width - board, y, z0 + board / 2}, Axis::X, -dowelInEdge, dowel);
    }
    return part;
}

void DrawCarcass(AcadBlock& space) {
    DrawSide(space, {false});
    DrawSide(space, {true});
    Workpiece bottom = BoardBetweenSides(space, 0, backFront, toeHeight, {50, 280, 500});
    ApplyData(bottom, "B600-03");
    Workpiece frontRail = BoardBetweenSides(space, 0, 100, height - board, {25, 75});
    ApplyData(frontRail, "B600-04");
    Workpiece backRail = BoardBetweenSides(space, 442, backFront, height - board, {467, 517});
    ApplyData(backRail, "B600-05");
    Workpiece toeKick(space, {board, toeDepth, 0}, {width - board, toeDepth + board, toeHeight},
                      carcassLayer);
    ApplyData(toeKick, "B600-06");
    Workpiece back(space, {10.5, backFront, toeHeight}, {width - 10.5, backFront + backThickness, height},
                   carcassLayer);
    // Cables of a built-in appliance pass here.
    back.CutRoundedWindow({240, backFront, 520}, {360, backFront + backThickness, 580}, 10);
    ApplyData(back, "B600-07");
}

void DrawFronts(AcadBlock& space) {
    constexpr double inner = -2;  // The fronts stand off the carcass by the thickness of a bumper.
    Workpiece door(space, {2, inner - front, 102}, {598, inner, 574}, frontLayer);
    // A cup stands half way between two holes of the grid, where its plate is screwed on.
    for (const double z : {gridStart + 0.5 * gridStep, gridStart + 9.5 * gridStep}) {
        door.Drill({24.5, inner, z}, Axis::Y, -13, 35);
        for (const double screw : {-22.5, 22.5}) door.Drill({34, inner, z + screw}, Axis::Y, -11, dowel);
    }
    for (const double z : {366.0, 494.0}) door.Drill({558, inner, z}, Axis::Y, -front - 1, gridHole);
    ApplyData(door, "B600-08");
    Workpiece drawerFront(space, {2, inner - front, 577}, {598, inner, 717}, frontLayer);
    for (const double x : {236.0, 364.0}) drawerFront.Drill({x, inner, 647}, Axis::Y, -front - 1, gridHole);
    ApplyData(drawerFront, "B600-09");
}

void DrawDrawerSide(AcadBlock& space, const Handed& hand) {
    // 31 mm from the cabinet's outside: an 18 mm side and 13 mm for the slide.
    Workpiece side(space, hand.Min(31, 46, 2, 587), hand.Max(31, 46, 502, 697), drawerLayer);
    side.Cut(hand.Min(39, 47, 1, 597), hand.Max(39, 47, 503, 605));
    for (const double y : {gridEdge, gridEdge + 7 * gridStep})
        side.Drill({hand.X(31), y, 642}, Axis::X, hand.Depth(11), gridHole);
    ApplyData(side, hand.right ? "B600-11" : "B600-10");
}

void DrawDrawer(AcadBlock& space) {
    DrawDrawerSide(space, {false});
    DrawDrawerSide(space, {true});
    Workpiece subFront(space, {46, 2, 587}, {554, 17, 697}, drawerLayer);
    subFront.Cut({45, 10, 597}, {555, 18, 605});
    for (const double x : {236.0, 364.0}) subFront.Drill({x, 17, 647}, Axis::Y, -16, gridHole);
    ApplyData(subFront, "B600-12");
    // Stands on the bottom, so that the bottom can be slid in from behind.
    Workpiece back(space, {46, 487, 605}, {554, 502, 697}, drawerLayer);
    ApplyData(back, "B600-13");
    // New in the drawing: nothing has been typed for it yet.
    Workpiece(space, {39.5, 10.5, 597}, {560.5, 502, 605}, drawerLayer);
}

void DrawInterior(AcadBlock& space) {
    // Lies on the pins of the grid's eighth holes.
    const double pins = gridStart + 7 * gridStep + gridHole / 2;
    Workpiece shelf(space, {19, 20, pins}, {581, 532, pins + board}, carcassLayer);
    NameOnly(shelf, "Adjustable Shelf");
    Workpiece divider(space, {424, 60, 118}, {436, 510, 388}, carcassLayer);
    divider.TurnUpright({430, 285, 118}, 17.5);
    ApplyData(divider, "B600-14");
}

}  // namespace

void DrawSampleJob(AcadDocument& document) {
    AcadLayers& layers = document.Layers();
    layers.Add(carcassLayer)->SetColor(8);
    layers.Add(frontLayer)->SetColor(30);
    layers.Add(drawerLayer)->SetColor(52);
    AcadBlock& space = document.ModelSpace();
    DrawCarcass(space);
    DrawFronts(space);
    DrawDrawer(space);
    DrawInterior(space);
}

}  // namespace brenvik::app
