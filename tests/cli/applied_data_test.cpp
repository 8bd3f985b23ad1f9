// What is typed into the list and applied: it survives saving and opening, and other programs can read it.
#include "checkout_paths.h"
#include "program.h"
#include "support/ezdxf_audit.h"
#include "support/golden.h"

namespace brenvik::cli_test {
namespace {

class AppliedData : public ProgramTest {
  protected:
    void PlayOnSample(const std::string& journal, int status = 0) const {
        const std::string file = std::string(BRENVIK_SOURCE_DIR) + "/tests/journals/" + journal;
        const Outcome outcome = Run({"run", ShippedSample().string(), "--journal", file});
        ASSERT_EQ(outcome.status, status) << outcome.errors;
    }
    /// The lines "HANDLE KEY=VALUE" of one solid, as ezdxf reads them from the file.
    std::string DataByEzdxf(const std::string& drawing, const std::string& handle) const {
        const test::CommandResult read = test::RunCommand(
            "/usr/bin/python3 '" BRENVIK_SOURCE_DIR "/tests/tools/part_data.py' '" + Path(drawing) + "'");
        EXPECT_EQ(read.status, 0) << read.output;
        std::string lines;
        for (std::size_t at = 0; at < read.output.size();) {
            const std::size_t end = read.output.find('\n', at);
            const std::string line = read.output.substr(at, end - at);
            if (line.starts_with(handle + " ")) lines += line + "\n";
            at = end == std::string::npos ? end : end + 1;
        }
        return lines;
    }
};

TEST_F(AppliedData, OfADayAtWorkIsInTheListOfTheSavedDrawing) {
    PlayOnSample("a_day_at_work.journal");
    test::ExpectGolden("cli/golden/a-day-at-work.txt", Run({"list", "evening.dxf"}).output);
}

TEST_F(AppliedData, SurvivesBeingSavedTwice) {
    PlayOnSample("a_day_at_work.journal");
    ASSERT_EQ(Run({"convert", "evening.dxf", "again.dxf"}).status, 0);
    EXPECT_EQ(Run({"list", "again.dxf"}).output, Run({"list", "evening.dxf"}).output);
}

TEST_F(AppliedData, IsReadByEzdxf) {
    if (!test::HasEzdxf()) GTEST_SKIP() << "ezdxf is not installed for /usr/bin/python3";
    PlayOnSample("a_day_at_work.journal");
    EXPECT_EQ(test::AuditWithEzdxf(Path("evening.dxf")), std::nullopt);
    // Keys without a column repeat the value of the key before them.
    EXPECT_EQ(DataByEzdxf("evening.dxf", "156"),
              "156 QUANTITY=1\n156 PARTNAME=Door\n156 SUBASSEMBLY=Fronts\n156 MATERIAL=Cherry\n"
              "156 ORIE=LWT\n156 X=LWT\n156 Y=LWT\n156 Z=LWT\n156 NOTES=grain runs upright\n"
              "156 USERDATA1=Meyer\n156 USERDATA2=\n156 PN=7\n156 PRICE=42.50\n156 EB1=2mm Cherry\n"
              "156 EB2=2mm Cherry\n156 EB3=2mm Cherry\n156 EB4=2mm Cherry\n156 FACE=Front\n"
              "156 LAYERNAME=Front\n156 VALUE1=Front\n156 VALUE2=Front\n156 VALUE3=Front\n"
              "156 OLDVALUE1=596\n156 OLDVALUE2=19\n156 OLDVALUE3=700\n");
    EXPECT_EQ(DataByEzdxf("evening.dxf", "16F"),
              "16F QUANTITY=1\n16F PARTNAME=Drawer Bottom\n16F SUBASSEMBLY=Drawer\n16F MATERIAL=Birch Ply\n"
              "16F ORIE=lwt\n16F X=lwt\n16F Y=lwt\n16F Z=lwt\n16F NOTES=\n16F USERDATA1=Meyer\n"
              "16F USERDATA2=\n16F PN=1\n16F PRICE=\n16F EB1=\n16F EB2=\n16F EB3=\n16F EB4=\n16F FACE=\n"
              "16F LAYERNAME=\n16F VALUE1=\n16F VALUE2=\n16F VALUE3=\n16F OLDVALUE1=521\n"
              "16F OLDVALUE2=491.5\n16F OLDVALUE3=8\n");
}

TEST_F(AppliedData, OfAllScriptsSurvivesSavingAndOpening) {
    // A quantity in words is told, and kept all the same.
    PlayOnSample("cells_that_cannot_be_kept.journal", 1);
    const Outcome outcome = Run({"list", "cells.dxf", "--select", "120", "--format", "json"});
    EXPECT_EQ(outcome.status, 1) << outcome.errors;
    EXPECT_NE(outcome.output.find("\"bv_qty\": \"zwei\", \"bv_partname\": \"側板 Ж Ω ñ 👍\","),
              std::string::npos)
        << outcome.output;
    EXPECT_NE(outcome.output.find(R"("bv_notes": "3/4\" \\ {a;b}, %d 100%",)"), std::string::npos)
        << outcome.output;
    const std::string longName(255, 'x');
    EXPECT_NE(Run({"list", "cells.dxf", "--select", "100", "--format", "csv"}).output.find(longName),
              std::string::npos);
    if (test::HasEzdxf()) {
        EXPECT_EQ(test::AuditWithEzdxf(Path("cells.dxf")), std::nullopt);
    }
}

}  // namespace
}  // namespace brenvik::cli_test
