// A home that changes under a command's hands: what it has made may be half by the old state and half by the
// new.
#include "steady_home.h"

#include <functional>

#include "program.h"

namespace brenvik::cli_test {
namespace {

using app::ExitStatus;
using app::HomeUse;

class SteadyHome : public ProgramTest {
  protected:
    SteadyHome() { EXPECT_EQ(Run({"init"}).status, 0); }

    /// What is told while the work changes the home.
    std::string Told(ExitStatus expected, HomeUse use, const std::function<void()>& change) {
        testing::internal::CaptureStderr();
        const ExitStatus status = app::WhileHomeIsSteady((folder / "home").string(), use, [&] {
            change();
            return ExitStatus::Done;
        });
        std::string told = testing::internal::GetCapturedStderr();
        EXPECT_EQ(status, expected) << told;
        return told;
    }
    void Set(const std::string& name, const std::string& value) {
        EXPECT_EQ(Run({"settings", "set", name, value}).status, 0);
    }
};

TEST_F(SteadyHome, ASettingThatIsChangedMeanwhileIsToldWithBothValues) {
    const std::string told =
        Told(ExitStatus::Incomplete, HomeUse::Settings, [this] { Set("CNCMultiplier", "7"); });
    EXPECT_NE(told.find("settings.txt: CNCMultiplier was changed from \"1\" to \"7\" by another program"),
              std::string::npos)
        << told;
}

TEST_F(SteadyHome, AChangedBoardIsToldWhereBoardsAreUsedAndAnAddedOneIsNot) {
    const auto add = [this] {
        EXPECT_EQ(Run({"materials", "add", "18 own", "--like", "19 cherry"}).status, 0);
    };
    EXPECT_EQ(Told(ExitStatus::Done, HomeUse::SettingsAndBoards, add), "");
    const auto change = [this] {
        std::string boards = Read("home/materials.txt");
        boards.insert(boards.find("tool1=") + 6, "7");
        Write("home/materials.txt", boards);
    };
    EXPECT_EQ(Told(ExitStatus::Done, HomeUse::Settings, change), "");
    EXPECT_NE(
        Told(ExitStatus::Incomplete, HomeUse::SettingsAndBoards, change).find("the boards were changed"),
        std::string::npos);
}

TEST_F(SteadyHome, WhatTheGridKeepsOfItselfIsNoChange) {
    EXPECT_EQ(Told(ExitStatus::Done, HomeUse::SettingsAndBoards, [this] { Set("DialogWidth", "9000"); }), "");
}

}  // namespace
}  // namespace brenvik::cli_test
