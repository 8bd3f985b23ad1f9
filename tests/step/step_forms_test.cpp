// Forms that the format allows and few programs write.
#include <gtest/gtest.h>

#include "drafting_host/solids/exact_box.h"
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

}  // namespace
}  // namespace brenvik::step
