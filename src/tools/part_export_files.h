// The files of the part-per-file export: where they lie, what they are named, and the layer that the solid
// stands on in each.
#pragma once

#include <string>
#include <string_view>

namespace brenvik {

inline constexpr std::string_view PartExportFolder = "C:\\BV-DWG\\";
inline constexpr std::string_view PartExportWorkDrawing = "C:\\BV-DWG\\wblock.dwg";

/// The folder, made if it is missing. If that fails, it is reported when the first file is written there.
void MakePartExportFolder();
/// Deletes the files of the folder that fit a pattern of * and ?. A file that can't be deleted stays.
void EmptyPartExportFolder(std::string_view pattern);
/// Whether the export may have left a file of this name in its folder.
bool IsFileOfAnExport(const std::string& name);
/// Deletes a file that may not be there.
void RemoveExportFile(std::string_view path);

/// "C:\BV-DWG\Part0.dwg": a part on its way.
std::string PartExportPath(int index);
/// "C:\BV-DWG\Part0_SIDE_7_.dwg": a finished one. Name and number are in upper case; what a file name can't
/// hold is replaced by underscores, and of a name that is too long the longer text is cut.
std::string FinishedPartPath(int index, std::string_view PartName, std::string_view PN);

/// "Material_ .75 OAK": the thickness is rounded to a 32nd and has a leading blank. A blank material is
/// "UnknownMaterial"; what a layer name can't hold is replaced by underscores.
std::string MaterialLayerName(double thickness, std::string_view Material);

}  // namespace brenvik
