// Loading and unloading, and what starts fresh with it.
#include "session/session.h"

#include <gtest/gtest.h>

#include "core/fakes/fake_platform.h"
#include "grid/frm_main.h"
#include "parts/mautocad.h"
#include "parts/part_table.h"
#include "session/library/loading.h"
#include "session/message.h"
#include "session/module_state.h"

namespace brenvik {
namespace {

TEST(Session, StartsWithTheFullSelect) {
    fakes::LoadedSystem system;
    EXPECT_EQ(TheSession().CurrentSQL, FullSelect());
    EXPECT_EQ(TheSession().ExportTarget, 0);
    EXPECT_EQ(TheSession().GroupFields, "");
    EXPECT_FALSE(TheSession().ApplyBusy);
    EXPECT_EQ(TheSession().AcadApp, nullptr);
}

TEST(Session, StartsFreshWithEachLoad) {
    {
        fakes::LoadedSystem system;
        TheSession().GroupFields = "bv_partname";
        TheSession().ExportTarget = 3;
        GridFormInstance().Get<CheckControl>("chkPart").SetValue(1);
    }
    fakes::LoadedSystem system;
    EXPECT_EQ(TheSession().GroupFields, "");
    EXPECT_EQ(TheSession().ExportTarget, 0);
    EXPECT_EQ(TheSession().GridForm, nullptr);
    EXPECT_EQ(GridFormInstance().Get<CheckControl>("chkPart").Value(), 0);
}

TEST(Session, ResetsTheStateOfEveryModule) {
    struct Counter {
        int value = 0;
    };
    auto system = std::make_unique<fakes::LoadedSystem>();
    StateOf<Counter>().value = 7;
    EXPECT_EQ(StateOf<Counter>().value, 7);
    system.reset();
    EXPECT_EQ(StateOf<Counter>().value, 0);
}

TEST(Session, ClosesItsConnectionsAtUnload) {
    fakes::LoadedSystem system;
    TheSession().ScanConnection = system.database.CreateConnection();
    TheSession().ScanConnection->Open("Data Source=C:\\Brenvik\\_db\\bv-back04.mdb;");
    EXPECT_EQ(system.database.openConnections, 1);
    UnloadSystem();
    EXPECT_EQ(system.database.openConnections, 0);
}

TEST(SessionDeathTest, PlatformIsUsedOnlyWhileLoaded) {
    UnloadSystem();
    EXPECT_DEATH(ThePlatform(), "library is loaded");
    EXPECT_DEATH(LoadSystem({}), "all the ports");
}

TEST(Message, OfAFailureOfFilesNamesTheFile) {
    fakes::LoadedSystem system;
    ShowFailure(PermissionDenied("/home/shop/_db/bv04.mdb"));
    ShowFailureWithDetail(DiskFull("/home/shop/settings.txt"));
    EXPECT_EQ(system.Messages(),
              (std::vector<std::string>{"70\r\nBrenvik\r\nPermission denied: /home/shop/_db/bv04.mdb",
                                        "61\r\nBrenvik\r\nDisk full: /home/shop/settings.txt"}));
}

TEST(Message, OfAFailureHasNumberSourceAndDescription) {
    fakes::LoadedSystem system;
    ShowFailure(Failure(13, "Brenvik", "Type mismatch", "C:\\x"));
    ASSERT_EQ(system.dialogs.messages.size(), 1u);
    EXPECT_EQ(system.dialogs.messages[0].text, "13\r\nBrenvik\r\nType mismatch");
    EXPECT_EQ(system.dialogs.messages[0].title, "");
    EXPECT_EQ(system.dialogs.messages[0].icon, MessageIcon::None);
}

}  // namespace
}  // namespace brenvik
