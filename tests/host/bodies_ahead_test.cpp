// Bodies that several processors read: the drawing is the one that a single one reads.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <string>
#include <vector>

#include "drafting_host/document/files/reading_processors.h"
#include "drafting_host/dxf/writing/dxf_writer.h"
#include "host_fixture.h"

namespace brenvik {
namespace {

namespace fs = std::filesystem;

class BodiesAheadOfTheirTurn : public HostTest {
  protected:
    ~BodiesAheadOfTheirTurn() override {
        ReadBodiesOn(1);
        fs::remove(file);
    }

    /// Boxes of sizes of their own; every seventh is damaged, and every ninth has no text at all.
    void WriteDrawing(int bodies) {
        for (int body = 0; body < bodies; ++body) Model().AddBox({10.0 * body, 0, 0}, 1 + body, 2, 3);
        std::vector<std::string> problems;
        DrawingData data = document.ToData(problems);
        std::vector<EntityData>& entities = data.blocks.front().entities;
        for (std::size_t at = 0; at < entities.size(); ++at) {
            std::string& text = std::get<AcisData>(entities[at].geometry).text;
            if (at % 7 == 3) text.replace(text.find("plane-surface"), 5, "plaid");
            if (at % 9 == 4) text.clear();
        }
        WriteWholeFile(file, WriteDxf(data));
    }

    /// What was read, line by line.
    std::vector<std::string> ReadOn(int processors) {
        ReadBodiesOn(processors);
        HostDocument& drawing = application.OpenDrawing(file);
        std::vector<std::string> lines;
        drawing.ModelSpace().ForEach([&](AcadEntity& entity) {
            lines.push_back(entity.Handle() + " " +
                            std::to_string(dynamic_cast<HostSolid&>(entity).Volume()) + " " +
                            std::to_string(entity.GetBoundingBox().max.x));
        });
        for (const ReadNote& note : drawing.Notes())
            lines.push_back(std::to_string(note.line) + ": " + note.text);
        drawing.Close(false);
        return lines;
    }

    const fs::path file =
        fs::temp_directory_path() /
        ("brenvik-bodies-ahead-" +
         std::string(::testing::UnitTest::GetInstance()->current_test_info()->name()) + ".dxf");
};

TEST_F(BodiesAheadOfTheirTurn, ComeInTheirOrderWithTheirNotes) {
    constexpr int bodies = 100;
    WriteDrawing(bodies);
    const std::vector<std::string> alone = ReadOn(1);
    const auto left = std::ranges::count_if(
        alone, [](const std::string& line) { return line.find("left out") != std::string::npos; });
    EXPECT_EQ(left, 14 + 11 - 2);  // two damaged ones have no text either
    for (const int processors : {2, 3, 8}) EXPECT_EQ(ReadOn(processors), alone) << processors;
}

TEST_F(BodiesAheadOfTheirTurn, LeaveNoThreadBehind) {
    constexpr int bodies = 40;
    WriteDrawing(bodies);
    const auto threads = [] {
        return std::distance(fs::directory_iterator("/proc/self/task"), fs::directory_iterator());
    };
    const auto before = threads();
    for (int time = 0; time < 5; ++time) {
        ReadOn(8);
        EXPECT_EQ(threads(), before);
    }
}

}  // namespace
}  // namespace brenvik
