// A window with a drawing of two boards, and what a person does in it. It needs an X display with OpenGL, so
// tests run in a process of their own on a virtual one.
#pragma once

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QTemporaryDir>
#include <filesystem>
#include <optional>
#include <sstream>

#include "checkout_paths.h"
#include "console/console_dialogs.h"
#include "drafting_host/document/host_solids.h"
#include "robot.h"
#include "view_process.h"
#include "windows/main_window.h"

namespace brenvik::desktop {

constexpr int ViewPatience = 20000;
constexpr double Exact = 1e-9;

/// A click of a person: the mouse comes, presses and lets go.
inline void Click(QWidget& view, const QPointF& place) {
    const QPoint at = place.toPoint();
    QTest::mouseMove(&view, at - QPoint(2, 1));
    QTest::mouseMove(&view, at);
    QApplication::processEvents();
    QTest::mouseClick(&view, Qt::LeftButton, {}, at);
    QApplication::processEvents();
}

class ViewTest : public ::testing::Test {
  protected:
    ViewTest() {
        qputenv("XDG_CONFIG_HOME", folder.path().toUtf8());
        const std::filesystem::path place = folder.path().toStdString();
        std::filesystem::copy_file(std::filesystem::path(BRENVIK_SOURCE_DIR) / "samples/base-cabinet.dxf",
                                   place / "cabinet.dxf");
        workplace.emplace((place / "home").string(), dialogs);
        window.emplace(*workplace, desk);
        window->resize(1200, 900);
        window->show();
        EXPECT_TRUE(window->OpenFile((place / "cabinet.dxf").string()));
        Type("erase all  ");
        // A board with a blind hole, and a rail across it whose top lies in the same plane.
        Type("box 10.125,20.25,30.5 610.125,320.25,48.5 ");
        Type("cylinder 210.125,170.25,40.5 17.5 20 ");
        Type("subtract (handent \"" + Handles()[0] + "\")  (handent \"" + Handles()[1] + "\")  ");
        Type("box 459.625,-79.75,30.5 477.625,240.25,48.5 ");
        Type("select ");
        Type("");
        WaitForPicture();
    }
    ~ViewTest() override {
        window.reset();
        workplace.reset();
    }

    std::vector<std::string> Handles() {
        std::vector<std::string> handles;
        for (const HostEntity* entity : Document().Model().Entities())
            if (!entity->Erased()) handles.push_back(entity->Handle());
        return handles;
    }
    HostDocument& Document() { return *workplace->host.Active(); }
    Box3 BoxOf(const std::string& handle) {
        return dynamic_cast<HostEntity*>(Document().HandleToObject(handle))->GetBoundingBox();
    }
    double Volume(const std::string& handle) {
        return dynamic_cast<HostSolid*>(Document().HandleToObject(handle))->Volume();
    }
    void Type(const std::string& text) {
        auto* const line = window->findChild<QLineEdit*>("command");
        line->setText(QString::fromStdString(text));
        QTest::keyClick(line, Qt::Key_Return);
    }
    void Choose(const char* caption) {
        for (QAction* action : window->findChildren<QAction*>())
            if (action->text() == caption) action->trigger();
        WaitForPicture();
    }
    DrawingView& View() { return *window->View(); }
    void WaitForPicture() {
        ASSERT_NE(window->View(), nullptr);
        ASSERT_TRUE(QTest::qWaitFor([this] { return View().Ready(); }, ViewPatience));
        QApplication::processEvents();
    }
    std::string Asked() { return window->findChild<QLabel*>("prompt")->text().toStdString(); }
    std::string Marked() {
        const auto* const marker = View().Widget().findChild<QWidget*>("snapMarker");
        return marker->isVisible() ? marker->accessibleName().toStdString() : "";
    }
    void ClickNear(const Point3& point, double right = 4, double down = 3) {
        const std::optional<QPointF> place = View().PlaceOf(point);
        ASSERT_TRUE(place.has_value());
        Click(View().Widget(), *place + QPointF(right, down));
    }
    /// What the host's command line takes for the point clicked on.
    Point3 PointTaken() { return *workplace->typedCommands.Line().BasePoint(Document()); }

    QTemporaryDir folder;
    std::ostringstream told;
    ConsoleDialogs dialogs{told};
    FormDesk desk;
    std::optional<app::Workplace> workplace;
    std::optional<MainWindow> window;
};

inline void ExpectPoint(const Point3& taken, const Point3& wanted, const std::string& where) {
    EXPECT_NEAR(taken.x, wanted.x, Exact) << where;
    EXPECT_NEAR(taken.y, wanted.y, Exact) << where;
    EXPECT_NEAR(taken.z, wanted.z, Exact) << where;
}

}  // namespace brenvik::desktop
