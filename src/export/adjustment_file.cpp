// The adjustment file as the editor reads and writes it, where it lies, and what an export takes from it.
#include <algorithm>
#include <array>
#include <utility>

#include "base/letter_case.h"
#include "base/skip.h"
#include "base/text.h"
#include "base/text_lines.h"
#include "export/adjustment_faults.h"
#include "export/adjustment_file.h"
#include "export/adjustments.h"
#include "export/export_troubles.h"
#include "session/message.h"
#include "session/module_state.h"
#include "session/ports/files_port.h"
#include "session/session.h"
#include "settings/settings_keys.h"
#include "settings/settings_store.h"

namespace brenvik {

namespace {

constexpr auto Keys = std::to_array<std::string_view>({
    "Qty",   "Part Name",  "Sub Assembly", "Material", "Length", "Width", "Thickness", "ORIE",
    "Notes", "User Data1", "User Data2",   "PN",       "Price",  "EB1",   "EB2",       "EB3",
    "EB4",   "Face",       "Layer",        "l",        "w",      "t",
});
static_assert(Keys.size() + 1 == AdjustmentColumnCount);

constexpr std::string_view CircularEnding =
    " twice with another section between, so that matching the parts would never end. Give each adjustment a "
    "name of its own. This export is now aborting.";

const std::string DeliveredFile(NoAdjustmentsFile);

/// The path for one export alone.
struct LentPath {
    std::string path;
};

/// How many rows of exports a file has gone with, and how many it has changed.
struct RowsOfFile {
    std::size_t all = 0, changed = 0;
    bool wasLent = false, hasAdjustments = false;
};
struct AdjustedRows {
    std::map<std::string, RowsOfFile> byPath;
};

bool HasSection(std::span<const std::string> lines) {
    return std::ranges::any_of(lines, [](const std::string& line) { return line.starts_with('['); });
}

/// Whether somebody has written anything but remarks into it.
bool HasContent(std::span<const std::string> lines) {
    return std::ranges::any_of(
        lines, [](const std::string& line) { return !IsBlank(line) && !line.starts_with('#'); });
}

/// The case of a key says nothing.
bool IsSameLine(std::string_view written, std::string_view line) {
    if (written == line) return true;
    const HeadAndTail a = SplitAtFirst(written, '='), b = SplitAtFirst(line, '=');
    return !written.starts_with('[') && a.found && b.found && EqualsIgnoreCase(a.head, b.head) &&
           a.tail == b.tail;
}

bool IsBlankKey(std::string_view written) { return !written.starts_with('[') && written.ends_with('='); }

}  // namespace

std::span<const std::string_view> AdjustmentKeys() { return Keys; }

std::vector<AdjustmentRow> ParseAdjustments(std::span<const std::string> lines) {
    std::vector<AdjustmentRow> rows;
    // The state: 0 awaits a name, any other the key of that column.
    std::size_t state = 0;
    for (const std::string& line : lines) {
        if (line.starts_with('#')) continue;
        if (state == 0) {
            if (!line.starts_with('[')) continue;
            rows.emplace_back(AdjustmentColumnCount).front() = DropRight(Mid(line, 2), 1);
            state = 1;
            continue;
        }
        const std::string_view key = Keys[state - 1];
        if (!StartsWithIgnoreCase(line, key)) continue;
        // Whatever character stands behind the key counts as its "=".
        rows.back()[state] = Mid(line, key.size() + 2);
        state = state == Keys.size() ? 0 : state + 1;
    }
    return rows;
}

std::vector<std::size_t> LinesNotKept(std::span<const std::string> lines,
                                      std::span<const AdjustmentRow> rows) {
    std::vector<std::string> written;
    for (const AdjustmentRow& row : rows)
        for (std::string& line : LinesOf(AdjustmentText(row, "\n"))) written.push_back(std::move(line));
    std::vector<std::size_t> lost;
    std::size_t present = 0;
    for (std::size_t at = 0; at < lines.size(); ++at) {
        if (IsBlank(lines[at])) continue;
        std::size_t next = present;
        while (next < written.size() && !IsSameLine(written[next], lines[at]) && IsBlankKey(written[next]))
            ++next;
        if (next < written.size() && IsSameLine(written[next], lines[at]))
            present = next + 1;
        else
            lost.push_back(at + 1);
    }
    return lost;
}

std::string AdjustmentText(const AdjustmentRow& row, std::string_view lineEnd) {
    std::string text = "[" + row.front() + "]";
    text += lineEnd;
    for (std::size_t key = 0; key < Keys.size(); ++key) {
        text += Keys[key];
        text += '=';
        text += row[key + 1];
        text += lineEnd;
    }
    return text;
}

AdjustmentsLent::AdjustmentsLent(std::string_view path) { StateOf<LentPath>().path = path; }

AdjustmentsLent::~AdjustmentsLent() { StateOf<LentPath>().path.clear(); }

void NoteGuessedLines(std::string_view path, const FileLines& file) {
    for (const std::size_t number : file.guessed)
        if (const std::string& line = file.lines[number - 1]; !line.starts_with('#'))
            NoteExportTrouble(path, number, GuessedLineFault(line));
}

std::string ResolveAdjustmentPath() {
    if (const std::string& lent = StateOf<LentPath>().path; !lent.empty()) return lent;
    std::string stored = GetSubkeyText(CsvSaveSubkey, AdjustmentPathSetting);
    std::string delivered = ApplicationFolder() + DeliveredFile;
    // A home that was copied or moved has its own delivered file, though the path is that of the old place.
    const std::string installedAt = GetSettingText(setting::ApplicationPath);
    if (!installedAt.empty() && EqualsIgnoreCase(stored, installedAt + DeliveredFile)) return delivered;
    if (!stored.empty()) return stored;
    return ThePlatform().files->FileExists(delivered) ? delivered : std::string();
}

void KeepAdjustmentPath(std::string_view path) {
    const auto isStored = [] { return !GetSubkeyText(CsvSaveSubkey, AdjustmentPathSetting).empty(); };
    const bool isLent = !StateOf<LentPath>().path.empty();
    if (isLent || isStored()) return;
    // By the place that the home remembers, however often it was copied: see `ResolveAdjustmentPath`.
    const std::string installedAt = GetSettingText(setting::ApplicationPath);
    const bool isDelivered = EqualsIgnoreCase(path, ApplicationFolder() + DeliveredFile);
    ChangeSettingsTogether([&] {
        if (isStored()) return;
        SaveSubkeyText(CsvSaveSubkey, AdjustmentPathSetting,
                       isDelivered && !installedAt.empty() ? installedAt + DeliveredFile : std::string(path));
    });
}

std::optional<std::string> TakeExportAdjustmentPath() {
    std::string path = ResolveAdjustmentPath();
    if (path.empty()) {
        ShowMessage(std::string(MissingAdjustments) + " This export is now aborting.");
        return std::nullopt;
    }
    Skip([&] { KeepAdjustmentPath(path); });
    return path;
}

void NoteAdjusted(const SizeAdjustment& adjustment, std::string_view path) {
    RowsOfFile& rows = StateOf<AdjustedRows>().byPath[std::string(path)];
    rows.wasLent = !StateOf<LentPath>().path.empty();
    ++rows.all;
    if (adjustment.length != 0 || adjustment.width != 0 || adjustment.thickness != 0) ++rows.changed;
}

std::vector<std::string> TakeAdjustedLines() {
    std::vector<std::string> lines;
    const auto placeOf = [](const std::string& path) { return ThePlatform().files->PlaceOf(path); };
    for (const auto& [path, rows] : std::exchange(StateOf<AdjustedRows>().byPath, {})) {
        if (!rows.wasLent && rows.changed > 0)
            lines.push_back(std::to_string(rows.changed) + (rows.changed == 1 ? " row has" : " rows have") +
                            " sizes that the adjustment file of the settings has changed: " + placeOf(path));
        if (rows.wasLent && rows.hasAdjustments && rows.all > 0 && rows.changed == 0)
            lines.push_back(placeOf(path) + ": no size of the " + std::to_string(rows.all) +
                            (rows.all == 1 ? " row" : " rows") +
                            " has been changed; expected a row that meets one of the adjustments");
    }
    return lines;
}

void NoteAdjustmentFaults(std::string_view path, std::span<const std::string> lines) {
    for (const AdjustmentFault& fault : AdjustmentFaults(lines))
        NoteExportTrouble(path, fault.line, fault.text);
}

AdjustmentSource ReadExportAdjustments(std::string_view path) {
    FileLines file;
    if (const auto failure = Attempt([&] { file = ReadFileLines(path); }))
        NoteExportTrouble("the BrenvikAdjustments file " + std::string(path) + " can't be read (" +
                          failure->description() + "), so no sizes are adjusted");
    const std::vector<std::string>& lines = file.lines;
    NoteGuessedLines(path, file);
    if (!HasSection(lines)) {
        if (HasContent(lines))
            ShowMessage("The BrenvikAdjustments file " + std::string(path) +
                        " holds no adjustment: each begins with its name in square brackets on a line of its "
                        "own. No sizes are adjusted.");
        return {true, {}};
    }
    StateOf<AdjustedRows>().byPath[std::string(path)].hasAdjustments = true;
    const AdjustmentList list = WalkAdjustments(lines);
    if (list.repeatedHeader) {
        ShowMessage("The BrenvikAdjustments file " + std::string(path) + " has the section " +
                    *list.repeatedHeader + std::string(CircularEnding));
        return {};
    }
    NoteAdjustmentFaults(path, lines);
    return {true, AdjustmentRules(list.sections)};
}

}  // namespace brenvik
