// brenvik convert: reads one drawing format and writes another.
#include <iostream>
#include <memory>

#include "commands/all_commands.h"
#include "drawings/drawing_io.h"
#include "drawings/drawing_unit.h"
#include "drawings/given_material.h"
#include "drawings/several_drawings.h"
#include "file_roots/places.h"
#include "home/home_files.h"
#include "home/workplace.h"
#include "shell/drawing_options.h"

namespace brenvik::app {

namespace {

struct ConvertOptions : DrawingOptions {
    UnitOption unit;
    std::string to;
    FurtherWords further;
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

ExitStatus Convert(const std::filesystem::path& home, std::optional<LengthUnit> unit,
                   ConvertOptions options) {
    RequireWritableFormat(options.save);
    options.onlySaves = IsDxfName(options.save);
    KeptFiles kept;
    kept.KeepHome(home);
    KeepDrawing(kept, options);
    kept.RequireFree(PathFromText(options.save), OutputKind::Drawing, options.save);
    Teller teller(options.quiet);
    GuardedFiles files;
    HostApplication host([&files](const std::filesystem::path& file, std::string_view content) {
        files.Write(file, content);
    });
    TellLostSettings(home, teller);
    HostDocument& document = OpenInput(host, files, options.unit.For(unit), options, teller);
    if (!options.onlySaves) BringBlockSolids(document, options, teller);
    SelectForCommand(document, options);
    GiveMaterial(document, options.material, teller);
    SaveOutput(document, options.save, unit, teller);
    return teller.Status();
}

ExitStatus ConvertAll(const std::filesystem::path& home, const ConvertOptions& options) {
    const SeveralWords words = WordsOf(options.drawing, options.save, options.further);
    if (words.areSeveral == options.to.empty())
        throw CommandError(ExitStatus::WrongWords,
                           words.areSeveral
                               ? "--to: expected the format for several drawings: dxf, step or sat"
                               : "--to: expected several drawings with this option; the ending of OUT "
                                 "says the format of one");
    // Once, so that a change of it meanwhile doesn't give drawings of two units.
    const std::optional<LengthUnit> unit = DrawingUnitOfHome(home);
    if (!words.areSeveral) return Convert(home, unit, options);
    const OutputPlaces outputs(words.last, words.drawings, "." + options.to);
    MakeOutputFolder(words.last);
    const auto work = [&](std::size_t place) {
        ConvertOptions one = options;
        one.drawing = words.drawings[place];
        one.save = outputs.At(place);
        return Convert(home, unit, one);
    };
    return RunEach(words.drawings, {work, PrintOutput}, options.quiet);
}

}  // namespace

Command ConvertCommand() {
    auto options = std::make_shared<ConvertOptions>();
    return {"convert",
            "Read a drawing in one format and write it in another, by extension",
            {Argument("IN", &options->drawing, "The drawing to read").Required(), options->OutWord(),
             options->further.Words(", and behind them, in place of OUT, the folder for the written ones"),
             Argument("--to", &options->to, "The format that several drawings are written in")
                 .OneOf({"dxf", "step", "sat"}),
             options->Letters(), options->unit.Option(), options->Material(), options->Quiet()},
            [options](const std::string& home) { return ConvertAll(HomeOf(home), *options); },
            {}};
}

}  // namespace brenvik::app
