// Variants of products: substitutes, alternates, raw parts, second versions. Both stand in the list, and that
// is told.
#include "step/nested_assembly.h"
#include "step/step_input.h"

namespace brenvik::step {
namespace {

class StepVariants : public StepInput {
  protected:
    /// A board "Board" and a board "Other" that stands beside it, in no assembly.
    std::string Two() const {
        WriteStep(mPath,
                  std::vector<StepSolid>{{solids::test::Board(600, 400, 18), "Board", "", "", std::nullopt},
                                         {solids::test::Board(500, 300, 22), "Other", "", "", std::nullopt}});
        return Content();
    }

    std::string Nested() const {
        WriteNested(mPath, "");
        return Content();
    }

    /// The numbers of all statements of a kind.
    static std::vector<std::string> NumbersOf(const std::string& content, const std::string& kind) {
        std::vector<std::string> numbers;
        const std::string form = " = " + kind + "(";
        for (std::size_t at = content.find(form); at != std::string::npos; at = content.find(form, at + 1)) {
            const std::size_t start = content.rfind('#', at);
            numbers.push_back(content.substr(start, at - start));
        }
        return numbers;
    }

    /// The note that reading gives, which has to be the only one.
    void ExpectNote(const std::string& content, const std::string& statement, const std::string& note) const {
        const StepDocument document = Read(content);
        EXPECT_EQ(document.solids.size(), 2U);
        EXPECT_EQ(NotesOf(document),
                  LineAt(content, content.find("\n" + statement) + 1) + ": " + note + ": both are listed\n");
    }

    /// In which the second product's definition is one of the first one's.
    static std::string WithReference(std::string content, const std::string& kind, std::size_t index,
                                     const std::string& from, const std::string& to) {
        std::size_t at = content.find(NumbersOf(content, kind)[index] + " = " + kind);
        at = content.find(from, content.find('(', at));
        return content.replace(at, from.size(), to);
    }
};

TEST_F(StepVariants, AnAlternateIsTold) {
    const std::string content = Two();
    const auto products = NumbersOf(content, "PRODUCT");
    ASSERT_EQ(products.size(), 2U);
    ExpectNote(WithData(content, "#900001=ALTERNATE_PRODUCT_RELATIONSHIP('a','',#" + products[1].substr(1) +
                                     "," + products[0] + ",'');\n"),
               "#900001", "part \"Other\" stands for part \"Board\" as an alternate");
}

TEST_F(StepVariants, ARawPartIsTold) {
    const std::string content = Two();
    const auto products = NumbersOf(content, "PRODUCT_DEFINITION");
    ExpectNote(
        WithData(content, "#900001=MAKE_FROM_USAGE_OPTION('1','',''," + products[1] + "," + products[0] +
                              ",1,'',#900002);\n#900002=MEASURE_WITH_UNIT(COUNT_MEASURE(1.),#900003);\n"
                              "#900003=CONTEXT_DEPENDENT_UNIT(#900004,'PIECE');\n"
                              "#900004=DIMENSIONAL_EXPONENTS(0.,0.,0.,0.,0.,0.,0.);\n"),
        "#900001", "part \"Other\" is made from part \"Board\"");
}

TEST_F(StepVariants, ASubstituteIsTold) {
    const std::string content = Nested();
    const auto usages = NumbersOf(content, "NEXT_ASSEMBLY_USAGE_OCCURRENCE");
    const std::string with = WithData(content, "#900001=ASSEMBLY_COMPONENT_USAGE_SUBSTITUTE('s',''," +
                                                   usages[0] + "," + usages[1] + ");\n");
    const std::string notes = NotesOf(Read(with));
    EXPECT_EQ(notes.find(LineAt(with, with.find("#900001=")) + ": part \""), 0U) << notes;
    EXPECT_NE(notes.find("\" as a substitute: both are listed\n"), std::string::npos) << notes;
}

TEST_F(StepVariants, ASubstituteOfAUsageThatIsAProductIsTold) {
    const std::string content = Two();
    const auto definitions = NumbersOf(content, "PRODUCT_DEFINITION");
    ASSERT_EQ(definitions.size(), 2U);
    ExpectNote(WithData(content, "#900001=PRODUCT_DEFINITION_SUBSTITUTE('',#900002," + definitions[1] +
                                     ");\n#900002=PRODUCT_DEFINITION_RELATIONSHIP('','',''," +
                                     definitions[1] + "," + definitions[0] + ");\n"),
               "#900001", "part \"Other\" stands for part \"Board\" as a substitute");
    const std::string nested = Nested();
    const std::string usage = NumbersOf(nested, "NEXT_ASSEMBLY_USAGE_OCCURRENCE")[0];
    // In place of a side, a carcass.
    const std::string carcass = NumbersOf(nested, "PRODUCT_DEFINITION")[0];
    const std::string with =
        WithData(nested, "#900001=PRODUCT_DEFINITION_SUBSTITUTE(''," + usage + "," + carcass + ");\n");
    const std::string notes = NotesOf(Read(with));
    EXPECT_EQ(notes.find(LineAt(with, with.find("#900001=")) + ": part \""), 0U) << notes;
    EXPECT_NE(notes.find("\" as a substitute: both are listed\n"), std::string::npos) << notes;
}

TEST_F(StepVariants, ASecondShapeOfAProductIsARemark) {
    std::string content = Two();
    const auto shapes = NumbersOf(content, "ADVANCED_BREP_SHAPE_REPRESENTATION");
    const auto named = NumbersOf(content, "PRODUCT_DEFINITION_SHAPE");
    ASSERT_EQ(shapes.size(), 2U);
    // The second board's shape is another one of the first board's product.
    const std::string tie = " = SHAPE_DEFINITION_REPRESENTATION(" + named[1] + ",";
    const std::size_t place = content.find(tie) + tie.size() - 1 - named[1].size();
    content.replace(place, named[1].size(), named[0]);
    const StepDocument document = Read(content);
    EXPECT_EQ(document.solids.size(), 2U);
    ExpectMentions(NotesOf(document),
                   LineAt(content, content.find("\n" + shapes[1] + " =") + 1) +
                       ", nothing lost: part \"Board\" has 2 shapes of its own, the first ones " + shapes[0] +
                       " and " + shapes[1] + ": the solids of all are listed\n");
}

TEST_F(StepVariants, ASecondVersionOfAProductIsTold) {
    std::string content = Two();
    const auto products = NumbersOf(content, "PRODUCT"),
               definitions = NumbersOf(content, "PRODUCT_DEFINITION");
    content = WithReference(content, "PRODUCT_DEFINITION_FORMATION", 1, products[1], products[0]);
    const StepDocument document = Read(content);
    EXPECT_EQ(document.solids.size(), 2U);
    ExpectMentions(NotesOf(document), LineAt(content, content.find("\n" + definitions[1] + " = ") + 1) +
                                          ": part \"Board\" has two versions, " + definitions[0] + " and " +
                                          definitions[1] + ", each with a shape: both are listed\n");
}

TEST_F(StepVariants, VersionsThatAssembliesUseAreParts) {
    std::string content = Nested();
    // The side and the carcass as versions of one product: both have places.
    const auto products = NumbersOf(content, "PRODUCT");
    ASSERT_EQ(products.size(), 3U);
    content = WithReference(content, "PRODUCT_DEFINITION_FORMATION", 2, products[2], products[1]);
    EXPECT_EQ(NotesOf(Read(content)).find("two versions"), std::string::npos);
}

}  // namespace
}  // namespace brenvik::step
