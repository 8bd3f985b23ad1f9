// Extended data per application.
#include "host_fixture.h"

namespace brenvik {
namespace {

class XData : public HostTest {
  protected:
    std::vector<XDataValue> ValuesOf(std::string_view app) {
        line->GetXData(app, types, values);
        return values;
    }
    void Set(const std::vector<std::int16_t>& codes, const std::vector<XDataValue>& items) {
        line->SetXData(codes, items);
    }

    AcadLine* line = Model().AddLine({0, 0, 0}, {1, 0, 0});
    std::vector<std::int16_t> types;
    std::vector<XDataValue> values;
};

TEST_F(XData, WithoutDataBothArraysComeBackEmpty) {
    types = {1};
    values = {1.0};
    line->GetXData("PARTNAME", types, values);
    EXPECT_TRUE(types.empty());
    EXPECT_TRUE(values.empty());
}

TEST_F(XData, TheApplicationEntryComesFirstAndTheValueAtIndexOne) {
    SetText(*line, "PARTNAME", "Door");
    EXPECT_EQ(ValuesOf("PARTNAME"), (std::vector<XDataValue>{std::string("PARTNAME"), std::string("Door")}));
    EXPECT_EQ(types, (std::vector<std::int16_t>{1001, 1000}));
}

TEST_F(XData, ANewApplicationIsRegisteredOnceAndKeptAsFirstWritten) {
    SetText(*line, "PartName", "Door");
    SetText(*line, "PARTNAME", "Side");
    EXPECT_EQ(document.Tables().applications, std::vector<std::string>{"PartName"});
    EXPECT_EQ(ValuesOf("partname"), (std::vector<XDataValue>{std::string("PartName"), std::string("Side")}));
}

TEST_F(XData, OnlyAnApplicationEntryClearsThatApplicationAlone) {
    SetText(*line, "A", "1");
    SetText(*line, "B", "2");
    Set({1001}, {std::string("a")});
    EXPECT_TRUE(ValuesOf("A").empty());
    EXPECT_EQ(TextOf(*line, "B"), "2");
    Set({1001}, {std::string("NeverSeen")});
    EXPECT_TRUE(ValuesOf("NeverSeen").empty());
}

TEST_F(XData, ABlankValueStaysAsAValue) {
    SetText(*line, "NOTES", "");
    EXPECT_EQ(ValuesOf("NOTES").size(), 2U);
}

TEST_F(XData, TheLimitOfATextCountsCharacters) {
    std::string umlauts;
    for (int i = 0; i < 255; ++i) umlauts += "\u00FC";
    SetText(*line, "NOTES", umlauts);
    EXPECT_EQ(TextOf(*line, "NOTES"), umlauts);
    EXPECT_NE(FailureOf([&] { SetText(*line, "NOTES", umlauts + "x"); }).number(), 0);
    EXPECT_EQ(TextOf(*line, "NOTES"), umlauts);
}

TEST_F(XData, ATextOf255CharactersFitsAndOneOf256FailsAndChangesNothing) {
    SetText(*line, "NOTES", std::string(255, 'x'));
    EXPECT_EQ(TextOf(*line, "NOTES").size(), 255U);
    EXPECT_EQ(FailureOf([&] { SetText(*line, "NOTES", std::string(256, 'y')); }).number(),
              host_failure_number::InvalidArgument);
    EXPECT_EQ(TextOf(*line, "NOTES"), std::string(255, 'x'));
    EXPECT_THROW(Set({1001, 1000, 1000}, {std::string("NEW"), std::string("a"), std::string(256, 'y')}),
                 Failure);
    EXPECT_TRUE(ValuesOf("NEW").empty());
}

TEST_F(XData, TheTotalOfOneObjectIsLimited) {
    for (int i = 0; i < 61; ++i) SetText(*line, "K" + std::to_string(i), std::string(255, 'x'));
    EXPECT_EQ(FailureOf([&] { SetText(*line, "LAST", std::string(255, 'x')); }).number(),
              host_failure_number::InvalidArgument);
    EXPECT_TRUE(ValuesOf("LAST").empty());
    SetText(*line, "K0", "short");
    SetText(*line, "LAST", std::string(200, 'x'));
    EXPECT_EQ(TextOf(*line, "LAST").size(), 200U);
}

TEST_F(XData, TheTotalIsThatAfterTheWholeCall) {
    for (int i = 0; i < 61; ++i) SetText(*line, "K" + std::to_string(i), std::string(255, 'x'));
    Set({1001, 1001, 1000}, {std::string("k0"), std::string("LAST"), std::string(255, 'x')});
    EXPECT_TRUE(ValuesOf("K0").empty());
    EXPECT_EQ(TextOf(*line, "LAST").size(), 255U);
    SetText(*line, "last", std::string(255, 'y'));
    EXPECT_EQ(TextOf(*line, "LAST"), std::string(255, 'y'));
}

TEST_F(XData, AnApplicationTwiceInOneCallHasTheLastItems) {
    Set({1001, 1000, 1001, 1000}, {std::string("A"), std::string("x"), std::string("a"), std::string("y")});
    EXPECT_EQ(ValuesOf(""), (std::vector<XDataValue>{std::string("A"), std::string("y")}));
    Set({1001, 1000, 1001}, {std::string("A"), std::string("z"), std::string("a")});
    EXPECT_TRUE(ValuesOf("").empty());
}

TEST_F(XData, ABlankNameGivesAllApplicationsInOrder) {
    SetText(*line, "B", "1");
    SetText(*line, "A", "2");
    SetText(*line, "B", "3");
    EXPECT_EQ(ValuesOf(""), (std::vector<XDataValue>{std::string("B"), std::string("3"), std::string("A"),
                                                     std::string("2")}));
}

TEST_F(XData, SeveralApplicationsMayComeInOneCall) {
    Set({1001, 1000, 1001, 1070}, {std::string("A"), std::string("x"), std::string("B"), std::int16_t{7}});
    EXPECT_EQ(TextOf(*line, "A"), "x");
    EXPECT_EQ(ValuesOf("B")[1], XDataValue(std::int16_t{7}));
}

TEST_F(XData, EveryKindOfItemComesBack) {
    const std::vector<std::int16_t> codes{1001, 1000, 1002, 1003, 1002, 1004, 1005, 1010, 1040, 1070, 1071};
    const std::vector<XDataValue> items{
        std::string("APP"), std::string("text"), std::string("{"),
        std::string("0"),   std::string("}"),    std::vector<std::uint8_t>{1, 2, 255},
        std::string("1F"),  Point3{1, 2, 3},     0.1,
        std::int16_t{-5},   std::int32_t{70000}};
    Set(codes, items);
    EXPECT_EQ(ValuesOf("APP"), items);
    EXPECT_EQ(types, codes);
}

TEST_F(XData, WhatIsNoExtendedDataIsRefused) {
    const std::string app = "A";
    EXPECT_THROW(Set({}, {}), Failure);
    EXPECT_THROW(Set({1000}, {app}), Failure);
    EXPECT_THROW(Set({1001, 1000}, {app}), Failure);
    EXPECT_THROW(Set({1001, 1000}, {app, 1.0}), Failure);
    EXPECT_THROW(Set({1001, 1040}, {app, std::string("1")}), Failure);
    EXPECT_THROW(Set({1001, 1070}, {app, 1e6}), Failure);
    EXPECT_THROW(Set({1001, 1002}, {app, std::string("{")}), Failure);
    EXPECT_THROW(Set({1001, 1005}, {app, std::string("xyz")}), Failure);
    EXPECT_THROW(Set({1001, 999}, {app, std::string("x")}), Failure);
    EXPECT_THROW(Set({1001}, {std::string(" ")}), Failure);
    EXPECT_THROW(Set({1001, 1040}, {app, std::numeric_limits<double>::infinity()}), Failure);
    EXPECT_TRUE(ValuesOf("").empty());
}

}  // namespace
}  // namespace brenvik
