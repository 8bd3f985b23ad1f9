// The rules of laying flat one by one: faces and edges, messages, letters, which side is up, and what the
// written drawing holds.
#include "cnc/alignment_fixture.h"
#include "cnc/laying/alignment.h"
#include "cnc/laying/alignment_edges.h"
#include "cnc/laying/alignment_faces.h"
#include "cnc/laying/alignment_top.h"

namespace brenvik {
namespace {

using Texts = std::vector<std::string>;

class AlignmentRules : public AlignmentTest {
  protected:
    bool Typed(std::string_view answer) const {
        return std::ranges::any_of(transcript,
                                   [answer](const std::string& line) { return line.ends_with(answer); });
    }
    /// How often the drawing was turned about an axis by an angle.
    int Turns(std::string_view axis, std::string_view degrees) const {
        int turns = 0;
        std::string_view lastAxis;
        for (const std::string& line : transcript) {
            for (const std::string_view name : {"x", "y", "z"})
                if (line.ends_with("]: " + std::string(name))) lastAxis = name;
            if (line.find("Rotation angle") != std::string::npos &&
                line.ends_with(": " + std::string(degrees)) && lastAxis == axis)
                ++turns;
        }
        return turns;
    }
};

TEST_F(AlignmentRules, APartWithoutAFlatSideIsSkippedWithAMessage) {
    EXPECT_EQ(Align(NothingFlat()), PassOutcome::SkipPart);
    EXPECT_EQ(Messages(),
              Texts{"This part does not have a flat side to work with, so this part will be skipped."});
}

TEST_F(AlignmentRules, APartWithoutAStraightEdgeIsSkippedWithAMessage) {
    EXPECT_EQ(Align(Disc()), PassOutcome::SkipPart);
    EXPECT_EQ(Messages(),
              Texts{"This part does not have a line to work with, so this part will be skipped."});
}

TEST_F(AlignmentRules, APartWhoseEdgesNeverMeetEndsTheRunWithAMessage) {
    EXPECT_EQ(Align(Lens()), PassOutcome::EndRun);
    EXPECT_EQ(Messages(),
              Texts{"This part does not have a line connected to the endpoint or startpoint of the "
                    "longest line, so exiting now."});
    EXPECT_FALSE(dynamic_cast<HostDocument&>(*run.part.drawing).Closed());
}

TEST_F(AlignmentRules, MissingLettersAreToldAndCountAsLwt) {
    app::Workpiece board = Board(600, 300, 18);
    mAutoCAD::SetPartData(&board.Solid(), "ORIE", "");
    EXPECT_EQ(Align(board.Solid()), PassOutcome::GoOn);
    EXPECT_EQ(Messages(), Texts{"ORIE data not detected on this part, so it is being set to LWT"});
    ExpectPoint(PartBox().max, {600, 300, 18});
}

TEST_F(AlignmentRules, SmallLettersActLikeCapitals) {
    app::Workpiece board = Board(600, 300, 18);
    mAutoCAD::SetPartData(&board.Solid(), "ORIE", "wlt");
    EXPECT_EQ(Align(board.Solid()), PassOutcome::GoOn);
    EXPECT_TRUE(Messages().empty());
    ExpectPoint(PartBox().max, {300, 600, 18});
    EXPECT_EQ(run.part.DimL, "300");
    EXPECT_EQ(run.part.DimW, "600");
}

TEST_F(AlignmentRules, APartWithLettersThatNameNoSizesIsSkipped) {
    app::Workpiece board = Board(600, 300, 18);
    mAutoCAD::SetPartData(&board.Solid(), "ORIE", "LWW");
    EXPECT_EQ(Align(board.Solid()), PassOutcome::SkipPart);
    EXPECT_EQ(
        Messages().back(),
        "The part \"Panel\" is skipped: its letters (ORIE) are \"LWW\", expected L, W and T in some order.");
    EXPECT_EQ(Turns("z", "90"), 0);
}

TEST_F(AlignmentRules, EqualSizesMakeNoTurn) {
    EXPECT_EQ(Align(Board(100, 100, 100).Solid()), PassOutcome::GoOn);
    for (const char* axis : {"x", "y", "z"}) EXPECT_EQ(Turns(axis, "90"), 0) << axis;
}

struct TurnCase {
    const char *letters, *axes;
};

TEST_F(AlignmentRules, TurnsGoInTheOrderZYXAndOnlyWhereASizeLiesWrong) {
    // For a part that the align leaves with its largest size on X and its smallest on Y.
    const TurnCase cases[] = {{"LWT", "x"},   {"LTW", ""},  {"WLT", "zy"},
                              {"TLW", "zyx"}, {"WTL", "z"}, {"TWL", "zx"}};
    for (const TurnCase& c : cases) {
        transcript.clear();
        app::Workpiece board = Board(600, 300, 18);
        mAutoCAD::SetPartData(&board.Solid(), "ORIE", c.letters);
        ASSERT_EQ(Align(board.Solid()), PassOutcome::GoOn);
        for (const char axis : {'x', 'y', 'z'})
            EXPECT_EQ(Turns(std::string(1, axis), "90"),
                      std::string_view(c.axes).find(axis) == std::string_view::npos ? 0 : 1)
                << c.letters << " about " << axis;
        run.part.drawing->Close(false);
        TheSession().AcadDoc = &document;
        board.Solid().Delete();
    }
}

TEST_F(AlignmentRules, TheTwoFormsOfARunPointElsewhereOnY) {
    Align(Board(600, 300, 18).Solid());
    EXPECT_TRUE(Typed(": 0,10000000,0"));
    transcript.clear();
    run = RunOn(OpenAsPart(LastSolid(document)));
    run.form = RunForm::B;
    AlignPart(run);
    EXPECT_TRUE(Typed(": 0,1000,0"));
    EXPECT_FALSE(Typed(": 0,10000000,0"));
}

TEST_F(AlignmentRules, ThePartsOfSpecialMaterialAreWorkedOnFromTheirThirdFace) {
    struct FaceCase {
        const char *face, *setting;
        bool turned;
    };
    const FaceCase cases[] = {{"3", "1", true}, {"3", "0", false}, {"", "1", false}, {"1", "1", false}};
    for (const FaceCase& c : cases) {
        Set("SpecialMaterial", c.setting);
        app::Workpiece board = Board(600, 300, 18);
        mAutoCAD::SetPartData(&board.Solid(), "FACE", c.face);
        ASSERT_EQ(Align(board.Solid()), PassOutcome::GoOn);
        EXPECT_NEAR(RegionOn(layers::RegionCopy).GetBoundingBox().min.z, c.turned ? 18 : 0, 1e-7)
            << c.face << " " << c.setting;
        run.part.drawing->Close(false);
        TheSession().AcadDoc = &document;
        board.Solid().Delete();
    }
}

TEST_F(AlignmentRules, OnTheSecondSideTheFacesSwapAndThePartIsTurnedOver) {
    app::Workpiece board = Board(600, 300, 18);
    board.Cut({100, 50, 10}, {200, 150, 18});
    run = RunOn(OpenAsPart(board.Solid()));
    run.part.NeedSecondSide = true;
    run.part.SecondSidePass = true;
    ASSERT_EQ(AlignPart(run), PassOutcome::GoOn);
    EXPECT_NEAR(RegionOn(layers::NextBiggestRegion).Area(), 600 * 300, 1e-6);
    EXPECT_NEAR(RegionOn(layers::RegionCopy).Area(), 600 * 300 - 100 * 100, 1e-6);
    EXPECT_NEAR(RegionOn(layers::RegionCopy).GetBoundingBox().max.z, 0, 1e-7);
    EXPECT_NEAR(RegionOn(layers::NextBiggestRegion).GetBoundingBox().min.z, 18, 1e-7);
}

TEST_F(AlignmentRules, ASolidWithNoFaceAgainstTheLargestKeepsTheFirstRegionAsTheNext) {
    HostDocument& part = OpenAsPart(Wedge());
    ExplodeCopyToFaces(part, LastSolid(part));
    const std::vector<AcadRegion*> regions = All<AcadRegion>(part);
    const std::optional<FlatFaces> faces = FindFaces(part);
    ASSERT_TRUE(faces);
    EXPECT_NEAR(faces->LargestRegion.area, 600 * std::hypot(300, 100), 1e-5);
    EXPECT_EQ(faces->NextRegion.region, regions.front());
}

TEST_F(AlignmentRules, ASolidWithNoFaceAgainstTheLargestLiesOnTheLargest) {
    for (const Pose& pose : poses) {
        Acad3DSolid& wedge = Wedge();
        ASSERT_EQ(AlignAt(wedge, pose), PassOutcome::GoOn);
        const double slope = std::hypot(300, 100);
        ExpectPoint(PartBox().max, {600, slope, 300 * 100 / slope});
        EXPECT_NEAR(RegionOn(layers::RegionCopy).GetBoundingBox().max.z, 0, 1e-7);
        run.part.drawing->Close(false);
        TheSession().AcadDoc = &document;
        wedge.Delete();
    }
}

TEST_F(AlignmentRules, ALargestFaceThatIsSetAsideItselfStillGivesItsEdges) {
    // The slope is the first face of one of them.
    int setAside = 0;
    for (const auto& outline :
         {std::to_array<double>({300, 0, 0, 100, 0, 0}), std::to_array<double>({0, 0, 300, 0, 0, 100}),
          std::to_array<double>({0, 100, 0, 0, 300, 0})}) {
        Acad3DSolid& wedge = Prism(outline, 600);
        ASSERT_EQ(Align(wedge), PassOutcome::GoOn);
        if (std::abs(RegionOn(layers::NextBiggestRegion).Area() - RegionOn(layers::RegionCopy).Area()) < 1)
            ++setAside;
        EXPECT_NEAR(RegionOn(layers::RegionCopy).GetBoundingBox().max.z, 0, 1e-7);
        EXPECT_EQ(AllOn<AcadRegion>(*run.part.drawing, layers::NextBiggestRegion).size(), 1U);
        EXPECT_FALSE(AllOn<AcadLine>(*run.part.drawing, layers::Region).empty());
        run.part.drawing->Close(false);
        TheSession().AcadDoc = &document;
        wedge.Delete();
    }
    EXPECT_EQ(setAside, 1);
}

TEST_F(AlignmentRules, OfTwoEqualFacesTheFirstIsTheLargestAndTheOtherLiesAgainstIt) {
    for (const Pose& pose : poses) {
        app::Workpiece board = Board(600, 300, 18);
        Lay(board.Solid(), pose.aboutX, pose.aboutY, pose.aboutZ, pose.to);
        HostDocument& part = OpenAsPart(board.Solid());
        ExplodeCopyToFaces(part, LastSolid(part));
        const std::vector<AcadRegion*> regions = All<AcadRegion>(part);
        ASSERT_EQ(regions.size(), 6U);
        std::vector<AcadRegion*> big;
        for (AcadRegion* region : regions)
            if (std::abs(region->Area() - 180000) < 1) big.push_back(region);
        const std::optional<FlatFaces> faces = FindFaces(part);
        ASSERT_TRUE(faces);
        ASSERT_EQ(big.size(), 2U);
        EXPECT_EQ(faces->LargestRegion.region, big[0]);
        EXPECT_EQ(faces->NextRegion.region, big[1]);
        part.Close(false);
        board.Solid().Delete();
    }
}

TEST_F(AlignmentRules, ADrawingWithoutARegionHasNoFaces) {
    EXPECT_FALSE(FindFaces(document));
    EXPECT_FALSE(FindLargestFace(document));
}

}  // namespace
}  // namespace brenvik
