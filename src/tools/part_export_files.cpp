// Names and places. Part data are typed by people, so names are made fit for files and layers.
#include "tools/part_export_files.h"

#include <vector>

#include "base/file_name.h"
#include "base/fractions.h"
#include "base/letter_case.h"
#include "base/number_text.h"
#include "base/skip.h"
#include "base/text.h"
#include "base/wildcard.h"
#include "cnc/part/part_material.h"
#include "session/ports/files_port.h"
#include "session/session.h"
#include "settings/material_faults.h"

namespace brenvik {

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

bool IsFileOfAnExport(const std::string& name) {
    return MatchesWildcards(name, "Part*.dwg", FileWildcards) ||
           MatchesWildcards(name, "wblock.dwg", FileWildcards);
}

std::string PartExportPath(int index) {
    return std::string(PartExportFolder) + "Part" + std::to_string(index) + ".dwg";
}

std::string FinishedPartPath(int index, std::string_view PartName, std::string_view PN) {
    std::vector<std::string> texts{FileNameText(FoldUpper(PartName)), FileNameText(FoldUpper(PN))};
    const std::string head = "Part" + std::to_string(index) + "_", ending = "_.dwg";
    MakeFit(texts, LongestFileName - head.size() - (texts.size() - 1) - ending.size());
    return std::string(PartExportFolder) + head + Join(texts, "_") + ending;
}

std::string MaterialLayerName(double thickness, std::string_view Material) {
    const std::string size = NumberToTextBlank(ClosestThirtySecond(thickness));
    const std::string material = IsBlank(Material) ? std::string(UnnamedMaterial) : FoldUpper(Material);
    return WithoutCharacters(NotInLayerNames, "Material_" + size + " " + material);
}

}  // namespace brenvik
