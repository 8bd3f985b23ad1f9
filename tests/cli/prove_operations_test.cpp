// brenvik prove: operations that somebody has added to a part file or renamed in it.
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "base/letter_case.h"
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

    /// A group of an entity with another value, for each of its places.
    static std::string WithValues(std::string text, const std::string& group,
                                  const std::function<double(double)>& change) {
        const std::string mark = "\n" + group + "\n";
        for (std::size_t at = text.find(mark); at != std::string::npos; at = text.find(mark, at)) {
            at += mark.size();
            const std::size_t length = text.find('\n', at) - at;
            text.replace(at, length, std::to_string(change(std::stod(text.substr(at, length)))));
        }
        return text;
    }

    /// The file with the first entity that holds a text once more, changed, under a handle of its own.
    static std::string WithCopy(const std::string& text, const std::string& type, const std::string& holding,
                                const std::function<std::string(std::string)>& change) {
        const std::string next = "\n  0\n";
        std::size_t from = EntityAt(text, type), end = text.find(next, from + 1);
        while (from != std::string::npos &&
               text.substr(from, end - from).find(holding) == std::string::npos) {
            from = text.find(next + type + "\n", end);
            end = text.find(next, from + 1);
        }
        if (from == std::string::npos) return text;
        const std::string copy = change(text.substr(from, end - from));
        const std::string handle = ValueAt(copy, "  5", 0);
        return text.substr(0, end) + ReplaceAll(copy, "\n  5\n" + handle + "\n", "\n  5\nABC0\n") +
               text.substr(end);
    }

    /// The entity at a place with a colour of its own in place of the one that it has, if any.
    static std::string WithColor(const std::string& text, std::size_t from, const std::string& color) {
        const std::size_t end = text.find("\n  0\n", from + 1);
        std::string entity = text.substr(from, end - from);
        if (entity.find("\n 62\n") != std::string::npos)
            entity = ReplaceAll(entity, "\n 62\n" + ValueAt(entity, " 62", 0) + "\n", "\n");
        entity.insert(entity.find("\n  8\n"), "\n 62\n" + color);
        return text.substr(0, from) + entity + text.substr(end);
    }

    std::string file;
};

// It would go into whatever lies beside the part on the sheet.
TEST_F(ProveOperations, AHoleJustBesideThePartIsTold) {
    MakeSample("C2C");
    file = FileWith("CIRCLE");
    const std::string text = FileText();
    for (const double share : {1.05, 1.4, 1.9}) {
        SCOPED_TRACE(share);
        const std::string edited = WithCopy(text, "CIRCLE", "", [&](const std::string& hole) {
            const double radius = std::stod(ValueAt(hole, " 40", 0));
            return WithValues(hole, " 20", [&](double) { return -share * radius; });
        });
        ASSERT_NE(edited, text);
        Write(file, edited);
        const Outcome outcome = ProveSample();
        EXPECT_EQ(outcome.status, 1);
        EXPECT_NE(outcome.errors.find(" passes the part by and cuts nothing"), std::string::npos)
            << outcome.errors;
    }
}

TEST_F(ProveOperations, ASecondOutlineWithinTheFirstIsTold) {
    for (const char* target : {"C2C", "THERM", "ROV", "WOP5", "BW", "ABC"}) {
        SCOPED_TRACE(target);
        MakeFiles(target);
        file = FileWith("LWPOLYLINE");
        const std::string text = FileText();
        for (const double inset : {0.05, 50.0}) {
            SCOPED_TRACE(inset);
            const auto smaller = [inset](double at) { return at < 1 ? at + inset : at - inset; };
            const std::string edited =
                WithCopy(text, "LWPOLYLINE", "\n 62\n2\n", [&](const std::string& outline) {
                    return WithValues(WithValues(outline, " 10", smaller), " 20", smaller);
                });
            ASSERT_NE(edited, text);
            Write(file, edited);
            ExpectTold(ProveJob(), " goes around wood within another outline, and cuts the part smaller",
                       oneRight);
        }
        Write(file, text);
        EXPECT_EQ(ProveJob().status, 0);
    }
}

