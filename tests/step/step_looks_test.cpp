// What a STEP file holds beside the solids of its parts, and looks that a part has no place for: each is
// told.
#include "step/step_input.h"

namespace brenvik::step {
namespace {

class StepLooks : public StepInput {
  protected:
    /// A board whose file holds these statements too; %S stands for its solid, %F for a face of it, %H for
    /// its shell, %C for the context of its shape. With `item` the statement of that number is among the
    /// items of the shape.
    StepDocument Read(std::string statements, const std::string& item = "") const {
        std::string content = Good();
        const std::string solid = NumberBefore(content, content.find("MANIFOLD_SOLID_BREP("));
        const std::string face = NumberBefore(content, content.find("ADVANCED_FACE("));
        const std::string shell = NumberBefore(content, content.find("CLOSED_SHELL("));
        const std::string shape = "ADVANCED_BREP_SHAPE_REPRESENTATION('',(";
        const std::size_t items = content.find(shape) + shape.size();
        const std::size_t close = content.find("),#", items) + 2;
        const std::string context = content.substr(close, content.find(')', close) - close);
        if (!item.empty()) content.insert(items, (item == "%S" ? solid : item) + ",");
        for (const auto& [mark, number] :
             {std::pair{"%S", solid}, {"%F", face}, {"%C", context}, {"%H", shell}})
            for (std::size_t at = statements.find(mark); at != std::string::npos; at = statements.find(mark))
                statements.replace(at, 2, number);
        content.insert(content.rfind("ENDSEC;"), statements);
        Put(content);
        return ReadStep(mPath);
    }

    static std::string NumberBefore(const std::string& content, std::size_t place) {
        const std::size_t start = content.rfind('#', place);
        return content.substr(start, content.find(' ', start) - start);
    }

