// brenvik prove: the ways of paths and outlines, and paths that cut nothing more.
#include <filesystem>
#include <functional>

#include "base/letter_case.h"
#include "base/text.h"
#include "prove_fixture.h"

namespace brenvik::cli_test {
namespace {

namespace fs = std::filesystem;

class ProveWays : public Prove {
  protected:
    void MakeSample(const std::string& target) {
        fs::remove(folder / "job.dxf");
        WriteSample("job.dxf");
        const Outcome outcome =
            Run({"cnc", "job.dxf", "--target", target, "--out", "cut", "--quiet", "--material", "Birch Ply"});
        ASSERT_EQ(outcome.status, 0) << outcome.errors;
    }
    Outcome ProveSample() const { return ProveJob({"--material", "Birch Ply"}); }

    std::string TextOf(const std::string& file) const { return ReplaceAll(Read(file), "\r\n", "\n"); }

    struct Entity {
        std::size_t from = 0, end = 0;
    };
    /// The first path whose text has `holding` and not `without`.
    static Entity PathIn(const std::string& text, const std::string& holding, const std::string& without) {
        const std::string next = "\n  0\n";
        for (std::size_t from = text.find(next, text.find("\nENTITIES\n")); from != std::string::npos;) {
            const std::size_t end = text.find(next, from + 1);
            const std::string entity = text.substr(from, end - from);
            if (entity.starts_with(next + "LWPOLYLINE\n") && entity.find(holding) != std::string::npos &&
                (without.empty() || entity.find(without) == std::string::npos))
                return {from, end};
            from = end;
        }
        return {};
    }

    /// With the path once more, under a handle of its own, further along X.
    static std::string WithPathMoved(const std::string& text, const Entity& path, double by) {
        std::string copy = text.substr(path.from, path.end - path.from);
        const std::size_t handle = copy.find("\n  5\n") + 5;
        copy.replace(handle, copy.find('\n', handle) - handle, "ABC0");
        const std::string mark = "\n 10\n";
        for (std::size_t at = copy.find(mark); at != std::string::npos; at = copy.find(mark, at)) {
            at += mark.size();
            const std::size_t length = copy.find('\n', at) - at;
            copy.replace(at, length, std::to_string(std::stod(copy.substr(at, length)) + by));
        }
        return text.substr(0, path.end) + copy + text.substr(path.end);
    }

    /// With a spike on the first side of the outline of a board, which runs along X at its front or back.
    static std::string WithSpike(const std::string& text, double height) {
        const Entity outline = PathIn(text, "\n 62\n2\n", "");
        std::string entity = text.substr(outline.from, outline.end - outline.from);
        const std::size_t count = entity.find("\n 90\n") + 5;
        entity.replace(count, entity.find('\n', count) - count, "7");
        // Behind the vertex at the origin the way goes along the front edge.
        const std::size_t corner = entity.find("\n 10\n0.0\n 20\n0.0"), length = 16;
        const std::string foot = "\n 10\n100.0\n 20\n0.0";
        entity.insert(corner + length, foot + "\n 10\n100.0\n 20\n" + std::to_string(height) + foot);
        return text.substr(0, outline.from) + entity + text.substr(outline.end);
    }
};

// What lies on the board is cut already, and beside it there is but air, or another part.
TEST_F(ProveWays, APathOnceMoreFurtherAlongItsCourseIsTold) {
    for (const char* target : {"C2C", "ROV"}) {
        SCOPED_TRACE(target);
        MakeSample(target);
        std::string file;
        for (const auto& entry : fs::directory_iterator(folder / "cut"))
            if (entry.path().filename().string().starts_with("Part_9_"))
                file = "cut/" + entry.path().filename().string();
        const std::string text = TextOf(file);
        const Entity path = PathIn(text, "\n 20\n", "\n 62\n2\n");
        ASSERT_NE(path.end, 0U);
        for (const double by : {0.5, -6.0}) {
            Write(file, WithPathMoved(text, path, by));
            ExpectTold(ProveSample(), " cuts nothing that ", "15 of 16 parts ");
        }
        Write(file, text);
        EXPECT_EQ(ProveSample().status, 0);
    }
}

TEST_F(ProveWays, ASpikeOfTheOutlineIsToldHoweverThinAndShortItIs) {
    MakeFiles();
    const std::string file = "cut/2-sided/BPart_0_Side_7.dxf", text = TextOf(file);
    for (const double height : {0.2, 1.0, -1.0}) {
        SCOPED_TRACE(height);
        Write(file, WithSpike(text, height));
        ExpectTold(ProveJob(), " runs out and back the same way, from 100,", oneRight);
    }
}

TEST_F(ProveWays, ACornerOfASecondSideThatIsOffByATwentiethIsTold) {
    MakeFiles();
    const std::string file = "cut/2-sided/BPart_0_Side_7.dxf", text = TextOf(file);
    const std::size_t outline = PathIn(text, "\n 62\n2\n", "").from;
    for (const char* place : {"0.05", "-0.05", "0.04"}) {
        std::string edited = text;
        edited.replace(edited.find("\n 10\n0.0\n", outline), 9, std::string("\n 10\n") + place + "\n");
        Write(file, edited);
        ExpectTold(ProveJob(), "the outlines of the two sides differ", oneRight);
    }
}

TEST_F(ProveWays, AFileInOtherSmallAndCapitalLettersIsTold) {
    MakeFiles();
    fs::rename(folder / "cut/Part_0_Side_7.dxf", folder / "cut/Part_0_side_7.dxf");
    ExpectTold(ProveJob(), "the file Part_0_side_7.dxf has other small and capital letters",
               oneRightAndStrays);
    fs::rename(folder / "cut/Part_0_side_7.dxf", folder / "cut/Part_0_Side_7.dxf");
    fs::rename(folder / "cut/2-sided/BPart_0_Side_7.dxf", folder / "cut/2-sided/bpart_0_side_7.dxf");
    ExpectTold(ProveJob(), "the file bpart_0_side_7.dxf has other small and capital letters", oneRight);
}

TEST_F(ProveWays, ALayerWithoutAColourIsTold) {
    MakeFiles();
    const std::string file = "cut/Part_0_Side_7.dxf", text = TextOf(file);
    const std::size_t record = text.find("\n  2\nOT_Z"), color = text.find("\n 62\n7\n", record);
    ASSERT_NE(color, std::string::npos);
    Write(file, text.substr(0, color) + text.substr(color + 6));
    ExpectTold(ProveJob(), " has no colour (group 62)", oneRight);
}

// Whatever its receiver makes of a sheet without an outline, nothing of it lies in the files.
TEST_F(ProveWays, OutlinesThatTheRunLeavesOutAreNoneToProve) {
    ASSERT_EQ(Run({"settings", "set", "BiesseWorksNest", "1"}).status, 0);
    MakeSample("BW");
    const Outcome outcome = ProveSample();
    EXPECT_EQ(outcome.output, "16 of 16 parts come out of cut as they are drawn\n") << outcome.errors;
    EXPECT_EQ(outcome.status, 0);
}

TEST_F(ProveWays, CutsThatLeaveASkinByTheSettingAreProved) {
    ASSERT_EQ(Run({"settings", "set", "BiesseWorksSpoil", "-0.5"}).status, 0);
    MakeSample("C2C");
    const Outcome outcome = ProveSample();
    EXPECT_EQ(outcome.output, "16 of 16 parts come out of cut as they are drawn\n") << outcome.errors;
    EXPECT_EQ(outcome.status, 0);
}

}  // namespace
}  // namespace brenvik::cli_test
