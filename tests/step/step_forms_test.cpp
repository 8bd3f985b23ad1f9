// Forms that the format allows and few programs write.
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "drafting_host/solids/exact_box.h"
#include "drafting_host/step/texts/plain_forms.h"
#include "step/step_input.h"

namespace brenvik::step {
namespace {

constexpr double Close = 1e-9;
const std::string Brep = "ADVANCED_BREP_SHAPE_REPRESENTATION";

class StepForms : public StepInput {
  protected:
    /// The content with the length, which stands first there, taken out of each context's units.
    static std::string WithoutUnits(std::string content) {
        constexpr std::string_view units = "GLOBAL_UNIT_ASSIGNED_CONTEXT";
        for (std::size_t place = content.find(units); place != std::string::npos;
             place = content.find(units, place + 1)) {
            const std::size_t first = content.find('#', place), comma = content.find(',', first);
            content.erase(first, comma + 1 - first);
        }
        return content;
    }

    static void ExpectBoard(const StepDocument& document, double length) {
        ASSERT_EQ(document.solids.size(), 1U) << NotesOf(document);
        EXPECT_EQ(document.solids[0].name, "Board");
        EXPECT_NEAR(solids::ExactBox(document.solids[0].shape).SizeX(), length, Close);
    }
};

TEST_F(StepForms, LengthsWithoutAUnitAreInTheShopsWithALine) {
    const std::string content = WithoutUnits(Root());
    const std::string context = ReferencesOf(content, Brep).back();
    const StepDocument document = Read(content);
    ExpectBoard(document, 600);
    ExpectMentions(NotesOf(document), LineAt(content, content.find("\n" + context + " = ") + 1) +
                                          ": the context " + context + " names no unit of length");
    ExpectMentions(NotesOf(document), "taken as millimetres, the unit of this shop's drawings");
    EXPECT_TRUE(document.millimetresPerUnit.empty());

    const StepDocument inches = ReadStep(mPath, LengthUnit::Inch);
    ExpectBoard(inches, 600);
    ExpectMentions(NotesOf(inches), "taken as inches, the unit of this shop's drawings");
}

TEST_F(StepForms, AContextWithoutAUnitTakesThatOfTheFilesOthers) {
    std::string content = Root();
    const std::string shape = ReferencesOf(content, Brep).back();
    const std::size_t end = content.find(';', content.find(" = " + Brep + "("));
    content.replace(content.rfind('#', end), shape.size(), "#900001");
    content = WithData(content,
                       "#900001=(GEOMETRIC_REPRESENTATION_CONTEXT(3)REPRESENTATION_CONTEXT('','3D'));\n"
                       "#900002=SHAPE_REPRESENTATION('',(#900003)," +
                           shape +
                           ");\n"
                           "#900003=AXIS2_PLACEMENT_3D('',#900004,$,$);\n"
                           "#900004=CARTESIAN_POINT('',(0.,0.,0.));\n");
    if (ReferencesOf(content, Brep).back() != "#900001") GTEST_FAIL() << "the context isn't the shape's";
    const StepDocument document = Read(content);
    ExpectBoard(document, 600);
    ExpectMentions(NotesOf(document), "taken as that of the context " + shape);
}

TEST_F(StepForms, DataInTwoSectionsIsReadAsOne) {
    std::string content = Root();
    const std::size_t middle = content.find("\n#", content.size() / 2) + 1;
    content.insert(middle, "ENDSEC;\nDATA('second',('AUTOMOTIVE_DESIGN'));\n");
    const StepDocument document = Read(content);
    ExpectBoard(document, 600);
    EXPECT_EQ(NotesOf(document), "");
}

TEST_F(StepForms, AnchorsAheadOfTheDataArePassedOver) {
    std::string content = Root();
    content.insert(content.find("DATA;"), "ANCHOR;\n<board>=#1;\nENDSEC;\n");
    ExpectBoard(Read(content), 600);
}

TEST_F(StepForms, AShapeIsFoundBehindTwoRelations) {
    std::string content = Root();
    const std::string shape = NumberOf(content, Brep), context = ReferencesOf(content, Brep).back();
    const std::string axes = ReferencesOf(content, Brep).front();
    content.replace(content.find("\n" + shape + " = ") + 1, shape.size(), "#900010");
    content = WithData(content, shape + "=SHAPE_REPRESENTATION('',(" + axes + ")," + context +
                                    ");\n#900011=SHAPE_REPRESENTATION('',(" + axes + ")," + context +
                                    ");\n#900012=SHAPE_REPRESENTATION_RELATIONSHIP('',''," + shape +
                                    ",#900011);\n#900013=SHAPE_REPRESENTATION_RELATIONSHIP('','',#900011,"
                                    "#900010);\n");
    const StepDocument document = Read(content);
    ExpectBoard(document, 600);
    EXPECT_EQ(NotesOf(document), "");
}

/// The board mapped by an operator of this statement, from `origin`.
std::string Mapped(std::string content, const std::string& shape, const std::vector<std::string>& items,
                   const std::string& origin, const std::string& statement) {
    content.replace(content.find("\n" + shape + " = ") + 1, shape.size(), "#900010");
    content.insert(content.rfind("ENDSEC;"),
                   shape + "=SHAPE_REPRESENTATION('',(" + items.front() + ",#900011)," + items.back() +
                       ");\n#900011=MAPPED_ITEM('',#900012,#900013);\n#900012=REPRESENTATION_MAP(" + origin +
                       ",#900010);\n#900013=" + statement +
                       ";\n#900014=CARTESIAN_POINT('',(50.,0.,0.));\n"
                       "#900020=DIRECTION('',(1.,0.,0.));\n#900021=DIRECTION('',(0.,1.,0.));\n"
                       "#900030=AXIS2_PLACEMENT_3D('',#900014,$,$);\n");
    return content;
}

TEST_F(StepForms, AnOperatorMayLeaveAxesOut) {
    for (const std::string axes : {"#900020,$", "$,$", "$,#900021", "#900020,#900021"}) {
        for (const std::string& statement :
             {"CARTESIAN_TRANSFORMATION_OPERATOR_3D('','',''," + axes + ",#900014,$,$)",
              "(CARTESIAN_TRANSFORMATION_OPERATOR(" + axes +
                  ",#900014,$)CARTESIAN_TRANSFORMATION_OPERATOR_3D($)FUNCTIONALLY_DEFINED_TRANSFORMATION('',"
                  "'')GEOMETRIC_REPRESENTATION_ITEM()REPRESENTATION_ITEM(''))"}) {
            SCOPED_TRACE(statement);
            const std::string content = Root();
            const auto items = ReferencesOf(content, Brep);
            const StepDocument document =
                Read(Mapped(content, NumberOf(content, Brep), items, items.front(), statement));
            EXPECT_EQ(NotesOf(document), "");
            ASSERT_EQ(document.solids.size(), 1U);
            EXPECT_NEAR(solids::ExactBox(document.solids[0].shape).SizeX(), 600, Close);
            EXPECT_NEAR(solids::ExactBox(document.solids[0].shape).min.X(), 50, Close);
        }
    }
}

TEST_F(StepForms, AnOperatorBehindAMapFromAnotherOriginLeavesThePlaceOpen) {
    const std::string content = Root();
    const auto items = ReferencesOf(content, Brep);
    const std::string mapped = Mapped(content, NumberOf(content, Brep), items, "#900030",
                                      "CARTESIAN_TRANSFORMATION_OPERATOR_3D('','','',$,$,#900014,$,$)");
    const StepDocument document = Read(mapped);
    EXPECT_EQ(document.solids.size(), 1U);
    EXPECT_EQ(NotesOf(document), LineAt(mapped, mapped.find("#900011=")) +
                                     ": #900011 places a part by what can't be combined: the part's place "
                                     "may be wrong; expected an operator and a map from the origin\n");
}

TEST_F(StepForms, LongNamesAreRead) {
    std::string content = Root();
    const std::string board = "'Board'", name(60000, 'n');
    for (std::size_t at = content.find(board); at != std::string::npos; at = content.find(board, at + 1))
        content.replace(at, board.size(), "'" + name + "'");
    const StepDocument document = Read(content);
    ASSERT_EQ(document.solids.size(), 1U);
    EXPECT_EQ(document.solids[0].name, name);
}

/// Each kind with all the kinds above it, by the alphabet; a digit stands for a value of the plain form.
const std::vector<std::pair<std::string, std::string>> LongForms{
    {"CARTESIAN_POINT", "CARTESIAN_POINT(1) GEOMETRIC_REPRESENTATION_ITEM() POINT()\nREPRESENTATION_ITEM(0)"},
    {"DIRECTION", "DIRECTION(1)GEOMETRIC_REPRESENTATION_ITEM()REPRESENTATION_ITEM(0)"},
    {"VECTOR", "GEOMETRIC_REPRESENTATION_ITEM()REPRESENTATION_ITEM(0)VECTOR(1,2)"},
    {"LINE", "CURVE()GEOMETRIC_REPRESENTATION_ITEM()LINE(1,2)REPRESENTATION_ITEM(0)"},
    {"PLANE", "ELEMENTARY_SURFACE(1)GEOMETRIC_REPRESENTATION_ITEM()PLANE()REPRESENTATION_ITEM(0)SURFACE()"},
    {"AXIS2_PLACEMENT_3D",
     "AXIS2_PLACEMENT_3D(2,3)GEOMETRIC_REPRESENTATION_ITEM()PLACEMENT(1)REPRESENTATION_ITEM(0)"},
    {"VERTEX_POINT",
     "GEOMETRIC_REPRESENTATION_ITEM()REPRESENTATION_ITEM(0)TOPOLOGICAL_REPRESENTATION_ITEM()VERTEX()"
     "VERTEX_POINT(1)"},
    {"EDGE_CURVE",
     "EDGE(1,2)EDGE_CURVE(3,4)GEOMETRIC_REPRESENTATION_ITEM()REPRESENTATION_ITEM(0)"
     "TOPOLOGICAL_REPRESENTATION_ITEM()"},
    {"ORIENTED_EDGE", "EDGE(1,2)ORIENTED_EDGE(3,4)REPRESENTATION_ITEM(0)TOPOLOGICAL_REPRESENTATION_ITEM()"},
    {"EDGE_LOOP", "EDGE_LOOP()LOOP()PATH(1)REPRESENTATION_ITEM(0)TOPOLOGICAL_REPRESENTATION_ITEM()"},
    {"FACE_BOUND", "FACE_BOUND(1,2)REPRESENTATION_ITEM(0)TOPOLOGICAL_REPRESENTATION_ITEM()"},
    {"ADVANCED_FACE",
     "ADVANCED_FACE()FACE(1)FACE_SURFACE(2,3)GEOMETRIC_REPRESENTATION_ITEM()REPRESENTATION_ITEM(0)"
     "TOPOLOGICAL_REPRESENTATION_ITEM()"},
    {"CLOSED_SHELL",
     "CLOSED_SHELL()CONNECTED_FACE_SET(1)REPRESENTATION_ITEM(0)TOPOLOGICAL_REPRESENTATION_ITEM()"},
    {"MANIFOLD_SOLID_BREP",
     "GEOMETRIC_REPRESENTATION_ITEM()MANIFOLD_SOLID_BREP(1)REPRESENTATION_ITEM(0)SOLID_MODEL()"},
    {"ADVANCED_BREP_SHAPE_REPRESENTATION",
     "ADVANCED_BREP_SHAPE_REPRESENTATION()REPRESENTATION(0,1,2)SHAPE_REPRESENTATION()"},
    {"SHAPE_REPRESENTATION", "REPRESENTATION(0,1,2)SHAPE_REPRESENTATION()"},
    {"PRODUCT", "PRODUCT(0,1,2,3)"},
    {"PRODUCT_DEFINITION", "PRODUCT_DEFINITION(0,1,2,3)"},
    {"PRODUCT_DEFINITION_SHAPE", "PRODUCT_DEFINITION_SHAPE()PROPERTY_DEFINITION(0,1,2)"},
    {"SHAPE_DEFINITION_REPRESENTATION",
     "PROPERTY_DEFINITION_REPRESENTATION(0,1)SHAPE_DEFINITION_REPRESENTATION()"},
    {"NEXT_ASSEMBLY_USAGE_OCCURRENCE",
     "ASSEMBLY_COMPONENT_USAGE(5)NEXT_ASSEMBLY_USAGE_OCCURRENCE()PRODUCT_DEFINITION_RELATIONSHIP(0,1,2,3,4)"
     "PRODUCT_DEFINITION_USAGE()"},
    {"CONTEXT_DEPENDENT_SHAPE_REPRESENTATION", "CONTEXT_DEPENDENT_SHAPE_REPRESENTATION(0,1)"},
    {"ITEM_DEFINED_TRANSFORMATION", "ITEM_DEFINED_TRANSFORMATION(0,1,2,3)"},
    {"UNCERTAINTY_MEASURE_WITH_UNIT", "MEASURE_WITH_UNIT(0,1)UNCERTAINTY_MEASURE_WITH_UNIT(2,3)"},
    {"STYLED_ITEM", "REPRESENTATION_ITEM(0)STYLED_ITEM(1,2)"},
    {"COLOUR_RGB", "COLOUR()COLOUR_RGB(1,2,3)COLOUR_SPECIFICATION(0)"},
};

/// The values of a statement, which opens its bracket at `open`, and the place behind the closing one.
std::pair<std::vector<std::string>, std::size_t> ValuesAt(const std::string& content, std::size_t open) {
    std::vector<std::string> values(1);
    bool quoted = false;
    int depth = 0;
    for (std::size_t at = open + 1;; ++at) {
        const char c = content.at(at);
        if (c == '\'') quoted = !quoted;
        if (!quoted && c == ')' && depth-- == 0) return {values, at + 1};
        if (!quoted && c == '(') ++depth;
        if (!quoted && c == ',' && depth == 0)
            values.emplace_back();
        else
            values.back() += c;
    }
}

std::string InLongForm(std::string content, const std::string& kind, const std::string& form) {
    const std::string head = " = " + kind + "(";
    std::size_t at = content.find(head);
    EXPECT_NE(at, std::string::npos) << kind;
    for (; at != std::string::npos; at = content.find(head, at + 1)) {
        const auto [values, end] = ValuesAt(content, at + head.size() - 1);
        std::string text = " = ( ";
        for (std::size_t place = 0; place < form.size(); ++place) {
            const bool isValue = form[place] >= '0' && form[place] <= '9' &&
                                 (form[place - 1] == '(' || form[place - 1] == ',');
            text += isValue ? values.at(static_cast<std::size_t>(form[place] - '0'))
                            : std::string(1, form[place]);
        }
        content.replace(at, end - at, text + " )");
    }
    return content;
}

class StepLongForms : public StepForms {
  protected:
    std::string Job() const {
        const std::vector<StepSolid> solids{
            {solids::test::Board(600, 400, 18), "It's (one), \"A = (B\"", "Job", "", Rgb{255, 128, 0}},
            {solids::test::Board(300, 200, 16), "Other", "Job", "", std::nullopt}};
        WriteStep(mPath, solids);
        return Content();
    }
    static std::string TextOf(const StepDocument& document) {
        std::string text = NotesOf(document);
        for (const StepSolid& solid : document.solids)
            text += solid.name + "|" + solid.assembly + "|" + (solid.color ? "coloured" : "plain") + "|" +
                    std::to_string(solids::ExactBox(solid.shape).SizeX()) + "\n";
        return text;
    }
};

TEST_F(StepLongForms, AStatementWithAllTheKindsAboveItsOwnReadsAsThePlainOne) {
    const std::string plain = Job();
    const std::string expected = TextOf(Read(plain));
    ASSERT_NE(expected.find("600.000000"), std::string::npos) << expected;
    std::string all = plain;
    for (const auto& [kind, form] : LongForms) {
        if (kind == "FACE_BOUND" && plain.find(" = FACE_BOUND(") == std::string::npos) continue;
        const std::string one = InLongForm(plain, kind, form);
        ASSERT_NE(one, plain) << kind;
        EXPECT_EQ(TextOf(Read(one)), expected) << kind;
        all = InLongForm(all, kind, form);
    }
    EXPECT_EQ(TextOf(Read(all)), expected);
}

TEST_F(StepLongForms, LinesStayWhereTheyAre) {
    EXPECT_EQ(WithPlainForms(
                  "#1=(LENGTH_MEASURE_WITH_UNIT()\nMEASURE_WITH_UNIT(\nLENGTH_MEASURE(25.4),#2));\n#3=A();"),
              "#1=LENGTH_MEASURE_WITH_UNIT(\nLENGTH_MEASURE(25.4),#2)\n;\n#3=A();");
}

TEST_F(StepLongForms, OtherStatementsStayAsTheyAre) {
    for (const std::string kept :
         {"#1=(LENGTH_UNIT()NAMED_UNIT(*)SI_UNIT(.MILLI.,.METRE.));",
          "#1=(REPRESENTATION_RELATIONSHIP('','',#2,#3)REPRESENTATION_RELATIONSHIP_WITH_TRANSFORMATION(#4)"
          "SHAPE_REPRESENTATION_RELATIONSHIP());",
          "#1=(MAPPED_ITEM(#2,#3));", "#1=PRODUCT('#2=(PRODUCT(''a''));','',$,(#3));",
          "#1=(PRODUCT('a',(#2);\n#2=(PRODUCT(#3)"})
        EXPECT_EQ(WithPlainForms(kept), kept);
}

TEST_F(StepLongForms, TheFactorOfAnInchMayBeWrittenSo) {
    std::string content = Root();
    const std::string unit = "( LENGTH_UNIT() NAMED_UNIT(*) SI_UNIT(.MILLI.,.METRE.) )";
    ASSERT_NE(content.find(unit), std::string::npos);
    content.replace(content.find(unit), unit.size(),
                    "( CONVERSION_BASED_UNIT('INCH',#900001) LENGTH_UNIT() NAMED_UNIT(#900003) )");
    const StepDocument document =
        Read(WithData(content,
                      "#900001=(LENGTH_MEASURE_WITH_UNIT()MEASURE_WITH_UNIT(LENGTH_MEASURE(25.4),#900002));\n"
                      "#900002=( LENGTH_UNIT() NAMED_UNIT(*) SI_UNIT(.MILLI.,.METRE.) );\n"
                      "#900003=DIMENSIONAL_EXPONENTS(1.,0.,0.,0.,0.,0.,0.);\n"));
    EXPECT_EQ(NotesOf(document), "");
    ExpectBoard(document, 600 * 25.4);
}

}  // namespace
}  // namespace brenvik::step