    /// A style of this colour on an item, in eight statements from `first` on.
    static std::string Style(int first, const std::string& item, const std::string& color) {
        const auto number = [&](int offset) { return "#" + std::to_string(first + offset); };
        return number(0) + "=STYLED_ITEM('',(" + number(1) + ")," + item + ");\n" + number(1) +
               "=PRESENTATION_STYLE_ASSIGNMENT((" + number(2) + "));\n" + number(2) +
               "=SURFACE_STYLE_USAGE(.BOTH.," + number(3) + ");\n" + number(3) + "=SURFACE_SIDE_STYLE('',(" +
               number(4) + "));\n" + number(4) + "=SURFACE_STYLE_FILL_AREA(" + number(5) + ");\n" +
               number(5) + "=FILL_AREA_STYLE('',(" + number(6) + "));\n" + number(6) +
               "=FILL_AREA_STYLE_COLOUR(''," + number(7) + ");\n" + number(7) + "=COLOUR_RGB(''," + color +
               ");\n" + number(8) + "=MECHANICAL_DESIGN_GEOMETRIC_PRESENTATION_REPRESENTATION('',(" +
               number(0) + "),%C);\n";
    }
    static constexpr const char* sheet =
        "#900001=SHELL_BASED_SURFACE_MODEL('',(#900002));\n#900002=OPEN_SHELL('',(%F));\n";
    static constexpr const char* curve =
        "#900001=GEOMETRIC_CURVE_SET('',(#900002));\n#900002=POLYLINE('',(#900003,#900004));\n"
        "#900003=CARTESIAN_POINT('',(0.,0.,0.));\n#900004=CARTESIAN_POINT('',(9.,0.,0.));\n";
};

TEST_F(StepLooks, AStyleThatLeadsToNoColourIsARemark) {
    for (const char* styles : {"*", "$"}) {
        const std::string content = Style(900001, "%S", "1.,0.,0.");
        const std::string list = "PRESENTATION_STYLE_ASSIGNMENT((#900003))";
        std::string broken = content;
        broken.replace(broken.find(list), list.size(),
                       "PRESENTATION_STYLE_ASSIGNMENT((" + std::string(styles) + "))");
        const StepDocument document = Read(broken);
        EXPECT_EQ(document.solids.at(0).color, std::nullopt);
        ExpectMentions(NotesOf(document),
                       ", nothing lost: 1 faulty style(s) or layer(s) passed over, the first "
                       "one: expected a style made of other statements, found \"#900002=");
    }
}

TEST_F(StepLooks, ASheetBesideASolidIsALoss) {
    EXPECT_EQ(
        NotesOf(Read(sheet, "#900001")),
        "0: what stands beside the solid of part \"Board\" (a surface model, 1 open shell of 1 face) is "
        "passed over\n");
}

TEST_F(StepLooks, ACurveBesideASolidIsARemark) {
    EXPECT_EQ(NotesOf(Read(curve, "#900001")),
              "0, nothing lost: what stands beside the solid of part \"Board\" (1 curve) is passed over\n");
}

TEST_F(StepLooks, ASheetThatNoPartLeadsToIsToldWithItsLine) {
    const std::string notes = NotesOf(Read(sheet));
    const std::string content = Content();
    EXPECT_EQ(notes, LineAt(content, content.find("#900001=")) +
                         ": the surface model #900001 is left out: no part leads to it\n");
}

TEST_F(StepLooks, ColoursOfSingleFacesAreARemark) {
    const StepDocument document = Read(Style(900001, "%S", "1.,0.,0.") + Style(900011, "%F", "0.,1.,0."));
    EXPECT_EQ(document.solids.at(0).color, (Rgb{255, 0, 0}));
    EXPECT_EQ(
        NotesOf(document),
        "0, nothing lost: colours of single faces are passed over, a part has one colour: 1 part(s), the "
        "first one \"Board\"\n");
}

TEST_F(StepLooks, AColourOfAllFacesIsThePartsOwn) {
    EXPECT_EQ(NotesOf(Read(Style(900001, "%S", "1.,0.,0."))), "");
}

TEST_F(StepLooks, TwoStylesOfDifferentColoursOnOneSolidAreARemark) {
    const StepDocument document = Read(Style(900001, "%S", "1.,0.,0.") + Style(900011, "%S", "0.,0.,1."));
    EXPECT_TRUE(document.solids.at(0).color);
    const std::string content = Content();
    ExpectMentions(NotesOf(document),
                   LineAt(content, content.find("#900011=STYLED_ITEM")) +
                       ", nothing lost: 1 item(s) have two styles of different colours, the first one #");
    EXPECT_EQ(NotesOf(Read(Style(900001, "%S", "1.,0.,0.") + Style(900011, "%S", "1.,0.,0."))), "");
}

TEST_F(StepLooks, AStyleThatOverridesAnotherOneCounts) {
    std::string over = Style(900011, "%S", "0.,0.,1.");
    const std::string plain = "STYLED_ITEM('',(#900012),%S)";
    over.replace(over.find(plain), plain.size(), "OVER_RIDING_STYLED_ITEM('',(#900012),%S,#900001)");
    const StepDocument document = Read(Style(900001, "%S", "1.,0.,0.") + over);
    EXPECT_EQ(document.solids.at(0).color, (Rgb{0, 0, 255}));
    EXPECT_EQ(NotesOf(document), "");
}

TEST_F(StepLooks, AStyleForOneUseOrViewAloneIsARemarkThatSaysSo) {
    const std::string relation =
        "#900021=SHAPE_REPRESENTATION_RELATIONSHIP('','',#900022,#900023);\n"
        "#900022=SHAPE_REPRESENTATION('',(#900024),%C);\n#900023=SHAPE_REPRESENTATION('',(#900024),%C);\n"
        "#900024=AXIS2_PLACEMENT_3D('',#900025,$,$);\n#900025=CARTESIAN_POINT('',(0.,0.,0.));\n";
    std::string over = Style(900011, "%S", "0.,0.,1.");
    const std::string plain = "STYLED_ITEM('',(#900012),%S)";
    over.replace(over.find(plain), plain.size(),
                 "CONTEXT_DEPENDENT_OVER_RIDING_STYLED_ITEM('',(#900012),%S,#900001,(#900021))");
    const StepDocument document = Read(Style(900001, "%S", "1.,0.,0.") + over + relation);
    EXPECT_EQ(document.solids.at(0).color, (Rgb{255, 0, 0}));
    const std::string content = Content();
    EXPECT_EQ(
        NotesOf(document),
        LineAt(content, content.find("#900011=")) +
            ", nothing lost: 1 style(s) for one use or view alone passed over, the first one #900011\n");
}

TEST_F(StepLooks, AStyleForOneRepresentationOrItemAloneIsARemarkThatSaysSo) {
    const std::string view =
        "#900021=SHAPE_REPRESENTATION('',(#900022),%C);\n#900022=AXIS2_PLACEMENT_3D('',#900023,$,$);\n"
        "#900023=CARTESIAN_POINT('',(0.,0.,0.));\n";
    const std::string plain = "STYLED_ITEM('',(#900012),%S)";
    for (const std::string context : {"#900021", "#900022"}) {
        std::string over = Style(900011, "%S", "0.,0.,1.");
        over.replace(over.find(plain), plain.size(),
                     "CONTEXT_DEPENDENT_OVER_RIDING_STYLED_ITEM('',(#900012),%S,#900001,(" + context + "))");
        for (const bool isFirst : {false, true}) {
            const std::string base = Style(900001, "%S", "1.,0.,0.");
            const StepDocument document = Read((isFirst ? over + base : base + over) + view);
            EXPECT_EQ(document.solids.at(0).color, (Rgb{255, 0, 0})) << context << isFirst;
            const std::string content = Content();
            EXPECT_EQ(NotesOf(document), LineAt(content, content.find("#900011=")) +
                                             ", nothing lost: 1 style(s) for one use or view alone "
                                             "passed over, the first one #900011\n")
                << context << isFirst;
        }
    }
}

TEST_F(StepLooks, AHidingForOneViewAloneIsARemarkThatSaysSo) {
    const StepDocument document = Read(Style(900001, "%S", "1.,0.,0.") +
                                       "#900021=CONTEXT_DEPENDENT_INVISIBILITY((#900001),#900022);\n"
                                       "#900022=DRAUGHTING_MODEL('',(#900001),%C);\n");
    EXPECT_TRUE(document.solids.at(0).visible);
    EXPECT_EQ(document.solids.at(0).color, (Rgb{255, 0, 0}));
    const std::string content = Content();
    EXPECT_EQ(
        NotesOf(document),
        LineAt(content, content.find("#900021=")) +
            ", nothing lost: 1 style(s) for one use or view alone passed over, the first one #900021\n");
}

TEST_F(StepLooks, AStyleThatOverridesAnotherOneOnAFaceLeavesThePartsColour) {
    std::string over = Style(900011, "%F", "0.,0.,1.");
    const std::string plain = "STYLED_ITEM('',(#900012),%F)";
    over.replace(over.find(plain), plain.size(), "OVER_RIDING_STYLED_ITEM('',(#900012),%F,#900001)");
    EXPECT_EQ(Read(Style(900001, "%S", "1.,0.,0.") + over).solids.at(0).color, (Rgb{255, 0, 0}));
}

TEST_F(StepLooks, AMisspeltLayerIsARemark) {
    for (const std::string kind : {"XPRESENTATION_LAYER_ASSIGNMENT", "PRESENTATION_LAYER_ASSIGNMEN",
                                   "PRESENTATION_LAYRE_ASSIGNMENT", "PRESENTATION_LAYER_ASSIGNMEMT"}) {
        const StepDocument document = Read("#900001=" + kind + "('Oak','',(%S));\n");
        EXPECT_EQ(document.solids.at(0).layer, "") << kind;
        ExpectMentions(NotesOf(document),
                       ", nothing lost: 1 statement(s) of a kind that the format doesn't have, " + kind +
                           ", are passed over: PRESENTATION_LAYER_ASSIGNMENT may be meant\n");
    }
}

TEST_F(StepLooks, AKindOfAnotherSchemaIsNone) {
    for (const std::string kind : {"PRESENTATION_LAYER_USAGE_X", "!PRESENTATION_LAYER_ASSIGNMENTS",
                                   "ANNOTATION_PLANE_STYLE", "CAMERA_MODEL_D9"})
        EXPECT_EQ(NotesOf(Read("#900001=" + kind + "('Oak','',(%S));\n")), "") << kind;
}

TEST_F(StepLooks, TwoLayersOfOneSolidAreARemark) {
    const StepDocument document = Read(
        "#900001=PRESENTATION_LAYER_ASSIGNMENT('A','',(%S));\n"
        "#900002=PRESENTATION_LAYER_ASSIGNMENT('B','',(%S));\n");
    EXPECT_EQ(document.solids.at(0).layer, "A");
    ExpectMentions(NotesOf(document), ", nothing lost: 1 item(s) stand on two layers, the first one #");
}

TEST_F(StepLooks, AHiddenStyleHidesItsPartAndIsTold) {
    const StepDocument document =
        Read(Style(900001, "%S", "1.,0.,0.") + "#900010=INVISIBILITY((#900001));\n");
    // The writer's own files are known to hold nothing else; only other programs' are told.
    EXPECT_FALSE(document.solids.at(0).visible);
    EXPECT_EQ(document.solids.at(0).color, (Rgb{255, 0, 0}));
}

TEST_F(StepLooks, AHiddenLayerHidesWhatStandsOnIt) {
    const StepDocument document = Read(
        "#900001=PRESENTATION_LAYER_ASSIGNMENT('A','',(%S));\n"
        "#900002=INVISIBILITY((#900001));\n");
    EXPECT_EQ(document.solids.at(0).layer, "A");
    EXPECT_FALSE(document.solids.at(0).layerVisible);
    EXPECT_TRUE(document.solids.at(0).visible);
}

TEST_F(StepLooks, ALayerOfAStyleOrAShellIsThePartsOwn) {
    const std::string style = Style(900001, "%S", "1.,0.,0.");
    for (const std::string item : {"%S", "%H", "#900001"}) {
        const StepDocument document =
            Read(style + "#900020=PRESENTATION_LAYER_ASSIGNMENT('Oak','',(" + item + "));\n");
        ASSERT_EQ(document.solids.size(), 1U);
        EXPECT_EQ(document.solids[0].layer, "Oak") << item;
        EXPECT_EQ(NotesOf(document), "") << item;
    }
}

TEST_F(StepLooks, AStyleOfTheShellIsThePartsOwn) {
    const StepDocument document = Read(Style(900001, "%H", "1.,0.,0."));
    ASSERT_EQ(document.solids.size(), 1U);
    EXPECT_EQ(document.solids[0].color, (Rgb{255, 0, 0}));
}

TEST_F(StepLooks, AHiddenListOfStylesHidesItsParts) {
    const StepDocument document =
        Read(Style(900001, "%S", "1.,0.,0.") + "#900020=INVISIBILITY((#900009));\n");
    ASSERT_EQ(document.solids.size(), 1U);
    EXPECT_FALSE(document.solids[0].visible);
}

TEST_F(StepLooks, ASolidThatStandsTwiceIsTold) {
    EXPECT_NE(NotesOf(Read("", "%S")).find("stands twice in the shape #"), std::string::npos);
    const StepDocument document = Read("#900001=MANIFOLD_SOLID_BREP('',%H);\n", "#900001");
    EXPECT_EQ(document.solids.size(), 2U);
    EXPECT_NE(NotesOf(document).find(" have one shell in the shape #"), std::string::npos)
        << NotesOf(document);
}

TEST_F(StepLooks, ABodyOfTrianglesBesideASolidIsALoss) {
    const std::string mesh =
        "#900001=TESSELLATED_SOLID('t',(#900002),$);\n#900002=TRIANGULATED_FACE('',#900003,3,((0.,0.,1.)),$,("
        "),"
        "((1,2,3)));\n#900003=COORDINATES_LIST('',3,((0.,0.,0.),(1.,0.,0.),(0.,1.,0.)));\n";
    const std::string notes = NotesOf(Read(mesh, "#900001"));
    EXPECT_NE(notes.find(": 1 body(s) made of triangles passed over"), std::string::npos) << notes;
    EXPECT_EQ(notes.find("nothing lost"), std::string::npos) << notes;
}

TEST_F(StepLooks, CurvesThatNoPartLeadsToAreARemark) {
    const std::string notes = NotesOf(Read(curve));
    EXPECT_NE(notes.find(", nothing lost: the set of curves #900001 is left out"), std::string::npos)
        << notes;
}

}  // namespace
}  // namespace brenvik::step
