// The system on the drafting host, in a home folder of its own, with settings in memory and dialogs that a
// test answers: what the tests of a CNC run stand on.
#pragma once

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <numbers>
#include <string>
#include <string_view>
#include <vector>

#include "base/number_text.h"
#include "base/skip.h"
#include "base/text.h"
#include "cnc/drawing/drawing_walk.h"
#include "cnc/drawing/work_layers.h"
#include "cnc/part/part_drawing.h"
#include "cnc/part/run_report.h"
#include "cnc/part/run_state.h"
#include "core/fakes/fake_platform.h"
#include "drafting_host/command/commands/built_in_commands.h"
#include "drafting_host/command/session/host_command_line.h"
#include "drafting_host/document/host_application.h"
#include "file_roots/file_roots.h"
#include "file_roots/whole_file.h"
#include "parts/mautocad.h"
#include "sample/workpiece.h"
#include "session/library/loading.h"
#include "session/session.h"
#include "settings/materials.h"
#include "settings/settings_store.h"
#include "support/temporary_folder.h"

namespace brenvik {

/// One entity of a written file or of a part drawing, as a test looks at it. `points` are the vertices of a
/// polyline (its elevation as Z), the ends of a line or an arc, or the centre of a circle.
struct Drawn {
    std::string kind, layer;
    int color = 0;
    std::vector<Point3> points;
    std::vector<double> bulges;
    double diameter = 0, thickness = 0;
    Point3 normal{0, 0, 1};
    bool closed = false;
};

inline std::vector<Drawn> DrawnIn(AcadDocument& drawing) {
    std::vector<Drawn> found;
    drawing.ModelSpace().ForEach([&found](AcadEntity& entity) {
        Drawn drawn;
        drawn.kind = entity.ObjectName();
        drawn.layer = entity.Layer();
        drawn.color = entity.Color();
        if (const auto* line = dynamic_cast<const AcadLine*>(&entity)) {
            drawn.points = {line->StartPoint(), line->EndPoint()};
            drawn.normal = line->Normal();
        } else if (const auto* arc = dynamic_cast<const AcadArc*>(&entity)) {
            drawn.points = {arc->StartPoint(), arc->EndPoint()};
            drawn.normal = arc->Normal();
            drawn.diameter = 2 * arc->Radius();
        } else if (const auto* circle = dynamic_cast<const AcadCircle*>(&entity)) {
            drawn.points = {circle->Center()};
            drawn.normal = circle->Normal();
            drawn.diameter = circle->Diameter();
            drawn.thickness = circle->Thickness();
            drawn.closed = true;
        } else if (const auto* polyline = dynamic_cast<const AcadLWPolyline*>(&entity)) {
            const std::vector<double> flat = polyline->Coordinates();
            for (std::size_t i = 0; i + 1 < flat.size(); i += 2) {
                drawn.points.push_back({flat[i], flat[i + 1], polyline->Elevation()});
                drawn.bulges.push_back(polyline->GetBulge(static_cast<int>(i / 2)));
            }
            drawn.thickness = polyline->Thickness();
            drawn.normal = polyline->Normal();
            drawn.closed = polyline->Closed();
        } else if (const auto* space = dynamic_cast<const Acad3DPolyline*>(&entity)) {
            const std::vector<double> flat = space->Coordinates();
            for (std::size_t i = 0; i + 2 < flat.size(); i += 3)
                drawn.points.push_back({flat[i], flat[i + 1], flat[i + 2]});
            drawn.thickness = space->Thickness();
            drawn.closed = space->Closed();
        }
        found.push_back(std::move(drawn));
    });
    return found;
}

/// Those whose layer begins with `prefix`.
inline std::vector<Drawn> OnLayers(const std::vector<Drawn>& all, std::string_view prefix) {
    std::vector<Drawn> found;
    for (const Drawn& drawn : all)
        if (drawn.layer.starts_with(prefix)) found.push_back(drawn);
    return found;
}

class CncTest : public ::testing::Test {
  protected:
    CncTest() {
        host.SetPathResolver([this](std::string_view path) { return files.Resolve(path); });
        host.SetTranscript([this](std::string_view line) { transcript.emplace_back(line); });
        Platform platform;
        platform.dialogs = &dialogs;
        platform.settings = &settings;
        platform.database = &database;
        platform.files = &files;
        platform.measuring = &host;
        platform.sections = &host;
        LoadSystem(platform);
        TheSession().AcadApp = &host;
        TheSession().AcadDoc = &document;
        TheSession().InstallFolder = files.InstallFolder() + "\\";
        UseMetric();  // The materials lie in the install folder.
        ObserveRunEnds([this](const RunReport& report) { mLastReport = report; });
    }
    ~CncTest() override { UnloadSystem(); }

    /// As observers of runs get it.
    const RunReport& LastRunReport() const { return mLastReport; }

