// A home that changes under a command's hands: what a command makes is made by one state of it.
#include "home/held_home.h"

#include <filesystem>
#include <iostream>

#include "console/console_dialogs.h"
#include "home/workplace.h"
#include "program.h"
#include "settings/settings_keys.h"
#include "shell/exit_status.h"

namespace brenvik::cli_test {
namespace {

class HomeInUse : public ProgramTest {
  protected:
    HomeInUse() { EXPECT_EQ(Run({"init"}).status, 0); }

    std::string Home() const { return (folder / "home").string(); }
    void Set(const std::string& name, const std::string& value) {
        EXPECT_EQ(Run({"settings", "set", name, value}).status, 0);
    }
};

TEST_F(HomeInUse, SettingsAndBoardsAreThoseOfTheBeginning) {
    const std::string boards = Read("home/materials.txt");
    const app::HeldHome held = app::HoldHome(Home());
    Set("CNCMultiplier", "7");
    ConsoleDialogs dialogs(std::cerr);
    app::Workplace workplace(held, dialogs);
    EXPECT_EQ(Run({"materials", "add", "18 own", "--like", "19 cherry"}).status, 0);
    const auto get = [&](const std::string& name) {
        return workplace.toldSettings.GetSetting(SettingsRoot::LocalMachine, SettingsKeyPath, name);
    };
    EXPECT_EQ(get("CNCMultiplier"), "1");
    EXPECT_EQ(workplace.files.ReadFile(app::BoardsIn(workplace.files)), boards);
    Set("CNCMultiplier", "8");
    workplace.toldSettings.SaveSetting(SettingsRoot::LocalMachine, SettingsKeyPath, "DialogWidth", "9000");
    EXPECT_EQ(get("CNCMultiplier"), "1");
    EXPECT_EQ(get("DialogWidth"), "9000");
    // Neither program's value is lost.
    EXPECT_NE(Read("home/settings.txt").find("CNCMultiplier=8\n"), std::string::npos);
    EXPECT_NE(Read("home/settings.txt").find("DialogWidth=9000\n"), std::string::npos);
}

// A drive that is taken out between two drawings of one call: a home made anew would be in other units.
TEST_F(HomeInUse, IsNotMadeAnewWhereItWasTakenAway) {
    const app::HeldHome held = app::HoldHome(Home());
    std::filesystem::rename(folder / "home", folder / "away");
    ConsoleDialogs dialogs(std::cerr);
    try {
        const app::Workplace workplace(held, dialogs);
        FAIL() << "a home was made";
    } catch (const app::CommandError& error) {
        EXPECT_EQ(error.Status(), app::ExitStatus::Unreadable);
        EXPECT_NE(std::string(error.what())
                      .find("settings.txt: expected the settings that this command began with"),
                  std::string::npos)
            << error.what();
    }
    EXPECT_FALSE(std::filesystem::exists(folder / "home"));
}

TEST_F(HomeInUse, JournalsReadSettingsAtEachUse) {
    ConsoleDialogs dialogs(std::cerr);
    app::Workplace workplace(Home(), dialogs);
    Set("CNCMultiplier", "7");
    EXPECT_EQ(workplace.toldSettings.GetSetting(SettingsRoot::LocalMachine, SettingsKeyPath, "CNCMultiplier"),
              "7");
}

TEST_F(HomeInUse, AHomeThatTheCommandMakesIsReadAsItIsMade) {
    const std::string fresh = (folder / "fresh").string();
    const app::HeldHome held = app::HoldHome(fresh);
    EXPECT_FALSE(held.settings);
    ConsoleDialogs dialogs(std::cerr);
    app::Workplace workplace(held, dialogs);
    EXPECT_EQ(workplace.settings.GetSetting(SettingsRoot::LocalMachine, SettingsKeyPath, "CNCMultiplier"),
              "1");
}

}  // namespace
}  // namespace brenvik::cli_test
