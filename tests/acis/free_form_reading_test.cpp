// Free curves and surfaces as other programs write them, damaged ones too.
#include "free_shapes.h"

namespace brenvik::acis::testing {
namespace {

std::string Swapped(std::string text, const std::string& what, const std::string& by) {
    std::size_t place = text.find(what);
    EXPECT_NE(place, std::string::npos) << what;
    for (; place != std::string::npos; place = text.find(what, place + by.size()))
        text.replace(place, what.size(), by);
    return text;
}

// Curves that are not exact in their own right carry the spline that stands in for them all the same.
TEST(FreeFormReading, TakesTheSplineThatAnyCurveCarries) {
    const std::string text = Joined(WriteText(Crossed(12, 0)));
    const double volume = ExactVolume(Crossed(12, 0));
    for (const char* kind :
         {"surfintcur", "parcur", "bldcur", "exact_int_cur 23100 full", "lawintcur full"}) {
        const TopoDS_Shape back = ReadOne(Swapped(text, "{ exactcur", std::string("{ ") + kind));
        EXPECT_NEAR(ExactVolume(back), volume, 1e-9 * volume) << kind;
    }
}

TEST(FreeFormReading, TakesTheSplineBehindWhatASurfaceIsMadeOf) {
    const std::string text = Joined(WriteText(Moulding()));
    const double volume = ExactVolume(Moulding());
    const std::string blend =
        "{ rbblnsur straight 0 0 0 1 0 0 I I intcurve forward { exactcur nubs 1 open 2 0 1 1 1 0 0 0 9 9 9 0 "
        "null_surface null_surface nullbs nullbs I I 0 0 0 F 1 F 0 } I I 3 3 ";
    // The curve within the braces has a number of its own, but the surface was opened before it.
    const TopoDS_Shape back = ReadOne(Swapped(text, "{ exactsur ", blend));
    EXPECT_NEAR(ExactVolume(back), volume, 1e-9 * volume);
}

TEST(FreeFormReading, FindsTheCurvesOnASurfaceThatTheTextLeavesOut) {
    std::string text = Joined(WriteText(DrilledMoulding()));
    std::string bare;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("coedge ")) line = line.substr(0, line.rfind(" $")) + " $-1 #";
        bare += line + "\n";
    }
    const double volume = ExactVolume(DrilledMoulding());
    EXPECT_NEAR(ExactVolume(ReadOne(bare)), volume, 1e-9 * volume);
}

TEST(FreeFormReading, PassesOverCurvesOnASurfaceThatMissTheirEdges) {
    const std::string text =
        Swapped(Joined(WriteText(Moulding())), "{ exppc nubs 1 open 2\n0 1 ", "{ exppc nubs 1 open 2\n-7 1 ");
    const double volume = ExactVolume(Moulding());
    EXPECT_NEAR(ExactVolume(ReadOne(text)), volume, 1e-9 * volume);
}

TEST(FreeFormReading, FollowsReferencesToBracesOfOtherRecords) {
    std::string text = Joined(WriteText(Moulding()));
    // The second of the curves says that it is the first, moved nowhere: the loops no longer meet.
    const std::size_t first = text.find("{ exactcur");
    const std::size_t second = text.find("{ exactcur", first + 1);
    const std::size_t end = text.find('}', second);
    text.replace(second, end - second + 1, "{ ref 1 }");
    const ReadResult result = ReadText(text);
    EXPECT_TRUE(result.bodies.empty());
    ASSERT_EQ(result.problems.size(), 1u);
    EXPECT_NE(result.problems[0].text.find("do not lie on its curve"), std::string::npos)
        << result.problems[0].text;
}

TEST(FreeFormReading, RunsACurveBackwardsWhereTheRecordSaysSo) {
    std::string text = Joined(WriteText(Moulding()));
    const std::size_t curve = text.find("intcurve-curve $-1 forward");
    ASSERT_NE(curve, std::string::npos);
    const long record = [&] {
        const std::string before = text.substr(0, curve);
        return static_cast<long>(std::count(before.begin(), before.end(), '#'));
    }();
    text.replace(curve, 26, "intcurve-curve $-1 reversed");
    const std::string edge = "$" + std::to_string(record) + " forward #";
    const std::size_t place = text.find(edge);
    ASSERT_NE(place, std::string::npos);
    text.replace(place, edge.size(), "$" + std::to_string(record) + " reversed #");
    const double volume = ExactVolume(Moulding());
    EXPECT_NEAR(ExactVolume(ReadOne(text)), volume, 1e-9 * volume);
}

