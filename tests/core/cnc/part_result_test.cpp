// What a worker tells of a part arrives as it was.
#include "cnc/run/part_result.h"

#include <gtest/gtest.h>

#include "base/failure.h"

namespace brenvik {
namespace {

PartResult Result() {
    PartResult result;
    result.files = {"Part_0_Side.dxf", "2-sided\\BPart_0.dwg"};
    result.boxes = {{"two\r\nlines", "Title", MessageIcon::Exclamation, MessageButtons::Ok},
                    {"plain", "", {}, {}}};
    result.lines = {{false, "1,2"}, {true, ""}};
    result.report.skipped = {"a"};
    result.report.passedOver = {"b", "c"};
    result.report.unexplained = {"d"};
    result.report.doubtfulMaterials = {"e"};
    result.report.unknownMaterials = {"18 OAK"};
    result.troubles = {{"1A", "Side", "no letters", true, false}, {"", "", "text", false, true}};
    result.bits.emplace();
    result.bits->ToolDiameter = 0.1;
    result.bits->ToolDiameterText = "p1";
    result.bits->ToolNumber = "7";
    result.bits->kind = PathKind::PKC;
    return result;
}

TEST(PartResult, ComesOverAsItWas) {
    const PartResult sent = Result(), came = UnpackResult(PackResult(sent));
    EXPECT_FALSE(came.isForTheRun);
    EXPECT_EQ(came.files, sent.files);
    ASSERT_EQ(came.boxes.size(), 2U);
    EXPECT_EQ(came.boxes[0].text, sent.boxes[0].text);
    EXPECT_EQ(came.boxes[0].title, "Title");
    EXPECT_EQ(came.boxes[0].icon, MessageIcon::Exclamation);
    ASSERT_EQ(came.lines.size(), 2U);
    EXPECT_EQ(came.lines[0].text, "1,2");
    EXPECT_TRUE(came.lines[1].secondSide);
    EXPECT_EQ(came.report.passedOver, sent.report.passedOver);
    EXPECT_EQ(came.report.unknownMaterials, sent.report.unknownMaterials);
    ASSERT_EQ(came.troubles.size(), 2U);
    EXPECT_EQ(came.troubles[0].name, "Side");
    EXPECT_TRUE(came.troubles[0].toldInABox);
    EXPECT_TRUE(came.troubles[1].isRemark);
    ASSERT_TRUE(came.bits.has_value());
    EXPECT_EQ(came.bits->ToolDiameter, 0.1);
    EXPECT_EQ(came.bits->ToolNumber, "7");
    EXPECT_EQ(came.bits->kind, PathKind::PKC);
    EXPECT_EQ(PackResult(came), PackResult(sent));
}

TEST(PartResult, ThatIsCutOffIsNone) {
    const std::string packed = PackResult(Result());
    EXPECT_THROW(UnpackResult(packed.substr(0, packed.size() - 1)), Failure);
    EXPECT_THROW(UnpackResult(packed + "0:"), Failure);
}

TEST(PartResult, AddsLinesOfMaterialsOnce) {
    RunReport run;
    AddReport(run, Result().report);
    AddReport(run, Result().report);
    EXPECT_EQ(run.skipped, (std::vector<std::string>{"a", "a"}));
    EXPECT_EQ(run.doubtfulMaterials, std::vector<std::string>{"e"});
    EXPECT_EQ(run.unknownMaterials, std::vector<std::string>{"18 OAK"});
}

}  // namespace
}  // namespace brenvik
