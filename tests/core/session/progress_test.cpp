// What long work tells of itself, and what is left of work that the user has cancelled.
#include "session/progress.h"

#include <gtest/gtest.h>

#include "core/fakes/fake_platform.h"
#include "core/fakes/fake_progress.h"
#include "grid/frm_main.h"

namespace brenvik {
namespace {

using Texts = std::vector<std::string>;

class LongWork : public testing::Test {
  protected:
    LongWork() {
        TheSession().InstallFolder = "C:\\Brenvik\\";
        TheSession().AcadApp = &system.app;
        TheSession().AcadDoc = &system.Document();
        for (const char* handle : {"A", "B", "C"})
            system.AddSolid(handle, 18, 600, 400).data = {{"PARTNAME", std::string("Part ") + handle}};
        ShowProgressBy(&progress);
    }
    frmMain& Form() { return GridFormInstance(); }
    std::size_t RowsInTable() const {
        return system.database.databases.at("c:\\brenvik\\_db\\bv04.mdb").size();
    }

    fakes::LoadedSystem system;
    fakes::FakeProgress progress;
};

TEST_F(LongWork, TellsEachPartThatTheListReads) {
    Form().Load();
    EXPECT_EQ(progress.told, (Texts{"Reading the parts of 3", "1 Part A", "2 Part B", "3 Part C", "End"}));
}

TEST_F(LongWork, AListThatIsCancelledIsNotOpenAndLeavesNoRows) {
    progress.cancelAt = {"Reading the parts", 3};
    Form().Load();
    EXPECT_FALSE(Form().Loaded());
    EXPECT_EQ(RowsInTable(), 0U);
    EXPECT_EQ(progress.told.back(), "End");
    progress.cancelAt = {};
    Form().Load();
    EXPECT_TRUE(Form().Loaded());
    EXPECT_EQ(Form().fpSpread1.MaxRows(), 3) << "the next list is whole";
}

TEST_F(LongWork, ApplyTellsItsRowsAndCantBeCancelled) {
    Form().Load();
    progress.told.clear();
    progress.cancelAt = {"Writing the list to the drawing", 2};
    Form().Apply();
    EXPECT_EQ(progress.told, (Texts{"Writing the list to the drawing of 3, for good", "1 Part A", "2 Part B",
                                    "3 Part C", "End"}));
}

TEST_F(LongWork, EndsForGoodOnceItIsCancelled) {
    progress.cancelAt = {"Cutting", 2};
    Progress work({"Cutting", 3, true});
    EXPECT_TRUE(work.Next("a"));
    EXPECT_FALSE(work.Next("b"));
    EXPECT_FALSE(work.Next("c"));
    EXPECT_EQ(progress.told, (Texts{"Cutting of 3", "1 a", "2 b"}));
}

TEST(LongWorkWithoutAPort, GoesOn) {
    Progress work({"Cutting", 3, true});
    EXPECT_TRUE(work.Next("a"));
}

}  // namespace
}  // namespace brenvik
