// brenvik prove: operations that somebody has added to a part file or renamed in it.
#include <filesystem>
#include <string>
#include <vector>

#include "base/text.h"
#include "prove_fixture.h"

namespace brenvik::cli_test {
namespace {

namespace fs = std::filesystem;

const std::vector<std::string> allTargets{"C2C",  "ATP",   "ROV", "CNI",     "ASP", "WOP4",
                                          "WOP5", "THERM", "BW",  "Enroute", "ABC", "RCIM"};

class ProveOperations : public Prove {
  protected:
    /// The sample's files; it has drilled holes.
    void MakeSample(const std::string& target) {
        fs::remove(folder / "job.dxf");
        WriteSample("job.dxf");
        const Outcome outcome =
            Run({"cnc", "job.dxf", "--target", target, "--out", "cut", "--quiet", "--material", "Birch Ply"});
        ASSERT_EQ(outcome.status, 0) << outcome.errors;
    }
    Outcome ProveSample() const { return ProveJob({"--material", "Birch Ply"}); }

    /// The text of the part file, its lines ended by a line feed alone.
    std::string FileText() const { return ReplaceAll(Read(file), "\r\n", "\n"); }

    /// A part file that has such an entity.
    std::string FileWith(const std::string& type) const {
        for (const auto& entry : fs::recursive_directory_iterator(folder / "cut")) {
            const std::string name = fs::relative(entry.path(), folder).string();
            if (entry.path().extension() == ".dxf" &&
                EntityAt(ReplaceAll(Read(name), "\r\n", "\n"), type) != std::string::npos)
                return name;
        }
        return "none";
    }

    static std::size_t EntityAt(const std::string& text, const std::string& type) {
        return text.find("\n  0\n" + type + "\n", text.find("\nENTITIES\n"));
    }

    /// The value of the first such group behind `from`.
    static std::string ValueAt(const std::string& text, const std::string& group, std::size_t from) {
        const std::size_t at = text.find("\n" + group + "\n", from) + group.size() + 2;
        return text.substr(at, text.find('\n', at) - at);
    }

    /// The file with a second circle that goes half as deep, under the same name.
    static std::string WithHoleOfHalfTheDepth(const std::string& text) {
        const std::size_t from = EntityAt(text, "CIRCLE"), end = text.find("\n  0\n", from + 1);
        if (from == std::string::npos) return text;
        std::string hole = text.substr(from, end - from);
        const std::string handle = ValueAt(hole, "  5", 0), depth = ValueAt(hole, " 39", 0);
        hole = ReplaceAll(hole, "\n  5\n" + handle + "\n", "\n  5\nABC0\n");
        hole = ReplaceAll(hole, "\n 39\n" + depth + "\n",
                          "\n 39\n" + std::to_string(std::stod(depth) / 2) + "\n");
        return text.substr(0, end) + hole + text.substr(end);
    }

    std::string file;
};

TEST_F(ProveOperations, ASecondHoleOfAnotherDepthInOnePlaceIsTold) {
    for (const char* target : {"ASP", "ABC", "RCIM", "Enroute"}) {
        SCOPED_TRACE(target);
        MakeSample(target);
        file = FileWith("CIRCLE");
        ASSERT_NE(file, "none");
        const std::string text = FileText(), edited = WithHoleOfHalfTheDepth(text);
        Write(file, edited);
        ExpectTold(ProveSample(), " stands twice in one place", "15 of 16 parts ");
    }
}

TEST_F(ProveOperations, ABlankAroundALayersNameIsTold) {
    for (const std::string& target : allTargets) {
        SCOPED_TRACE(target);
        MakeFiles(target);
        for (const char* type : {"CIRCLE", "LWPOLYLINE", "POLYLINE"}) {
            SCOPED_TRACE(type);
            file = FileWith(type);
            if (file == "none") continue;
            const std::string text = FileText();
            const std::string layer = ValueAt(text, "  8", EntityAt(text, type));
            for (const std::string& other : {layer + " ", " " + layer, layer + "\t"}) {
                SCOPED_TRACE('"' + other + '"');
                const std::string edited =
                    ReplaceAll(text, "\n  8\n" + layer + "\n", "\n  8\n" + other + "\n");
                Write(file, ReplaceAll(edited, "\n  2\n" + layer + "\n", "\n  2\n" + other + "\n"));
                ExpectTold(ProveJob(), " begins or ends with a blank", oneRight);
            }
            Write(file, text);
        }
        EXPECT_EQ(ProveJob().status, 0);
    }
}

}  // namespace
}  // namespace brenvik::cli_test
