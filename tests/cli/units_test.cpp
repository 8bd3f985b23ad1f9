// Units at the borders: files that carry one are brought to the unit of the shop's drawings, each change is
// told, and what is written names the unit that it is in.
#include <cmath>
#include <optional>
#include <regex>
#include <sstream>

#include "boards.h"
#include "program.h"

namespace brenvik::cli_test {
namespace {

constexpr const char* toInches =
    ": lengths in millimetres brought to inches, the unit of this shop's drawings\n";
constexpr const char* toMillimetres =
    ": lengths in inches brought to millimetres, the unit of this shop's drawings\n";

class Units : public ProgramTest {
  protected:
    void MakeHome(const std::string& units) const { EXPECT_EQ(Run({"init", "--units", units}).status, 0); }

    /// A board of 600 by 400 by 18 whose drawing calls its unit by this number of $INSUNITS.
    void WriteBoard(const std::string& name, int unit) const {
        WriteBoardsTo(folder / name, {.names = {"Side"}});
        const std::string content = Read(name);
        Write(name, std::regex_replace(content, std::regex(R"(\$INSUNITS(\s+)70(\s+)0(\r?\n))"),
                                       "$$INSUNITS$01"
                                       "70$02" +
                                           std::to_string(unit) + "$03"));
    }

    /// The first number under a key of a list as JSON.
    static double Number(const std::string& json, const std::string& key) {
        std::smatch found;
        const std::regex pattern("\"" + key + R"(": ?([0-9.]+))");
        return std::regex_search(json, found, pattern) ? std::stod(found[1]) : -1;
    }

    struct Listed {
        double length = 0;
        std::string errors;
        int status = 0;
    };
    Listed List(const std::string& file, const std::vector<std::string>& options = {}) const {
        std::vector<std::string> words{"list", file, "--format", "json"};
        words.insert(words.end(), options.begin(), options.end());
        const Outcome outcome = Run(words);
        return {Number(outcome.output, "bv_length"), outcome.errors, outcome.status};
    }

    void ExpectLength(const std::string& file, double length, const std::string& told,
                      const std::vector<std::string>& options = {}) const {
        const Listed listed = List(file, options);
        EXPECT_NEAR(listed.length, length, 1e-5 * length) << file;
        EXPECT_EQ(listed.status, 0) << file << listed.errors;
        EXPECT_EQ(listed.errors, told.empty() ? "" : file + told) << file;
    }

