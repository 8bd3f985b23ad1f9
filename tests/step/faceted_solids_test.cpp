// Solids whose faces are loops of points: their statements contradict each other as those of edges do.
#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "base/text.h"
#include "drafting_host/solids/exact_box.h"
#include "drafting_host/step/step_reader.h"
#include "solids/parts.h"
#include "step/write_step.h"

namespace brenvik::step {
namespace {

using Corner = std::array<double, 3>;

constexpr std::array<Corner, 8> boxCorners{{{0, 0, 0},
                                            {600, 0, 0},
                                            {600, 400, 0},
                                            {0, 400, 0},
                                            {0, 0, 18},
                                            {600, 0, 18},
                                            {600, 400, 18},
                                            {0, 400, 18}}};

struct BoxFace {
    std::array<int, 4> corners;
    std::string normal, along;
};

class FacetedSolid : public ::testing::Test {
  protected:
    void SetUp() override {
        const auto* test = ::testing::UnitTest::GetInstance()->current_test_info();
        mPath =
            std::filesystem::path(::testing::TempDir()) / ("brenvik_" + std::string(test->name()) + ".step");
        WriteStep(mPath, std::vector<StepSolid>{
                             {solids::test::Board(600, 400, 18), "Board", "Job", "", std::nullopt}});
        std::ifstream file(mPath, std::ios::binary);
        mFrame.assign(std::istreambuf_iterator<char>(file), {});
    }
    void TearDown() override { std::filesystem::remove(mPath); }

    std::string Add(const std::string& statement) {
        const std::string number = "#" + std::to_string(++mLast);
        mAdded += number + " = " + statement + ";\n";
        return number;
    }
    std::string AddPoint(const Corner& at) {
        const auto text = [](double value) { return std::to_string(value); };
        return Add("CARTESIAN_POINT('',(" + text(at[0]) + "," + text(at[1]) + "," + text(at[2]) + "))");
    }

    /// A box of these corners on the planes of the box that it should be.
    StepDocument ReadBox(const std::array<Corner, 8>& corners) {
        const std::array<BoxFace, 6> faces{{{{0, 3, 2, 1}, "(0.,0.,-1.)", "(1.,0.,0.)"},
                                            {{4, 5, 6, 7}, "(0.,0.,1.)", "(1.,0.,0.)"},
                                            {{0, 1, 5, 4}, "(0.,-1.,0.)", "(1.,0.,0.)"},
                                            {{2, 3, 7, 6}, "(0.,1.,0.)", "(1.,0.,0.)"},
                                            {{1, 2, 6, 5}, "(1.,0.,0.)", "(0.,1.,0.)"},
                                            {{0, 4, 7, 3}, "(-1.,0.,0.)", "(0.,1.,0.)"}}};
        mAdded.clear();
        mLast = 900000;
        std::array<std::string, 8> shared;
        for (std::size_t i = 0; i < shared.size(); ++i) shared[i] = AddPoint(corners[i]);
        std::string shell;
        for (const BoxFace& face : faces) {
            std::string loop;
            for (const int corner : face.corners)
                loop += (loop.empty() ? "" : ",") + shared[static_cast<std::size_t>(corner)];
            const std::string bound =
                Add("FACE_OUTER_BOUND(''," + Add("POLY_LOOP('',(" + loop + "))") + ",.T.)");
            const std::string origin = AddPoint(boxCorners[static_cast<std::size_t>(face.corners[0])]);
            const std::string axes = Add("DIRECTION(''," + face.normal + ")");
            const std::string along = Add("DIRECTION(''," + face.along + ")");
            const std::string place = Add("AXIS2_PLACEMENT_3D(''," + origin + "," + axes + "," + along + ")");
            shell += (shell.empty() ? "" : ",") +
                     Add("FACE_SURFACE('',(" + bound + ")," + Add("PLANE(''," + place + ")") + ",.T.)");
        }
        return Read(Add("CLOSED_SHELL('',(" + shell + "))"));
    }

  private:
    StepDocument Read(const std::string& shell) const {
        std::string content = mFrame;
        const std::size_t solid = content.find("MANIFOLD_SOLID_BREP(");
        content.replace(solid, content.find(';', solid) - solid, "FACETED_BREP('Board'," + shell + ")");
        content = ReplaceAll(content, "ADVANCED_BREP_SHAPE", "FACETED_BREP_SHAPE");
        content.insert(content.rfind("ENDSEC;"), mAdded);
        std::ofstream(mPath, std::ios::binary) << content;
        return ReadStep(mPath);
    }

    std::filesystem::path mPath;
    std::string mFrame, mAdded;
    int mLast = 0;
};

TEST_F(FacetedSolid, ASoundOneIsReadInSilence) {
    const StepDocument document = ReadBox(boxCorners);
    ASSERT_EQ(document.solids.size(), 1U);
    EXPECT_TRUE(document.notes.empty()) << document.notes.front().text;
    EXPECT_NEAR(solids::ExactBox(document.solids[0].shape).SizeX(), 600, 1e-6);
    EXPECT_NEAR(solids::ExactBox(document.solids[0].shape).SizeZ(), 18, 1e-6);
}

TEST_F(FacetedSolid, AMovedCornerIsToldWithTheLineAndThePart) {
    for (std::size_t corner = 0; corner < boxCorners.size(); ++corner) {
        for (std::size_t axis = 0; axis < 3; ++axis) {
            std::array<Corner, 8> corners = boxCorners;
            corners[corner][axis] += 300;
            const StepDocument document = ReadBox(corners);
            ASSERT_FALSE(document.notes.empty()) << corner << " " << axis;
            const StepNote& note = document.notes.front();
            EXPECT_TRUE(note.lost);
            EXPECT_GT(note.line, 0U);
            EXPECT_NE(note.text.find("part \"Board\": "), std::string::npos) << note.text;
            EXPECT_NE(note.text.find("does not lie on its surface"), std::string::npos) << note.text;
        }
    }
}

}  // namespace
}  // namespace brenvik::step
