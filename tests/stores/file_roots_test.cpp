// Finding files by the system's paths and working on them.
#include "file_roots/file_roots.h"

#include <gtest/gtest.h>

#include <fstream>
#include <map>

#include "file_roots/places.h"
#include "support/failure_of.h"
#include "support/temporary_folder.h"

namespace brenvik {
namespace {

namespace fs = std::filesystem;

class SystemFiles : public testing::Test {
  protected:
    void Put(const fs::path& file, const std::string& content) const {
        fs::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary) << content;
    }

    TemporaryFolder folder;
    fs::path home = folder.Path() / "home";
    FileRoots files{home};
};

TEST_F(SystemFiles, DrivesAreFoldersOfTheHomeFolder) {
    EXPECT_EQ(files.Resolve("c:\\BV-DXF\\x.dxf"), home / "drive_c/BV-DXF/x.dxf");
    EXPECT_EQ(files.Resolve("D:/x"), home / "drive_d/x");
    EXPECT_EQ(files.Resolve("c:\\..\\..\\etc\\passwd"), home / "drive_c/etc/passwd");
}

TEST_F(SystemFiles, OtherPathsAreThoseOfTheMachine) {
    EXPECT_EQ(files.InstallFolder(), home.string());
    EXPECT_EQ(files.Resolve(files.InstallFolder() + "\\_db\\bv04.mdb"), home / "_db/bv04.mdb");
    EXPECT_EQ(files.Resolve("some.dxf"), fs::current_path() / "some.dxf");
    EXPECT_EQ(FileRoots(home.string() + "/").InstallFolder(), home.string());
}

TEST_F(SystemFiles, NamesAreFoundInAnyCase) {
    Put(home / "drive_c/BV-DXF/2-Sided/T\xC3\xBCr.DXF", "x");
    EXPECT_EQ(files.Resolve("C:\\bv-dxf\\2-SIDED\\t\xC3\x9CR.dxf"),
              home / "drive_c/BV-DXF/2-Sided/T\xC3\xBCr.DXF");
    EXPECT_EQ(files.Resolve("c:\\bv-dxf\\New\\x"), home / "drive_c/BV-DXF/New/x");
    EXPECT_TRUE(files.FileExists("c:\\BV-dxf\\2-sided\\t\xC3\xBCr.dxf"));
    EXPECT_TRUE(files.FolderExists("c:\\BV-dxf\\"));
    EXPECT_FALSE(files.FileExists("c:\\BV-dxf"));
    EXPECT_FALSE(files.FolderExists("c:\\BV-dxf\\2-sided\\t\xC3\xBCr.dxf"));
}

TEST_F(SystemFiles, ExactNameComesBeforeOthersThenTheFirstInByteOrder) {
    Put(home / "drive_c/b.txt", "");
    Put(home / "drive_c/B.txt", "");
    Put(home / "drive_c/B.TXT", "");
    EXPECT_EQ(files.Resolve("c:\\b.txt"), home / "drive_c/b.txt");
    EXPECT_EQ(files.Resolve("c:\\b.tXt"), home / "drive_c/B.TXT");
}

TEST_F(SystemFiles, MappedFolderTakesAllThatLiesInIt) {
    const fs::path out = folder.Path() / "out";
    files.MapFolder("c:\\BV-DXF\\", out);
    files.MapFolder("c:\\BV-DXF\\2-sided", folder.Path() / "second");
    EXPECT_EQ(files.Resolve("C:\\bv-dxf\\x.dxf"), out / "x.dxf");
    EXPECT_EQ(files.Resolve("c:\\BV-DXF"), out);
    EXPECT_EQ(files.Resolve("c:\\BV-DXF\\a\\..\\b"), out / "b");
    EXPECT_EQ(files.Resolve("c:\\BV-DXF\\2-Sided\\x"), folder.Path() / "second/x");
    EXPECT_EQ(files.Resolve("c:\\BV-DXF2\\x"), home / "drive_c/BV-DXF2/x");
    EXPECT_EQ(files.Resolve("d:\\BV-DXF\\x"), home / "drive_d/BV-DXF/x");
    EXPECT_EQ(files.Resolve("\\BV-DXF\\x"), "/BV-DXF/x");
}

TEST_F(SystemFiles, BlankPathsNameNothing) {
    EXPECT_FALSE(files.FileExists(""));
    EXPECT_FALSE(files.FolderExists(""));
    EXPECT_EQ(FailureOf([&] { files.ReadFile(""); }).number(), failure_number::BadFileName);
}

TEST_F(SystemFiles, WrittenFileReadsBackAsItIs) {
    files.MakeFolder("c:\\BV-DXF");
    const std::string content("a\r\nb\0c\xFF", 7);
    files.WriteFile("c:\\bv-dxf\\x.bin", content);
    EXPECT_EQ(files.ReadFile("C:\\BV-DXF\\X.BIN"), content);
    files.WriteFile("c:\\bv-dxf\\X.Bin", "");
    EXPECT_EQ(files.ReadFile("c:\\BV-DXF\\x.bin"), "");
    EXPECT_EQ(files.ListFiles("c:\\BV-DXF", "*").size(), 1U) << "one name in two cases is one file";
}

TEST_F(SystemFiles, RootOfADriveIsThereForWhateverIsWrittenToIt) {
    files.WriteFile("c:\\list.csv", "QTY\n");
    EXPECT_EQ(files.ReadFile("C:\\LIST.CSV"), "QTY\n");
    EXPECT_TRUE(fs::is_regular_file(home / "drive_c/list.csv"));
    files.CopyFileOver("c:\\list.csv", "d:\\copy.csv");
    EXPECT_TRUE(fs::is_regular_file(home / "drive_d/copy.csv"));
}

TEST_F(SystemFiles, FolderOfADriveIsNotMadeByWriting) {
    EXPECT_EQ(FailureOf([&] { files.WriteFile("c:\\gone\\list.csv", "x"); }).number(),
              failure_number::PathNotFound);
    EXPECT_FALSE(fs::exists(home / "drive_c/gone"));
}

TEST_F(SystemFiles, ReadingMakesNoDrive) {
    EXPECT_FALSE(files.FileExists("c:\\list.csv"));
    EXPECT_EQ(FailureOf([&] { files.ReadFile("c:\\list.csv"); }).number(), failure_number::PathNotFound);
    EXPECT_EQ(FailureOf([&] { files.CopyFileOver("c:\\a", "d:\\b"); }).number(),
              failure_number::PathNotFound);
    EXPECT_FALSE(fs::exists(home));
}

TEST_F(SystemFiles, DriveThatCantBeMadeIsTold) {
    Put(home / "drive_c", "a file where the drive should be");
    const Failure failure = FailureOf([&] { files.WriteFile("c:\\list.csv", "x"); });
    EXPECT_EQ(failure.number(), failure_number::PathNotFound);
    EXPECT_EQ(failure.detail(), (home / "drive_c").string());
}

TEST_F(SystemFiles, LinesEndAsThePlatformsTextFilesDo) {
#ifdef _WIN32
    EXPECT_EQ(files.LineEnd(), "\r\n");
#else
    EXPECT_EQ(files.LineEnd(), "\n");
#endif
}

TEST_F(SystemFiles, FoldersAreMadeWithThoseAboveThem) {
    files.MakeFolder("c:\\a\\b\\c");
    files.MakeFolder("c:\\A\\B");
    EXPECT_TRUE(fs::is_directory(home / "drive_c/a/b/c"));
    files.WriteFile("c:\\a\\file", "x");
    EXPECT_EQ(FailureOf([&] { files.MakeFolder("c:\\a\\FILE"); }).number(), failure_number::PathAccess);
    EXPECT_EQ(FailureOf([&] { files.MakeFolder("c:\\a\\file\\x"); }).number(), failure_number::PathNotFound);
}

TEST_F(SystemFiles, CopyReplacesAnExistingFile) {
    Put(home / "_db/bv-back04.mdb", "blank");
    Put(home / "_db/bv04.mdb", "full of rows");
    const std::string database = files.InstallFolder() + "\\_db\\";
    files.CopyFileOver(database + "bv-back04.mdb", database + "BV04.mdb");
    EXPECT_EQ(files.ReadFile(database + "bv04.mdb"), "blank");
    EXPECT_EQ(files.ListFiles(database, "*.mdb"), (std::vector<std::string>{"bv-back04.mdb", "bv04.mdb"}));
}

TEST_F(SystemFiles, ListedFilesFitThePatternInTheOrderOfTheirNames) {
    for (const char* name : {"b.dxf", "A.DXF", "c.txt", ".brenvik-work-1-1", "a.dxf.bak"})
        Put(home / "drive_c" / name, "");
    fs::create_directory(home / "drive_c/folder.dxf");
    EXPECT_EQ(files.ListFiles("C:\\", "*.dxf"), (std::vector<std::string>{"A.DXF", "b.dxf"}));
    EXPECT_EQ(files.ListFiles("c:\\", "*.*"),
              (std::vector<std::string>{"A.DXF", "a.dxf.bak", "b.dxf", "c.txt"}));
    EXPECT_TRUE(files.ListFiles("c:\\none", "*").empty());
}

TEST_F(SystemFiles, RemovedFileIsGone) {
    Put(home / "drive_c/X.txt", "x");
    files.RemoveFile("c:\\x.TXT");
    EXPECT_FALSE(files.FileExists("c:\\x.txt"));
}

TEST_F(SystemFiles, MissingFilesAndFoldersAreToldApart) {
    Put(home / "drive_c/there/x", "");
    EXPECT_EQ(FailureOf([&] { files.ReadFile("c:\\there\\y"); }).number(), failure_number::FileNotFound);
    EXPECT_EQ(FailureOf([&] { files.ReadFile("c:\\gone\\y"); }).number(), failure_number::PathNotFound);
    EXPECT_EQ(FailureOf([&] { files.ReadFile("c:\\there\\x\\y"); }).number(), failure_number::PathNotFound);
    EXPECT_EQ(FailureOf([&] { files.RemoveFile("c:\\there\\y"); }).number(), failure_number::FileNotFound);
    EXPECT_EQ(FailureOf([&] { files.RemoveFile("c:\\gone\\y"); }).number(), failure_number::PathNotFound);
    EXPECT_EQ(FailureOf([&] { files.CopyFileOver("c:\\there\\y", "c:\\z"); }).number(),
              failure_number::FileNotFound);
    EXPECT_EQ(FailureOf([&] { files.WriteFile("c:\\gone\\y", "x"); }).number(), failure_number::PathNotFound);
    const Failure failure = FailureOf([&] { files.ReadFile("c:\\there\\y"); });
    EXPECT_EQ(failure.detail(), (home / "drive_c/there/y").string());
}

TEST_F(SystemFiles, FoldersAreNoFiles) {
    fs::create_directories(home / "drive_c/folder");
    EXPECT_EQ(FailureOf([&] { files.ReadFile("c:\\folder"); }).number(), failure_number::PathAccess);
    EXPECT_EQ(FailureOf([&] { files.WriteFile("c:\\folder", "x"); }).number(), failure_number::PathAccess);
    EXPECT_EQ(FailureOf([&] { files.RemoveFile("c:\\folder"); }).number(), failure_number::FileNotFound);
}

TEST_F(SystemFiles, NameThatIsTooLongIsABadName) {
    fs::create_directories(home / "drive_c");
    const std::string name = "c:\\" + std::string(300, 'x');
    EXPECT_EQ(FailureOf([&] { files.WriteFile(name, "x"); }).number(), failure_number::BadFileName);
    EXPECT_FALSE(files.FileExists(name));
    EXPECT_TRUE(files.ListFiles("c:\\", "*").empty());
}

TEST_F(SystemFiles, DeviceIsNoFileToRead) {
    EXPECT_EQ(FailureOf([&] { files.ReadFile("/dev/zero"); }).number(), failure_number::PathAccess);
}

TEST_F(SystemFiles, ACurrentFolderThatIsGoneIsToldWhereItCounts) {
    const fs::path before = fs::current_path();
    const fs::path gone = folder.Path() / "gone";
    fs::create_directory(gone);
    fs::current_path(gone);
    fs::remove(gone);
    const auto number = [](const auto& work) { return FailureOf(work).number(); };
    EXPECT_EQ(number([&] { files.ReadFile("notes.txt"); }), failure_number::PathNotFound);
    EXPECT_EQ(number([&] { files.MapFolder("c:\\BV-DXF\\", "out"); }), failure_number::PathNotFound);
    EXPECT_EQ(number([&] { FileRoots relative("home"); }), failure_number::PathNotFound);
    EXPECT_EQ(number([&] { DefaultHome([](const char*) { return "home"; }); }), failure_number::PathNotFound);
    files.WriteFile("c:\\notes.txt", "whole paths need none");
    EXPECT_EQ(files.ReadFile("c:\\notes.txt"), "whole paths need none");
    fs::current_path(before);
}

TEST(HomeFolder, IsTakenFromTheFirstVariableThatNamesOne) {
    std::map<std::string, std::string> variables;
    const auto home = [&] {
        return DefaultHome([&](const char* name) -> const char* {
            const auto found = variables.find(name);
            return found == variables.end() ? nullptr : found->second.c_str();
        });
    };
    EXPECT_EQ(FailureOf([&] { home(); }).number(), failure_number::PathNotFound);
    variables["HOME"] = "/home/u";
    EXPECT_EQ(home(), "/home/u/.local/share/brenvik");
    variables["XDG_DATA_HOME"] = "relative";
    EXPECT_EQ(home(), "/home/u/.local/share/brenvik");
    variables["XDG_DATA_HOME"] = "/data";
    EXPECT_EQ(home(), "/data/brenvik");
    variables["BRENVIK_HOME"] = "";
    EXPECT_EQ(home(), "/data/brenvik");
    variables["BRENVIK_HOME"] = "/shop";
    EXPECT_EQ(home(), "/shop");
}

}  // namespace
}  // namespace brenvik
