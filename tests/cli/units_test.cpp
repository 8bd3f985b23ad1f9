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

}  // namespace
}  // namespace brenvik::cli_test
