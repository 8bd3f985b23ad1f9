// Apply in its three forms, the interlock of a grouped list, and rows that the host refuses.
#include "core/grid/grid_fixture.h"
#include "grid/grouping_interlock.h"
#include "parts/mautocad.h"

namespace brenvik {
namespace {

constexpr const char* WhileGrouped = "You cannot apply changes to the Drawing while GROUPING is active.";

class ApplyToDrawing : public GridTest {
  protected:
    static std::string Data(const fakes::FakeEntity& solid, const char* key) {
        return solid.data.contains(key) ? solid.data.at(key) : "(absent)";
    }
    fakes::FakeEntity& Solid(std::size_t place) { return *system.Document().entities.at(place); }
    void PressKey(const char* key) { Main().tbMain.PressKey(key); }
};

TEST_F(ApplyToDrawing, WritesEachKeyInOrderWithItsColumn) {
    fakes::FakeEntity& solid = system.AddSolid("A", 18, 600, 400);
    Main().Load();
    const std::pair<int, const char*> edits[] = {
        {2, "4"},   {3, "Side"}, {4, "Base"}, {5, "Oak"}, {9, "LWT"}, {13, "n"},  {14, "u1"}, {15, "u2"},
        {16, "p7"}, {17, "9.5"}, {18, "e1"},  {19, "e2"}, {20, "e3"}, {21, "e4"}, {22, "f"}};
    for (const auto& [column, text] : edits) ASSERT_TRUE(Grid().UserEdit(column, 1, text));
    Main().Apply();
    // Keys without a column repeat the value before.
    const Texts expected = {
        "QUANTITY=4",   "PARTNAME=Side", "SUBASSEMBLY=Base", "MATERIAL=Oak", "ORIE=LWT",     "X=LWT",
        "Y=LWT",        "Z=LWT",         "NOTES=n",          "USERDATA1=u1", "USERDATA2=u2", "PN=p7",
        "PRICE=9.5",    "EB1=e1",        "EB2=e2",           "EB3=e3",       "EB4=e4",       "FACE=f",
        "LAYERNAME=f",  "VALUE1=f",      "VALUE2=f",         "VALUE3=f",     "OLDVALUE1=18", "OLDVALUE2=600",
        "OLDVALUE3=400"};
    Texts written;
    for (const std::string& write : solid.writes)
        if (write.find('=') != std::string::npos) written.push_back(write);
    EXPECT_EQ(written, expected);
    // Each value is cleared before it is set.
    EXPECT_EQ(solid.writes.size(), 2 * expected.size());
    EXPECT_EQ(solid.writes[0], "QUANTITY");
    EXPECT_EQ(solid.layer, "0");
    EXPECT_TRUE(Main().Loaded());
    EXPECT_TRUE(system.Messages().empty());
}

TEST_F(ApplyToDrawing, IsReachedByItsKeyAndItsEntry) {
    LoadThree();
    PressKey("APPLY_DRAWING");
    EXPECT_EQ(Solid(0).writes.size(), 50u);
    Main().Get<Control>("mnuApplyDrawing").Press();
    EXPECT_EQ(Solid(2).writes.size(), 100u);
    EXPECT_TRUE(Main().Loaded());
}

TEST_F(ApplyToDrawing, WritesEachRowToItsOwnSolidInASortedList) {
    LoadThree();
    ShowStatement(std::string("SELECT * FROM brenvik_data order by bv_material Asc"));
    ASSERT_EQ(Cell(1, 1), "B");
    Grid().UserEdit(3, 1, "Ash part");
    Main().Apply();
    EXPECT_EQ(Data(Solid(1), "PARTNAME"), "Ash part");
    EXPECT_EQ(Data(Solid(0), "PARTNAME"), "");
}

TEST_F(ApplyToDrawing, ThenAScanKeepsLettersAndSizes) {
    system.AddSolid("A", 18, 600, 400);
    Main().Load();
    Grid().UserEdit(9, 1, "wlt");
    ASSERT_EQ(Sizes(1), "400 600 18");
    Main().applyClose();
    Main().Load();
    EXPECT_EQ(Cell(9, 1), "wlt");
    EXPECT_EQ(Sizes(1), "400 600 18");
}

TEST_F(ApplyToDrawing, OfBlankLettersLeavesSizesOfZeroAtTheNextScan) {
    AddApplied("A", "LWT", 18, 600, 400);
    Main().Load();
    Grid().UserEdit(9, 1, "");
    Main().applyClose();
    EXPECT_EQ(Data(Solid(0), "ORIE"), "");
    Main().Load();
    EXPECT_EQ(Cell(9, 1), "");
    EXPECT_EQ(Sizes(1), "0 0 0");
}

TEST_F(ApplyToDrawing, OfABlankQuantityWritesItBlankAndTheNextScanReadsOne) {
    AddApplied("A", "LWT", 18, 600, 400).data["QUANTITY"] = "3";
    Main().Load();
    Grid().UserEdit(2, 1, "");
    Main().applyClose();
    EXPECT_EQ(Data(Solid(0), "QUANTITY"), "");
    Main().Load();
    EXPECT_EQ(Cell(2, 1), "1");
}

TEST_F(ApplyToDrawing, TakesThePresentExtentsAsTheOldOnes) {
    fakes::FakeEntity& solid = AddApplied("A", "LWT", 18, 600, 400);
    system.measuring.results[solid.ObjectID()] = {18, 650.5, 400, 1};
    Main().Load();
    Main().Apply();
    EXPECT_EQ(Data(solid, "OLDVALUE2"), "650.5");
}

TEST_F(ApplyToDrawing, RefusesWhileGroupedAndWorksAfterwards) {
    LoadThree();
    TheSession().GroupFields = "bv_partname";
    PressKey("APPLY_DRAWING");
    Main().Highlight();
    Main().applyClose();
    EXPECT_EQ(system.Messages(), (Texts{WhileGrouped, WhileGrouped, WhileGrouped}));
    for (const MessageRequest& box : system.dialogs.messages) {
        EXPECT_EQ(box.title, "Error");
        EXPECT_EQ(box.buttons, MessageButtons::Ok);
    }
    EXPECT_TRUE(Main().Loaded());
    EXPECT_TRUE(Solid(0).writes.empty());
    EXPECT_EQ(system.Document().modelSpace.walks, 0);
    // Blanks name no field.
    TheSession().GroupFields = "  ";
    PressKey("APPLY_DRAWING");
    EXPECT_FALSE(Solid(0).writes.empty());
}

TEST_F(ApplyToDrawing, AndCloseUnloadsTheForm) {
    fakes::FakeEntity& solid = system.AddSolid("A", 18, 600, 400);
    for (const std::string way : {"by its key", "by its entry"}) {
        Main().Load();
        Grid().SetCellText(3, 1, way);
        if (way == "by its key")
            PressKey("APPLY_CLOSE");
        else
            Main().Get<Control>("mnuApplyClose").Press();
        EXPECT_FALSE(Main().Loaded()) << way;
        EXPECT_EQ(Data(solid, "PARTNAME"), way);
        // The pending edit reaches the table before the form goes.
        EXPECT_EQ(Stored(1, "bv_partname"), way);
    }
    EXPECT_TRUE(system.Messages().empty());
}

TEST_F(ApplyToDrawing, AndCloseAsksWhileGrouped) {
    LoadThree();
    TheSession().GroupFields = "bv_partname";
    system.dialogs.answers = {MessageAnswer::No};
    PressKey("APPLY_CLOSE");
    ASSERT_EQ(system.dialogs.messages.size(), 1u);
    EXPECT_EQ(system.dialogs.messages[0].text,
              "You cannot apply changes to the Drawing while GROUPING is active.\r\n\r\n"
              "Do you wish to close the form without applying changes?");
    EXPECT_EQ(system.dialogs.messages[0].title, "Error");
    EXPECT_EQ(system.dialogs.messages[0].buttons, MessageButtons::YesNo);
    EXPECT_TRUE(Main().Loaded());
    system.dialogs.answers = {MessageAnswer::Yes};
    Main().Get<Control>("mnuApplyClose").Press();
    EXPECT_FALSE(Main().Loaded());
    EXPECT_TRUE(Solid(0).writes.empty());
}

TEST_F(ApplyToDrawing, CancelWritesNothing) {
    LoadThree();
    TheSession().GroupFields = "bv_partname";
    PressKey("CANCEL_CLOSE");
    EXPECT_FALSE(Main().Loaded());
    EXPECT_TRUE(Solid(0).writes.empty());
    EXPECT_TRUE(system.Messages().empty());
}

TEST_F(ApplyToDrawing, HighlightsModelSpaceForEachRowInPlaceOfTheQuantity) {
    LoadThree();
    system.Document().AddEntity("D", "AcDbLine");
    Main().Get<Control>("Command1").Press();
    EXPECT_EQ(system.Document().modelSpace.walks, 3);
    for (const auto& entity : system.Document().entities) EXPECT_TRUE(entity->highlighted);
    EXPECT_FALSE(Solid(0).data.contains("QUANTITY"));
    EXPECT_EQ(Data(Solid(0), "MATERIAL"), "Oak");
    EXPECT_EQ(Data(Solid(0), "OLDVALUE1"), "18");
    EXPECT_EQ(Solid(0).writes.size(), 48u);
    EXPECT_TRUE(Main().Loaded());
}

TEST_F(ApplyToDrawing, StopsTheRowOfASolidThatIsGoneAndWritesTheOthers) {
    LoadThree();
    Solid(1).Delete();
    system.Document().failOnUnknownHandle = true;
    Main().Apply();
    EXPECT_EQ(system.Messages(), Texts{"-2145386420\r\nFakeHost\r\nUnknown handle"});
    EXPECT_TRUE(Solid(1).writes.empty());
    EXPECT_EQ(Solid(0).writes.size(), 50u);
    EXPECT_EQ(Solid(2).writes.size(), 50u);
}

TEST_F(ApplyToDrawing, TellsOfASolidThatTheHostNoLongerFinds) {
    LoadThree();
    Solid(0).Delete();
    Main().Apply();
    EXPECT_EQ(system.Messages(), Texts{"91\r\nBrenvik\r\nObject variable not set"});
    EXPECT_EQ(Solid(2).writes.size(), 50u);
}

TEST_F(ApplyToDrawing, LeavesOutAValueThatTheHostRefusesAndGoesOnWithTheRow) {
    LoadThree();
    // 255 characters that take more bytes than the host allows in one text.
    std::string notes;
    for (int i = 0; i < 200; ++i) notes += "ü";
    Grid().UserEdit(13, 1, notes);
    Main().Apply();
    EXPECT_EQ(system.Messages(), Texts{"-2145386445\r\nFakeHost\r\nInvalid input"});
    EXPECT_EQ(Data(Solid(0), "NOTES"), "(absent)");
    EXPECT_EQ(Data(Solid(0), "MATERIAL"), "Oak");
    EXPECT_EQ(Data(Solid(0), "OLDVALUE3"), "400");
}

TEST_F(ApplyToDrawing, TellsTheSameFailureOncePerRow) {
    LoadThree();
    Solid(0).failOnWrite = Failure(-2145386468, "FakeHost", "Object is on a locked layer");
    Solid(2).failOnWrite = Solid(0).failOnWrite;
    Main().Apply();
    const char* locked = "-2145386468\r\nFakeHost\r\nObject is on a locked layer";
    EXPECT_EQ(system.Messages(), (Texts{locked, locked}));
    EXPECT_EQ(Solid(1).writes.size(), 50u);
}

TEST_F(ApplyToDrawing, DisablesToolbarAndGridAndRefusesToCloseMeanwhile) {
    LoadThree();
    Solid(1).failOnWrite = Failure(7, "FakeHost", "Refused");
    bool looked = false;
    system.dialogs.onMessage = [&] {
        looked = true;
        EXPECT_FALSE(Main().tbMain.enabled);
        EXPECT_FALSE(Grid().enabled);
        EXPECT_TRUE(TheSession().ApplyBusy);
        EXPECT_FALSE(Grid().UserEdit(3, 1, "x"));
        EXPECT_FALSE(Main().RequestClose());
    };
    Main().Apply();
    EXPECT_TRUE(looked);
    EXPECT_TRUE(Main().tbMain.enabled);
    EXPECT_TRUE(Grid().enabled);
    EXPECT_FALSE(TheSession().ApplyBusy);
    EXPECT_EQ(Data(Solid(0), "PARTNAME"), "");
}

TEST_F(ApplyToDrawing, EnablesThemAgainWhenItFails) {
    LoadThree();
    TheSession().AcadDoc = nullptr;
    PressKey("APPLY_DRAWING");
    EXPECT_EQ(system.Messages(), Texts{"91\r\nBrenvik\r\nObject variable not set"});
    EXPECT_TRUE(Main().tbMain.enabled);
    EXPECT_TRUE(Grid().enabled);
    EXPECT_FALSE(TheSession().ApplyBusy);
}

TEST_F(ApplyToDrawing, OfAnEmptyListWritesNothing) {
    Main().Load();
    // Nothing to write needs no drawing either.
    TheSession().AcadDoc = nullptr;
    Main().Apply();
    Main().applyClose();
    EXPECT_FALSE(Main().Loaded());
    EXPECT_TRUE(system.Messages().empty());
}

}  // namespace
}  // namespace brenvik
