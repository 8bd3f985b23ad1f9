// Statements of a length or depth that no program writes for a part.
#include <gtest/gtest.h>

#include <chrono>

#include "step/step_input.h"

namespace brenvik::step {
namespace {

class StepLong : public StepInput {
  protected:
    /// Reads the good file with more statements; what took quadratic time would take minutes.
    StepDocument ReadWith(const std::string& statements) const {
        std::string content = Good();
        content.insert(content.rfind("ENDSEC;"), statements);
        Put(content);
        const auto start = std::chrono::steady_clock::now();
        StepDocument document = ReadStep(mPath);
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
        return document;
    }

    static std::string Times(int count, const std::string& text) {
        std::string all = text;
        for (int time = 1; time < count; ++time) all += "," + text;
        return all;
    }

    std::string Solid() const {
        const std::string content = Good();
        const std::size_t place = content.find(" = MANIFOLD_SOLID_BREP");
        const std::size_t at = content.rfind('#', place);
        return content.substr(at, place - at);
    }
};

TEST_F(StepLong, BracketsInBracketsWithoutMeasureAreRefusedByLine) {
    std::string content = Good();
    content.insert(content.rfind("ENDSEC;"),
                   "#900001=ANYTHING(" + std::string(100000, '(') + "1" + std::string(100000, ')') + ");\n");
    Put(content);
    ExpectMentions(FailureText(), "line " + LineAt(content, content.find("#900001=")) +
                                      ": expected at most 1000 brackets in each other");
}

TEST_F(StepLong, PointsOfAMeshAreReadInNoTime) {
    const StepDocument document =
        ReadWith("#900001=COORDINATES_LIST('',100000,(" + Times(100000, "(1.,2.,3.)") + "));\n");
    EXPECT_EQ(document.solids.size(), 1U);
    EXPECT_EQ(NotesOf(document), "");
}

TEST_F(StepLong, ALayerOfAHundredThousandThingsIsReadAndHiddenAsOne) {
    const std::string other = Times(99999, "#900003");
    const StepDocument document =
        ReadWith("#900001=PRESENTATION_LAYER_ASSIGNMENT('Long','',(" + other + "," + Solid() +
                 "));\n#900002=INVISIBILITY((#900001));\n#900003=CARTESIAN_POINT('',(0.,0.,0.));\n");
    ASSERT_EQ(document.solids.size(), 1U);
    EXPECT_EQ(document.solids[0].layer, "Long");
    EXPECT_FALSE(document.solids[0].layerVisible);
}

TEST_F(StepLong, APointOfCountlessNumbersIsTold) {
    const StepDocument document = ReadWith("#900001=CARTESIAN_POINT('',(" + Times(300000, "1.") + "));\n");
    EXPECT_EQ(document.solids.size(), 1U);
    ExpectMentions(NotesOf(document), "expected at most three coordinates, found 300000\n");
}

}  // namespace
}  // namespace brenvik::step
