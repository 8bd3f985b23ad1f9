// Whether boards are seen: their faces in their own colour from every side, their edges, and what is
// selected, on a light ground and on a dark one.
#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QImage>
#include <QLabel>
#include <QTemporaryDir>
#include <algorithm>
#include <cmath>
#include <filesystem>
#include <optional>
#include <sstream>

#include "checkout_paths.h"
#include "console/console_dialogs.h"
#include "dark_colours.h"
#include "robot.h"
#include "toolkit/qt_text.h"
#include "view_process.h"
#include "windows/main_window.h"

namespace brenvik::desktop {
namespace {

namespace fs = std::filesystem;

/// How far two colours are from each other, 0 to 441: what differs by less than this is hard to tell apart.
constexpr double Distinct = 40;

double Distance(const QColor& one, const QColor& other) {
    return std::hypot(one.red() - other.red(), one.green() - other.green(), one.blue() - other.blue());
}

std::string Text(const QColor& color) { return color.name().toStdString(); }

struct Side {
    const char* menu;
    /// Middle of the face that this side looks at, off its edges.
    Point3 face;
    /// The middle of an edge of it.
    Point3 edge;
};

constexpr Side Sides[] = {
    {"&Top", {300, 150, 400}, {300, 300, 400}}, {"&Bottom", {300, 150, 0}, {300, 300, 0}},
    {"F&ront", {300, 0, 200}, {300, 0, 400}},   {"B&ack", {300, 300, 200}, {300, 300, 400}},
    {"&Left", {0, 150, 200}, {0, 150, 400}},    {"Ri&ght", {600, 150, 200}, {600, 150, 400}},
};

class Look : public ::testing::TestWithParam<bool> {
  protected:
    Look() {
        if (GetParam()) QApplication::setPalette(DarkColours());
        qputenv("XDG_CONFIG_HOME", folder.path().toUtf8());
        const fs::path place = folder.path().toStdString();
        fs::copy_file(fs::path(BRENVIK_SOURCE_DIR) / "samples/base-cabinet.dxf", place / "cabinet.dxf");
        workplace.emplace((place / "home").string(), dialogs);
        window.emplace(*workplace, desk);
        window->resize(1200, 900);
        window->show();
        EXPECT_TRUE(window->OpenFile((place / "cabinet.dxf").string()));
    }
    ~Look() override {
        window.reset();
        workplace.reset();
        QApplication::setPalette(QPalette(QColor(0xef, 0xef, 0xef)));
    }

    void Type(const std::string& text) {
        auto* const line = window->findChild<QLineEdit*>("command");
        line->setText(QString::fromStdString(text));
        QTest::keyClick(line, Qt::Key_Return);
    }
    /// A block of one colour, on a layer of the same.
    void DrawBlock(const std::string& color) {
        Type("erase all  ");
        Type("-layer make looked color " + color + " looked ");
        Type("");
        Type("box 0,0,0 600,300,400 ");
        Type("select ");
        Type("");
    }
    void Choose(const char* caption) {
        for (QAction* action : window->findChildren<QAction*>())
            if (action->text() == caption) action->trigger();
        ASSERT_TRUE(QTest::qWaitFor([this] { return window->View()->Ready(); }, 20000));
        QApplication::processEvents();
    }
    QImage Picture(const std::string& name) {
        QApplication::processEvents();
        const QImage picture = window->View()->Widget().grab().toImage();
        const QString kept = qEnvironmentVariable("BRENVIK_LOOKS");
        if (!kept.isEmpty())
            window->grab().save(kept + (GetParam() ? "/dark-" : "/light-") + ToQt(name).remove('&') + ".png");
        return picture;
    }
    /// The colour that is farthest from another within a few pixels of a place: a line may be one pixel wide.
    QColor Near(const QImage& picture, const Point3& point, int reach, const QColor& from) {
        const QPoint at = window->View()->PlaceOf(point)->toPoint();
        QColor best = picture.pixelColor(at);
        for (int x = -reach; x <= reach; ++x)
            for (int y = -reach; y <= reach; ++y)
                if (const QColor one = picture.pixelColor(at + QPoint(x, y));
                    Distance(one, from) > Distance(best, from))
                    best = one;
        return best;
    }
    QColor At(const QImage& picture, const Point3& point) {
        return picture.pixelColor(window->View()->PlaceOf(point)->toPoint());
    }
    void Select(bool all) {
        Type(all ? "select all " : "select ");
        Type("");
        if (!all) workplace->host.Active()->SetPreviousSelection({});
        window->ShowDrawing();
    }

