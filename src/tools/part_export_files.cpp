// Names and places. Part data are typed by people, so names are made fit for files and layers.
#include "tools/part_export_files.h"

#include <algorithm>

#include "base/fractions.h"
#include "base/letter_case.h"
#include "base/number_text.h"
#include "base/skip.h"
#include "base/text.h"
#include "session/files_port.h"
#include "session/session.h"

namespace brenvik {

namespace {

std::string Without(std::string_view refused, std::string text) {
    std::replace_if(
        text.begin(), text.end(),
        [refused](char letter) {
            return refused.find(letter) != std::string_view::npos || static_cast<unsigned char>(letter) < ' ';
        },
        '_');
    return text;
}

std::string FileNamePart(std::string_view text) { return Without("\\/:*?\"<>|", FoldUpper(text)); }

}  // namespace

void MakePartExportFolder() {
    Skip([] { ThePlatform().files->MakeFolder(PartExportFolder); });
}

void RemoveExportFile(std::string_view path) {
    Skip([path] { ThePlatform().files->RemoveFile(path); });
}

void EmptyPartExportFolder(std::string_view pattern) {
    for (const std::string& name : ThePlatform().files->ListFiles(PartExportFolder, pattern))
        RemoveExportFile(std::string(PartExportFolder) + name);
}

std::string PartExportPath(int index) {
    return std::string(PartExportFolder) + "Part" + std::to_string(index) + ".dwg";
}

std::string FinishedPartPath(int index, std::string_view PartName, std::string_view PN) {
    return std::string(PartExportFolder) + "Part" + std::to_string(index) + "_" + FileNamePart(PartName) +
           "_" + FileNamePart(PN) + "_.dwg";
}

std::string MaterialLayerName(double thickness, std::string_view Material) {
    const std::string size = NumberToTextBlank(RoundDecimalValue(thickness, ExportFractionUnit));
    const std::string material = IsBlank(Material) ? "UnknownMaterial" : FoldUpper(Material);
    return Without("<>/\\\":;?*|,=`", "Material_" + size + " " + material);
}

}  // namespace brenvik
