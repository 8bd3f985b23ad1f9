// The settings file on the disk: made, changed, seen by others, damaged, protected.
#include "settings_store/text_settings.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <thread>

#include "file_roots/whole_file.h"
#include "support/failure_of.h"
#include "support/temporary_folder.h"

namespace brenvik {
namespace {

const char* const key = "SOFTWARE\\Orvane, Inc.\\Brenvik04";
constexpr SettingsRoot machine = SettingsRoot::LocalMachine;

class SettingsFile : public testing::Test {
  protected:
    std::filesystem::path File() const { return folder.Path() / "settings.txt"; }

    std::string Content() const {
        std::ostringstream content;
        content << std::ifstream(File(), std::ios::binary).rdbuf();
        return content.str();
    }

    void Put(const std::string& content) const { std::ofstream(File(), std::ios::binary) << content; }

    TemporaryFolder folder;
    TextSettings settings{folder.Path() / "settings.txt", WriteWholeFile};
};

TEST_F(SettingsFile, MissingFileIsAnEmptyStore) {
    EXPECT_EQ(settings.GetSetting(machine, key, "CircleSize"), "");
    EXPECT_TRUE(settings.EnumerateSettings(machine, key).empty());
    settings.DeleteSetting(machine, key, "CircleSize");
    EXPECT_FALSE(std::filesystem::exists(File()));
}

TEST_F(SettingsFile, SavedValueIsInTheFileAtOnce) {
    settings.SaveSetting(machine, key, "CircleSize", "35");
    EXPECT_EQ(Content(), "[HKEY_LOCAL_MACHINE\\SOFTWARE\\Orvane, Inc.\\Brenvik04]\nCircleSize=35\n");
    TextSettings other(File(), WriteWholeFile);
    EXPECT_EQ(other.GetSetting(machine, "software\\orvane, inc.\\brenvik04", "circleSIZE"), "35");
}

TEST_F(SettingsFile, DeletedValueReadsAsBlank) {
    settings.SaveSetting(machine, key, "A", "1");
    settings.SaveSetting(machine, key, "B", "2");
    settings.DeleteSetting(machine, key, "a");
    EXPECT_EQ(settings.GetSetting(machine, key, "A"), "");
    EXPECT_EQ(settings.EnumerateSettings(machine, key),
              (std::vector<std::pair<std::string, std::string>>{{"B", "2"}}));
}

TEST_F(SettingsFile, ValuesOfASubkeyAreTheirOwn) {
    settings.SaveSetting(machine, key, "A", "1");
    settings.SaveSetting(machine, std::string(key) + "\\CSV_SAVE", "A", "2");
    EXPECT_EQ(settings.GetSetting(machine, key, "A"), "1");
    EXPECT_EQ(settings.EnumerateSettings(machine, std::string(key) + "\\CSV_SAVE").size(), 1U);
}

TEST_F(SettingsFile, ChangeByAnotherProgramIsSeen) {
    TextSettings other(File(), WriteWholeFile);
    settings.SaveSetting(machine, key, "A", "1");
    EXPECT_EQ(other.GetSetting(machine, key, "A"), "1");
    other.SaveSetting(machine, key, "A", "second");
    other.SaveSetting(machine, key, "B", "3");
    EXPECT_EQ(settings.GetSetting(machine, key, "A"), "second");
    settings.SaveSetting(machine, key, "C", "4");
    EXPECT_EQ(other.EnumerateSettings(machine, key).size(), 3U);
    std::filesystem::remove(File());
    EXPECT_EQ(settings.GetSetting(machine, key, "A"), "");
}

TEST_F(SettingsFile, ChangeInAnEditorIsSeenEvenAtTheSameLength) {
    settings.SaveSetting(machine, key, "A", "1");
    Put("[HKEY_LOCAL_MACHINE\\SOFTWARE\\Orvane, Inc.\\Brenvik04]\nA=2\n");
    std::filesystem::last_write_time(File(),
                                     std::filesystem::last_write_time(File()) + std::chrono::seconds(2));
    EXPECT_EQ(settings.GetSetting(machine, key, "A"), "2");
}

TEST_F(SettingsFile, ChangeThatLooksLikeNoneIsNotWrittenOver) {
    TextSettings other(File(), WriteWholeFile);
    settings.SaveSetting(machine, key, "A", "1");
    EXPECT_EQ(settings.GetSetting(machine, key, "A"), "1");
    const auto time = std::filesystem::last_write_time(File());
    other.SaveSetting(machine, key, "A", "2");
    std::filesystem::last_write_time(File(), time);
    settings.SaveSetting(machine, key, "B", "3");
    EXPECT_EQ(other.GetSetting(machine, key, "A"), "2");
    std::filesystem::last_write_time(File(), time);
    settings.DeleteSetting(machine, key, "B");
    EXPECT_EQ(Content(), "[HKEY_LOCAL_MACHINE\\SOFTWARE\\Orvane, Inc.\\Brenvik04]\nA=2\n");
}

TEST_F(SettingsFile, TwoProgramsThatSaveAtOnceLoseNoValue) {
    constexpr int values = 60;
    const auto save = [this](const std::string& prefix) {
        TextSettings own(File(), WriteScratchFile);
        for (int value = 0; value < values; ++value)
            own.SaveSetting(machine, key, prefix + std::to_string(value), "1");
    };
    std::thread first(save, "First"), second(save, "Second");
    first.join();
    second.join();
    EXPECT_EQ(settings.EnumerateSettings(machine, key).size(), 2U * values);
}

TEST_F(SettingsFile, ChangesMadeTogetherReachTheFileAsOneOrNotAtAll) {
    Put("[HKEY_LOCAL_MACHINE\\SOFTWARE\\Orvane, Inc.\\Brenvik04]\nA=1\nB=2\n");
    const std::string before = Content();
    settings.ChangeTogether([&] {
        settings.SaveSetting(machine, key, "A", "10");
        settings.DeleteSetting(machine, key, "B");
        EXPECT_EQ(settings.GetSetting(machine, key, "A"), "10");
        EXPECT_EQ(Content(), before) << "others see nothing yet";
    });
    EXPECT_EQ(Content(), "[HKEY_LOCAL_MACHINE\\SOFTWARE\\Orvane, Inc.\\Brenvik04]\nA=10\n");
    EXPECT_THROW(settings.ChangeTogether([&] {
        settings.SaveSetting(machine, key, "A", "11");
        throw DiskFull("home");
    }),
                 Failure);
    EXPECT_EQ(settings.GetSetting(machine, key, "A"), "10");
    settings.SaveSetting(machine, key, "C", "3");
    EXPECT_EQ(settings.GetSetting(machine, key, "A"), "10");
}

TEST_F(SettingsFile, HeldValuesStayWhateverOthersWrite) {
    const std::string head = "[HKEY_LOCAL_MACHINE\\SOFTWARE\\Orvane, Inc.\\Brenvik04]\n";
    Put(head + "A=1\nB=2\n");
    settings.HoldAt(Content());
    TextSettings(File(), WriteWholeFile).SaveSetting(machine, key, "A", "7");
    EXPECT_EQ(settings.GetSetting(machine, key, "A"), "1");
    settings.SaveSetting(machine, key, "B", "3");
    EXPECT_EQ(settings.GetSetting(machine, key, "B"), "3");
    EXPECT_EQ(Content(), head + "A=7\nB=3\n");
    settings.ChangeTogether([&] {
        EXPECT_EQ(settings.GetSetting(machine, key, "A"), "7")
            << "who decides between two programs sees both";
        settings.DeleteSetting(machine, key, "B");
    });
    EXPECT_EQ(settings.GetSetting(machine, key, "A"), "1");
    EXPECT_EQ(settings.GetSetting(machine, key, "B"), "");
    EXPECT_EQ(Content(), head + "A=7\n");
    EXPECT_THROW(settings.ChangeTogether([&] {
        settings.SaveSetting(machine, key, "B", "4");
        throw DiskFull("home");
    }),
                 Failure);
    EXPECT_EQ(settings.GetSetting(machine, key, "B"), "");
    EXPECT_THROW(settings.HoldAt("A=1"), Failure);
}

TEST_F(SettingsFile, SameValueIsNotWrittenAgain) {
    settings.SaveSetting(machine, key, "A", "1");
    const auto time = std::filesystem::last_write_time(File()) - std::chrono::hours(1);
    std::filesystem::last_write_time(File(), time);
    settings.SaveSetting(machine, key, "A", "1");
    EXPECT_EQ(std::filesystem::last_write_time(File()), time);
}

TEST_F(SettingsFile, BlankValueIsSavedAsOne) {
    settings.SaveSetting(machine, key, "Text1", "");
    EXPECT_EQ(settings.EnumerateSettings(machine, key).size(), 1U);
}

TEST_F(SettingsFile, DamagedFileFailsEveryCallAndStaysAsItIs) {
    const std::string damaged = "[HKEY_LOCAL_MACHINE\\SOFTWARE\\x]\nA=1\nB=2";
    Put(damaged);
    const std::string description =
        File().string() + ", line 3: expected a line break at the end of the last line; the file was cut off";
    EXPECT_EQ(FailureOf([&] { settings.GetSetting(machine, key, "A"); }).description(), description);
    EXPECT_EQ(FailureOf([&] { settings.GetSetting(machine, key, "A"); }).description(), description);
    EXPECT_EQ(FailureOf([&] { settings.SaveSetting(machine, key, "A", "1"); }).description(), description);
    EXPECT_EQ(FailureOf([&] { settings.DeleteSetting(machine, key, "A"); }).description(), description);
    EXPECT_EQ(FailureOf([&] { settings.EnumerateSettings(machine, key); }).description(), description);
    EXPECT_EQ(Content(), damaged);
    Put(damaged + "\n");
    EXPECT_EQ(settings.GetSetting(machine, "SOFTWARE\\x", "B"), "2");
}

TEST_F(SettingsFile, FolderInPlaceOfTheFileFails) {
    std::filesystem::create_directory(File());
    EXPECT_EQ(FailureOf([&] { settings.GetSetting(machine, key, "A"); }).number(),
              failure_number::PathAccess);
    EXPECT_EQ(FailureOf([&] { settings.SaveSetting(machine, key, "A", "1"); }).number(),
              failure_number::PathAccess);
}

TEST_F(SettingsFile, FailedSaveLeavesTheOldValue) {
    settings.SaveSetting(machine, key, "A", "1");
    TextSettings full(
        File(), [](const std::filesystem::path& file, std::string_view) { throw DiskFull(file.string()); });
    EXPECT_EQ(FailureOf([&] { full.SaveSetting(machine, key, "A", "2"); }).number(),
              failure_number::DiskFull);
    EXPECT_EQ(full.GetSetting(machine, key, "A"), "1");
    EXPECT_EQ(settings.GetSetting(machine, key, "A"), "1");
}

TEST_F(SettingsFile, MissingFolderFailsTheSave) {
    TextSettings lost(folder.Path() / "none" / "settings.txt", WriteWholeFile);
    EXPECT_EQ(lost.GetSetting(machine, key, "A"), "");
    EXPECT_EQ(FailureOf([&] { lost.SaveSetting(machine, key, "A", "1"); }).number(),
              failure_number::PathNotFound);
}

}  // namespace
}  // namespace brenvik
