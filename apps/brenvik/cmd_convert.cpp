// brenvik convert: reads one drawing format and writes another.
#include <iostream>
#include <memory>

#include "command_line.h"
#include "drawing_io.h"
#include "drawing_unit.h"
#include "file_roots/places.h"
#include "given_material.h"
#include "home_files.h"
#include "workplace.h"

namespace brenvik::app {

namespace {

struct ConvertOptions : DrawingOptions {
    UnitOption unit;
};

/// A conversion makes no home, but a home that has lost its settings no longer says its units.
void TellLostSettings(const std::filesystem::path& home, Teller& teller) {
    std::error_code unknown;
    if (!std::filesystem::exists(home / MaterialsFile, unknown) ||
        std::filesystem::exists(home / SettingsFile, unknown))
        return;
    teller.Loss(TextFromPath(home / SettingsFile) +
                ": expected the settings of this home, found none; its drawings were taken for metric ones");
}

ExitStatus Convert(const std::string& home, ConvertOptions options) {
    RequireWritableFormat(options.save);
    options.onlySaves = IsDxfName(options.save);
    KeptFiles kept;
    kept.KeepHome(HomeOf(home));
    KeepDrawing(kept, options);
    kept.RequireFree(PathFromText(options.save), OutputKind::Drawing, options.save);
    Teller teller(options.quiet);
    GuardedFiles files;
    HostApplication host([&files](const std::filesystem::path& file, std::string_view content) {
        files.Write(file, content);
    });
    const std::optional<LengthUnit> unit = DrawingUnitOfHome(HomeOf(home));
    TellLostSettings(HomeOf(home), teller);
    HostDocument& document = OpenInput(host, files, options.unit.For(unit), options, teller);
    if (!options.onlySaves) BringBlockSolids(document, options, teller);
    SelectForCommand(document, options);
    GiveMaterial(document, options.material, teller);
    SaveOutput(document, options.save, unit, teller);
    return teller.Status();
}

}  // namespace

Command ConvertCommand() {
    auto options = std::make_shared<ConvertOptions>();
    return {"convert",
            "Read a drawing in one format and write it in another, by extension",
            {Argument("IN", &options->drawing, "The drawing to read").Required(), options->OutWord(),
             options->Letters(), options->unit.Option(), options->Material(), options->Quiet()},
            [options](const std::string& home) { return Convert(home, *options); },
            {}};
}

}  // namespace brenvik::app
