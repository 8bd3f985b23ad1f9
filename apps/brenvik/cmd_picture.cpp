// brenvik picture: draws a part file of a CNC run.
#include <iostream>
#include <memory>

#include "base/failure.h"
#include "base/letter_case.h"
#include "base/skip.h"
#include "cnc/picture/part_picture.h"
#include "cnc/picture/picture_svg.h"
#include "cnc/proof/target_of_names.h"
#include "command_line.h"
#include "drafting_host/document/drawing_units.h"
#include "drafting_host/document/host_application.h"
#include "drafting_host/document/host_document.h"
#include "file_roots/places.h"
#include "run_dialogs.h"
#include "settings/home_units.h"
#include "settings/setting_names.h"
#include "settings/settings_store.h"
#include "teller.h"
#include "workplace.h"

namespace brenvik::app {

namespace {

struct PictureOptions {
    std::string file, out;
    bool quiet = false;
};

void RequirePictureName(const std::string& name) {
    const std::string ending = FoldLower(TextFromPath(PathFromText(name).extension()));
    if (ending == ".svg") return;
    throw CommandError(ExitStatus::WrongWords, name + ": expected a name that ends in .svg");
}

/// Of every material: the file doesn't say which one the part is of.
std::vector<std::string> AllTools(Teller& teller) {
    std::vector<std::string> tools;
    const std::optional<Failure> failure = Attempt([&tools] { tools = AllToolNumbers(); });
    if (failure) teller.Remark("the tools of the material library are unknown: " + failure->detail());
    return tools;
}

/// By the file, which another home may have made; one that says no unit is in that of this home's runs.
bool IsMetric(const HostDocument& file) {
    const std::optional<LengthUnit> unit = UnitOfInsertUnits(file.Tables().insertUnits);
    if (unit) return *unit == LengthUnit::Millimetre;
    return UnitsOfRuns(GetSettingText(setting::ExportScaleSetting)) == MeasureUnits::Metric;
}

HostDocument& OpenPartFile(HostApplication& host, const std::string& name) {
    std::error_code unknown;
    if (!std::filesystem::is_regular_file(PathFromText(name), unknown))
        throw CommandError(ExitStatus::Unreadable,
                           name + ": expected a part file of a run, found no file of this name");
    try {
        return host.OpenDrawing(PathFromText(name));
    } catch (const Failure& failure) {
        throw CommandError(ExitStatus::Unreadable,
                           failure.detail().empty() ? failure.description() : failure.detail());
    }
}

/// The files of second sides are told by their names.
bool IsSecondSide(const std::string& name) {
    return FoldLower(TextFromPath(PathFromText(name).filename())).starts_with("bpart_");
}

ExitStatus DrawPicture(const std::string& home, const PictureOptions& options) {
    RequirePictureName(options.out);
    Teller teller(options.quiet);
    RunDialogs dialogs(std::cerr);
    Workplace workplace(home, dialogs);
    workplace.kept.Keep(PathFromText(options.file), "the part file");
    workplace.kept.RequireFree(PathFromText(options.out), OutputKind::List, options.out);
    HostDocument& document = OpenPartFile(workplace.host, options.file);
    const std::vector<std::string> tools = AllTools(teller);
    const PartPicture picture =
        ReadPartPicture(document, {IsMetric(document), IsSecondSide(options.file), tools});
    if (picture.shapes.size() == picture.CountOf(PictureKind::Unread))
        throw CommandError(
            ExitStatus::Unreadable,
            options.file + ": expected a part file of a run, found no layer that names an operation");
    for (const std::string& fault : picture.faults) teller.Loss(options.file + ": " + fault);
    workplace.drawingFiles.Write(PathFromText(options.out),
                                 PictureAsSvg(picture, TextFromPath(PathFromText(options.file).stem())));
    return teller.Status();
}

}  // namespace

Command PictureCommand() {
    auto options = std::make_shared<PictureOptions>();
    return {"picture",
            "Draw a part file of a CNC run: outline, holes, routes, pockets and edge bores, with a legend",
            {Argument("FILE", &options->file, "The part file, a .dxf of a run").Required(),
             Argument("OUT", &options->out, "The picture to write: .svg").Required(),
             Argument("--quiet", &options->quiet, "Leave out remarks; what is not understood is still told")},
            [options](const std::string& home) { return DrawPicture(home, *options); },
            {}};
}

}  // namespace brenvik::app
