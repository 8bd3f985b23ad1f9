// Products in assemblies: each usage is a part, or is told.
#include <gtest/gtest.h>

#include "drafting_host/solids/exact_box.h"
#include "step/nested_assembly.h"
#include "step/step_input.h"

namespace brenvik::step {
namespace {

class StepUsages : public StepInput {
  protected:
    /// The board as of another program: names of files written here are taken to the letter, none included.
    std::string Another() const {
        std::string content = Root();
        for (std::size_t at = content.find("'Brenvik "); at != std::string::npos;
             at = content.find("'Brenvik "))
            content.replace(at, 9, "'Another ");
        return content;
    }

    std::string Nested() const {
        WriteNested(mPath, "");
        return Content();
    }

    /// The number ("#5") of the statement around a place, and the references in it.
    static std::string NumberAt(const std::string& content, std::size_t place) {
        const std::size_t at = content.rfind("\n#", place) + 1;
        return content.substr(at, content.find(' ', at) - at);
    }
    static std::vector<std::string> ReferencesAt(const std::string& content, std::size_t place) {
        std::vector<std::string> numbers;
        const std::size_t end = content.find(';', place);
        for (std::size_t at = content.find('#', place); at < end; at = content.find('#', at + 1))
            numbers.push_back(content.substr(at, content.find_first_not_of("0123456789", at + 1) - at));
        return numbers;
    }