    /// A shop in millimetres: the materials "OAK" from 3 to 100 thick with bits of 12, 6 and 3.
    void UseMetric() {
        CreateInitialSettings(MeasureUnits::Metric, files.InstallFolder(), true);
        WriteMaterials({"3", "6", "10", "12", "12.7", "15", "16", "18", "19", "19.05", "20", "25", "30", "38",
                        "40", "50", "60", "100"},
                       {12, 6, 3});
    }
    /// A shop in inches with bits of 1/2, 1/4 and 1/8.
    void UseImperial() {
        CreateInitialSettings(MeasureUnits::Imperial, files.InstallFolder(), true);
        WriteMaterials({".25", ".5", ".625", ".70866", ".75", "1", "1.5", "2"}, {0.5, 0.25, 0.125});
    }
    /// One record for each thickness: "18 OAK" and so on, cut counter-clockwise ("cc"), no grain.
    void WriteMaterials(const std::vector<std::string>& thicknesses, const std::array<double, 3>& bits,
                        const std::string& direction = "cc", const std::string& grain = "0") {
        std::vector<MaterialTexts> records;
        for (const std::string& thickness : thicknesses) {
            MaterialTexts texts{thickness + " OAK", grain, direction};
            for (std::size_t tool = 0; tool < bits.size(); ++tool) {
                texts[3 + 4 * tool] = std::to_string(tool + 1);
                texts[4 + 4 * tool] = NumberToText(bits[tool]);
                texts[5 + 4 * tool] = "18000";
                texts[6 + 4 * tool] = "300";
            }
            records.push_back(texts);
        }
        if (files.FileExists(MaterialsPath())) files.RemoveFile(MaterialsPath());
        files.WriteFile(MaterialsPath(), MaterialsText(records, "\r\n"));
    }
    void Set(std::string_view name, std::string_view value) { SaveSettingText(SettingName(name), value); }

    // Parts. Each stands with its corner at the origin unless it is moved; letters LWT, material OAK.

    app::Workpiece Board(double length, double width, double thickness, std::string_view name = "Panel") {
        AddLayer(document, "Parts");
        app::Workpiece piece(document.ModelSpace(), {0, 0, 0}, {length, width, thickness}, "Parts");
        GivePartData(piece.Solid(), name);
        return piece;
    }
    void GivePartData(Acad3DSolid& solid, std::string_view name, std::string_view letters = "LWT",
                      std::string_view material = "Oak", std::string_view quantity = "1") {
        mAutoCAD::SetPartData(&solid, "PartName", name);
        mAutoCAD::SetPartData(&solid, "PN", "7");
        mAutoCAD::SetPartData(&solid, "SubAssembly", "Base");
        mAutoCAD::SetPartData(&solid, "Material", material);
        mAutoCAD::SetPartData(&solid, "ORIE", letters);
        mAutoCAD::SetPartData(&solid, "Quantity", quantity);
    }
    /// Lays a solid anywhere: turned about three axes (degrees), then moved.
    static void Lay(Acad3DSolid& solid, double aboutX, double aboutY, double aboutZ, const Point3& to) {
        constexpr double degree = std::numbers::pi / 180;
        solid.Rotate3D({0, 0, 0}, {1, 0, 0}, aboutX * degree);
        solid.Rotate3D({0, 0, 0}, {0, 1, 0}, aboutY * degree);
        solid.Rotate3D({0, 0, 0}, {0, 0, 1}, aboutZ * degree);
        solid.Move({0, 0, 0}, to);
    }
    /// Makes these the host's previous selection.
    void Choose(const std::vector<AcadEntity*>& entities) {
        std::vector<HostEntity*> members;
        for (AcadEntity* entity : entities) members.push_back(&dynamic_cast<HostEntity&>(*entity));
        document.SetPreviousSelection(members);
    }
    void ChooseAllSolids() {
        std::vector<AcadEntity*> members;
        for (Acad3DSolid* solid : All<Acad3DSolid>(document)) members.push_back(solid);
        Choose(members);
    }

    // Stretches of a run on their own: the fixture's drawing stands for the part drawing.

    RunState RunOn(HostDocument& part, Target target = Target::C2C) {
        RunState run;
        run.target = target;
        run.app = &host;
        run.sessionDrawing = &part;
        TakePartDrawing(run, part);
        run.part.ExportScaleSetting = StrictIntegerSetting(setting::ExportScaleSetting);
        run.SpoilAmount = NumberSetting(setting::BiesseWorksSpoil);
        return run;
    }

    /// The edges of a board's lower face, as its kept face brings them.
    void DrawKeptEdges(double length, double width) {
        AddLayer(document, layers::RegionCopy);
        const std::array<Point3, 4> corners{
            Point3{0, 0, 0}, {length, 0, 0}, {length, width, 0}, {0, width, 0}};
        for (std::size_t i = 0; i < corners.size(); ++i)
            document.ModelSpace()
                .AddLine(corners[i], corners[(i + 1) % corners.size()])
                ->SetLayer(layers::RegionCopy);
    }

    // What a run leaves behind.

    std::vector<std::string> Messages() const {
        std::vector<std::string> texts;
        for (const MessageRequest& message : dialogs.messages) texts.push_back(message.text);
        return texts;
    }
    std::vector<std::string> FilesIn(std::string_view folder, std::string_view pattern = "*.*") {
        return files.ListFiles(folder, pattern);
    }
    /// The entities of a written file, named as the system names it.
    std::vector<Drawn> Read(std::string_view path) {
        HostDocument& written = host.OpenNamed(path);
        const std::vector<Drawn> drawn = DrawnIn(written);
        written.Close(false);
        return drawn;
    }

    TemporaryFolder home;
    FileRoots files{home.Path()};
    fakes::FakeDatabase database;
    fakes::FakeSettings settings;
    fakes::FakeDialogs dialogs;
    HostApplication host{WriteWholeFile};
    HostCommandLine commandLine{host, FindBuiltInCommand};
    HostDocument& document = host.NewDocument();
    std::vector<std::string> transcript;

  private:
    RunReport mLastReport;
};

}  // namespace brenvik
