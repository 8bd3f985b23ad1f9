// What a STEP file says twice, and what stands among the items of a shape without being a part of it.
#include <gtest/gtest.h>

#include "drafting_host/solids/exact_box.h"
#include "step/nested_assembly.h"
#include "step/step_input.h"

namespace brenvik::step {
namespace {

constexpr double Close = 1e-9;
const std::string Brep = "ADVANCED_BREP_SHAPE_REPRESENTATION";

class StepDoubles : public StepInput {
  protected:
    std::string Nested() const {
        WriteNested(mPath, "");
        return Content();
    }

    static std::string Placement(int number, double x) {
        const auto shown = [&](int more) { return "#" + std::to_string(number + more); };
        return shown(0) + "=AXIS2_PLACEMENT_3D(''," + shown(1) + ",$,$);\n" + shown(1) +
               "=CARTESIAN_POINT('',(" + std::to_string(x) + ",0.,0.));\n";
    }

    /// With a product "Other" that has a definition of its shape, #900004.
    static std::string WithOther(const std::string& content, const std::string& statements) {
        return WithData(content, "#900001=PRODUCT('Other','Other','',(" +
                                     ReferencesOf(content, "PRODUCT").front() +
                                     "));\n#900002=PRODUCT_DEFINITION_FORMATION('','',#900001);\n" +
                                     "#900003=PRODUCT_DEFINITION('design','',#900002," +
                                     ReferencesOf(content, "PRODUCT_DEFINITION").back() +
                                     ");\n#900004=PRODUCT_DEFINITION_SHAPE('','',#900003);\n" + statements);
    }

    /// With the board's shape behind a plain one, #900020, that is said to be the same.
    static std::string WithShapeBehind(std::string content) {
        const auto items = ReferencesOf(content, Brep);
        const std::string shape = NumberOf(content, Brep), own = "," + shape + ");";
        const std::size_t defining = content.find("SHAPE_DEFINITION_REPRESENTATION(");
        content.replace(content.find(own, defining), own.size(), ",#900020);");
        return WithData(content, "#900020=SHAPE_REPRESENTATION('',(" + items[0] + ")," + items.back() +
                                     ");\n#900021=SHAPE_REPRESENTATION_RELATIONSHIP('','',#900020," + shape +
                                     ");\n");
    }

    static void ExpectBoardAndOther(const StepDocument& document) {
        ASSERT_EQ(document.solids.size(), 2U) << NotesOf(document);
        EXPECT_EQ(document.solids[0].name, "Board");
        EXPECT_EQ(document.solids[1].name, "Other");
        for (const StepSolid& part : document.solids)
            EXPECT_NEAR(solids::ExactBox(part.shape).SizeX(), 600, Close);
        ExpectMentions(NotesOf(document), "\"Other\" (#900003): each has a part of it");
    }

    static std::string LineOf(const std::string& content, const std::string& statement) {
        return LineAt(content, content.find("\n" + statement) + 1);
    }