TEST_F(ProveOperations, ASecondPathOfAnotherDepthInOnePlaceIsTold) {
    for (const char* target : {"ABC", "RCIM", "Enroute"}) {
        SCOPED_TRACE(target);
        MakeFiles(target);
        file = "cut/Part_0_Side_7.dxf";
        const std::string text = FileText();
        const std::string edited = WithCopy(text, "LWPOLYLINE", "\n  8\nPKC_", [](const std::string& path) {
            return WithValues(path, " 39", [](double depth) { return depth / 2; });
        });
        ASSERT_NE(edited, text);
        Write(file, edited);
        ExpectTold(ProveJob(), " stands twice in one place", oneRight);
    }
}

TEST_F(ProveOperations, AHoleWithinAnotherOneIsTold) {
    for (const char* target : {"ROV", "CNI", "ASP", "BW", "WOP5"}) {
        SCOPED_TRACE(target);
        MakeFiles(target);
        file = FileWith("CIRCLE");
        const std::string text = FileText();
        const std::string edited = WithCopy(text, "CIRCLE", "", [](const std::string& hole) {
            return WithValues(hole, " 40", [](double radius) { return radius / 2; });
        });
        ASSERT_NE(edited, text);
        Write(file, edited);
        ExpectTold(ProveJob(), " cuts nothing that ", oneRight);
    }
}

TEST_F(ProveOperations, AColourThatNoPathInsideHasIsTold) {
    MakeFiles("WOP5");
    file = "cut/Part_0_Side_7.dxf";
    const std::string text = FileText();
    for (const char* color : {"1", "4", "6"}) {
        std::size_t from = EntityAt(text, "LWPOLYLINE");
        while (text.substr(from, text.find("\n  0\n", from + 1) - from).find("\n 62\n") != std::string::npos)
            from = text.find("\n  0\nLWPOLYLINE\n", from + 1);
        ASSERT_NE(from, std::string::npos);
        const std::size_t at = text.find("\n  8\n", from);
        Write(file, text.substr(0, at) + "\n 62\n" + color + text.substr(at));
        ExpectTold(ProveJob(), std::string(" has the colour ") + color + " and not 256 in the file",
                   oneRight);
    }
}

TEST_F(ProveOperations, ANumberThatIsNoColourIsTold) {
    MakeFiles("ABC");
    file = FileWith("CIRCLE");
    const std::string text = FileText();
    for (const char* type : {"CIRCLE", "LWPOLYLINE"})
        for (const char* color : {"-1", "-256", "257", "258"}) {
            SCOPED_TRACE(std::string(type) + " " + color);
            Write(file, WithColor(text, EntityAt(text, type), color));
            ExpectTold(ProveJob(), std::string(" has ") + color + " for its colour, and colours are 0 to 256",
                       oneRight);
        }
}

TEST_F(ProveOperations, TheColourOfALayerThatPathsTakeIsTold) {
    for (const std::string& target : allTargets) {
        SCOPED_TRACE(target);
        MakeFiles(target);
        file = FileWith("LWPOLYLINE");
        const std::string text = FileText();
        const auto edited = [&](const std::string& layer, const std::string& color) {
            const std::size_t record = text.find("\n  2\n" + layer + "\n"),
                              at = text.find("\n 62\n7\n", record);
            return text.substr(0, at) + color + text.substr(at + 7);
        };
        const std::string layer = ValueAt(text, "  8", EntityAt(text, "LWPOLYLINE"));
        for (const char* color : {"1", "2", "4"}) {
            const std::string other = edited(layer, std::string("\n 62\n") + color + "\n");
            Write(file, WithColor(other, EntityAt(other, "LWPOLYLINE"), "256"));
            ExpectTold(ProveJob(), "the layer " + layer + " has the colour " + color + " and not 7",
                       oneRight);
        }
        Write(file, edited(layer, "\n 62\n7\n 62\n2\n"));
        ExpectTold(ProveJob(), "the layer " + layer + " has the group 62 twice", oneRight);
        Write(file, edited(layer, "\n 62\n7\n420\n255\n"));
        ExpectTold(ProveJob(), "the layer " + layer + " has a true colour", oneRight);
    }
}