    QTemporaryDir folder;
    std::ostringstream told;
    ConsoleDialogs dialogs{told};
    FormDesk desk;
    std::optional<app::Workplace> workplace;
    std::optional<MainWindow> window;
};

TEST_P(Look, FacesAndEdgesAreSeenFromEverySide) {
    const QColor wood(222, 199, 158), grey(51, 51, 51);
    const std::pair<const char*, QColor> colors[] = {{"7", wood}, {"250", grey}};
    for (const auto& [index, color] : colors) {
        DrawBlock(index);
        Select(false);
        for (const Side& side : Sides) {
            Choose(side.menu);
            const std::string where = std::string(index) + " " + side.menu;
            const QImage picture = Picture(where);
            const QColor face = At(picture, side.face), ground = picture.pixelColor(20, 60);
            // A little darker than the colour itself, and never lighter.
            EXPECT_LT(Distance(face, color), 20) << where << ": " << Text(face);
            const QColor edge = Near(picture, side.edge, 2, face);
            EXPECT_GT(Distance(edge, face), Distinct) << where << ": " << Text(edge);
            // A dark board on a dark ground is seen by its edges.
            EXPECT_GT(std::max(Distance(face, ground), Distance(edge, ground)), Distinct)
                << where << ": " << Text(face) << Text(ground);
        }
    }
}

TEST_P(Look, TheFacesOfACornerDiffer) {
    DrawBlock("7");
    Select(false);
    Choose("&Isometric");
    const QImage picture = Picture("iso");
    const QColor top = At(picture, {300, 150, 400}), front = At(picture, {300, 0, 200}),
                 left = At(picture, {0, 150, 200});
    EXPECT_GT(Distance(top, front), Distinct) << Text(top) << Text(front);
    EXPECT_GT(Distance(front, left), Distinct) << Text(front) << Text(left);
    EXPECT_GT(Distance(top, left), Distinct) << Text(top) << Text(left);
}

TEST_P(Look, WhatIsSelectedIsSeenOnEveryColour) {
    for (const char* index : {"7", "30", "5", "250"}) {
        DrawBlock(index);
        Select(false);
        Choose("&Isometric");
        // The edge between two faces that are seen, so that nothing of the ground is near.
        const Point3 top{300, 150, 400}, edge{300, 0, 400};
        const QImage before = Picture(std::string(index) + " plain");
        const QColor plain = At(before, top), plainEdge = Near(before, edge, 2, plain);
        Select(true);
        const QImage after = Picture(std::string(index) + " selected");
        const QColor marked = At(after, top), markedEdge = Near(after, edge, 2, marked);
        EXPECT_GT(Distance(plain, marked), Distinct) << index << Text(plain) << Text(marked);
        EXPECT_GT(Distance(marked, markedEdge), Distinct) << index << Text(markedEdge);
        EXPECT_GT(markedEdge.lightness(), marked.lightness()) << index << Text(plainEdge) << Text(markedEdge);
        Select(false);
        EXPECT_LT(Distance(At(Picture("again"), top), plain), 3) << index;
    }
}

TEST_P(Look, WiresAreSeen) {
    for (const char* index : {"7", "2", "250"}) {
        DrawBlock(index);
        Select(false);
        Choose("&Top");
        Choose("&Wireframe");
        const QImage picture = Picture(std::string(index) + " wires");
        const QColor ground = At(picture, {300, 150, 400});
        const QColor wire = Near(picture, {300, 300, 400}, 2, ground);
        EXPECT_GT(Distance(wire, ground), 2 * Distinct) << index << Text(wire) << Text(ground);
        Select(true);
        const QColor marked = Near(Picture(std::string(index) + " marked wires"), {300, 300, 400}, 2, ground);
        EXPECT_GT(Distance(marked, wire), Distinct) << index << Text(marked);
        Choose("&Wireframe");
    }
}

INSTANTIATE_TEST_SUITE_P(DISABLED_Ground, Look, ::testing::Values(false, true));

TEST(ViewLook, BoardsAreSeenOnALightGround) { RunOnVirtualDisplay("DISABLED_Ground/Look.*/0", 4); }
TEST(ViewLook, BoardsAreSeenOnADarkGround) { RunOnVirtualDisplay("DISABLED_Ground/Look.*/1", 4); }

}  // namespace
}  // namespace brenvik::desktop
