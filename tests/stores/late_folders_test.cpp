// What a long job leaves to later: the names of its files, brought to the disk together, and listings.
#include "file_roots/late_folders.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "file_roots/file_roots.h"
#include "file_roots/whole_file.h"
#include "support/temporary_folder.h"

namespace {

std::size_t folderSyncs = 0;

}  // namespace

/// Stands before the system's own in this program, and counts what is a folder: a disk doesn't tell.
extern "C" int fsync(int descriptor) {
    struct stat status = {};
    if (fstat(descriptor, &status) == 0 && S_ISDIR(status.st_mode)) ++folderSyncs;
    return static_cast<int>(syscall(SYS_fsync, descriptor));
}

namespace brenvik {
namespace {

namespace fs = std::filesystem;

class LongJob : public testing::Test {
  protected:
    std::string NameOf(int file) const { return "c:\\out\\Part_" + std::to_string(file) + ".dxf"; }
    fs::path Place(const char* name) const { return home / "drive_c/out" / name; }

    LongJob() {
        fs::create_directories(home / "drive_c/out");
        fs::create_directories(home / "drive_c/other");
    }

    TemporaryFolder folder;
    const fs::path home = folder.Path() / "home";
    FileRoots files{home};
};

TEST_F(LongJob, BringsTheNamesOfAFolderToTheDiskTogether) {
    const std::size_t before = folderSyncs;
    {
        const LateFolder late(home / "drive_c/out/");
        for (int file = 0; file < 20; ++file) WriteWholeFile(files.Resolve(NameOf(file)), "part");
        EXPECT_EQ(folderSyncs, before);
        WriteWholeFile(files.Resolve("c:\\other\\file"), "another's");
        EXPECT_EQ(folderSyncs, before + 1);
    }
    EXPECT_EQ(folderSyncs, before + 2);
    WriteWholeFile(files.Resolve(NameOf(0)), "part");
    EXPECT_EQ(folderSyncs, before + 3);
}

TEST_F(LongJob, HasItsFilesOnTheDiskBeforeItsListHasItsName) {
    const auto claim = files.ClaimFolder("c:\\out\\");
    ASSERT_NE(claim, nullptr);
    WriteWholeFile(files.Resolve(NameOf(0)), "part");
    files.WriteFile("c:\\out\\list.unfinished", "Part_0.dxf\n");
    const std::size_t before = folderSyncs;
    files.MoveFileOver("c:\\out\\list.unfinished", "c:\\out\\list");
    EXPECT_EQ(folderSyncs, before + 1);
    EXPECT_EQ(files.ReadFile("c:\\out\\list"), "Part_0.dxf\n");
    EXPECT_FALSE(files.FileExists("c:\\out\\list.unfinished"));
}

TEST_F(LongJob, FindsNamesInAnyCaseInAFolderThatItHasClaimed) {
    std::ofstream(Place("Earlier.dxf")) << "earlier";
    const auto claim = files.ClaimFolder("c:\\out\\");
    EXPECT_TRUE(files.FileExists("c:\\out\\EARLIER.DXF"));
    EXPECT_FALSE(files.FileExists("c:\\out\\Shelf.dxf"));
    files.WriteFile("c:\\out\\Shelf.dxf", "shelf");
    EXPECT_EQ(files.ReadFile("c:\\out\\SHELF.dxf"), "shelf");
    files.WriteFile("c:\\out\\SHELF.dxf", "wider");
    EXPECT_EQ(files.ReadFile("c:\\out\\Shelf.dxf"), "wider");
    files.RemoveFile("c:\\out\\shelf.DXF");
    EXPECT_FALSE(files.FileExists("c:\\out\\SHELF.dxf"));
    // Of several the first in byte order, as everywhere.
    std::ofstream(Place("shelf.dxf")) << "small";
    EXPECT_FALSE(files.FileExists("c:\\out\\Door.dxf"));
    EXPECT_EQ(files.ReadFile("c:\\out\\shelf.dxf"), "small");
}

TEST_F(LongJob, ListsFoldersAnewWhenItIsOver) {
    { const auto claim = files.ClaimFolder("c:\\out\\"); }
    std::ofstream(Place("Late.dxf")) << "late";
    EXPECT_TRUE(files.FileExists("c:\\out\\LATE.dxf"));
}

TEST_F(LongJob, KeepsItsFolderFromASecondClaimOfItsOwn) {
    const auto claim = files.ClaimFolder("c:\\out\\");
    EXPECT_EQ(files.ClaimFolder("c:\\out"), nullptr);
    files.WriteFile("c:\\out\\Shelf.dxf", "shelf");
    EXPECT_TRUE(files.FileExists("c:\\out\\SHELF.dxf"));
}

}  // namespace
}  // namespace brenvik