    /// Takes the statement around a place out.
    static void Remove(std::string& content, std::size_t place) {
        const std::size_t start = content.rfind("\n#", place) + 1;
        content.erase(start, content.find(';', start) + 1 - start);
    }
};

TEST_F(StepUsages, APlaceOfOneUseAloneIsToldWhereItIsNotThatOfTheUsages) {
    const std::string nested = Nested();
    const auto usageAt = [&](const std::string& name) { return nested.find(",'" + name + "','',#"); };
    const std::size_t upper = usageAt("Carcass 1"), next = usageAt("Right");
    ASSERT_NE(upper, std::string::npos);
    ASSERT_NE(next, std::string::npos);
    const std::string job = ReferencesAt(nested, nested.rfind('(', upper)).at(0);
    const std::string side = ReferencesAt(nested, nested.rfind('(', next)).at(1);
    const std::size_t brep = nested.find("ADVANCED_BREP_SHAPE_REPRESENTATION(");
    const std::string axes = ReferencesAt(nested, brep).at(0), context = ReferencesAt(nested, brep).back();
    const auto notesAt = [&](const std::string& at, bool isPlaced) {
        std::string more = "#900001=SPECIFIED_HIGHER_USAGE_OCCURRENCE('','',''," + job + "," + side + ",$," +
                           NumberAt(nested, upper) + "," + NumberAt(nested, next) +
                           ");\n#900002=PRODUCT_DEFINITION_SHAPE('','',#900001);\n";
        if (isPlaced)
            more += "#900003=CARTESIAN_POINT('',(" + at +
                    "));\n#900004=AXIS2_PLACEMENT_3D('',#900003,$,$);\n"
                    "#900005=SHAPE_REPRESENTATION('',(#900004)," +
                    context + ");\n#900006=ITEM_DEFINED_TRANSFORMATION('',''," + axes +
                    ",#900004);\n#900007=(REPRESENTATION_RELATIONSHIP('',''," + NumberAt(nested, brep) +
                    ",#900005)REPRESENTATION_RELATIONSHIP_WITH_TRANSFORMATION(#900006)"
                    "SHAPE_REPRESENTATION_RELATIONSHIP());\n"
                    "#900008=CONTEXT_DEPENDENT_SHAPE_REPRESENTATION(#900007,#900002);\n";
        const StepDocument document = Read(WithData(nested, more));
        EXPECT_EQ(document.solids.size(), 4U);
        return NotesOf(document);
    };
    const std::string told = "the assembly usage #900001 has a place of its own";
    EXPECT_EQ(notesAt("", false).find(told), std::string::npos);
    EXPECT_EQ(notesAt("582.25,0.,0.", true).find(told), std::string::npos);
    const std::string line = LineAt(nested, nested.rfind("ENDSEC;"));
    ExpectMentions(notesAt("582.25,0.,900.", true),
                   line + ": " + told +
                       " (SPECIFIED_HIGHER_USAGE_OCCURRENCE), which isn't read: its part may lie in another "
                       "place\n");
}

TEST_F(StepUsages, AMisspeltUsageIsALoss) {
    const std::string nested = Nested();
    const std::string usage = NumberOf(nested, "PRODUCT_DEFINITION");
    const std::string content = WithData(
        nested, "#900001=NET_ASSEMBLY_USAGE_OCCURRENCE('9','','Third'," + usage + "," + usage + ",$);\n");
    ExpectMentions(
        NotesOf(Read(content)),
        LineAt(content, content.find("#900001")) +
            ": 1 statement(s) of a kind that the format doesn't have, NET_ASSEMBLY_USAGE_OCCURRENCE, are "
            "passed over: NEXT_ASSEMBLY_USAGE_OCCURRENCE may be meant\n");
}

TEST_F(StepUsages, AShapeThatARelationshipSetsIntoTheProductsOwnIsThePartAtThatPlace) {
    const std::string root = Another();
    const std::vector<std::string> items = ReferencesOf(root, "ADVANCED_BREP_SHAPE_REPRESENTATION");
    ASSERT_EQ(items.size(), 3U);
    const std::string shape = NumberOf(root, "ADVANCED_BREP_SHAPE_REPRESENTATION");
    const std::size_t tie = root.find(" = SHAPE_DEFINITION_REPRESENTATION(");
    for (const std::string& ends : {shape + ",#900003", "#900003," + shape}) {
        std::string content = root;
        content.replace(root.find("," + shape + ")", tie), shape.size() + 1, ",#900003");
        const StepDocument document =
            Read(WithData(content,
                          "#900001=CARTESIAN_POINT('',(1000.,0.,0.));\n"
                          "#900002=AXIS2_PLACEMENT_3D('',#900001,$,$);\n"
                          "#900003=SHAPE_REPRESENTATION('',(#900002)," +
                              items[2] + ");\n#900004=ITEM_DEFINED_TRANSFORMATION('',''," + items[0] +
                              ",#900002);\n#900005=(REPRESENTATION_RELATIONSHIP('',''," + ends +
                              ")REPRESENTATION_RELATIONSHIP_WITH_TRANSFORMATION(#900004)"
                              "SHAPE_REPRESENTATION_RELATIONSHIP());\n"));
        ASSERT_EQ(document.solids.size(), 1U) << ends;
        EXPECT_EQ(document.solids[0].name, "Board");
        EXPECT_DOUBLE_EQ(solids::ExactBox(document.solids[0].shape).min.X(), 1000);
        EXPECT_EQ(NotesOf(document), "");
    }
}

/// A relation that sets the first of two shapes into the second.
std::string Relation(const std::string& number, const std::string& ends, const std::string& transformation) {
    return number + "=(REPRESENTATION_RELATIONSHIP('',''," + ends +
           ")REPRESENTATION_RELATIONSHIP_WITH_TRANSFORMATION(" + transformation +
           ")SHAPE_REPRESENTATION_RELATIONSHIP());\n";
}

TEST_F(StepUsages, AShapeThatAnOperatorSetsIntoTheProductsOwnIsThePartAtThatPlace) {
    std::string content = Another();
    const std::vector<std::string> items = ReferencesOf(content, "ADVANCED_BREP_SHAPE_REPRESENTATION");
    const std::string shape = NumberOf(content, "ADVANCED_BREP_SHAPE_REPRESENTATION");
    const std::size_t tie = content.find(" = SHAPE_DEFINITION_REPRESENTATION(");
    content.replace(content.find("," + shape + ")", tie), shape.size() + 1, ",#900001");
    const auto with = [&](const std::string& x, const std::string& ends) {
        return WithData(content, "#900001=SHAPE_REPRESENTATION('',(" + items[0] + ")," + items[2] +
                                     ");\n#900002=CARTESIAN_POINT('',(1000.,0.,0.));\n"
                                     "#900003=CARTESIAN_TRANSFORMATION_OPERATOR_3D('','','',#900004,#900005,"
                                     "#900002,1.,#900006);\n#900004=DIRECTION('',(" +
                                     x +
                                     ",0.,0.));\n#900005=DIRECTION('',(0.,1.,0.));\n"
                                     "#900006=DIRECTION('',(0.,0.,1.));\n" +
                                     Relation("#900007", ends, "#900003"));
    };
    for (const auto& [x, expected] : {std::pair("1.", 1000.), std::pair("-1.", 400.)}) {
        const StepDocument document = Read(with(x, shape + ",#900001"));
        ASSERT_EQ(document.solids.size(), 1U) << x;
        EXPECT_EQ(document.solids[0].name, "Board");
        EXPECT_DOUBLE_EQ(solids::ExactBox(document.solids[0].shape).min.X(), expected);
        EXPECT_EQ(NotesOf(document), "");
    }
    // Set the other way round, its place is open: then the solid is left out, and the refusal says so.
    Put(with("1.", "#900001," + shape));
    ExpectMentions(FailureText(), "expected at least one solid, the solid " + items[1] +
                                      " is left out: no part leads to it");
}

TEST_F(StepUsages, AShapeBehindAnotherOneWithPlacesOfTheirOwnIsThePartAtTheirSum) {
    std::string content = Another();
    const std::vector<std::string> items = ReferencesOf(content, "ADVANCED_BREP_SHAPE_REPRESENTATION");
    const std::string shape = NumberOf(content, "ADVANCED_BREP_SHAPE_REPRESENTATION");
    const std::size_t tie = content.find(" = SHAPE_DEFINITION_REPRESENTATION(");
    content.replace(content.find("," + shape + ")", tie), shape.size() + 1, ",#900001");
    const StepDocument document =
        Read(WithData(content, "#900001=SHAPE_REPRESENTATION('',(#900002)," + items[2] +
                                   ");\n#900002=AXIS2_PLACEMENT_3D('',#900003,$,$);\n"
                                   "#900003=CARTESIAN_POINT('',(0.,200.,0.));\n"
                                   "#900004=SHAPE_REPRESENTATION('',(#900005," +
                                   items[0] + ")," + items[2] +
                                   ");\n#900005=AXIS2_PLACEMENT_3D('',#900006,$,$);\n"
                                   "#900006=CARTESIAN_POINT('',(100.,0.,0.));\n" +
                                   "#900007=ITEM_DEFINED_TRANSFORMATION('',''," + items[0] + ",#900005);\n" +
                                   "#900008=ITEM_DEFINED_TRANSFORMATION('',''," + items[0] + ",#900002);\n" +
                                   Relation("#900009", shape + ",#900004", "#900007") +
                                   Relation("#900010", "#900004,#900001", "#900008")));
    ASSERT_EQ(document.solids.size(), 1U);
    EXPECT_EQ(document.solids[0].name, "Board");
    const auto box = solids::ExactBox(document.solids[0].shape);
    EXPECT_DOUBLE_EQ(box.min.X(), 100);
    EXPECT_DOUBLE_EQ(box.min.Y(), 200);
    EXPECT_EQ(NotesOf(document), "");
}

TEST_F(StepUsages, AUsageWithoutAPlaceIsToldWhereItsPartIsUsedElsewhereToo) {
    std::string content = Nested();
    // The right side stands in the job itself, without a place.
    const std::string job = ReferencesAt(content, content.find("'Carcass 1'")).at(0);
    const std::size_t assembly = content.find('#', content.find("'Right'"));
    content.replace(assembly, content.find(',', assembly) - assembly, job);
    Remove(content, content.rfind("CONTEXT_DEPENDENT_SHAPE_REPRESENTATION(", content.find("'Right'")));
    const std::size_t usage = content.find("'Right'");
    const StepDocument document = Read(content);
    EXPECT_EQ(document.solids.size(), 2U);
    ExpectMentions(NotesOf(document), LineAt(content, content.rfind("\n#", usage) + 1) +
                                          ": one more part \"Side\" is left out: its assembly usage " +
                                          NumberAt(content, usage) + " has no place\n");
}

TEST_F(StepUsages, AProductWhoseShapeStandsInItsPlacesAloneIsAPartOfItsName) {
    std::string content = Nested();
    const std::size_t brep = content.find("ADVANCED_BREP_SHAPE_REPRESENTATION(");
    const std::string shape = NumberAt(content, brep);
    const std::size_t own = content.find("," + shape + ");");
    ASSERT_LT(content.rfind("SHAPE_DEFINITION_REPRESENTATION(", own), own);
    Remove(content, own);
    const StepDocument document = Read(content);
    ASSERT_EQ(document.solids.size(), 4U);
    for (const StepSolid& side : document.solids) {
        EXPECT_EQ(side.name, "Side");
        EXPECT_EQ(side.assembly, "Carcass");
    }
    ExpectMentions(NotesOf(document), ", nothing lost: 1 product(s) have the shape alone");
}

TEST_F(StepUsages, AShapeWhosePlaceLeavesItsTurnOpenIsLeftOutAndTold) {
    const std::string good = Good();
    const std::size_t brep = good.find("ADVANCED_BREP_SHAPE_REPRESENTATION(");
    const std::string shape = NumberAt(good, brep), context = ReferencesAt(good, brep).back();
    const std::string origin = ReferencesAt(good, brep).at(0);
    const std::string point = ReferencesAt(good, good.find(origin + " = ")).at(1);
    const auto withPlace = [&](const std::string& axes) {
        const std::string mapped = "#900001=SHAPE_REPRESENTATION('',(#900002)," + context +
                                   ");\n#900002=MAPPED_ITEM('',#900003,#900004);\n"
                                   "#900003=REPRESENTATION_MAP(" +
                                   origin + "," + shape +
                                   ");\n#900010=PRODUCT('','Mirrored','',());\n"
                                   "#900011=PRODUCT_DEFINITION_FORMATION('','',#900010);\n"
                                   "#900012=PRODUCT_DEFINITION('','',#900011,$);\n"
                                   "#900013=PRODUCT_DEFINITION_SHAPE('','',#900012);\n"
                                   "#900014=SHAPE_DEFINITION_REPRESENTATION(#900013,#900001);\n"
                                   "#900020=DIRECTION('',(1.,0.,0.));\n#900021=DIRECTION('',(-1.,0.,0.));\n"
                                   "#900022=DIRECTION('',(0.,1.,0.));\n#900023=DIRECTION('',(0.,0.,1.));\n"
                                   "#900024=DIRECTION('',(0.,0.,-1.));\n";
        const std::size_t third = axes.find(';');
        return WithData(good, mapped + "#900004=CARTESIAN_TRANSFORMATION_OPERATOR_3D('','',''," +
                                  axes.substr(0, third) + "," + point + ",1.," + axes.substr(third + 1) +
                                  ");\n");
    };
    for (const std::string axes : {"#900020,#900022;#900023", "$,$;$", "#900022,#900021;$", "$,$;#900023"}) {
        const StepDocument document = Read(withPlace(axes));
        EXPECT_EQ(document.solids.size(), 2U) << axes;
        EXPECT_EQ(NotesOf(document).find("mirror"), std::string::npos) << axes;
    }
    for (const std::string axes : {"$,$;#900020", "#900023,$;$"}) {
        const std::string content = withPlace(axes);
        ExpectMentions(NotesOf(Read(content)), LineAt(content, content.find("#900004=")) +
                                                   ": part \"Mirrored\" (#900002) is left out: expected a "
                                                   "place whose three axes stand across each other");
    }
}

TEST_F(StepUsages, AssembliesThatMultiplyBeyondAllMeasureAreRefusedWithTheirCount) {
    std::string content = Nested();
    const std::size_t usage = content.find("NEXT_ASSEMBLY_USAGE_OCCURRENCE(", content.find("'Carcass 1'"));
    const std::string side = ReferencesAt(content, usage).at(1);
    const std::size_t brep = content.find("ADVANCED_BREP_SHAPE_REPRESENTATION(");
    const std::string axes = ReferencesAt(content, brep).at(0), context = ReferencesAt(content, brep).back();
    std::string component = side, shape = NumberAt(content, brep), statements;
    int number = 900000;
    const auto add = [&](const std::string& values) {
        statements += "#" + std::to_string(++number) + "=" + values + ";\n";
        return "#" + std::to_string(number);
    };
    for (int level = 1; level <= 30; ++level) {
        const std::string name = "'Level " + std::to_string(level) + "'";
        const std::string product = add("PRODUCT(" + name + "," + name + ",'',())");
        const std::string formation = add("PRODUCT_DEFINITION_FORMATION('',''," + product + ")");
        const std::string assembly = add("PRODUCT_DEFINITION('',''," + formation + ",$)");
        const std::string own = add("SHAPE_REPRESENTATION('',(" + axes + ")," + context + ")");
        add("SHAPE_DEFINITION_REPRESENTATION(" + add("PRODUCT_DEFINITION_SHAPE('',''," + assembly + ")") +
            "," + own + ")");
        for (const char* const which : {"'1'", "'2'"}) {
            const std::string one = add("NEXT_ASSEMBLY_USAGE_OCCURRENCE(" + std::string(which) + ",'',''," +
                                        assembly + "," + component + ",$)");
            const std::string place = add("ITEM_DEFINED_TRANSFORMATION('',''," + axes + "," + axes + ")");
            const std::string relation = add("(REPRESENTATION_RELATIONSHIP('',''," + shape + "," + own +
                                             ")REPRESENTATION_RELATIONSHIP_WITH_TRANSFORMATION(" + place +
                                             ")SHAPE_REPRESENTATION_RELATIONSHIP())");
            add("CONTEXT_DEPENDENT_SHAPE_REPRESENTATION(" + relation + "," +
                add("PRODUCT_DEFINITION_SHAPE('',''," + one + ")") + ")");
        }
        component = assembly;
        shape = own;
    }
    content = WithData(content, statements);
    Put(content);
    const std::string text = FailureText();
    // And the job with its four sides.
    ExpectMentions(text, "at most 100000 parts, found 1073741828 in the assembly \"Level 30\"");
    ExpectMentions(text, "line " + LineAt(content, content.find(component + "=")));
}

TEST_F(StepUsages, AProductWithoutADefinitionIsTold) {
    std::string content = WithData(Good(), "#900001=PRODUCT('2','Shelf','',());\n");
    ExpectMentions(NotesOf(Read(content)),
                   LineAt(content, content.find("#900001=")) +
                       ": the product \"Shelf\" (#900001) has no definition: a part may bear another one's");
}

TEST_F(StepUsages, AProductWhoseVersionHasNoDefinitionIsToldUnlessItIsADocument) {
    const std::string loose =
        "#900001=PRODUCT('2','Shelf','',());\n"
        "#900002=PRODUCT_DEFINITION_FORMATION('','',#900001);\n";
    ExpectMentions(NotesOf(Read(WithData(Good(), loose))),
                   ": the product \"Shelf\" (#900002) has no definition: a part may bear another one's");
    const std::string document =
        "#900001=PRODUCT('2','Shelf','',());\n"
        "#900003=PRODUCT_RELATED_PRODUCT_CATEGORY('document',$,(#900001));\n";
    EXPECT_EQ(NotesOf(Read(WithData(Good(), document))), "");
}

TEST_F(StepUsages, AVersionThatSupersedesAnotherOneIsNoProductWithoutADefinition) {
    const std::string good = Good();
    const std::string version = NumberOf(good, "PRODUCT_DEFINITION_FORMATION");
    const std::string relation =
        "#900001=PRODUCT_DEFINITION_FORMATION_RELATIONSHIP('','supersedes',''," + version + ",";
    EXPECT_EQ(NotesOf(Read(WithData(good, relation + version + ");\n"))), "");
    const std::string loose = WithData(good, relation + "#900002);\n#900002=PRODUCT_DEFINITION_FORMATION(" +
                                                 "'2',''," + NumberOf(good, "PRODUCT") + ");\n");
    const std::string notes = NotesOf(Read(loose));
    ExpectMentions(notes, LineAt(loose, loose.find("\n#900002=") + 1) + ": the product \"");
    EXPECT_EQ(notes.find("#900001"), std::string::npos) << notes;
}

TEST_F(StepUsages, AMappedShapeThatAnotherKindOfModelHoldsIsNotTold) {
    const std::string good = Good();
    const std::size_t brep = good.find("ADVANCED_BREP_SHAPE_REPRESENTATION(");
    const std::string origin = ReferencesAt(good, brep).at(0), context = ReferencesAt(good, brep).back();
    const std::string content = WithData(
        good, "#900002=MAPPED_ITEM('',#900003," + origin + ");\n#900003=REPRESENTATION_MAP(" + origin + "," +
                  NumberAt(good, brep) + ");\n#900004=DRAUGHTING_MODEL('',(#900002)," + context + ");\n");
    EXPECT_EQ(NotesOf(Read(content)), "");
}

TEST_F(StepUsages, AMappedShapeThatNoShapeHoldsIsTold) {
    const std::string good = Good();
    const std::size_t brep = good.find("ADVANCED_BREP_SHAPE_REPRESENTATION(");
    const std::string origin = ReferencesAt(good, brep).at(0);
    const std::string content =
        WithData(good, "#900002=MAPPED_ITEM('',#900003," + origin + ");\n#900003=REPRESENTATION_MAP(" +
                           origin + "," + NumberAt(good, brep) + ");\n");
    ExpectMentions(NotesOf(Read(content)), LineAt(content, content.find("#900002=")) +
                                               ": the mapped shape #900002 is left out: no shape holds it");
}

TEST_F(StepUsages, AUsageIsToldToWhoseRelationshipNothingTiesIt) {
    std::string content = Nested();
    const std::string mark = "CONTEXT_DEPENDENT_SHAPE_REPRESENTATION(";
    content.replace(content.rfind(mark, content.find("'Right'")), mark.size(), "SOMETHING_UNKNOWN(");
    const StepDocument document = Read(content);
    EXPECT_EQ(document.solids.size(), 2U);
    ExpectMentions(NotesOf(document), ": one more part \"Side\" is left out");
}

TEST_F(StepUsages, AProductWithoutAnyShapeIsTold) {
    const std::string content = WithData(Good(),
                                         "#900001=PRODUCT('2','Shelf','',());\n"
                                         "#900002=PRODUCT_DEFINITION_FORMATION('','',#900001);\n"
                                         "#900003=PRODUCT_DEFINITION('','',#900002,$);\n"
                                         "#900004=PRODUCT_DEFINITION_SHAPE('','',#900003);\n");
    ExpectMentions(NotesOf(Read(content)),
                   LineAt(content, content.find("#900004=")) +
                       ": the product \"Shelf\" (#900003) has no shape: a part may be");
}

TEST_F(StepUsages, AProductIsToldThatNothingGivesAShape) {
    const std::string product =
        "#900001=PRODUCT('2','Shelf','',());\n#900002=PRODUCT_DEFINITION_FORMATION('','',#900001);\n"
        "#900003=PRODUCT_DEFINITION('','',#900002,#900004);\n";
    std::string content =
        WithData(Good(), product + "#900004=PRODUCT_DEFINITION_CONTEXT('part definition',$,'design');\n");
    EXPECT_EQ(NotesOf(Read(content)), LineAt(content, content.find("#900003=")) +
                                          ": the product \"Shelf\" (#900003) has no shape: a part may be "
                                          "missing\n");
    // Nor is a document told, which is none.
    content = WithData(Good(),
                       product + "#900004=PRODUCT_DEFINITION_CONTEXT('digital document definition',$,'');\n");
    EXPECT_EQ(NotesOf(Read(content)), "");
}

TEST_F(StepUsages, AShapeOfTrianglesLeavesTheOtherParts) {
    const std::string mesh =
        "#900005=TESSELLATED_SHAPE_REPRESENTATION('',(#900006),%C);\n"
        "#900006=TESSELLATED_SOLID('',(#900007),$);\n"
        "#900007=TRIANGULATED_FACE('',#900008,0,(),$,(),((1,2,3)));\n"
        "#900008=COORDINATES_LIST('',3,((0.,0.,0.),(9.,0.,0.),(0.,9.,0.)));\n";
    const std::string good = Good();
    const auto with = [&](std::string statements) {
        const std::string context =
            ReferencesAt(good, good.find("ADVANCED_BREP_SHAPE_REPRESENTATION(")).back();
        statements.replace(statements.find("%C"), 2, context);
        return WithData(good, statements);
    };
    std::string content = with(mesh +
                               "#900001=PRODUCT('2','Shelf','',());\n"
                               "#900002=PRODUCT_DEFINITION_FORMATION('','',#900001);\n"
                               "#900003=PRODUCT_DEFINITION('','',#900002,$);\n"
                               "#900004=PRODUCT_DEFINITION_SHAPE('','',#900003);\n"
                               "#900009=SHAPE_DEFINITION_REPRESENTATION(#900004,#900005);\n");
    StepDocument document = Read(content);
    EXPECT_EQ(document.solids.size(), 1U);
    EXPECT_EQ(NotesOf(document),
              LineAt(content, content.find("#900009=")) +
                  ": part \"Shelf\" (#900003) is left out: its shape is made of triangles\n");
    // Beside the solid of the same part they are another picture of it.
    const std::string own = NumberAt(good, good.rfind("PRODUCT_DEFINITION_SHAPE(", good.find("'Board'")));
    document = Read(with(mesh + "#900009=SHAPE_DEFINITION_REPRESENTATION(" + own + ",#900005);\n"));
    EXPECT_EQ(document.solids.size(), 1U);
    EXPECT_EQ(NotesOf(document),
              "0, nothing lost: shapes made of triangles are passed over beside the solids of 1 part(s), the "
              "first one \"Board\"\n");
}

}  // namespace
}  // namespace brenvik::step
