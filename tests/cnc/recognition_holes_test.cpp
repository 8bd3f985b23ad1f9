// Holes, counterbores, circular routes and edge bores of whole parts, in millimetres and inches, scaled and
// not.
#include "cnc/recognition_matrix.h"

namespace brenvik {
namespace {

constexpr double Pi = std::numbers::pi;

void Panel(MadePart& part) { part.Board(600, 400, 18); }

const std::vector<PartCase> Holes{
    {"PlainPanel", Panel, "OT 1 PL 1"},
    {"ThroughHoles",
     [](MadePart& part) {
         Panel(part);
         part.Hole(100, 60, 8);
         part.Hole(333.3, 171.1, 5);
         part.Hole(20, 380, 12.7);
     },
     "OT 1 PL 1 VD 3"},
    {"BlindHolesOfOneFace",
     [](MadePart& part) {
         Panel(part);
         part.HoleBelow(100, 60, 8, 12);
         part.HoleBelow(200, 90, 5, 5.5);
     },
     "OT 1 PL 1 VD 2"},
    {"BlindHolesOfBothFaces",
     [](MadePart& part) {
         Panel(part);
         part.Hole(100, 60, 8, 12);
         part.Hole(200, 90, 8, 12);
         part.HoleBelow(300, 333, 5, 7);
     },
     "OT 1 PL 1 VD 2", "OT 1 PL 1 VD 1"},
    {"BlindHolesOfBothFacesOnOneAxis",
     [](MadePart& part) {
         Panel(part);
         part.Hole(100, 60, 8, 7);
         part.HoleBelow(100, 60, 8, 7);
         part.Hole(300, 90, 8, 12);
     },
     "OT 1 PL 1 VD 2", "OT 1 PL 1 VD 1"},
    {"CounterboreFromTheTop",
     [](MadePart& part) {
         Panel(part);
         part.Hole(100, 60, 5);
         part.Hole(100, 60, 12, 6);
         part.Hole(500, 60, 12, 9);
     },
     "OT 1 PL 1 VD 3"},
    {"CounterboreFromBelow",
     [](MadePart& part) {
         Panel(part);
         part.Hole(100, 60, 5);
         part.HoleBelow(100, 60, 12, 6);
         part.Hole(300, 60, 20, 9);
         part.Hole(400, 60, 20, 9);
     },
     "OT 1 PL 1 VD 3", "OT 1 PL 1 VD 1"},
    {"CounterboreFromBothFaces",
     [](MadePart& part) {
         Panel(part);
         part.Hole(100, 60, 5);
         part.Hole(100, 60, 12, 6);
         part.HoleBelow(100, 60, 10, 5);
         part.Hole(300, 60, 20, 9);
     },
     "OT 1 PL 1 VD 3", "OT 1 PL 1 VD 1"},
    {"BlindCounterbore",
     [](MadePart& part) {
         Panel(part);
         part.Hole(100, 60, 5, 14);
         part.Hole(100, 60, 15, 6);
     },
     "OT 1 PL 1 VD 2"},
    {"HolesInThePocketFloorOfTheTop",
     [](MadePart& part) {
         Panel(part);
         part.Pocket(Rectangle(200, 100, 300, 180), 12);
         part.Hole(250, 140, 5, 12);
         part.Hole(220, 140, 8);
     },
     "OT 1 PKC 1 PL 1 VD 2"},
    {"HolesInPocketFloorsOfBothFaces",
     [](MadePart& part) {
         Panel(part);
         part.Pocket(Rectangle(200, 100, 300, 280), 12);
         part.Hole(250, 140, 5, 12);
         part.PocketBelow(Rectangle(400, 100, 500, 180), 5);
         part.HoleBelow(450, 140, 6, 11);
         part.Hole(420, 120, 8);
     },
     "OT 1 PKC 1 PL 1 VD 2", "OT 1 PKC 1 PL 1 VD 1"},
    {"BoundOfDrilledCircles",
     [](MadePart& part) {
         Panel(part);
         part.Hole(100, 100, 35);
         part.Hole(200, 100, 35.02);
         part.Hole(300, 100, 35, 9);
         part.Hole(400, 100, 35.02, 9);
     },
     "OT 1 PKS 1 PL 1 RT 1 VD 2"},
    {"HoleNarrowerThanAnyDrill",
     [](MadePart& part) {
         Panel(part);
         part.Hole(100, 100, 0.0015);
     },
     "OT 1 PL 1", "no file", 1},
    {"ManyHolesInARow",
     [](MadePart& part) {
         part.Board(720, 300, 19.05);
         for (int i = 0; i < 20; ++i) part.Hole(50 + 32 * i, 37, 5, 13);
         for (int i = 0; i < 5; ++i) part.HoleBelow(50 + 96 * i, 250, 5, 13);
     },
     "OT 1 PL 1 VD 20", "OT 1 PL 1 VD 5"},
};

const std::vector<PartCase> SlantedHoles{
    {"SlantedHole",
     [](MadePart& part) {
         Panel(part);
         part.Drill({300, 200, 18}, {1, 0, -1}, 12, 8);
     },
     "OT 1 PL 1",
     "no file",
     1000,
     {},
     "slanted hole of "},
    {"SlantedThroughHole",
     [](MadePart& part) {
         Panel(part);
         part.Drill({300, 200, 18}, {0, 0.5, -1}, 40, 8);
     },
     "OT 1 PL 1",
     "no file",
     1300,
     {},
     "wood stays that the part has not"},
    {"SlantedEdgeBore",
     [](MadePart& part) {
         Panel(part);
         part.Drill({300, 0, 9}, {0.3, 1, 0}, 40, 8);
     },
     "OT 1 PL 1",
     "no file",
     3000,
     {},
     "no operation"},
};

const std::vector<PartCase> EdgeBores{
    {"AllFourEdges",
     [](MadePart& part) {
         Panel(part);
         part.Drill({0, 100, 9}, {1, 0, 0}, 34, 8);
         part.Drill({600, 150, 9}, {-1, 0, 0}, 30, 8);
         part.Drill({200, 0, 9}, {0, 1, 0}, 25, 5);
         part.Drill({250, 400, 9}, {0, -1, 0}, 20, 5);
     },
     "HB 1 HF 1 HL 1 HR 1 OT 1 PL 1"},
    {"OffTheMiddleOfTheEdge",
     [](MadePart& part) {
         Panel(part);
         part.Hole(300, 200, 8, 9);
         part.Drill({0, 100, 6}, {1, 0, 0}, 34, 8);
         part.Drill({0, 200, 12}, {1, 0, 0}, 34, 5);
     },
     "HL 2 OT 1 PL 1 VD 1"},
    {"TwoAtOnePlaceInDifferentDepths",
     [](MadePart& part) {
         Panel(part);
         part.Drill({0, 100, 9}, {1, 0, 0}, 15, 10);
         part.Drill({0, 100, 9}, {1, 0, 0}, 40, 6);
     },
     "HL 1 OT 1 PL 1",
     "no file",
     25 * 9 * Pi + 1,
     {},
     "edge bore of "},
    {"ThroughTheWholeWidth",
     [](MadePart& part) {
         part.Board(600, 80, 18);
         part.Drill({200, 0, 9}, {0, 1, 0}, 81, 8);
     },
     "HB 1 HF 1 OT 1 PL 1",
     "no file",
     0,
     {"H"}},
    {"OppositeOnOneAxis",
     [](MadePart& part) {
         part.Board(600, 120, 18);
         part.Drill({200, 0, 9}, {0, 1, 0}, 30, 8);
         part.Drill({200, 120, 9}, {0, -1, 0}, 50, 8);
     },
     "HB 1 HF 1 OT 1 PL 1"},
};

const std::vector<PartCase> CircularRoutes{
    {"PlainThrough",
     [](MadePart& part) {
         Panel(part);
         part.Hole(100, 100, 60);
     },
     "OT 1 PL 1 RT 1"},
    {"BlindFromTheTop",
     [](MadePart& part) {
         Panel(part);
         part.Hole(100, 100, 60, 8);
     },
     "OT 1 PKS 1 PL 1"},
    {"BlindFromBothFaces",
     [](MadePart& part) {
         Panel(part);
         part.Hole(100, 100, 50, 9);
         part.Hole(400, 100, 60, 9);
         part.HoleBelow(300, 100, 40, 6);
     },
     "OT 1 PKS 2 PL 1", "OT 1 PKS 1 PL 1"},
    {"WiderAbove",
     [](MadePart& part) {
         Panel(part);
         part.Hole(100, 100, 40);
         part.Hole(100, 100, 60, 6);
     },
     "OT 1 PKS 1 PL 1 RT 1", "no file"},
    {"WiderBelow",
     [](MadePart& part) {
         Panel(part);
         part.Hole(100, 100, 40);
         part.HoleBelow(100, 100, 60, 6);
         part.Hole(400, 100, 80, 9);
     },
     "OT 1 PKS 1 PL 1 RT 1", "OT 1 PKS 1 PL 1"},
    {"WiderAtBothEnds",
     [](MadePart& part) {
         Panel(part);
         part.Hole(100, 100, 40);
         part.Hole(100, 100, 60, 6);
         part.HoleBelow(100, 100, 60, 5);
         part.Hole(400, 100, 80, 9);
     },
     "OT 1 PKS 3 PL 1",
     "OT 1 PKS 1 PL 1",
     0,
     {"PKS_"}},
    {"BlindFromBothFacesOnOneAxis",
     [](MadePart& part) {
         Panel(part);
         part.Hole(100, 100, 60, 6);
         part.HoleBelow(100, 100, 60, 5);
         part.Hole(400, 100, 80, 9);
     },
     "OT 1 PKS 2 PL 1", "OT 1 PKS 1 PL 1"},
    {"DrilledHoleInARoundPocket",
     [](MadePart& part) {
         Panel(part);
         part.Hole(100, 100, 8);
         part.Hole(100, 100, 60, 6);
     },
     "OT 1 PKS 1 PL 1 VD 1"},
    {"StepsOfARoundPocket",
     [](MadePart& part) {
         Panel(part);
         part.Hole(100, 100, 40, 12);
         part.Hole(100, 100, 60, 6);
     },
     "OT 1 PKS 2 PL 1",
     "no file",
     0,
     {"PKS_"}},
};

class RecognitionOfHoles : public RecognitionMatrix {};

TEST_P(RecognitionOfHoles, CutsAllInAirAndOnce) { RunCase(); }

INSTANTIATE_TEST_SUITE_P(Holes, RecognitionOfHoles,
                         ::testing::Combine(::testing::ValuesIn(Shops), ::testing::ValuesIn(Holes)),
                         MatrixName);
INSTANTIATE_TEST_SUITE_P(SlantedHoles, RecognitionOfHoles,
                         ::testing::Combine(::testing::ValuesIn(Shops), ::testing::ValuesIn(SlantedHoles)),
                         MatrixName);
INSTANTIATE_TEST_SUITE_P(EdgeBores, RecognitionOfHoles,
                         ::testing::Combine(::testing::ValuesIn(Shops), ::testing::ValuesIn(EdgeBores)),
                         MatrixName);
INSTANTIATE_TEST_SUITE_P(CircularRoutes, RecognitionOfHoles,
                         ::testing::Combine(::testing::ValuesIn(Shops), ::testing::ValuesIn(CircularRoutes)),
                         MatrixName);

}  // namespace
}  // namespace brenvik
