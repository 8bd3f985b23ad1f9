// Assemblies whose parts lie in files beside them.
#include <gtest/gtest.h>

#include "drafting_host/solids/exact_box.h"
#include "step/nested_assembly.h"
#include "step/step_input.h"

namespace brenvik::step {
namespace {

class StepExternals : public StepInput {
  protected:
    void SetUp() override {
        StepInput::SetUp();
        mSide = std::filesystem::path(::testing::TempDir()) / (mPath.stem().string() + "_side.step");
    }
    void TearDown() override {
        std::filesystem::remove(mSide);
        StepInput::TearDown();
    }

    /// "#5" of the statement in which a text stands first.
    static std::string NumberOf(const std::string& content, const std::string& text) {
        const std::size_t start = content.rfind("\n#", content.find(text)) + 1;
        return content.substr(start, content.find_first_of(" =", start) - start);
    }

    /// The job of two carcasses, the side of which is said to lie in `file`.
    void WriteJob(const std::string& file) const {
        WriteNested(mPath, "");
        std::string content = Content();
        const std::string body = NumberOf(content, "MANIFOLD_SOLID_BREP(");
        const std::size_t start = content.find("\n" + body + " =");
        content.erase(start, content.find(';', start) + 1 - start);
        for (const std::string& item : {"," + body + ")", "," + body + ","}) {
            const std::size_t place = content.find(item, content.find("ADVANCED_BREP_SHAPE_REPRESENTATION("));
            if (place != std::string::npos) content.erase(place, item.size() - 1);
        }
        // What holds nothing but axes is called so.
        const std::string kind = "ADVANCED_BREP_";
        content.erase(content.find(kind), kind.size());
        const std::string product = NumberOf(content, "PRODUCT('Side'");
        const std::string formation =
            NumberOf(content, "PRODUCT_DEFINITION_FORMATION('',''," + product + ")");
        const std::string definition = NumberOf(content, "PRODUCT_DEFINITION('design',''," + formation + ",");
        content.insert(content.rfind("ENDSEC;"),
                       "#900001=DOCUMENT_FILE('1','','',#900002,'',$);\n#900002=DOCUMENT_TYPE('geometry');\n"
                       "#900003=APPLIED_EXTERNAL_IDENTIFICATION_ASSIGNMENT('" +
                           file +
                           "',#900004,#900005,(#900001));\n#900004=IDENTIFICATION_ROLE('','');\n"
                           "#900005=EXTERNAL_SOURCE(IDENTIFIER(''));\n"
                           "#900006=APPLIED_DOCUMENT_REFERENCE(#900001,'',(" +
                           definition + "));\n");
        Put(content);
    }

    std::filesystem::path mSide;
};

TEST_F(StepExternals, FilesThatLieThereAreFollowed) {
    WriteStep(mSide, std::vector<StepSolid>{
                         {solids::test::Board(18.5, 560, 720), "Side of oak", "", "Oak", std::nullopt}});
    WriteJob("C:\\jobs\\" + mSide.filename().string());
    const StepDocument document = ReadStep(mPath);
    EXPECT_EQ(NotesOf(document), "");
    ASSERT_EQ(document.solids.size(), 4U);
    EXPECT_EQ(document.solids[0].name, "Side of oak");
    EXPECT_EQ(document.solids[0].assembly, "Carcass");
    EXPECT_EQ(document.solids[0].layer, "Oak");
    EXPECT_EQ(solids::ExactBox(document.solids[1].shape).min.X(), 582.25);
    EXPECT_EQ(solids::ExactBox(document.solids[2].shape).max.X(), 1000.5);
}

TEST_F(StepExternals, AFileThatIsMissingIsToldByName) {
    WriteJob("side of nowhere.stp");
    ExpectMentions(FailureText(),
                   "part \"Side\" lies in the file \"side of nowhere.stp\", which isn't beside this one");
}

TEST_F(StepExternals, AFileThatRefersBackIsTold) {
    WriteJob(mPath.filename().string());
    ExpectMentions(FailureText(), "which refers back to it");
}

TEST_F(StepExternals, AFileThatCantBeReadIsToldWithItsFault) {
    std::ofstream(mSide) << "hello";
    WriteJob(mSide.filename().string());
    ExpectMentions(FailureText(), "which can't be read: ");
    ExpectMentions(FailureText(), "expected a STEP file");
}

}  // namespace
}  // namespace brenvik::step
