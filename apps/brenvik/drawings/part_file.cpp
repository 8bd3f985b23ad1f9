// The unit and the side come from the file, the tools from this home's material library.
#include "drawings/part_file.h"

#include <filesystem>
#include <iostream>
#include <optional>

#include "base/failure.h"
#include "base/letter_case.h"
#include "base/skip.h"
#include "cnc/proof/target_of_names.h"
#include "drafting_host/document/files/drawing_units.h"
#include "drafting_host/document/host_application.h"
#include "drafting_host/document/host_document.h"
#include "file_roots/places.h"
#include "home/workplace.h"
#include "reports/run_dialogs.h"
#include "reports/teller.h"
#include "session/call.h"
#include "settings/home_units.h"
#include "settings/setting_names.h"
#include "settings/settings_store.h"
#include "shell/exit_status.h"

namespace brenvik::app {

namespace {

/// Of every material: the file doesn't say which one the part is of.
std::vector<std::string> AllTools(std::vector<std::string>& remarks) {
    std::vector<std::string> tools;
    const std::optional<Failure> failure = Attempt([&tools] { tools = AllToolNumbers(); });
    if (failure) remarks.push_back("the tools of the material library are unknown: " + failure->detail());
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

/// The files of second sides are recognised by their names.
bool IsSecondSide(const std::string& name) {
    return FoldLower(TextFromPath(PathFromText(name).filename())).starts_with("bpart_");
}

}  // namespace

std::string PictureTitleOf(const std::string& file) { return TextFromPath(PathFromText(file).stem()); }

PartPicture ReadPartFile(HostApplication& host, const std::string& file, std::vector<std::string>& remarks) {
    HostDocument* const before = host.Active();
    HostDocument& document = OpenPartFile(host, file);
    struct Closing {
        HostApplication& host;
        HostDocument& document;
        HostDocument* before;
        ~Closing() {
            host.CloseDocument(document);
            if (before != nullptr) host.Activate(*before);
        }
    } const closing{host, document, before};
    // The material library lies there.
    TakeInstallFolder();
    const std::vector<std::string> tools = AllTools(remarks);
    PartPicture picture = ReadPartPicture(document, {IsMetric(document), IsSecondSide(file), tools});
    if (picture.shapes.size() == picture.CountOf(PictureKind::Unread))
        throw CommandError(ExitStatus::Unreadable,
                           file + ": expected a part file of a run, found no layer that names an operation");
    return picture;
}

ExitStatus DrawPicture(const std::string& home, const PictureOptions& options, const PictureMaker& make) {
    Teller teller(options.quiet);
    RunDialogs dialogs(std::cerr);
    Workplace workplace(home, dialogs);
    workplace.kept.Keep(PathFromText(options.file), "the part file");
    workplace.kept.RequireFree(PathFromText(options.out), OutputKind::List, options.out);
    std::vector<std::string> remarks;
    const PartPicture picture = ReadPartFile(workplace.host, options.file, remarks);
    for (const std::string& remark : remarks) teller.Remark(remark);
    for (const std::string& fault : picture.faults) teller.Loss(options.file + ": " + fault);
    workplace.drawingFiles.Write(PathFromText(options.out), make(picture, PictureTitleOf(options.file)));
    return teller.Status();
}

}  // namespace brenvik::app