    std::optional<std::string> UnitOf(const std::string& file) const {
        const std::string content = Read(file);
        std::smatch found;
        const std::regex pattern(R"(\$INSUNITS\s+70\s+(\d+))");
        if (!std::regex_search(content, found, pattern)) return std::nullopt;
        return found[1];
    }
};

TEST_F(Units, ADrawingWithoutAUnitIsInTheShops) {
    for (const char* home : {"metric", "imperial"}) {
        std::filesystem::remove_all(folder / "home");
        MakeHome(home);
        WriteBoard("board.dxf", 0);
        ExpectLength("board.dxf", 600, "");
    }
}

TEST_F(Units, ADrawingOfTheShopsUnitStaysAsItIs) {
    MakeHome("metric");
    WriteBoard("mm.dxf", 4);
    ExpectLength("mm.dxf", 600, "");
    EXPECT_EQ(Run({"settings", "set", "ExportScaleSetting", "3"}).status, 0);
    WriteBoard("inch.dxf", 1);
    ExpectLength("inch.dxf", 600, "");
    ExpectLength("mm.dxf", 600 / 25.4, toInches);
}

TEST_F(Units, ADrawingOfAnotherUnitIsBroughtToTheShops) {
    MakeHome("metric");
    WriteBoard("inch.dxf", 1);
    ExpectLength("inch.dxf", 600 * 25.4, toMillimetres);
    WriteBoard("m.dxf", 6);
    ExpectLength("m.dxf", 600 * 1000.0,
                 ": lengths in metres brought to millimetres, the unit of this shop's drawings\n");
    std::filesystem::remove_all(folder / "home");
    MakeHome("imperial");
    WriteBoard("mm.dxf", 4);
    ExpectLength("mm.dxf", 600 / 25.4, toInches);
    ExpectLength("inch.dxf", 600, "");
}

TEST_F(Units, LengthsInExtendedDataFollowTheirDrawing) {
    MakeHome("metric");
    WriteBoard("inch.dxf", 1);
    std::string text = Read("inch.dxf");
    std::erase(text, '\r');
    const std::size_t solid = text.find("  0\n3DSOLID\n"), end = text.find("\n  0\n", solid + 5) + 1;
    text.insert(end,
                "1001\nPARTNAME2\n1040\n2.0\n1041\n2.0\n1042\n3.0\n1011\n1.0\n1021\n2.0\n1031\n0.0\n"
                "1013\n0.0\n1023\n0.0\n1033\n1.0\n");
    Write("inch.dxf", text);
    EXPECT_EQ(Run({"convert", "inch.dxf", "mm.dxf"}).status, 0);
    std::string saved = Read("mm.dxf");
    std::erase(saved, '\r');
    const std::size_t at = saved.find("PARTNAME2\n", saved.find("3DSOLID"));
    ASSERT_NE(at, std::string::npos);
    std::vector<double> values;
    std::istringstream lines(saved.substr(at, 200));
    std::string line;
    for (std::getline(lines, line); std::getline(lines, line) && line != "1033";)
        if (std::getline(lines, line)) values.push_back(std::stod(line));
    ASSERT_GE(values.size(), 8U);
    EXPECT_EQ(std::vector<double>(values.begin(), values.begin() + 6),
              (std::vector<double>{2, 50.8, 3 * 25.4, 25.4, 50.8, 0}));
}

/// A drawing in inches with one entity of these groups in it, brought to millimetres.
class ScaledEntities : public Units {
  protected:
    /// The groups of the entity (from its name up to the next) in the drawing that comes out, one a line.
    std::string Scaled(const std::string& name, const std::string& groups) {
        MakeHome("metric");
        Write("inch.dxf",
              "  0\nSECTION\n  2\nHEADER\n  9\n$ACADVER\n  1\nAC1032\n  9\n$INSUNITS\n 70\n1\n  0\nENDSEC\n"
              "  0\nSECTION\n  2\nENTITIES\n  0\n" +
                  name + "\n" + groups + "  0\nENDSEC\n  0\nEOF\n");
        EXPECT_EQ(Run({"convert", "inch.dxf", "mm.dxf"}).status, 0);
        const std::string saved = Read("mm.dxf");
        std::istringstream lines(saved.substr(saved.find("ENTITIES")));
        std::string code, value, result;
        bool isInside = false;
        std::getline(lines, value);
        while (std::getline(lines, code) && std::getline(lines, value)) {
            std::erase(value, '\r');
            const int number = std::stoi(code);
            if (number == 0) isInside = value == name;
            const bool isShown = number != 5 && number != 330 && number != 100 && number != 8;
            if (isInside && isShown) result += std::to_string(number) + "=" + Rounded(number, value) + "\n";
        }
        return result;
    }
    /// A length to ten digits, anything else as it stands.
    static std::string Rounded(int code, const std::string& value) {
        if ((code < 10 || code > 59) && code != 1040) return value;
        std::ostringstream text;
        text.precision(10);
        text << std::stod(value);
        return text.str();
    }
    static void ExpectAll(const std::string& groups, const std::vector<std::string>& expected) {
        for (const std::string& group : expected)
            EXPECT_NE(("\n" + groups).find("\n" + group + "\n"), std::string::npos) << group << " in\n"
                                                                                    << groups;
    }
};

TEST_F(ScaledEntities, WidthsThatAPolylineHasByDefaultGrow) {
    const std::string vertices =
        "  0\nVERTEX\n  8\n0\n 10\n0.0\n 20\n0.0\n  0\nVERTEX\n  8\n0\n 10\n1.0\n 20\n2.0\n  0\nSEQEND\n";
    ExpectAll(Scaled("POLYLINE", "  8\n0\n 66\n1\n 40\n0.5\n 41\n0.25\n" + vertices), {"40=12.7", "41=6.35"});
}

TEST_F(ScaledEntities, AbsoluteHeightsInAParagraphGrowAndMultiplesStay) {
    ExpectAll(Scaled("MTEXT",
                     "  8\n0\n 10\n1.0\n 20\n2.0\n 40\n2.0\n  1\na\\H2.5;b\\H1.5x;c\\\\H2;{\\H.5;d\\pi1;\n"),
              {"40=50.8", "1=a\\H63.5;b\\H1.5x;c\\\\H2;{\\H12.7;d\\pi1;"});
}

TEST_F(ScaledEntities, WhatAParagraphSaysTwiceGrowsTwice) {
    const std::string groups = Scaled(
        "MTEXT",
        "  8\n0\n 10\n1.0\n 20\n2.0\n 40\n2.0\n 46\n3.0\n  1\na\n101\nEmbedded Object\n 70\n1\n 10\n1.0\n"
        " 20\n0.0\n 30\n0.0\n 11\n1.0\n 21\n2.0\n 31\n0.0\n 40\n4.0\n 41\n5.0\n 44\n6.0\n 46\n7.0\n "
        "46\n8.0\n");
    ExpectAll(groups, {"46=76.2"});
    ExpectAll(groups.substr(groups.find("101=")), {"10=1", "11=25.4", "21=50.8", "40=101.6", "41=127",
                                                   "44=152.4", "46=177.8", "46=203.2", "70=1"});
}

TEST_F(ScaledEntities, TheColumnsOfAParagraphGrow) {
    const std::string groups = Scaled("MTEXT",
                                      "  8\n0\n 10\n1.0\n 20\n2.0\n 40\n2.0\n  1\na\n1001\nACAD\n1000\n"
                                      "ACAD_MTEXT_COLUMN_INFO_BEGIN\n1070\n48\n1040\n3.0\n1000\n"
                                      "ACAD_MTEXT_COLUMN_INFO_END\n");
    ExpectAll(groups, {"1070=48"});
    EXPECT_NE(groups.find("1040=76.2"), std::string::npos) << groups;
}

TEST_F(Units, SurveyorsUnitsAreTheirOwn) {
    MakeHome("metric");
    const std::vector<std::pair<int, std::pair<double, std::string>>> units{
        {21, {1200000.0 / 3937, "US survey feet"}},
        {22, {100000.0 / 3937, "US survey inches"}},
        {23, {3600000.0 / 3937, "US survey yards"}}};
    for (const auto& [number, unit] : units) {
        WriteBoard("survey.dxf", number);
        const Listed listed = List("survey.dxf");
        EXPECT_NEAR(listed.length, 600 * unit.first, 1e-5) << unit.second;
        EXPECT_EQ(listed.errors, "survey.dxf: lengths in " + unit.second +
                                     " brought to millimetres, the unit of this shop's drawings\n");
        EXPECT_EQ(listed.status, 0);
    }
}

TEST_F(Units, AUnitThatNobodyKnowsIsToldAndNotGuessedInSilence) {
    MakeHome("metric");
    const std::vector<std::pair<int, std::string>> units{
        {25, "a unit that is unknown (0 to 24 are known)"},
        {-1, "a unit that is unknown (0 to 24 are known)"},
        {18, "astronomical units, in which no part is drawn"}};
    for (const auto& [number, shown] : units) {
        WriteBoard("odd.dxf", number);
        const Listed listed = List("odd.dxf");
        EXPECT_EQ(listed.status, 1) << number;
        EXPECT_NEAR(listed.length, 600, 1e-9) << number;
        EXPECT_EQ(listed.errors,
                  "odd.dxf: $INSUNITS " + std::to_string(number) + ": " + shown +
                      "; its lengths are taken as millimetres, the unit of this shop's drawings\n");
        EXPECT_EQ(Run({"convert", "odd.dxf", "out.dxf"}).status, 1);
        EXPECT_EQ(UnitOf("out.dxf"), "4");
        ExpectLength("odd.dxf", 600 * 25.4, toMillimetres, {"--unit", "inch"});
    }
}

TEST_F(Units, TheUsersWordStandsAboveTheFiles) {
    MakeHome("metric");
    WriteBoard("none.dxf", 0);
    ExpectLength("none.dxf", 600 * 25.4, toMillimetres, {"--unit", "inch"});
    ExpectLength("none.dxf", 600, "", {"--unit", "mm"});
    WriteBoard("inch.dxf", 1);
    ExpectLength("inch.dxf", 600,
                 ": lengths taken as millimetres, as --unit says, though the file calls them inches\n",
                 {"--unit", "mm"});
    EXPECT_EQ(Run({"list", "none.dxf", "--unit", "cm"}).status, 2);
}

TEST_F(Units, FilesOfOtherSystemsComeAndGoInTheirUnit) {
    for (const std::string form : {".step", ".sat"}) {
        std::filesystem::remove_all(folder / "home");
        MakeHome("imperial");
        WriteBoard("board.dxf", 0);
        Run({"convert", "board.dxf", "inch" + form});
        ExpectLength("inch" + form, 600, "");
        std::filesystem::remove_all(folder / "home");
        MakeHome("metric");
        ExpectLength("inch" + form, 600 * 25.4, toMillimetres);
        ExpectLength("inch" + form, 600,
                     ": lengths taken as millimetres, as --unit says, though the file calls them inches\n",
                     {"--unit", "mm"});
        Run({"convert", "board.dxf", "mm" + form});
        ExpectLength("mm" + form, 600, "");
        std::filesystem::remove_all(folder / "home");
        MakeHome("imperial");
        ExpectLength("mm" + form, 600 / 25.4, toInches);
    }
}

TEST_F(Units, AnAcisHeadWhoseUnitIsNoNumberIsTold) {
    MakeHome("metric");
    WriteBoard("board.dxf", 0);
    Run({"convert", "board.dxf", "a.sat"});
    Write("a.sat", std::regex_replace(Read("a.sat"), std::regex("\n1 "), "\nabc ",
                                      std::regex_constants::format_first_only));
    const auto listed = Run({"list", "a.sat"});
    EXPECT_EQ(listed.status, 1);
    EXPECT_NE(
        listed.errors.find("a.sat:3: the head names no unit: expected millimetres per unit, found 'abc'"),
        std::string::npos)
        << listed.errors;
}

TEST_F(Units, WhatIsWrittenNamesItsUnit) {
    MakeHome("imperial");
    WriteBoard("board.dxf", 0);
    for (const char* name : {"a.dxf", "a.step", "a.sat"}) Run({"convert", "board.dxf", name});
    EXPECT_EQ(UnitOf("a.dxf"), "1");
    EXPECT_NE(Read("a.step").find("CONVERSION_BASED_UNIT('INCH'"), std::string::npos);
    EXPECT_NE(Read("a.sat").find("\n25.4 "), std::string::npos);
    // Millimetres that came to an imperial shop leave it in inches, wherever they go.
    WriteBoard("mm.dxf", 4);
    for (const char* name : {"b.dxf", "b.step", "b.sat"}) {
        const Outcome outcome = Run({"convert", "mm.dxf", name});
        EXPECT_NE(outcome.errors.find(std::string("mm.dxf") + toInches), std::string::npos) << outcome.errors;
        ExpectLength(name, 600 / 25.4, "");
    }
    EXPECT_EQ(UnitOf("b.dxf"), "1");
}

TEST_F(Units, ARunThatScalesItsPartsHandsNoFalseUnitDown) {
    MakeHome("metric");
    EXPECT_EQ(Run({"settings", "set", "ExportScaleSetting", "3"}).status, 0);
    WriteBoard("inch.dxf", 1);
    Run({"cnc", "inch.dxf", "--target", "C2C", "--out", "out", "--material", "White Melamine"});
    for (const auto& [name, content] : FilesBelow("out")) {
        if (!name.ends_with(".dxf")) continue;
        EXPECT_EQ(UnitOf("out/" + name), "0") << name;
    }
}

TEST_F(Units, LettersThatWereSavedInInchesStayInAHomeOfMillimetres) {
    Run({"sample", "k.step"});
    const std::string inches = Path("inches");
    EXPECT_EQ(RunBare("", {"--home", inches, "init", "--units", "imperial"}).status, 0);
    EXPECT_EQ(RunBare("", {"--home", inches, "convert", "k.step", "k.dxf"}).status, 0);
    MakeHome("metric");
    const Outcome listed = Run({"list", "k.dxf", "--format", "csv"});
    EXPECT_EQ(listed.status, 0) << listed.errors;
    EXPECT_EQ(listed.errors, std::string("k.dxf") + toMillimetres);
    EXPECT_EQ(listed.output, Run({"list", "k.step", "--format", "csv"}).output);
}

}  // namespace
}  // namespace brenvik::cli_test
