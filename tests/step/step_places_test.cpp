// Where a part comes to lie: the first of its two placements, in the part, on the second, in the assembly.
#include <gtest/gtest.h>

#include "drafting_host/solids/exact_box.h"
#include "step/nested_assembly.h"
#include "step/step_input.h"

namespace brenvik::step {
namespace {

constexpr double Close = 1e-9;

class StepPlaces : public StepInput {
  protected:
    /// The numbers of the references within the first statement of this kind from `from` on.
    static std::vector<std::string> References(const std::string& content, const std::string& kind,
                                               std::size_t from = 0) {
        const std::size_t place = content.find(kind + "(", from), end = content.find(';', place);
        EXPECT_NE(place, std::string::npos) << kind;
        std::vector<std::string> numbers;
        for (std::size_t at = content.find('#', place); at < end; at = content.find('#', at + 1))
            numbers.push_back(content.substr(at, content.find_first_not_of("0123456789", at + 1) - at));
        return numbers;
    }

    static std::string WithData(std::string content, const std::string& statements) {
        content.insert(content.rfind("ENDSEC;"), statements);
        return content;
    }

    /// Nested assemblies, each component placed by #900001 on #900005.
    std::string NestedOn(const std::string& placements) const {
        WriteNested(mPath, "");
        std::string content = Content();
        const std::string kind = "ITEM_DEFINED_TRANSFORMATION(";
        for (std::size_t at = content.find(kind); at != std::string::npos; at = content.find(kind, at + 1)) {
            const std::size_t first = content.find('#', at), end = content.find(')', first);
            content.replace(first, end - first, "#900001,#900005");
        }
        const std::string shape = "SHAPE_REPRESENTATION('',(";
        for (std::size_t at = content.find(shape); at != std::string::npos; at = content.find(shape, at + 1))
            content.insert(content.find(')', at), ",#900001,#900005");
        return WithData(std::move(content), placements);
    }