    static void ExpectFrom(const StepSolid& part, double x) {
        EXPECT_NEAR(solids::ExactBox(part.shape).min.X(), x, Close);
    }
};

TEST_F(StepDoubles, ACoordinateSystemBesideASolidPlacesNothing) {
    std::string content = Root();
    content.insert(content.find("),", content.find(" = " + Brep + "(")), ",#900001");
    const StepDocument document = Read(WithData(content, Placement(900001, 1000)));
    EXPECT_EQ(NotesOf(document), "");
    ASSERT_EQ(document.solids.size(), 1U);
    ExpectFrom(document.solids[0], 0);
}

TEST_F(StepDoubles, MappedShapesLieWhereTheyAreMappedThoughTheirTargetsAreItemsToo) {
    std::string content = Root();
    const std::string axes = ReferencesOf(content, Brep).front(), shape = NumberOf(content, Brep);
    const std::string context = ReferencesOf(content, Brep).back();
    content.replace(content.find(shape + " = "), shape.size(), "#900010");
    const StepDocument document = Read(
        WithData(content, shape + "=SHAPE_REPRESENTATION('',(" + axes + ",#900001,#900011,#900003,#900012)," +
                              context + ");\n#900011=MAPPED_ITEM('',#900013,#900001);\n" +
                              "#900012=MAPPED_ITEM('',#900013,#900003);\n#900013=REPRESENTATION_MAP(" + axes +
                              ",#900010);\n" + Placement(900001, 1000) + Placement(900003, 2000)));
    EXPECT_EQ(NotesOf(document), "");
    ASSERT_EQ(document.solids.size(), 2U);
    ExpectFrom(document.solids[0], 1000);
    ExpectFrom(document.solids[1], 2000);
}

TEST_F(StepDoubles, AShapeThatIsAProductsOwnTwiceIsReadOnceWithARemark) {
    std::string content = Nested();
    // The brep is the side's: by the product's own shape, or by one that is the same.
    const std::string brep = NumberOf(content, Brep), before = "," + brep + ");";
    const std::size_t own = content.find(before), start = content.rfind('\n', own) + 1;
    ASSERT_NE(own, std::string::npos);
    const std::string values = content.substr(content.find('(', start), own - content.find('(', start));
    content = WithData(content, "#900001=SHAPE_DEFINITION_REPRESENTATION" + values + before + "\n");
    const StepDocument document = Read(content);
    EXPECT_EQ(document.solids.size(), 4U);
    for (const StepSolid& part : document.solids) EXPECT_EQ(part.name, "Side");
    EXPECT_EQ(NotesOf(document),
              LineOf(content, "#900001") + ", nothing lost: the relation #900001 says again what " +
                  content.substr(start, content.find(' ', start) - start) + " says: it is passed over\n");
}

TEST_F(StepDoubles, TwoShapesThatAreTheSameTwiceAreReadOnceWithARemark) {
    std::string content = Nested();
    const std::string brep = NumberOf(content, Brep), context = ReferencesOf(content, Brep).back();
    const std::string axes = ReferencesOf(content, Brep).front();
    // What was the brep's place in the structure gets a shape of its own.
    content.replace(content.find(brep + " = "), brep.size(), "#900010");
    content = WithData(content, brep + "=SHAPE_REPRESENTATION('',(" + axes + ")," + context +
                                    ");\n#900011=SHAPE_REPRESENTATION_RELATIONSHIP('',''," + brep +
                                    ",#900010);\n#900012=SHAPE_REPRESENTATION_RELATIONSHIP('','',#900010," +
                                    brep + ");\n");
    const StepDocument document = Read(content);
    EXPECT_EQ(document.solids.size(), 4U);
    EXPECT_EQ(NotesOf(document), LineOf(content, "#900012") +
                                     ", nothing lost: the relation #900012 says again what #900011 says: it "
                                     "is passed over\n");
}

TEST_F(StepDoubles, AShapeThatIsTheProductsOwnAndStandsInItAtAPlaceIsTold) {
    std::string content = Root();
    const auto items = ReferencesOf(content, Brep);
    const std::string shape = NumberOf(content, Brep), own = "," + shape + ")";
    content.replace(content.find(own, content.find(" = SHAPE_DEFINITION_REPRESENTATION(")), own.size(),
                    ",#900020)");
    const std::string placed =
        WithData(content, Placement(900001, 1000) + "#900020=SHAPE_REPRESENTATION('',(#900001)," +
                              items.back() + ");\n#900021=ITEM_DEFINED_TRANSFORMATION('',''," + items[0] +
                              ",#900001);\n#900022=(REPRESENTATION_RELATIONSHIP('',''," + shape +
                              ",#900020)REPRESENTATION_RELATIONSHIP_WITH_TRANSFORMATION(#900021)"
                              "SHAPE_REPRESENTATION_RELATIONSHIP());\n");
    EXPECT_EQ(NotesOf(Read(placed)).find("equates"), std::string::npos);
    for (const std::string& ends : {shape + ",#900020", "#900020," + shape}) {
        const std::string both =
            WithData(placed, "#900023=SHAPE_REPRESENTATION_RELATIONSHIP('',''," + ends + ");\n");
        const std::size_t comma = ends.find(',');
        ExpectMentions(NotesOf(Read(both)), LineOf(both, "#900023") +
                                                ": the relation #900023 equates the shapes " +
                                                ends.substr(0, comma) + " and " + ends.substr(comma + 1) +
                                                ", though #900020 has " + shape +
                                                " at a place too: a solid may be listed twice\n");
    }
}

TEST_F(StepDoubles, ASolidOfTwoProductsIsAPartOfEach) {
    std::string content = Good();
    const auto items = ReferencesOf(content, Brep);
    content = WithOther(content, "#900005=" + Brep + "('',(" + items[1] + ")," + items.back() +
                                     ");\n#900006=SHAPE_DEFINITION_REPRESENTATION(#900004,#900005);\n");
    const StepDocument document = Read(content);
    ASSERT_EQ(document.solids.size(), 2U);
    EXPECT_EQ(document.solids[0].name, "Board");
    EXPECT_EQ(document.solids[1].name, "Other");
    for (const StepSolid& part : document.solids)
        EXPECT_NEAR(solids::ExactBox(part.shape).SizeX(), 600, Close);
    const std::string notes = NotesOf(document);
    ExpectMentions(
        notes, LineOf(content, items[1] + " = ") + ": the solid " + items[1] + " is that of the products \"");
    ExpectMentions(
        notes,
        "\"Other\" (#900003): each has a part of it, with colours and layers at the first one alone\n");
}

TEST_F(StepDoubles, AShapeThatTwoProductsNameIsAPartOfEach) {
    const std::string content = Root();
    ExpectBoardAndOther(Read(WithOther(
        content, "#900005=SHAPE_DEFINITION_REPRESENTATION(#900004," + NumberOf(content, Brep) + ");\n")));
}

TEST_F(StepDoubles, AShapeBehindThoseOfTwoProductsIsAPartOfEach) {
    const std::string content = WithShapeBehind(Root());
    const auto items = ReferencesOf(content, Brep);
    for (const bool isSwapped : {false, true}) {
        const std::string shape = NumberOf(content, Brep);
        ExpectBoardAndOther(Read(WithOther(
            content,
            "#900005=SHAPE_DEFINITION_REPRESENTATION(#900004,#900006);\n"
            "#900006=SHAPE_REPRESENTATION('',(" +
                items[0] + ")," + items.back() + ");\n#900007=SHAPE_REPRESENTATION_RELATIONSHIP('',''," +
                (isSwapped ? shape + ",#900006" : "#900006," + shape) + ");\n")));
    }
}

TEST_F(StepDoubles, AShapeBehindOneThatTwoProductsNameIsAPartOfEach) {
    ExpectBoardAndOther(Read(
        WithOther(WithShapeBehind(Root()), "#900005=SHAPE_DEFINITION_REPRESENTATION(#900004,#900020);\n")));
}

TEST_F(StepDoubles, SolidsOfOneShellInTwoProductsAreTold) {
    std::string content = Root();
    const auto items = ReferencesOf(content, Brep);
    content = WithOther(content, "#900005=" + Brep + "('',(#900007)," + items.back() +
                                     ");\n#900006=SHAPE_DEFINITION_REPRESENTATION(#900004,#900005);\n" +
                                     "#900007=MANIFOLD_SOLID_BREP(''," +
                                     ReferencesOf(content, "MANIFOLD_SOLID_BREP").front() + ");\n");
    const StepDocument document = Read(content);
    ASSERT_EQ(document.solids.size(), 2U);
    EXPECT_EQ(document.solids[0].name, "Board");
    EXPECT_EQ(document.solids[1].name, "Other");
    EXPECT_EQ(NotesOf(document), LineOf(content, "#900007") + ": the solids " + items[1] +
                                     " and #900007 have one shell, in two shapes: they are listed as two "
                                     "parts\n");
}

TEST_F(StepDoubles, AUsageWithTwoPlacesIsTold) {
    std::string content = Nested();
    const std::string kind = "CONTEXT_DEPENDENT_SHAPE_REPRESENTATION";
    const auto ends = ReferencesOf(content, kind);
    content = WithData(content, "#900001=" + kind + "(" + ends[0] + "," + ends[1] + ");\n");
    const std::string notes = NotesOf(Read(content));
    ExpectMentions(notes, LineOf(content, "#900001") + ": the assembly usage #");
    ExpectMentions(notes, " has two places, " + NumberOf(content, kind) +
                              " and #900001: its part may be missing or lie in another place\n");
}

TEST_F(StepDoubles, APlaceThatBelongsToNoUsageIsTold) {
    std::string content = Nested();
    const std::string kind = "CONTEXT_DEPENDENT_SHAPE_REPRESENTATION";
    const std::string relationship = ReferencesOf(content, kind).front();
    const std::size_t start = content.find("\n" + relationship + " = ") + 1;
    const std::string values =
        content.substr(content.find('(', start), content.find(';', start) + 1 - content.find('(', start));
    content = WithData(content, "#900001=" + values + "\n");
    const StepDocument document = Read(content);
    EXPECT_EQ(document.solids.size(), 4U);
    ExpectMentions(NotesOf(document), LineOf(content, "#900001") +
                                          ": the place #900001 belongs to no assembly usage: a part may be "
                                          "missing\n");
}

TEST_F(StepDoubles, AUsageThatIsPromisedOnlyIsTold) {
    std::string content = Nested();
    const std::string kind = "NEXT_ASSEMBLY_USAGE_OCCURRENCE";
    const std::string usage = NumberOf(content, kind);
    content.replace(content.find(kind), kind.size(), "PROMISSORY_USAGE_OCCURRENCE");
    ExpectMentions(NotesOf(Read(content)), LineOf(content, usage + " = ") + ": the assembly usage " + usage +
                                               " is of a kind that isn't read (PROMISSORY_USAGE_OCCURRENCE)");
}

}  // namespace
}  // namespace brenvik::step
