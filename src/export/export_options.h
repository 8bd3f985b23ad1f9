// The CSV export asked for by options, as a command line has them, and done through the very dialog that a
// user has.
#pragma once

#include <string>

namespace brenvik {

struct CsvExportChoices {
    std::string path;  ///< The file to write; one that exists is written over if the question is answered so.
    std::string profile;      ///< A name of the profile file, the case ignored. Blank: the standard columns.
    bool fractions = false;   ///< Sizes as fractions of the closest 32nd.
    std::string adjustments;  ///< An adjustment file for this export alone. Blank: the one of the settings.
};

/// Exports the list that the loaded grid form shows. Returns whether it was completed; if not, a message box
/// has shown the reason. The choices that the dialog keeps stay as they were. Fails with 5 and a description
/// that names the option for a profile that doesn't exist and for adjustments without a profile, since they
/// apply to its columns alone; and as the files do for adjustments that can't be read.
bool ExportToCsv(const CsvExportChoices& choices);

}  // namespace brenvik