    static void ExpectBox(const StepSolid& part, const std::array<double, 6>& expected) {
        const auto box = solids::ExactBox(part.shape);
        EXPECT_NEAR(box.min.X(), expected[0], Close);
        EXPECT_NEAR(box.min.Y(), expected[1], Close);
        EXPECT_NEAR(box.min.Z(), expected[2], Close);
        EXPECT_NEAR(box.max.X(), expected[3], Close);
        EXPECT_NEAR(box.max.Y(), expected[4], Close);
        EXPECT_NEAR(box.max.Z(), expected[5], Close);
    }
};

const std::string Turned =
    "#900001=AXIS2_PLACEMENT_3D('',#900002,#900003,#900004);\n#900002=CARTESIAN_POINT('',(8.,0.,0.));\n"
    "#900003=DIRECTION('',(0.,0.,1.));\n#900004=DIRECTION('',(0.,1.,0.));\n";
const std::string Moved =
    "#900005=AXIS2_PLACEMENT_3D('',#900006,$,$);\n#900006=CARTESIAN_POINT('',(100.,0.,0.));\n";

TEST_F(StepPlaces, APartWithBothPlacementsAwayFromTheOriginLiesWithTheFirstOnTheSecond) {
    Put(NestedOn(Turned + Moved));
    const StepDocument document = ReadStep(mPath);
    EXPECT_EQ(NotesOf(document), "");
    ASSERT_EQ(document.solids.size(), 4U);
    // Each of the two levels takes (x, y) to (100 + y, 8 - x).
    for (const StepSolid& side : document.solids) ExpectBox(side, {89.5, -652, 0, 108, -92, 720});
}

TEST_F(StepPlaces, AMappedShapeWithBothPlacementsAwayFromTheOriginLiesWithTheFirstOnTheSecond) {
    std::string content = Good();
    const std::string kind = "ADVANCED_BREP_SHAPE_REPRESENTATION";
    const std::string context = References(content, kind).back(), axes = References(content, kind).front();
    const std::size_t start = content.rfind('#', content.find(" = " + kind));
    const std::string shape = content.substr(start, content.find(' ', start) - start);
    content.replace(start, shape.size(), "#900010");
    Put(WithData(std::move(content), Turned + Moved + shape + "=SHAPE_REPRESENTATION('',(" + axes +
                                         ",#900011)," + context +
                                         ");\n#900011=MAPPED_ITEM('',#900012,#900005);\n"
                                         "#900012=REPRESENTATION_MAP(#900001,#900010);\n"));
    const StepDocument document = ReadStep(mPath);
    EXPECT_EQ(NotesOf(document), "");
    ASSERT_EQ(document.solids.size(), 1U);
    ExpectBox(document.solids[0], {100, -592, 0, 500, 8, 18});
}

TEST_F(StepPlaces, APlacementWithoutAnXAxisTakesTheFormatsOwn) {
    Put(
        NestedOn("#900001=AXIS2_PLACEMENT_3D('',#900002,$,$);\n#900002=CARTESIAN_POINT('',(0.,0.,0.));\n"
                 "#900005=AXIS2_PLACEMENT_3D('',#900006,#900007,$);\n"
                 "#900006=CARTESIAN_POINT('',(0.,0.,5.));\n#900007=DIRECTION('',(1.,0.,0.));\n"));
    const StepDocument document = ReadStep(mPath);
    EXPECT_EQ(NotesOf(document), "");
    ASSERT_EQ(document.solids.size(), 4U);
    // An axis along X has the X axis along the world's Y: (x, y, z) comes to (z, x, y + 5), twice.
    for (const StepSolid& side : document.solids) ExpectBox(side, {5, 0, 5, 565, 720, 23.5});
}

TEST_F(StepPlaces, APartMeasuredInAnotherUnitThanItsAssemblyLiesWithTheFirstPlacementOnTheSecond) {
    std::string content = NestedOn(Turned + Moved);
    // The shape of the side in centimetres.
    const std::size_t brep = content.find("ADVANCED_BREP_SHAPE_REPRESENTATION(");
    const std::string context = References(content, "ADVANCED_BREP_SHAPE_REPRESENTATION").back();
    const std::size_t place = content.find(context, brep);
    content.replace(place, context.size(), "#900020");
    Put(WithData(std::move(content),
                 "#900020=(GEOMETRIC_REPRESENTATION_CONTEXT(3)GLOBAL_UNIT_ASSIGNED_CONTEXT((#900021,#900022,"
                 "#900023))REPRESENTATION_CONTEXT('',''));\n"
                 "#900021=(LENGTH_UNIT()NAMED_UNIT(*)SI_UNIT(.CENTI.,.METRE.));\n"
                 "#900022=(NAMED_UNIT(*)PLANE_ANGLE_UNIT()SI_UNIT($,.RADIAN.));\n"
                 "#900023=(NAMED_UNIT(*)SI_UNIT($,.STERADIAN.)SOLID_ANGLE_UNIT());\n"));
    const StepDocument document = ReadStep(mPath);
    EXPECT_EQ(NotesOf(document), "");
    ASSERT_EQ(document.solids.size(), 4U);
    // The side is ten times its size, and its placement lies at 80 mm: it goes to (100 + y, 80 - x), then the
    // carcass to (100 + y, 8 - x).
    for (const StepSolid& side : document.solids) ExpectBox(side, {-5, -5692, 0, 180, -92, 7200});
}

TEST_F(StepPlaces, AnAxisCountsAsOneWhereAPlacementHasNoName) {
    Put(
        NestedOn("#900001=AXIS2_PLACEMENT_3D('',#900002,$,$);\n#900002=CARTESIAN_POINT('',(8.,0.,0.));\n"
                 "#900005=AXIS2_PLACEMENT_3D($,#900006,#900007,$);\n"
                 "#900006=CARTESIAN_POINT('',(0.,0.,5.));\n#900007=DIRECTION('',(1.,0.,0.));\n"));
    const StepDocument document = ReadStep(mPath);
    ASSERT_EQ(document.solids.size(), 4U);
    // (x, y, z) comes to (z, x - 8, y + 5), twice.
    for (const StepSolid& side : document.solids) ExpectBox(side, {5, -8, -3, 565, 712, 15.5});
}

TEST_F(StepPlaces, WhatPlacesAPartWithoutBeingAPlacementIsToldAndThePartKeepsItsName) {
    for (const std::string item : {"CARTESIAN_POINT('',(5.,5.,5.))", "DIRECTION('',(0.,0.,1.))"}) {
        WriteNested(mPath, "");
        std::string content = Content();
        const std::string kind = "ITEM_DEFINED_TRANSFORMATION(";
        const std::size_t place = content.find(kind), first = content.find('#', place);
        content.replace(first, content.find(',', first) - first, "#900001");
        Put(WithData(content, "#900001=" + item + ";\n"));
        const StepDocument document = ReadStep(mPath);
        ASSERT_EQ(document.solids.size(), 4U) << item;
        for (const StepSolid& side : document.solids) EXPECT_EQ(side.name, "Side");
        const std::string found = item.substr(0, item.find('('));
        ExpectMentions(NotesOf(document), LineAt(content, place) + ": #");
        ExpectMentions(NotesOf(document), "expected two placements (AXIS2_PLACEMENT_3D), found " + found);
    }
}

TEST_F(StepPlaces, APlacementThatIsInNeitherOfTheShapesIsTold) {
    WriteNested(mPath, "");
    std::string content = Content();
    const std::string kind = "ITEM_DEFINED_TRANSFORMATION(";
    const std::size_t place = content.find(kind), first = content.find('#', place);
    content.replace(first, content.find(',', first) - first, "#900001");
    Put(WithData(content, Turned));
    const StepDocument document = ReadStep(mPath);
    EXPECT_EQ(document.solids.size(), 4U);
    ExpectMentions(NotesOf(document), LineAt(content, place) + ": #");
    ExpectMentions(NotesOf(document),
                   "expected placements that stand in the shapes that they bring together");
}

TEST_F(StepPlaces, ADirectionWithoutEndIsRefusedWithItsLine) {
    const std::string content = NestedOn(
        "#900001=AXIS2_PLACEMENT_3D('',#900002,#900003,$);\n#900002=CARTESIAN_POINT('',(8.,0.,0.));\n"
        "#900003=DIRECTION('',(0.,0.,1.E400));\n" +
        Moved);
    Put(content);
    ExpectMentions(FailureText(), "line " + LineAt(content, content.find("#900003=")) +
                                      ": expected a finite number, found 1.E400");
}

TEST_F(StepPlaces, ARelationshipOfShapesByNoTransformationIsRefusedWithItsLine) {
    WriteNested(mPath, "");
    std::string content = Content();
    const std::string mark = "RELATIONSHIP_WITH_TRANSFORMATION(";
    const std::size_t place = content.find('#', content.find(mark));
    content.replace(place, content.find(')', place) - place, "#900001");
    content = WithData(content, Turned);
    Put(content);
    ExpectMentions(FailureText(), "line " + LineAt(content, content.rfind("\n#", place) + 1) +
                                      ": expected a transformation such as ITEM_DEFINED_TRANSFORMATION, "
                                      "found AXIS2_PLACEMENT_3D");
}

TEST_F(StepPlaces, AnXAxisWithoutALengthIsTold) {
    Put(
        NestedOn("#900001=AXIS2_PLACEMENT_3D('',#900002,#900003,#900004);\n"
                 "#900002=CARTESIAN_POINT('',(8.,0.,0.));\n#900003=DIRECTION('',(0.,0.,1.));\n"
                 "#900004=DIRECTION('',(0.,0.,0.));\n" +
                 Moved));
    ExpectMentions(NotesOf(ReadStep(mPath)), "the part's place may be wrong; expected axes with a length");
}

TEST_F(StepPlaces, AnXAxisAlongTheZAxisIsTold) {
    Put(
        NestedOn("#900001=AXIS2_PLACEMENT_3D('',#900002,#900003,#900003);\n"
                 "#900002=CARTESIAN_POINT('',(8.,0.,0.));\n#900003=DIRECTION('',(0.,0.,1.));\n" +
                 Moved));
    const StepDocument document = ReadStep(mPath);
    EXPECT_EQ(document.solids.size(), 4U);
    ExpectMentions(NotesOf(document), "expected an X axis that doesn't lie along the Z axis");
}

}  // namespace
}  // namespace brenvik::step