struct DamagedSpline {
    const char* rule;
    const char* what;
    const char* by;
    const char* told;
};

TEST(FreeFormReading, TellsWhatIsWrongWithASpline) {
    const std::string text = Joined(WriteText(Moulding()));
    const DamagedSpline cases[] = {
        {"no spline of its own", "exactcur nubs 4 open 2", "helixcur 1 2 3", "has no spline of its own"},
        {"no approximation kept", "exactcur nubs", "surfintcur none", "has no spline of its own"},
        {"null spline", "exactcur nubs", "exactcur nullbs", "has no spline of its own"},
        {"degree", "exactcur nubs 4", "exactcur nubs 99", "degree of 99"},
        {"half a degree", "exactcur nubs 4", "exactcur nubs 2.5", "degree of 2.5"},
        {"knots", "exactcur nubs 4 open 2", "exactcur nubs 4 open 99999999", "number of knots"},
        {"falling knots", "0 4 1 4\n", "1 4 0 4\n", "knots do not rise"},
        {"repetitions", "0 4 1 4\n", "0 9 1 4\n", "repetitions of a knot"},
        {"too few poles", "exactcur nubs 4 open 2\n0 4 1 4", "exactcur nubs 25 open 2\n0 25 1 25",
         "fields left in the record"},
        {"surface without a spline", "exactsur nubs", "exactsur nullbs", "has no spline of its own"},
        {"surface knots", "open open none none 2 2", "open open none none 2 88888888", "number of knots"},
        {"reference to nothing", "{ exactcur nubs 4 open 2", "{ ref 77 }",
         "braces that the text does not have"},
        {"no braces", "{ exactcur", "exactcur", "opening brace"},
    };
    for (const DamagedSpline& damaged : cases) {
        std::string bad = text;
        const std::size_t place = bad.find(damaged.what);
        ASSERT_NE(place, std::string::npos) << damaged.rule;
        bad.replace(place, std::string(damaged.what).size(), damaged.by);
        const ReadResult result = ReadText(bad);
        EXPECT_TRUE(result.bodies.empty()) << damaged.rule;
        ASSERT_FALSE(result.problems.empty()) << damaged.rule;
        EXPECT_NE(result.problems[0].text.find(damaged.told), std::string::npos)
            << damaged.rule << ": " << result.problems[0].text;
    }
}

TEST(FreeFormReading, SurvivesDamagedBytesAndFields) {
    std::mt19937 random(4711);
    const std::string texts[] = {Joined(WriteText(Moulding())), Joined(WriteText(Vase())),
                                 Joined(WriteText(CamFitting()))};
    const std::string bytes = "$#- 0123456789.eEIFx@\n{}";
    const std::string words[] = {"{",  "}", "ref", "nubs",   "nurbs", "full",
                                 "-1", "0", "1e9", "1e-300", "$3",    "2"};
    const auto begin = std::chrono::steady_clock::now();
    for (int round = 0; round < 900; ++round) {
        std::string text = texts[static_cast<std::size_t>(round) % std::size(texts)];
        const int changes = 1 + static_cast<int>(random() % 4);
        for (int i = 0; i < changes; ++i) {
            const std::size_t place = random() % text.size();
            if (round % 2 == 0) {
                text[place] = bytes[random() % bytes.size()];
                continue;
            }
            const std::size_t from = text.find_first_of(" \n", place);
            if (from == std::string::npos) continue;
            const std::size_t to = std::min(text.find_first_of(" \n", from + 1), text.size());
            text.replace(from + 1, to - from - 1, words[random() % std::size(words)]);
        }
        for (const TopoDS_Shape& body : ReadText(text).bodies) {
            try {
                WriteText(body);
            } catch (const WriteFailure&) {
                // A body of damaged text may be one that cannot be written.
            }
        }
    }
    const std::chrono::duration<double> spent = std::chrono::steady_clock::now() - begin;
    std::printf("900 damaged texts: %.1f s\n", spent.count());
}

TEST(FreeFormReading, IsFast) {
    const std::string text = Joined(WriteText(CamFitting()));
    double fastest = 1e9;
    for (int round = 0; round < 5; ++round) {
        const auto begin = std::chrono::steady_clock::now();
        ASSERT_EQ(ReadText(text).bodies.size(), 1u);
        const std::chrono::duration<double, std::milli> spent = std::chrono::steady_clock::now() - begin;
        fastest = std::min(fastest, spent.count());
    }
    std::printf("a panel with a cam fitting: %.2f ms\n", fastest);
}

}  // namespace
}  // namespace brenvik::acis::testing
