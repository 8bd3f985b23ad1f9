// Conversions to the forms of other systems tell what these have no place for.
#include "program.h"

namespace brenvik::cli_test {
namespace {

using Convert = ProgramTest;

TEST_F(Convert, PartDataThatStepHasNoPlaceForAreToldOnce) {
    const Outcome outcome = Run({"convert", ShippedSample().string(), "a.step", "--quiet"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(
        outcome.errors,
        "a.step: part data of 14 parts (\"Left Side\", \"Right Side\", \"Bottom\" and 11 more) is not in a "
        "STEP file, which has names and assemblies only\n");
    EXPECT_TRUE(Exists("a.step"));
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