TEST_F(ProveOperations, LayersThatDifferInTheCaseOfLettersAloneAreTold) {
    MakeFiles("ABC");
    file = FileWith("LWPOLYLINE");
    const std::string text = FileText();
    const std::string layer = ValueAt(text, "  8", EntityAt(text, "LWPOLYLINE"));
    const std::size_t record = text.rfind("\n  0\nLAYER\n", text.find("\n  2\n" + layer + "\n"));
    const std::size_t end = text.find("\n  0\n", record + 1);
    std::string other = ReplaceAll(text.substr(record, end - record), layer, FoldLower(layer));
    other = ReplaceAll(other, "\n  5\n" + ValueAt(other, "  5", 0) + "\n", "\n  5\nABC0\n");
    std::string edited = text.substr(0, end) + other + text.substr(end);
    edited.replace(EntityAt(edited, "LWPOLYLINE"), std::string::npos,
                   ReplaceAll(edited.substr(EntityAt(edited, "LWPOLYLINE")), "\n  8\n" + layer + "\n",
                              "\n  8\n" + FoldLower(layer) + "\n"));
    Write(file, edited);
    ExpectTold(ProveJob(), " differ in the case of letters alone", oneRight);
}

TEST_F(ProveOperations, ADirectionThatIsNotOneLongIsTold) {
    MakeFiles("BW");
    file = FileWith("LWPOLYLINE");
    const std::string text = FileText();
    for (const char* up : {"0.0", "2.0"}) {
        const std::size_t end = text.find("\n  0\n", EntityAt(text, "LWPOLYLINE") + 1);
        Write(file, text.substr(0, end) + "\n210\n0.0\n220\n0.0\n230\n" + up + text.substr(end));
        ExpectTold(ProveJob(), " has a direction that is not 1 long", oneRight);
    }
}

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

TEST_F(ProveOperations, ALetterOfALayersNameByItsNumberIsTold) {
    MakeFiles("ABC");
    file = FileWith("CIRCLE");
    const std::string text = FileText();
    const std::string layer = ValueAt(text, "  8", EntityAt(text, "CIRCLE"));
    for (const char* mark : {"\\U+00", "\\u+00"}) {
        // Its first letter is a V.
        const std::string other = mark + ("56" + layer.substr(1));
        Write(file, ReplaceAll(text, "\n" + layer + "\n", "\n" + other + "\n"));
        ExpectTold(ProveJob(), "the layer \"" + other + "\" has characters as \\U+XXXX", oneRight);
    }
}

TEST_F(ProveOperations, ABlankBesideANamesToolIsTold) {
    for (const char* target : {"ABC", "C2C", "ATP", "RCIM"}) {
        SCOPED_TRACE(target);
        MakeFiles(target);
        file = FileWith("LWPOLYLINE");
        const std::string text = FileText();
        for (const char* mark : {"_D", "_S", "_F"}) {
            const std::string layer = ValueAt(text, "  8", EntityAt(text, "LWPOLYLINE"));
            const std::string other = ReplaceAll(layer, mark, std::string(" ") + mark);
            ASSERT_NE(layer, other);
            Write(file, ReplaceAll(text, "\n" + layer + "\n", "\n" + other + "\n"));
            ExpectTold(ProveJob(), other, oneRight);
        }
    }
}

}  // namespace
}  // namespace brenvik::cli_test
