// The file of size adjustments: its keys, as the editor reads and writes it, where it lies, and what an
// export takes from it.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "export/adjustments.h"
#include "session/text_files.h"
#include "settings/setting_names.h"

namespace brenvik {

/// The keys of criteria and amounts in the order of the file: what the columns 2 to 23 of the editor hold.
std::span<const std::string_view> AdjustmentKeys();

/// The name and the values of one adjustment, as the editor shows them.
using AdjustmentRow = std::vector<std::string>;
inline constexpr std::size_t AdjustmentColumnCount = 23;

/// The editor's reader: a name, then the keys in their order; what doesn't fit the state is passed over, and
/// so are lines beginning with "#". The values of a row that the file ends in are blank.
std::vector<AdjustmentRow> ParseAdjustments(std::span<const std::string> lines);
/// The lines, from 1, that a file written from these rows would not have: keys that stand in another order or
/// that nobody knows, lines between the adjustments, remarks. Blank lines are none, nor are blank keys that
/// it would have in addition.
std::vector<std::size_t> LinesNotKept(std::span<const std::string> lines,
                                      std::span<const AdjustmentRow> rows);
/// The 23 lines of a row.
std::string AdjustmentText(const AdjustmentRow& row, std::string_view lineEnd);

inline constexpr SettingName AdjustmentPathSetting = setting::CVS_ADJ_PATH;
/// The file that a home is delivered with.
inline constexpr std::string_view NoAdjustmentsFile = "No Adjustments.txt";
inline constexpr std::string_view MissingAdjustments =
    "Brenvik cannot find your No Adjustments.txt file in your installed folder. It may have been deleted. "
    "You "
    "will need to load another BrenvikAdjustment file or reinstall Brenvik.";

/// An adjustment file for one export, in place of that of the settings, for as long as this lives. A blank
/// path lends nothing.
class AdjustmentsLent {
  public:
    explicit AdjustmentsLent(std::string_view path);
    ~AdjustmentsLent();
    AdjustmentsLent(const AdjustmentsLent&) = delete;
    AdjustmentsLent& operator=(const AdjustmentsLent&) = delete;
};

/// Notes the lines of a file that were no UTF-8 as trouble of the export; remarks may be what they like.
void NoteGuessedLines(std::string_view path, const FileLines& file);

/// The path that is lent, of the settings, or of the delivered "No Adjustments.txt"; blank where that isn't
/// there.
std::string ResolveAdjustmentPath();

/// Stores the path where the settings have none. What stands there is the user's choice, perhaps of a moment
/// ago in another program, and nobody but the user changes it.
void KeepAdjustmentPath(std::string_view path);

/// The path for an export, kept as above. Empty, after a message box, if there is none: the export
/// ends then.
std::optional<std::string> TakeExportAdjustmentPath();

/// Counts a row of an export that a file goes with, and whether its sizes are changed.
void NoteAdjusted(const SizeAdjustment& adjustment, std::string_view path);
/// What is news to whoever has exported since the last call, a line for each file: rows that the file of the
/// settings has changed, and that one which was named for an export has changed none.
std::vector<std::string> TakeAdjustedLines();

/// Notes what can't be right in a file as trouble of an export: what stands there, and what becomes of it.
/// `lines` are those of the file.
void NoteAdjustmentFaults(std::string_view path, std::span<const std::string> lines);

/// What an export applies. What can't be right in the file is noted as trouble of the export. A file that
/// can't be read has no rules; one whose walk would not end is not usable.
struct AdjustmentSource {
    bool usable = false;
    AdjustmentRules rules;
};
/// Reads the file. Without a section it adjusts no size, and a message box says so unless the file holds
/// only remarks. If the file isn't usable, a message box names the section at fault, and the export
/// ends.
AdjustmentSource ReadExportAdjustments(std::string_view path);

}  // namespace brenvik
