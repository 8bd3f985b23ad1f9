// What the modeller would follow without end, or fall over: it is refused with its line, or taken out.
#include <gtest/gtest.h>

#include "step/nested_assembly.h"
#include "step/step_input.h"

namespace brenvik::step {
namespace {

class StepCircles : public StepInput {
  protected:
    std::string Nested() const {
        WriteNested(mPath, "");
        return Content();
    }

    /// The place of the `nth` statement of this kind, and the reference that stands last in it.
    static std::size_t Find(const std::string& content, const std::string& kind, int nth = 1) {
        std::size_t place = content.find(" " + kind + "(");
        for (; nth > 1; --nth) place = content.find(" " + kind + "(", place + 1);
        EXPECT_NE(place, std::string::npos) << kind;
        return place;
    }

    static std::string LastReference(const std::string& content, std::size_t place) {
        const std::size_t at = content.rfind('#', content.find(';', place));
        return content.substr(at, content.find_first_not_of("0123456789", at + 1) - at);
    }

    /// Puts another reference in the place of the last one.
    static void SetLast(std::string& content, std::size_t place, const std::string& reference) {
        const std::string old = LastReference(content, place);
        content.replace(content.rfind(old, content.find(';', place)), old.size(), reference);
    }

    /// Leaves a point or direction its first two coordinates.
    static void MakeFlat(std::string& content, const std::string& number) {
        const std::size_t place = content.find(number + " = "), end = content.find("))", place);
        const std::size_t comma = content.rfind(',', end);
        content.erase(comma, end - comma);
    }
};

TEST_F(StepCircles, AComponentWhoseShapeIsTheAssemblysIsRefused) {
    std::string content = Nested();
    // Job, Carcass and Side stand in this order, each with its definition ahead of its usages.
    const std::string job = LastReference(content, Find(content, "PRODUCT_DEFINITION_SHAPE"));
    for (int nth = 2; nth <= 6; ++nth) {
        std::string damaged = content;
        const std::size_t shape = Find(damaged, "PRODUCT_DEFINITION_SHAPE", nth);
        if (damaged.compare(shape, 29, " PRODUCT_DEFINITION_SHAPE('',") != 0) continue;
        SetLast(damaged, shape, job);
        Put(damaged);
        ExpectMentions(FailureText(), "(it refers to itself through others)");
    }
}

TEST_F(StepCircles, AUsageOfAnAssemblyInItselfIsRefused) {
    std::string content = Nested();
    const std::size_t usage = Find(content, "NEXT_ASSEMBLY_USAGE_OCCURRENCE");
    const std::size_t end = content.find(",$)", usage), component = content.rfind('#', end);
    const std::size_t assembly = content.rfind('#', component - 1);
    content.replace(component, end - component, content.substr(assembly, component - assembly - 1));
    Put(content);
    ExpectMentions(FailureText(), "(it refers to itself through others)");
}

TEST_F(StepCircles, AnAssemblysOwnShapeAsThatOfItsComponentIsRefused) {
    std::string content = Nested();
    const std::size_t relation = content.find("REPRESENTATION_RELATIONSHIP('','',#");
    ASSERT_NE(relation, std::string::npos);
    const std::size_t first = content.find('#', relation), comma = content.find(',', first);
    const std::string second = content.substr(comma + 1, content.find(')', comma) - comma - 1);
    content.replace(first, comma - first, second);
    Put(content);
    ExpectMentions(FailureText(), "(it refers to itself through others)");
}

TEST_F(StepCircles, APlaceWithAPointOfAPlaneIsRefusedWithItsLine) {
    std::string content = Nested();
    const std::size_t place = Find(content, "ITEM_DEFINED_TRANSFORMATION");
    const std::string placement = LastReference(content, place);
    const std::size_t axes = content.find(placement + " = ");
    const std::size_t at = content.find('#', axes + 1);
    for (std::size_t piece = at; piece < content.find(';', axes); piece = content.find('#', piece + 1)) {
        std::string damaged = content;
        MakeFlat(damaged, damaged.substr(piece, damaged.find_first_of(",)", piece) - piece));
        Put(damaged);
        ExpectMentions(FailureText(), "line ");
        ExpectMentions(FailureText(), "has 2 coordinates instead of three");
    }
}

TEST_F(StepCircles, APointOfAPlaneInOnePartTakesThatPartAlone) {
    WriteStep(mPath,
              std::vector<StepSolid>{{solids::test::Board(600, 400, 18), "Top", "Job", "", std::nullopt},
                                     {solids::test::Board(700, 300, 18), "Shelf", "Job", "", std::nullopt}});
    const std::string good = Content();
    // The point in space of an edge's line, of a plane and of a corner, each by way of its references.
    for (const std::vector<std::string>& way : {std::vector<std::string>{"SURFACE_CURVE", "LINE"},
                                                {"PLANE", "AXIS2_PLACEMENT_3D"},
                                                {"VERTEX_POINT"}}) {
        std::string content = good;
        std::size_t place = content.rfind(" " + way.front() + "('',#");
        ASSERT_NE(place, std::string::npos) << way.front();
        std::string piece;
        for (std::size_t step = 0; step < way.size(); ++step) {
            piece = "#" + std::to_string(std::stoi(content.substr(content.find('#', place) + 1)));
            place = content.find(piece + " = ") + 1;
        }
        const std::string& kind = way.front();
        MakeFlat(content, piece);
        Put(content);
        const StepDocument document = ReadStep(mPath);
        ASSERT_EQ(document.solids.size(), 1U) << kind;
        EXPECT_EQ(document.solids[0].name, "Top");
        ExpectMentions(NotesOf(document), "part \"Shelf\"");
    }
}

TEST_F(StepCircles, ALayerWithoutANameIsTheOnlyThingLost) {
    WriteStep(mPath, std::vector<StepSolid>{
                         {solids::test::Board(600, 400, 18), "Top", "Job", "Fronts", Rgb{200, 0, 0}}});
    std::string content = Content();
    const std::size_t layer = content.find("PRESENTATION_LAYER_ASSIGNMENT('Fronts'");
    ASSERT_NE(layer, std::string::npos);
    for (const std::string name : {"()", "$", "7"}) {
        std::string damaged = content;
        damaged.replace(damaged.find("'Fronts'", layer), 8, name);
        Put(damaged);
        const StepDocument document = ReadStep(mPath);
        ASSERT_EQ(document.solids.size(), 1U) << name;
        EXPECT_EQ(document.solids[0].color, (Rgb{200, 0, 0}));
        ExpectMentions(NotesOf(document), "nothing lost: 1 faulty style(s) or layer(s)");
    }
}

}  // namespace
}  // namespace brenvik::step
