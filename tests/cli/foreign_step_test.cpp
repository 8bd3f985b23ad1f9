// STEP files of other programs that hold more, or other things, than parts: nothing ends the process, and
// what a list leaves out is told.
#include <string>

#include "boards.h"
#include "program.h"

namespace brenvik::cli_test {
namespace {

class ForeignStep : public ProgramTest {
  protected:
    ForeignStep() {
        WriteBoardsTo(folder / "job.dxf", {{"Side"}, "White Melamine", false});
        Run({"convert", "job.dxf", "good.step"});
        mGood = Read("good.step");
    }

    /// The board's file with these statements, and with the first of them among the items of its shape.
    void WriteWithItem(const std::string& name, const std::string& statements) const {
        std::string text = mGood;
        const std::string items = "ADVANCED_BREP_SHAPE_REPRESENTATION('',(";
        text.insert(text.find(items) + items.size(), statements.substr(0, statements.find('=')) + ",");
        text.insert(text.rfind("ENDSEC;"), statements);
        Write(name, text);
    }

    std::string mGood;
};

TEST_F(ForeignStep, ASweptSolidBesideAPartIsToldWithItsLine) {
    WriteWithItem("a.step",
                  "#900001=EXTRUDED_AREA_SOLID('',#900002,#900003,5.);\n"
                  "#900002=CURVE_BOUNDED_SURFACE('',#900004,(),.T.);\n#900003=DIRECTION('',(0.,0.,1.));\n"
                  "#900004=PLANE('',#900005);\n#900005=AXIS2_PLACEMENT_3D('',#900006,$,$);\n"
                  "#900006=CARTESIAN_POINT('',(0.,0.,0.));\n");
    const Outcome outcome = Run({"list", "a.step"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_NE(outcome.output.find("Side"), std::string::npos) << outcome.output;
    EXPECT_NE(outcome.errors.find("is left out: expected a solid given by its faces (MANIFOLD_SOLID_BREP), "
                                  "found EXTRUDED_AREA_SOLID"),
              std::string::npos)
        << outcome.errors;
}

TEST_F(ForeignStep, AnInfiniteUnitOfLengthIsRefusedWithItsLine) {
    std::string text = mGood;
    const std::string metric = "( LENGTH_UNIT() NAMED_UNIT(*) SI_UNIT(.MILLI.,.METRE.) )";
    const std::string endless = "( CONVERSION_BASED_UNIT('INCH',#900001) LENGTH_UNIT() NAMED_UNIT(*) )";
    for (std::size_t at = text.find(metric); at != std::string::npos; at = text.find(metric, at + 1))
        text.replace(at, metric.size(), endless);
    text.insert(text.rfind("ENDSEC;"),
                "#900001=LENGTH_MEASURE_WITH_UNIT(LENGTH_MEASURE(1.E309),#900002);\n"
                "#900002=( LENGTH_UNIT() NAMED_UNIT(*) SI_UNIT($,.METRE.) );\n");
    Write("a.step", text);
    const Outcome outcome = Run({"list", "a.step"});
    EXPECT_EQ(outcome.status, 3);
    EXPECT_NE(outcome.errors.find("expected a unit of length"), std::string::npos) << outcome.errors;
}

TEST_F(ForeignStep, AColourThatDoesntExistLeavesThePart) {
    std::string text = mGood;
    text.insert(text.rfind("ENDSEC;"), "#900001=COLOUR_RGB('',-1.,0.,0.);\n");
    Write("a.step", text);
    const Outcome outcome = Run({"list", "a.step"});
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    EXPECT_NE(outcome.errors.find("1 faulty style(s) or layer(s) passed over"), std::string::npos)
        << outcome.errors;
}

TEST_F(ForeignStep, ASheetBesideAPartMakesTheListIncomplete) {
    const std::size_t place = mGood.find("ADVANCED_FACE("), start = mGood.rfind('#', place);
    const std::string face = mGood.substr(start, mGood.find(' ', start) - start);
    WriteWithItem("a.step", "#900001=SHELL_BASED_SURFACE_MODEL('',(#900002));\n#900002=OPEN_SHELL('',(" +
                                face + "));\n");
    const Outcome outcome = Run({"list", "a.step"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_NE(
        outcome.errors.find("what stands beside the solid of part \"Side\" (a surface model, 1 open shell "
                            "of 1 face) is passed over"),
        std::string::npos)
        << outcome.errors;
}

TEST_F(ForeignStep, TransparencyAndHiddenPartsGoThroughADrawingAndBack) {
    std::string text = Read("job.dxf");
    std::erase(text, '\r');
    const std::size_t solid = text.find("  0\n3DSOLID\n"), layer = text.find("\n  8\n", solid) + 5;
    text.insert(text.find('\n', layer) + 1, " 62\n     1\n 60\n     1\n440\n33554534\n");
    Write("glass.dxf", text);
    Run({"convert", "glass.dxf", "glass.step"});
    const std::string step = Read("glass.step");
    EXPECT_NE(step.find("INVISIBILITY(("), std::string::npos);
    EXPECT_NE(step.find("SURFACE_STYLE_TRANSPARENT(0.59999"), std::string::npos);
    EXPECT_EQ(Run({"convert", "glass.step", "back.dxf"}).status, 0);
    std::string back = Read("back.dxf");
    std::erase(back, '\r');
    const std::size_t again = back.find("  0\n3DSOLID\n");
    const std::string record = back.substr(again, back.find("AcDbModelerGeometry", again) - again);
    EXPECT_NE(record.find("\n440\n33554534\n"), std::string::npos) << record;
    EXPECT_NE(record.find("\n 60\n1\n"), std::string::npos) << record;
}

/// Two boards, each on a layer of its own and on no other.
std::string OnLayers(std::string text, const std::string& first, const std::string& second) {
    const std::string kind = "PRESENTATION_LAYER_ASSIGNMENT(";
    for (std::size_t at = text.find(kind); at != std::string::npos; at = text.find(kind)) {
        const std::size_t start = text.rfind('#', at);
        text.erase(start, text.find(';', at) + 1 - start);
    }
    std::string layers;
    std::size_t at = 0;
    for (const std::string& name : {first, second}) {
        at = text.find("MANIFOLD_SOLID_BREP(", at + 1);
        const std::size_t start = text.rfind('#', at);
        const std::string solid = text.substr(start, text.find(' ', start) - start);
        layers += "#90000" + std::to_string(layers.empty() ? 1 : 2) + "=PRESENTATION_LAYER_ASSIGNMENT('" +
                  name + "','',(" + solid + "));\n";
    }
    text.insert(text.rfind("ENDSEC;"), layers);
    return text;
}

TEST_F(ForeignStep, TwoLayersStayTwoWhereADrawingTakesNeitherName) {
    WriteBoardsTo(folder / "two.dxf", {{"Left", "Right"}, "", false});
    Run({"convert", "two.dxf", "two.step"});
    const std::string two = Read("two.step");
    const auto layersOf = [&](const std::string& first, const std::string& second) {
        Write("a.step", OnLayers(two, first, second));
        const Outcome outcome = Run({"list", "a.step", "--format", "csv"});
        EXPECT_EQ(outcome.status, 0) << outcome.errors;
        return outcome;
    };
    Outcome outcome = layersOf("a/b", "a|b");
    EXPECT_NE(outcome.output.find(",a_b,"), std::string::npos) << outcome.output;
    EXPECT_NE(outcome.output.find(",a_b_2,"), std::string::npos) << outcome.output;
    EXPECT_NE(outcome.errors.find("layer \"a|b\" is called \"a_b_2\", since the drawing has another layer"),
              std::string::npos)
        << outcome.errors;
    outcome = layersOf("a/b", "A_b");
    EXPECT_NE(outcome.errors.find("layer \"a/b\" is called \"a_b_2\""), std::string::npos) << outcome.errors;
    EXPECT_EQ(layersOf("a/b", "c").errors.find("is called"), std::string::npos);
}

}  // namespace
}  // namespace brenvik::cli_test
