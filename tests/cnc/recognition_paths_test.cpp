// Dados, pockets, cut-outs and outlines of whole parts, in millimetres and inches, scaled and not.
#include "cnc/recognition_matrix.h"

namespace brenvik {
namespace {

void Panel(MadePart& part) { part.Board(600, 400, 18); }

/// A bit that is chosen by the shortest side leaves the middle of what is wider elsewhere.
constexpr std::string_view Core = "does not reach it";

const std::vector<PartCase> Dados{
    {"Across",
     [](MadePart& part) {
         Panel(part);
         part.Pocket(Rectangle(200, -1, 218, 401), 9);
     },
     "OT 1 PL 1 RT 1"},
    {"AlongTheLength",
     [](MadePart& part) {
         Panel(part);
         part.Pocket(Rectangle(-1, 380, 601, 388), 10);
     },
     "OT 1 PL 1 RT 1"},
    {"Stopped",
     [](MadePart& part) {
         Panel(part);
         part.Pocket(Rectangle(200, 50, 218, 401), 9);
     },
     "OT 1 PL 1 RT 1"},
    {"StoppedAtBothEnds",
     [](MadePart& part) {
         Panel(part);
         part.Pocket(Rectangle(200, 50, 218, 350), 9);
     },
     "OT 1 PL 1 RT 1"},
    {"Rebate",
     [](MadePart& part) {
         Panel(part);
         part.Pocket(Rectangle(-1, 390, 601, 401), 9);
     },
     "OT 1 PL 1 RT 1",
     "no file",
     0,
     {},
     Core},
    {"OnBothFaces",
     [](MadePart& part) {
         Panel(part);
         part.Pocket(Rectangle(200, -1, 218, 401), 9);
         part.Pocket(Rectangle(400, -1, 418, 401), 9);
         part.PocketBelow(Rectangle(300, -1, 308, 401), 6);
     },
     "OT 1 PL 1 RT 2", "OT 1 PL 1 RT 1"},
    {"GrooveBelowBesideAnEdge",
     [](MadePart& part) {
         part.Board(500, 110, 18);
         part.PocketBelow(Rectangle(-1, 10, 501, 18), 7);
         part.Pocket(Rectangle(-1, 60, 501, 90), 8);
     },
     "OT 1 PKC 1 PL 1", "OT 1 PL 1 RT 1"},
    {"CrossingInOneDepth",
     [](MadePart& part) {
         Panel(part);
         part.Pocket(Rectangle(200, -1, 218, 401), 9);
         part.Pocket(Rectangle(-1, 100, 601, 118), 9);
     },
     "OT 1 PL 1 RT 1",
     "no file",
     0,
     {},
     Core},
};

const std::vector<PartCase> Pockets{
    {"RectangleAndLShape",
     [](MadePart& part) {
         Panel(part);
         part.Pocket(Rectangle(50, 50, 150, 120), 8);
         part.Pocket({{250, 50}, {450, 50}, {450, 120}, {300, 120}, {300, 320}, {250, 320}}, 12);
     },
     "OT 1 PKC 2 PL 1"},
    {"RoundedOne",
     [](MadePart& part) {
         Panel(part);
         part.Pocket(Rounded(100, 100, 300, 250, 30), 8);
     },
     "OT 1 PKC 1 PL 1"},
    {"RoundedOnesOfBothFaces",
     [](MadePart& part) {
         Panel(part);
         part.Pocket(Rounded(100, 100, 300, 250, 30), 8);
         part.PocketBelow(Rounded(400, 100, 500, 250, 30), 6);
     },
     "OT 1 PKC 1 PL 1", "OT 1 PKC 1 PL 1"},
    {"PocketInAPocket",
     [](MadePart& part) {
         Panel(part);
         part.Pocket(Rectangle(100, 100, 300, 250), 12);
         part.Pocket(Rectangle(150, 150, 250, 200), 6);
     },
     "OT 1 PKC 2 PL 1",
     "no file",
     0,
     {"PKC_"}},
    {"RoundedPocketInARoundedPocket",
     [](MadePart& part) {
         Panel(part);
         part.Pocket(Rounded(100, 100, 300, 250, 30), 12);
         part.Pocket(Rounded(150, 140, 250, 210, 25), 6);
     },
     "OT 1 PKC 1 PL 1 RT 1",
     "no file",
     0,
     {"PKC_", "RT_"},
     Core},
    {"PocketInAPocketOfTheUnderside",
     [](MadePart& part) {
         Panel(part);
         part.PocketBelow(Rectangle(100, 100, 300, 250), 6);
         part.PocketBelow(Rectangle(150, 150, 250, 200), 12);
         part.Pocket(Rectangle(350, 50, 590, 350), 12);
     },
     "OT 1 PKC 1 PL 1",
     "OT 1 PKC 2 PL 1",
     0,
     {"PKC_"}},
    {"OpenToTwoEdges",
     [](MadePart& part) {
         Panel(part);
         part.Pocket(Rectangle(500, 300, 601, 401), 12);
     },
     "OT 1 PKC 1 PL 1"},
    {"StepsDownToAnEdge",
     [](MadePart& part) {
         Panel(part);
         part.Pocket(Rectangle(400, 100, 601, 300), 12);
         part.Pocket(Rectangle(500, 100, 601, 300), 6);
     },
     "OT 1 PKC 2 PL 1"},
    {"AcrossOneAnother",
     [](MadePart& part) {
         Panel(part);
         part.Pocket(Rectangle(100, 150, 500, 250), 12);
         part.Pocket(Rectangle(250, 50, 350, 350), 6);
     },
     "OT 1 PKC 3 PL 1"},
};

const std::vector<PartCase> CutOuts{
    {"SquareAndRounded",
     [](MadePart& part) {
         Panel(part);
         part.Window(Rectangle(100, 100, 200, 200));
         part.Window(Rounded(300, 100, 500, 300, 30));
     },
     "OT 1 PL 1 RT 2"},
    {"NarrowerBelow",
     [](MadePart& part) {
         Panel(part);
         part.Window(Rectangle(100, 100, 200, 200));
         part.Pocket(Rectangle(80, 80, 220, 220), 10);
     },
     "OT 1 PKC 1 PL 1 RT 1",
     "no file",
     0,
     {"PKC_"}},
    {"NarrowerAbove",
     [](MadePart& part) {
         Panel(part);
         part.Window(Rectangle(100, 100, 200, 200));
         part.PocketBelow(Rectangle(80, 80, 220, 220), 8);
         part.Pocket(Rectangle(300, 50, 590, 350), 12);
     },
     "OT 1 PKC 2 PL 1", "OT 1 PKC 1 PL 1"},
    {"RoundedAndNarrowerBelow",
     [](MadePart& part) {
         Panel(part);
         part.Window(Rounded(100, 100, 300, 250, 30));
         part.Pocket(Rounded(80, 80, 320, 270, 30), 10);
     },
     "OT 1 PKC 1 PL 1 RT 1",
     "no file",
     0,
     {"PKC_"}},
    {"OfOddShape",
     [](MadePart& part) {
         Panel(part);
         part.Window({{100, 100}, {260, 120}, {220, 260}, {140, 230}});
     },
     "OT 1 PL 1 RT 1"},
};

const std::vector<PartCase> Outlines{
    {"Notches",
     [](MadePart& part) {
         Panel(part);
         part.Window(Rectangle(-1, -1, 60, 50));
         part.Window(Rectangle(550, 350, 601, 401));
         part.Window(Rectangle(200, 330, 300, 401));
     },
     "OT 1 PL 1"},
    {"RoundedCorners", [](MadePart& part) { part.Upright(Rounded(0, 0, 600, 400, 60), 18); }, "OT 1 PL 1"},
    {"MitredCorners",
     [](MadePart& part) {
         part.Upright({{0, 0}, {600, 0}, {600, 300}, {500, 400}, {50, 400}, {0, 350}}, 18);
     },
     "OT 1 PL 1"},
    {"MitredOutlineWithPocketAndHole",
     [](MadePart& part) {
         part.Upright({{0, 0}, {600, 0}, {600, 300}, {500, 400}, {0, 400}}, 18);
         part.Pocket(Rectangle(100, 100, 200, 200), 8);
         part.Hole(400, 200, 8, 9);
     },
     "OT 1 PKC 1 PL 1 VD 1"},
    {"Bevelled",
     [](MadePart& part) {
         part.AlongX({{0, 0}, {400, 0}, {390, 18}, {0, 18}}, 600);
     },
     "OT 1 PL 1",
     "no file",
     0.5 * 10 * 18 * 600 + 1,
     {},
     "sloped face"},
    {"BevelledOnFourSidesAndWiderInTheMiddle",
     [](MadePart& part) {
         part.AlongX({{5, 0}, {395, 0}, {400, 9}, {390, 18}, {10, 18}, {0, 9}}, 600);
     },
     "OT 1 PL 1",
     "no file",
     600 * (5 + 10) * 9 + 1,
     {},
     "sloped face"},
    {"StepWiderBelow",
     [](MadePart& part) {
         Panel(part);
         part.Pocket(Rectangle(-1, -1, 601, 11), 9);
         part.Pocket(Rectangle(589, -1, 601, 401), 9);
     },
     "OT 1 PL 1 RT 1",
     "no file",
     0,
     {},
     Core},
    {"TongueAlongOneEdge",
     [](MadePart& part) {
         part.AlongX({{0, 0}, {390, 0}, {390, 6}, {400, 6}, {400, 12}, {390, 12}, {390, 18}, {0, 18}}, 600);
     },
     "OT 1 PL 1 RT 1",
     "OT 1 PL 1 RT 1",
     0,
     {},
     Core},
};

class RecognitionOfPaths : public RecognitionMatrix {};

TEST_P(RecognitionOfPaths, CutsAllInAirAndOnce) { RunCase(); }

INSTANTIATE_TEST_SUITE_P(Dados, RecognitionOfPaths,
                         ::testing::Combine(::testing::ValuesIn(Shops), ::testing::ValuesIn(Dados)),
                         MatrixName);
INSTANTIATE_TEST_SUITE_P(Pockets, RecognitionOfPaths,
                         ::testing::Combine(::testing::ValuesIn(Shops), ::testing::ValuesIn(Pockets)),
                         MatrixName);
INSTANTIATE_TEST_SUITE_P(CutOuts, RecognitionOfPaths,
                         ::testing::Combine(::testing::ValuesIn(Shops), ::testing::ValuesIn(CutOuts)),
                         MatrixName);
INSTANTIATE_TEST_SUITE_P(Outlines, RecognitionOfPaths,
                         ::testing::Combine(::testing::ValuesIn(Shops), ::testing::ValuesIn(Outlines)),
                         MatrixName);

}  // namespace
}  // namespace brenvik
