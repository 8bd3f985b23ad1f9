// Conversions to the forms of other systems tell what these have no place for.
#include <set>

#include "boards.h"
#include "program.h"

namespace brenvik::cli_test {
namespace {

class Convert : public ProgramTest {
  protected:
    /// The sample with these groups behind the layer of its first solid.
    void WriteColored(const std::string& name, const std::string& groups) const {
        std::string text = ReadFile(ShippedSample());
        std::erase(text, '\r');
        const std::size_t solid = text.find("  0\n3DSOLID\n"), layer = text.find("\n  8\n", solid) + 5;
        text.insert(text.find('\n', layer) + 1, groups);
        Write(name, text);
    }
    /// The first solid's record up to its body.
    std::string FirstSolid(const std::string& name) const {
        std::string text = Read(name);
        std::erase(text, '\r');
        const std::size_t solid = text.find("  0\n3DSOLID\n");
        return text.substr(solid, text.find("AcDbModelerGeometry", solid) - solid);
    }
};

std::set<std::string> ColorsOf(const std::string& step) {
    std::set<std::string> colors;
    for (std::size_t at = step.find("COLOUR_RGB("); at != std::string::npos;
         at = step.find("COLOUR_RGB(", at + 1))
        colors.insert(step.substr(at, step.find(';', at) - at));
    return colors;
}

/// STEP as another program would have written it.
std::string OfAnotherProgram(std::string step) {
    for (std::size_t at = step.find("'Brenvik "); at != std::string::npos; at = step.find("'Brenvik ", at))
        step.replace(at, 9, "'Another ");
    return step;
}

TEST_F(Convert, PartDataThatStepHasNoPlaceForAreToldOnce) {
    const Outcome outcome = Run({"convert", ShippedSample().string(), "a.step", "--quiet"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(
        outcome.errors,
        "a.step: part data of 14 parts (\"Left Side\", \"Right Side\", \"Bottom\" and 11 more) is not in a "
        "STEP file, which has names and assemblies only\n");
    EXPECT_TRUE(Exists("a.step"));
}

TEST_F(Convert, TheHostsStampOfALastChangeIsNoPartData) {
    WriteBoardsTo(folder / "job.dxf", {{"Side"}, "", false});
    Run({"convert", "job.dxf", "job.step"});
    Run({"convert", "job.step", "back.dxf"});
    std::string drawing = Read("back.dxf");
    std::erase(drawing, '\r');
    const std::string name = "\n1000\nSide\n";
    const std::size_t place = drawing.find(name);
    ASSERT_NE(place, std::string::npos);
    drawing.insert(place + name.size(),
                   "1001\nACAD_OBJECT_CHANGE_GUID\n1070\n15\n1005\nA7\n1000\n{8A3F2C10-0000}\n");
    Write("stamped.dxf", drawing);
    const Outcome outcome = Run({"convert", "stamped.dxf", "stamped.step"});
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    EXPECT_EQ(outcome.errors.find("part data"), std::string::npos) << outcome.errors;
    drawing.replace(drawing.find("ACAD_OBJECT_CHANGE_GUID"), 23, "ANOTHERS_DATA");
    Write("stamped.dxf", drawing);
    EXPECT_EQ(Run({"convert", "stamped.dxf", "stamped.step"}).status, 1);
}

TEST_F(Convert, PartDataAndLayersThatAcisTextHasNoPlaceForAreToldOnce) {
    const Outcome outcome = Run({"convert", ShippedSample().string(), "a.sat", "--quiet"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(
        outcome.errors,
        "a.sat: part data of 15 parts (\"Left Side\", \"Right Side\", \"Bottom\" and 12 more) is not in ACIS "
        "text, which has no place for it\n"
        "a.sat: layer and colour of 16 parts (\"Left Side\", \"Right Side\", \"Bottom\" and 13 more) are not "
        "in ACIS text\n");
}

TEST_F(Convert, WhatComesFromAFormAndGoesBackToItLosesNothing) {
    for (const std::string form : {".step", ".sat"}) {
        Run({"convert", ShippedSample().string(), "a" + form, "--quiet"});
        const Outcome outcome = Run({"convert", "a" + form, "b" + form});
        EXPECT_EQ(outcome.status, 0) << form;
        EXPECT_EQ(outcome.errors, "") << form;
        EXPECT_EQ(Run({"convert", "a" + form, "c" + form, "--letters", "WLT"}).status, 1) << form;
        EXPECT_EQ(Run({"convert", "a" + form, "d" + form, "--material", "Oak"}).status, 1) << form;
    }
}

TEST_F(Convert, ASampleForAnotherSystemIsMeantWithoutPartData) {
    const Outcome outcome = Run({"sample", "kitchen.step"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_NE(outcome.errors.find("kitchen.step: part data of 14 parts"), std::string::npos)
        << outcome.errors;
}

TEST_F(Convert, TrueColoursGoIntoStepAndComeBackToTheByte) {
    for (const std::string color : {"1193710", "1", "16777214", "8421505"}) {
        WriteColored("in.dxf", " 62\n5\n420\n" + color + "\n");
        Run({"convert", "in.dxf", "a.step", "--quiet"});
        Run({"convert", "a.step", "b.dxf", "--quiet"});
        EXPECT_NE(FirstSolid("b.dxf").find("420\n" + color + "\n"), std::string::npos)
            << color << FirstSolid("b.dxf");
        Run({"convert", "b.dxf", "c.step", "--quiet"});
        EXPECT_EQ(ColorsOf(Read("c.step")), ColorsOf(Read("a.step"))) << color;
    }
}

TEST_F(Convert, ColoursByNumberComeBackAsTheirNumber) {
    WriteColored("in.dxf", " 62\n30\n");
    Run({"convert", "in.dxf", "a.step", "--quiet"});
    Run({"convert", "a.step", "b.dxf", "--quiet"});
    EXPECT_NE(FirstSolid("b.dxf").find("\n 62\n30\n"), std::string::npos) << FirstSolid("b.dxf");
    EXPECT_EQ(FirstSolid("b.dxf").find("\n420\n"), std::string::npos);
    // By block there is nothing to take a colour from.
    WriteColored("in.dxf", " 62\n0\n");
    EXPECT_EQ(Run({"convert", "in.dxf", "c.dxf"}).status, 0);
    EXPECT_NE(FirstSolid("c.dxf").find("\n 62\n0\n"), std::string::npos) << FirstSolid("c.dxf");
}

TEST_F(Convert, ColoursOfLayersBecomeThePartsOwnInStepAndThatIsToldOnce) {
    WriteSample("in.dxf");
    const Outcome outcome = Run({"convert", "in.dxf", "a.step"});
    const std::string told =
        "a.step: the colour of the layer is that of the part itself for 16 parts: a STEP "
        "file has no colours of layers\n";
    EXPECT_NE(outcome.errors.find(told), std::string::npos) << outcome.errors;
    EXPECT_FALSE(ColorsOf(Read("a.step")).empty());
    // The layer of the sample's first solid has the colour 8, a grey of 128.
    Run({"convert", "a.step", "b.dxf", "--quiet"});
    EXPECT_NE(FirstSolid("b.dxf").find("\n 62\n8\n"), std::string::npos) << FirstSolid("b.dxf");
    EXPECT_EQ(Run({"convert", "in.dxf", "a.sat"}).errors.find("no colours of layers"), std::string::npos);
}

TEST_F(Convert, StepOfAnotherProgramIsNeverWrittenOver) {
    Run({"convert", ShippedSample().string(), "a.step", "--quiet"});
    const std::string foreign = OfAnotherProgram(Read("a.step"));
    Write("a.step", foreign);
    for (const std::vector<std::string>& words :
         {std::vector<std::string>{"convert", "a.step", "a.step"}, {"list", "a.step", "--save", "a.step"}}) {
        const Outcome outcome = Run(words);
        EXPECT_NE(outcome.status, 0) << words.front();
        EXPECT_NE(outcome.errors.find("by another program, which may hold more than is read of it"),
                  std::string::npos)
            << outcome.errors;
        EXPECT_EQ(Read("a.step"), foreign) << words.front();
    }
    Run({"cnc", "a.step", "--target", "C2C", "--out", "out", "--material", "Oak"});
    EXPECT_EQ(Read("a.step"), foreign);
    EXPECT_EQ(Run({"convert", "a.step", "b.step", "--quiet"}).status, 0);
    EXPECT_EQ(Run({"convert", "b.step", "b.step", "--quiet"}).status, 0)
        << "what is written here is all read";
}

TEST_F(Convert, ControlCharactersAndCaretsOfATextComeBack) {
    std::string drawing = ReadFile(ShippedSample());
    const std::string name = "Left Side", written = "a^Ib^ c^Jd^ ";
    drawing.replace(drawing.find(name), name.size(), written);
    Write("in.dxf", drawing);
    EXPECT_EQ(Run({"convert", "in.dxf", "out.dxf"}).status, 0);
    EXPECT_NE(Read("out.dxf").find(written + "\r\n"), std::string::npos);
    const std::string list = Run({"list", "out.dxf", "--format", "json"}).output;
    EXPECT_NE(list.find("a\\u0009b^c\\u000ad^"), std::string::npos) << list.substr(0, 300);
}

}  // namespace
}  // namespace brenvik::cli_test
