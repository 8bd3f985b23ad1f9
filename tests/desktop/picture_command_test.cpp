// Part files painted from the command line.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <QImage>
#include <QTemporaryDir>
#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include "checkout_paths.h"

namespace brenvik {
namespace {

namespace fs = std::filesystem;

class PaintedPicture : public ::testing::Test {
  protected:
    PaintedPicture() : place(folder.path().toStdString()) {
        fs::copy_file(fs::path(BRENVIK_SOURCE_DIR) / "samples/base-cabinet.dxf", place / "cabinet.dxf");
    }
    /// The exit status; without a display, as in a shell on a server.
    int Run(const std::string& program, const std::string& words) const {
        const std::string line = "cd " + place.string() + " && env -u DISPLAY -u WAYLAND_DISPLAY " + program +
                                 " --home home " + words + " >>out.txt 2>>err.txt";
        return WEXITSTATUS(std::system(line.c_str()));
    }

    const std::string brenvik = (fs::path(BRENVIK_BINARY_DIR) / "bin/brenvik").string();
    QTemporaryDir folder;
    fs::path place;
};

TEST_F(PaintedPicture, IsMadeByTheDesktopProgramWithoutADisplay) {
    // Two parts of the sample have no material.
    ASSERT_EQ(Run(brenvik, "cnc cabinet.dxf --target C2C --out cut --quiet"), 1);
    std::string part;
    for (const auto& entry : fs::directory_iterator(place / "cut"))
        if (entry.path().extension() == ".dxf") part = entry.path().string();
    ASSERT_NE(part, "");
    EXPECT_EQ(Run(brenvik, "picture \"" + part + "\" out.png"), 0);
    const QImage image(QString::fromStdString((place / "out.png").string()));
    EXPECT_GT(image.width(), 1000);
    EXPECT_EQ(Run(brenvik, "picture cabinet.dxf other.png"), 3) << "a drawing is no part file";
    EXPECT_FALSE(fs::exists(place / "other.png"));
    EXPECT_EQ(Run(brenvik, "picture \"" + part + "\" out.gif"), 2);
}

TEST_F(PaintedPicture, IsRefusedWhereTheDesktopProgramIsMissing) {
    fs::create_directory(place / "alone");
    fs::copy_file(brenvik, place / "alone/brenvik");
    EXPECT_EQ(Run("alone/brenvik", "picture cabinet.dxf out.png"), 1);
    std::string told;
    FILE* const errors = std::fopen((place / "err.txt").c_str(), "r");
    char line[500];
    while (errors != nullptr && std::fgets(line, sizeof line, errors) != nullptr) told += line;
    if (errors != nullptr) std::fclose(errors);
    EXPECT_NE(told.find("PNG needs the desktop program"), std::string::npos) << told;
}

}  // namespace
}  // namespace brenvik
