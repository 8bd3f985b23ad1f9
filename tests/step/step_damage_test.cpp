// Files that are sound but for one thing: only what hangs on it may be missing, and that is told.
#include <gtest/gtest.h>

#include "drafting_host/solids/exact_box.h"
#include "step/nested_assembly.h"
#include "step/step_input.h"

namespace brenvik::step {
namespace {

class StepDamage : public StepInput {
  protected:
    /// Two boards, the first red, the second green.
    std::string Two() const {
        WriteStep(mPath, std::vector<StepSolid>{
                             {solids::test::Board(600, 400, 18), "Top", "Job", "", Rgb{200, 0, 0}},
                             {solids::test::Board(700, 300, 18), "Shelf", "Job", "", Rgb{0, 200, 0}}});
        return Content();
    }

    StepDocument Read(const std::string& content) const {
        Put(content);
        return ReadStep(mPath);
    }

    static std::string Replaced(std::string content, const std::string& old, const std::string& text) {
        const std::size_t place = content.find(old);
        EXPECT_NE(place, std::string::npos) << old;
        if (place != std::string::npos) content.replace(place, old.size(), text);
        return content;
    }

    static std::string WithData(std::string content, const std::string& statements) {
        content.insert(content.rfind("ENDSEC;"), statements);
        return content;
    }
};

TEST_F(StepDamage, ANumberWithTwoPointsTakesItsPartAndNoOther) {
    const std::string good = Two();
    const std::string content = Replaced(good, "(700.,", "(5.9.9,");
    const StepDocument document = Read(content);
    ASSERT_EQ(document.solids.size(), 1U);
    EXPECT_EQ(document.solids[0].name, "Top");
    EXPECT_TRUE(document.solids[0].color);
    ASSERT_EQ(document.notes.size(), 1U) << NotesOf(document);
    EXPECT_TRUE(document.notes[0].lost);
    EXPECT_EQ(std::to_string(document.notes[0].line), LineAt(content, content.find("5.9.9")));
    ExpectMentions(document.notes[0].text, "part \"Shelf\" (#");
    ExpectMentions(document.notes[0].text, "well-formed STEP statements");
}

TEST_F(StepDamage, ANumberWithTwoPointsInTheOnlyPartIsRefused) {
    const std::string content = Replaced(Good(), "(600.,", "(5.9.9,");
    Put(content);
    ExpectMentions(FailureText(),
                   "line " + LineAt(content, content.find("5.9.9")) + ": expected well-formed");
}

TEST_F(StepDamage, AUnitOfLengthThatNobodyKnowsIsNoGuess) {
    const std::string good = Good();
    for (const std::string unit : {".MILL.,.METRE.", ".MILLI.,.METER."}) {
        const std::string content = Replaced(good, ".MILLI.,.METRE.", unit);
        Put(content);
        const std::string text = FailureText();
        ExpectMentions(text, "a unit of length such as SI_UNIT(.MILLI.,.METRE.)");
        ExpectMentions(text, "line " + LineAt(content, content.find("SI_UNIT(" + unit)));
    }
}

TEST_F(StepDamage, AFaultThatTheModellerFindsTakesItsPartAndNoOther) {
    std::string content = Two();
    const std::size_t shell = content.rfind("CLOSED_SHELL('',(");
    content.replace(shell, 17, "CLOSED_SHELL(7,(*,");
    const StepDocument document = Read(content);
    ASSERT_EQ(document.solids.size(), 1U);
    EXPECT_EQ(document.solids[0].name, "Top");
    ExpectMentions(NotesOf(document), "part \"Shelf\"");
    ExpectMentions(NotesOf(document), LineAt(content, shell) + ": ");
}

TEST_F(StepDamage, QuotesAndCommentsAreText) {
    std::string content = Good();
    content = Replaced(content, "'Board','Board'", "'','a;#5=ORIENTED_EDGE(#5)/*'");
    content =
        Replaced(content, "= ORIENTED_EDGE('',*,*,", "= /* #1; ORIENTED_EDGE */ ORIENTED_EDGE('#1; ''',*,*,");
    content = Replaced(content, "DATA;", "DATA; /* it's #99999999999 = */");
    const StepDocument document = Read(content);
    ASSERT_EQ(document.solids.size(), 1U);
    EXPECT_EQ(document.solids[0].name, "a;#5=ORIENTED_EDGE(#5)/*");
    EXPECT_EQ(NotesOf(document), "");
}

TEST_F(StepDamage, CommentsAnywhereChangeNothing) {
    const auto commented = [](const std::string& content, const std::string& comment) {
        std::string result;
        bool quoted = false;
        for (std::size_t at = 0; at < content.size(); ++at) {
            result += content[at];
            quoted = quoted != (content[at] == '\'');
            if (at > content.find("DATA;") && !quoted &&
                std::string("=,()").find(content[at]) != std::string::npos)
                result += comment;
        }
        return result;
    };
    const StepDocument plain = Read(Two());
    for (const std::string comment : {"/* it's #5=X, (1.,2. */", "/*'*/", "/*;\n#7=PRODUCT('x');\n*/"}) {
        const StepDocument document = Read(commented(Two(), comment));
        ASSERT_EQ(document.solids.size(), plain.solids.size()) << comment;
        for (std::size_t i = 0; i < plain.solids.size(); ++i)
            EXPECT_EQ(document.solids[i].name, plain.solids[i].name) << comment;
        EXPECT_EQ(NotesOf(document), NotesOf(plain)) << comment;
    }
}

TEST_F(StepDamage, PapersOfAnyKindRefuseNothing) {
    const std::string good = Good();
    for (const std::string paper :
         {"#900001=PERSON_AND_ORGANIZATION(#18446744073709551615,#900002);",
          "#900001=PERSON_AND_ORGANIZATION(#900003,#900004);", "#900001=CALENDAR_DATE('x',$,$);",
          "#900001=APPROVAL(#900001,1.2.3);", "#900001=DESCRIPTIVE_REPRESENTATION_ITEM($,$);",
          "#900001=PERSON($,$,$,$,$,$);#900002=PERSON_AND_ORGANIZATION(#900002,#900001);",
          "#900001=CC_DESIGN_APPROVAL(#900002,(#1));", "#900001=DATE_AND_TIME(#1,#1);"}) {
        const StepDocument document = Read(WithData(good, paper + "\n"));
        EXPECT_EQ(document.solids.size(), 1U) << paper;
        for (const StepNote& note : document.notes) EXPECT_FALSE(note.lost) << paper << note.text;
    }
}

TEST_F(StepDamage, AnItemOfAWrongTypeBesideTheShapeRefusesNothing) {
    const std::string good = WithData(Good(), "#900001=PERSON('x',$,$,$,$,$);\n");
    const StepDocument document = Read(Replaced(good, "ADVANCED_BREP_SHAPE_REPRESENTATION('',(",
                                                "ADVANCED_BREP_SHAPE_REPRESENTATION('',(#900001,"));
    EXPECT_EQ(document.solids.size(), 1U);
    for (const StepNote& note : document.notes) EXPECT_FALSE(note.lost) << note.text;
}

TEST_F(StepDamage, AShadingWithoutAMethodKeepsItsColour) {
    std::string content = Two();
    const std::size_t style = content.find("SURFACE_STYLE_USAGE(.BOTH.,#");
    const std::size_t side = content.find("SURFACE_SIDE_STYLE('',(#");
    ASSERT_NE(side, std::string::npos);
    ASSERT_NE(style, std::string::npos);
    const std::string colour = content.substr(content.find("COLOUR_RGB") - 8, 8);
    const std::string number =
        colour.substr(colour.find('#'), colour.find(' ', colour.find('#')) - colour.find('#'));
    content.insert(side + 23, "#900001,");
    content = WithData(content, "#900001=SURFACE_STYLE_RENDERING_WITH_PROPERTIES($," + number +
                                    ",(#900002));\n#900002=SURFACE_STYLE_TRANSPARENT(0.);\n");
    const StepDocument document = Read(content);
    ASSERT_EQ(document.solids.size(), 2U);
    EXPECT_EQ(document.solids[0].color, (Rgb{200, 0, 0}));
    EXPECT_EQ(document.solids[1].color, (Rgb{0, 200, 0}));
    for (const StepNote& note : document.notes) EXPECT_FALSE(note.lost) << note.text;
}

TEST_F(StepDamage, OneFaultyStyleIsTheOnlyThingLost) {
    const std::string good = Two();
    std::string damaged = good;
    const std::size_t place = damaged.find("SURFACE_SIDE_STYLE('',(");
    ASSERT_NE(place, std::string::npos);
    damaged.replace(place, 23, "SURFACE_SIDE_STYLE($,'(");
    damaged.replace(damaged.find("));", place), 3, ")');");
    for (const std::string& content :
         {damaged, Replaced(good, "COLOUR_RGB('',", "COLOUR_RGB('',1.2.3,"),
          Replaced(good, "FILL_AREA_STYLE_COLOUR('',#", "FILL_AREA_STYLE_COLOUR('',#987654")}) {
        const StepDocument document = Read(content);
        ASSERT_EQ(document.solids.size(), 2U);
        // Which of the two stands first in the file is the modeller's affair.
        const auto &first = document.solids[0].color, &second = document.solids[1].color;
        EXPECT_TRUE((first == Rgb{200, 0, 0} && !second) || (!first && second == Rgb{0, 200, 0}));
        ASSERT_EQ(document.notes.size(), 1U) << NotesOf(document);
        EXPECT_FALSE(document.notes[0].lost);
        ExpectMentions(document.notes[0].text, "style");
    }
}

TEST_F(StepDamage, NullStylesAndOverridesOfAContextAreRead) {
    std::string content = Two();
    const std::size_t place = content.find(" = STYLED_ITEM(");
    const std::size_t start = content.rfind('#', place);
    const std::string item = content.substr(start, place - start);
    content = WithData(content,
                       "#900001=PRESENTATION_STYLE_ASSIGNMENT((NULL_STYLE(.NULL.)));\n"
                       "#900002=CONTEXT_DEPENDENT_OVER_RIDING_STYLED_ITEM('',(#900001),$," +
                           item + ",($));\n#900003=STYLED_ITEM('',(#900001),$);\n");
    const StepDocument document = Read(content);
    ASSERT_EQ(document.solids.size(), 2U);
    EXPECT_EQ(document.solids[0].color, (Rgb{200, 0, 0}));
    EXPECT_EQ(document.solids[1].color, (Rgb{0, 200, 0}));
    for (const StepNote& note : document.notes) EXPECT_FALSE(note.lost) << note.text;
}

TEST_F(StepDamage, ASurfaceModelIsToldWithWhatItHolds) {
    std::string content = Two();
    const std::size_t place = content.rfind("MANIFOLD_SOLID_BREP('',#");
    ASSERT_NE(place, std::string::npos);
    content.insert(content.find(')', place), ")");
    content.replace(place, 23, "SHELL_BASED_SURFACE_MODEL('',(");
    const std::size_t shell = content.rfind("CLOSED_SHELL('',(");
    content.erase(shell + 17, content.find(',', shell + 17) + 1 - shell - 17);
    content.replace(shell, 6, "OPEN");
    const StepDocument document = Read(content);
    ASSERT_EQ(document.solids.size(), 1U);
    EXPECT_EQ(
        NotesOf(document),
        "0: part \"Shelf\" without a solid (a surface model, 1 open shell of 5 faces) is passed over\n");
}

TEST_F(StepDamage, ASolidThatIsntGivenByItsFacesIsLeftOutAndTold) {
    const std::string plane =
        "#900005=AXIS2_PLACEMENT_3D('',#900006,$,$);\n#900006=CARTESIAN_POINT('',(0.,0.,0.));\n"
        "#900007=PLANE('',#900005);\n#900008=DIRECTION('',(0.,0.,1.));\n#900009=AXIS1_PLACEMENT('',#900006,$)"
        ";\n"
        "#900010=BLOCK('',#900005,10.,10.,10.);\n#900011=SPHERE('',5.,#900006);\n";
    for (const auto& [kind, statements] : std::vector<std::pair<std::string, std::string>>{
             {"EXTRUDED_AREA_SOLID",
              "EXTRUDED_AREA_SOLID('',#900002,#900008,5.);\n"
              "#900002=CURVE_BOUNDED_SURFACE('',#900007,(),.T.)"},
             {"REVOLVED_AREA_SOLID",
              "REVOLVED_AREA_SOLID('',#900002,#900009,1.);\n"
              "#900002=CURVE_BOUNDED_SURFACE('',#900007,(),.T.)"},
             {"CSG_SOLID", "CSG_SOLID('',#900002);\n#900002=BOOLEAN_RESULT('',.UNION.,#900010,#900011)"},
             {"BOOLEAN_RESULT", "BOOLEAN_RESULT('',.UNION.,#900010,#900011)"},
             {"HALF_SPACE_SOLID", "HALF_SPACE_SOLID('',#900007,.T.)"},
             {"BLOCK", "BLOCK('',#900005,10.,10.,10.)"}}) {
        const std::string content = WithData(Replaced(Good(), "ADVANCED_BREP_SHAPE_REPRESENTATION('',(",
                                                      "ADVANCED_BREP_SHAPE_REPRESENTATION('',(#900001,"),
                                             plane + "#900001=" + statements + ";\n");
        const StepDocument document = Read(content);
        EXPECT_EQ(document.solids.size(), 1U) << kind;
        const std::string notes = NotesOf(document);
        ExpectMentions(notes, LineAt(content, content.find("#900001=")) + ": ");
        ExpectMentions(notes, "expected a solid given by its faces (MANIFOLD_SOLID_BREP), found " + kind);
        EXPECT_EQ(notes.find("nothing lost"), std::string::npos) << notes;
    }
}

TEST_F(StepDamage, AnEmptyListOfAShapeTakesItsPartAndNoOther) {
    const std::string good = Two();
    for (const std::string kind : {"EDGE_LOOP('',(", "DIRECTION('',(", "CLOSED_SHELL('',("}) {
        std::string content = good;
        // Of the second part: the last loop and shell, and a direction behind the first one's shell.
        const std::size_t from = content.find("CLOSED_SHELL('',(", content.find("CLOSED_SHELL('',(") + 1);
        const std::size_t place = content.find(kind, from);
        ASSERT_NE(place, std::string::npos) << kind;
        const std::size_t list = place + kind.size();
        content.erase(list, content.find(')', list) - list);
        const StepDocument document = Read(content);
        ASSERT_EQ(document.solids.size(), 1U) << kind;
        ExpectMentions(NotesOf(document), LineAt(content, place) + ": part ");
        ExpectMentions(NotesOf(document),
                       "expected an entry in each list of " + kind.substr(0, kind.find('(')));
    }
}

TEST_F(StepDamage, WhatTheModellerWouldFallOverBesideTheShapesRefusesNothing) {
    const std::string good = Good();
    for (const std::string paper :
         {"INVISIBILITY(())", "CC_DESIGN_APPROVAL(#1,())", "DERIVED_UNIT(())", "REP_ITEM_GROUP('',$,$)",
          "EXTERNALLY_DEFINED_GENERAL_PROPERTY('',$,$,$,$)", "COMMON_DATUM('',$,$,$,$,$,$,$,$)",
          "DATUM_REFERENCE_COMPARTMENT($,$,$,$,$,('a'))", "GENERAL_DATUM_REFERENCE($,$,$,$,$,((#1)))",
          "PRESENTATION_STYLE_BY_CONTEXT(('a'),$)", "FEA_MODEL($,$,$,$,(1.),$,$)",
          "RIGID_LINK_REPRESENTATION('',(),#1,#1)", "CAMERA_MODEL_D3_MULTI_CLIPPING_UNION('',())"}) {
        const StepDocument document = Read(WithData(good, "#900001=" + paper + ";\n"));
        EXPECT_EQ(document.solids.size(), 1U) << paper;
        for (const StepNote& note : document.notes) EXPECT_FALSE(note.lost) << paper << note.text;
    }
}

TEST_F(StepDamage, AColourThatDoesntExistIsTheOnlyThingLost) {
    const std::string good = Two();
    const std::size_t place = good.find("COLOUR_RGB(");
    ASSERT_NE(place, std::string::npos);
    for (const std::string colour :
         {"COLOUR_RGB('',-1.,0.,0.)", "COLOUR_RGB('',0.,2.,0.)", "COLOUR_RGB('',0.,0.)",
          "COLOUR_RGB('',0.,'x',0.)", "DRAUGHTING_PRE_DEFINED_COLOUR('mauve')",
          "DRAUGHTING_PRE_DEFINED_COLOUR('GREEN')"}) {
        std::string content = good;
        content.replace(place, content.find(';', place) - place, colour);
        const StepDocument document = Read(content);
        ASSERT_EQ(document.solids.size(), 2U) << colour;
        EXPECT_NE(document.solids[0].color.has_value(), document.solids[1].color.has_value()) << colour;
        const std::string notes = NotesOf(document);
        ExpectMentions(notes, LineAt(content, place) + ", nothing lost: 1 faulty style(s) or layer(s)");
    }
}

TEST_F(StepDamage, AShapeThatIsSetIntoAnotherByAScaleIsLostAndTold) {
    const std::string good = Good();
    const std::size_t items = good.find("ADVANCED_BREP_SHAPE_REPRESENTATION('',(") + 39;
    ASSERT_GT(items, 39U);
    const std::string origin = good.substr(items, good.find_first_of(",)", items) - items);
    for (const std::string scale : {"2.", "0.", "-1."}) {
        for (const std::string& statement :
             {"CARTESIAN_TRANSFORMATION_OPERATOR_3D('','','',$,$," + origin + "," + scale + ",$)",
              "(CARTESIAN_TRANSFORMATION_OPERATOR($,$," + origin + "," + scale +
                  ")CARTESIAN_TRANSFORMATION_OPERATOR_3D($)GEOMETRIC_REPRESENTATION_ITEM()" +
                  "REPRESENTATION_ITEM(''))"}) {
            const StepDocument document = Read(WithData(good, "#900001=" + statement + ";\n"));
            ExpectMentions(NotesOf(document), "found the scale " + scale);
        }
    }
    const std::string plain = "CARTESIAN_TRANSFORMATION_OPERATOR_3D('','','',$,$," + origin + ",1.,$)";
    EXPECT_EQ(NotesOf(Read(WithData(good, "#900001=" + plain + ";\n"))).find("scale"), std::string::npos);
}

TEST_F(StepDamage, WhatStandsBehindTheEndIsTold) {
    const std::string good = Good();
    EXPECT_EQ(NotesOf(Read(good + " \r\n\n")), "");
    const std::string last = LineAt(good, good.size());
    EXPECT_EQ(NotesOf(Read(good + "SIGNATURE;\n")),
              last + ", nothing lost: text behind the end of the file (END-ISO-10303-21) passed over\n");
    const StepDocument twoFiles = Read(good + good);
    EXPECT_EQ(twoFiles.solids.size(), 1U);
    EXPECT_EQ(NotesOf(twoFiles),
              last + ": statements behind the end of the file (END-ISO-10303-21) passed over\n");
}

TEST_F(StepDamage, AByteOrderMarkIsNoPartOfTheFile) {
    const StepDocument document = Read("\xEF\xBB\xBF" + Good());
    EXPECT_EQ(document.solids.size(), 1U);
    EXPECT_EQ(NotesOf(document), "");
}

TEST_F(StepDamage, NamesInShiftJisAreTakenAndTold) {
    const StepDocument document = Read(Replaced(Good(), "'Board','Board'", "'','\x91\xA4\x94\xC2 1'"));
    EXPECT_EQ(document.solids.at(0).name, "\xE5\x81\xB4\xE6\x9D\xBF 1");
    EXPECT_EQ(NotesOf(document), "0, nothing lost: names read as code page 932 (Shift-JIS)\n");
}

TEST_F(StepDamage, HalfOfACharacterInANameIsTold) {
    const StepDocument document = Read(Replaced(Good(), "'Board','Board'", "'','Board\\X2\\D83D\\X0\\'"));
    EXPECT_EQ(document.solids.at(0).name, "Board\xEF\xBF\xBD");
    ExpectMentions(NotesOf(document), "0: 1 text(s) hold characters that don't exist");
}

TEST_F(StepDamage, AUsageThatContradictsItsShapesIsTold) {
    WriteNested(mPath, "");
    const std::string good = Content();
    EXPECT_EQ(NotesOf(ReadStep(mPath)), "");
    std::string content = good;
    const std::size_t usage = content.find("NEXT_ASSEMBLY_USAGE_OCCURRENCE(");
    const std::size_t end = content.find(",$)", usage);
    const std::size_t component = content.rfind('#', end);
    const std::size_t assembly = content.rfind('#', component - 1);
    const std::string first = content.substr(assembly, component - assembly - 1);
    const std::string second = content.substr(component, end - component);
    content.replace(assembly, end - assembly, second + "," + first);
    Put(content);
    try {
        ExpectMentions(NotesOf(ReadStep(mPath)), "has as its component what the shapes' relationship #");
    } catch (const Failure& failure) {
        ExpectMentions(failure.what(), mPath.filename().string());
    }
}

TEST_F(StepDamage, AUsageOfOtherProductsThanItsShapesIsTold) {
    WriteNested(mPath, "");
    std::string content = Content();
    const std::size_t usage = content.find("NEXT_ASSEMBLY_USAGE_OCCURRENCE(");
    const std::size_t end = content.find(",$)", usage);
    const std::size_t component = content.rfind('#', end);
    const std::size_t assembly = content.rfind('#', component - 1);
    const std::size_t next = content.find("NEXT_ASSEMBLY_USAGE_OCCURRENCE(", end);
    ASSERT_NE(next, std::string::npos);
    const std::size_t otherEnd = content.find(",$)", next), other = content.rfind('#', otherEnd);
    const std::string own = content.substr(component, end - component);
    const std::string foreign = content.substr(other, otherEnd - other);
    ASSERT_NE(own, foreign);
    ASSERT_LT(assembly, component);
    content.replace(component, end - component, foreign);
    Put(content);
    ExpectMentions(NotesOf(ReadStep(mPath)), "is of other products than the shapes' relationship #");
}

}  // namespace
}  // namespace brenvik::step
