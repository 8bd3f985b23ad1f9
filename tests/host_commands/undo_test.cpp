// UNDO, U and REDO: the drawing as it was, to its handles, layers, order and data.
#include <algorithm>

#include "command_fixture.h"
#include "drafting_host/document/drawing_history.h"
#include "drafting_host/document/drawing_state.h"

namespace brenvik {
namespace {

class TakingBack : public CommandTest {
  protected:
    TakingBack() {
        BoxAt({0, 0, 0}, {10, 20, 30});
        BoxAt({100, 0, 0}, {110, 20, 30});
        BoxAt({200, 0, 0}, {210, 20, 30});
        KeepHistory(document);
    }
    std::vector<std::string> Handles() {
        std::vector<std::string> handles;
        for (const HostEntity* entity : Entities()) handles.push_back(entity->Handle());
        return handles;
    }
};

TEST_F(TakingBack, AnErasedPartComesBackInItsPlace) {
    const DrawingState before(document);
    const std::vector<std::string> handles = Handles();
    Type("erase (handent \"" + handles[1] + "\")  ");
    ASSERT_EQ(Entities().size(), 2U);
    Type("u ");
    EXPECT_EQ(Handles(), handles);
    EXPECT_TRUE(DrawingState(document) == before);
    EXPECT_TRUE(Told("ERASE is taken back."));
    ExpectIdle();
}

TEST_F(TakingBack, AMovedPartIsBackToTheLastBitAndForthAgain) {
    const DrawingState before(document);
    Type("move all  0,0,0 0.1,0.2,0.3 ");
    const DrawingState after(document);
    Type("u ");
    EXPECT_TRUE(DrawingState(document) == before);
    Type("redo ");
    EXPECT_TRUE(DrawingState(document) == after);
    EXPECT_TRUE(Told("MOVE is done again."));
}

TEST_F(TakingBack, SeveralStepsGoAtOnceAndEachIsOneCommand) {
    const DrawingState before(document);
    Type("move all  0,0,0 1,0,0 ");
    Type("-layer make Doors  ");
    Type("union all  ");
    ASSERT_EQ(Entities().size(), 1U);
    Type("undo 3 ");
    EXPECT_TRUE(DrawingState(document) == before);
    EXPECT_EQ(document.LayerTable().Find("Doors"), nullptr);
    EXPECT_EQ(document.CurrentLayer().Values().name, "0");
    Type("u ");
    EXPECT_TRUE(Told("Nothing is left to take back."));
    for (int step = 0; step < 3; ++step) Type("redo ");
    EXPECT_EQ(Entities().size(), 1U);
    EXPECT_EQ(document.CurrentLayer().Values().name, "Doors");
}

TEST_F(TakingBack, AHundredStepsAreKept) {
    for (int step = 0; step < 105; ++step) Type("move last  0,0,0 1,0,0 ");
    Type("undo 105 ");
    EXPECT_TRUE(Told("Nothing is left to take back."));
    ExpectExact(Solid(2).GetBoundingBox().min, {205, 0, 0});
}

TEST_F(TakingBack, WhatChangesNothingIsNoStep) {
    Type("move all  0,0,0 1,0,0 ");
    Type("zoom e ");
    Type("select all  ");
    Type("erase \x1b");
    ASSERT_NE(HistoryOf(document)->NextUndo(), nullptr);
    EXPECT_EQ(*HistoryOf(document)->NextUndo(), "MOVE");
    Type("u ");
    EXPECT_EQ(HistoryOf(document)->NextUndo(), nullptr);
}

TEST_F(TakingBack, AChangeEndsWhatCouldBeDoneAgain) {
    Type("move all  0,0,0 1,0,0 u erase last  redo ");
    EXPECT_TRUE(Told("Nothing is left to do again."));
    EXPECT_EQ(Entities().size(), 2U);
}

TEST_F(TakingBack, ACommandOfTheProductIsOneStepWhateverItTypes) {
    commandLine.RegisterCommand("BVBOTH", [this] {
        document.SendCommand("move all  0,0,0 1,0,0 ");
        document.SendCommand("erase last  ");
        document.SendCommand("u ");
    });
    const DrawingState before(document);
    Type("bvboth ");
    EXPECT_EQ(Entities().size(), 2U) << "a command at work takes nothing back";
    Type("u ");
    EXPECT_TRUE(DrawingState(document) == before);
    EXPECT_TRUE(Told("BVBOTH is taken back."));
}

TEST_F(TakingBack, DataGroupsLocksAndSelectionComeBack) {
    const std::vector<std::int16_t> types{1001, 1000};
    const std::vector<XDataValue> door{std::string("SHOP"), std::string("Door")},
        side{std::string("SHOP"), std::string("Side")};
    commandLine.RegisterCommand("NAMEIT", [&] { Entities()[0]->SetXData(types, door); });
    commandLine.RegisterCommand("RENAMEIT", [&] { Entities()[0]->SetXData(types, side); });
    Type("nameit ");
    commandLine.RegisterCommand("PAIRIT", [&] {
        AcadEntity* const pair[] = {Entities()[0], Entities()[1]};
        document.Groups().Add("Pair")->AppendItems(pair);
    });
    Type("pairit ");
    NewLayer("Locked");
    Type("renameit ");
    const DrawingState before(document);
    ASSERT_EQ(document.GroupTable().All().size(), 1U);
    document.SetPreviousSelection(Entities());
    Type("-layer lock Locked  ");
    Type("erase all  ");
    Type("undo 2 ");
    EXPECT_TRUE(DrawingState(document) == before);
    EXPECT_EQ(document.GroupTable().All()[0]->Count(), 2);
    EXPECT_FALSE(document.LayerTable().Find("Locked")->Locked());
    Type("u ");
    std::vector<std::int16_t> readTypes;
    std::vector<XDataValue> values;
    Entities()[0]->GetXData("SHOP", readTypes, values);
    ASSERT_EQ(values.size(), 2U);
    EXPECT_EQ(std::get<std::string>(values[1]), "Door");
}

TEST_F(TakingBack, DataClearedAndSetAnewAreNoChangeAndOtherDataAre) {
    const std::vector<std::int16_t> types{1001, 1000}, clearing{1001};
    const std::vector<XDataValue> door{std::string("SHOP"), std::string("Door")},
        two{std::string("QTY"), std::string("2")}, shop{std::string("SHOP")},
        swapped{std::string("SHOP"), std::string("2")}, doors{std::string("QTY"), std::string("Door")};
    const auto set = [&](const std::vector<XDataValue>& data) { Entities()[0]->SetXData(types, data); };
    commandLine.RegisterCommand("NAMEIT", [&] {
        set(door);
        set(two);
    });
    commandLine.RegisterCommand("ANEW", [&] {
        Entities()[0]->SetXData(clearing, shop);
        set(door);
    });
    commandLine.RegisterCommand("SWAP", [&] {
        set(swapped);
        set(doors);
    });
    Type("nameit ");
    const DrawingState before(document);
    Type("anew ");
    EXPECT_TRUE(DrawingState(document) == before);
    EXPECT_EQ(*HistoryOf(document)->NextUndo(), "NAMEIT");
    Type("swap ");
    EXPECT_FALSE(DrawingState(document) == before);
    EXPECT_EQ(*HistoryOf(document)->NextUndo(), "SWAP");
}

TEST_F(TakingBack, ANumberThatIsNoneIsRefused) {
    Type("move all  0,0,0 1,0,0 undo back ");
    EXPECT_TRUE(Told("\"back\" is no number of operations"));
    EXPECT_EQ(*HistoryOf(document)->NextUndo(), "MOVE");
    ExpectIdle();
}

TEST_F(TakingBack, IsToldToBeNoneWhereNoHistoryIsKept) {
    ForgetHistory(document);
    Type("move all  0,0,0 1,0,0 u undo 2 redo oops ");
    EXPECT_EQ(
        std::ranges::count_if(
            transcript, [](const std::string& line) { return line.starts_with("Nothing can be taken"); }),
        4);
    ExpectIdle();
}

TEST_F(TakingBack, AClosedDrawingTakesItsHistoryAlong) {
    HostDocument& other = application.NewDocument();
    KeepHistory(other);
    other.Close(false);
    EXPECT_EQ(HistoryOf(other), nullptr);
    EXPECT_NE(HistoryOf(document), nullptr);
}

}  // namespace
}  // namespace brenvik
