// The mark is written while the folder is empty and claimed, so that all that has a name in it is the join's.
#include "runs/join_folder.h"

#include <algorithm>
#include <iterator>
#include <span>
#include <system_error>
#include <utility>

#include "base/first_of.h"
#include "base/letter_case.h"
#include "base/text.h"
#include "base/wildcard.h"
#include "cnc/output/output_claim.h"
#include "cnc/output/work_lists.h"
#include "cnc/part/part_file_name.h"
#include "cnc/run/part_result.h"
#include "file_roots/file_content.h"
#include "file_roots/places.h"
#include "file_roots/whole_file.h"
#include "runs/share_job.h"
#include "shell/exit_status.h"
#include "shell/target_words.h"

namespace brenvik::app {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view MarkHead = "Brenvik: shares of a CNC run are being put together here, or were ";

/// The folder of second sides, ahead of a name in it.
const std::string SecondSides = std::string(SecondSideFolderName) + "/";

/// The names of one part: known where it was done, and beginning with its number where the join does it.
void AddNamesOf(const SharedPart& part, std::vector<std::string>& names) {
    const std::string drawing = PartFileHeadOf(part.part);
    const std::string second = SecondSides + std::string(SecondSideMark) + drawing;
    names.push_back(drawing + ".dwg");
    names.push_back(second + ".dwg");
    if (part.end.kind != WorkerEnd::Kind::Done) {
        names.push_back(drawing + "_*.dxf");
        names.push_back(second + "_*.dxf");
        return;
    }
    for (std::string file : UnpackResult(part.end.text).files) {
        std::ranges::replace(file, '\\', '/');
        names.push_back(std::move(file));
    }
}

void AddDigestsOf(const SharedPart& part, std::map<std::string, std::string, LessIgnoreCase>& digests) {
    if (part.end.kind != WorkerEnd::Kind::Done) return;
    const std::vector<std::string> files = UnpackResult(part.end.text).files;
    for (std::size_t file = 0; file < files.size() && file < part.digests.size(); ++file) {
        std::string name = files[file];
        std::ranges::replace(name, '\\', '/');
        digests.emplace(std::move(name), part.digests[file]);
    }
}

bool IsOfPart(const std::string& name) { return FoldLower(name).ends_with(".dxf"); }

std::vector<std::string> NamesOf(const std::vector<ShareInFolder>& shares) {
    std::vector<std::string> names{std::string(WorkDrawingName), std::string(WorkDrawing2Name),
                                   std::string(JoinMark)};
    if (const TargetDriver* target = FindTarget(shares.front().share.job.Fact("target")))
        for (const std::string& side : {std::string(), SecondSides}) {
            const std::string list = side + std::string(WorkListName(target->target));
            names.push_back(list);
            names.push_back(list + std::string(UnfinishedListEnding));
        }
    for (const ShareInFolder& share : shares)
        for (const SharedPart& part : share.share.done.parts) AddNamesOf(part, names);
    return names;
}

/// The names in a folder, those of second sides with their folder; a folder of second sides without files is
/// nothing.
std::vector<std::string> NamesIn(const fs::path& folder, const std::string& ahead = {}) {
    std::vector<std::string> names;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        const std::string name = TextFromPath(entry->path().filename());
        if (name.starts_with(WorkFilePrefix)) continue;
        if (ahead.empty() && EqualsIgnoreCase(name, SecondSideFolderName) &&
            fs::is_directory(entry->symlink_status()))
            std::ranges::move(NamesIn(entry->path(), SecondSides), std::back_inserter(names));
        else
            names.push_back(ahead + name);
    }
    std::ranges::sort(names);
    return names;
}

bool IsAmong(std::span<const std::string> patterns, const std::string& name) {
    return std::ranges::any_of(patterns, [&name](const std::string& pattern) {
        return MatchesWildcards(name, pattern, FileWildcards);
    });
}

}  // namespace

JoinFolder::JoinFolder(std::string shown, const std::vector<ShareInFolder>& shares)
    : mShown(std::move(shown)),
      mDrawing(shares.front().share.job.drawing),
      mJob(FingerprintOf(shares.front().share.job)),
      mFolder(PathFromText(mShown)),
      mNames(NamesOf(shares)) {
    for (const ShareInFolder& share : shares)
        for (const SharedPart& part : share.share.done.parts) AddDigestsOf(part, mDigests);
}

std::string JoinFolder::WhatElseHasGone() const {
    constexpr std::size_t most = 5;
    return mUnknownGone.empty() ? std::string() : ", among it " + FirstOf(mUnknownGone, most);
}

bool JoinFolder::IsOfAnotherContent(const std::string& name) const {
    const auto known = mDigests.find(name);
    return known != mDigests.end() &&
           DigestOfFile(TextFromPath(mFolder / PathFromText(name))) != known->second;
}

std::string JoinFolder::MarkText() const {
    return std::string(MarkHead) + "when the join ended early; the next join of them begins anew\n" + mJob +
           "\n" + mDrawing + "\n" + Join(mNames, "\n") + "\n";
}

std::optional<std::string> JoinFolder::WhatIsInTheWay() const {
    const std::vector<std::string> there = NamesIn(mFolder);
    if (there.empty()) return std::nullopt;
    const auto mark = ContentIfAny(mFolder / PathFromText(JoinMark));
    if (!mark || !mark->starts_with(MarkHead))
        return "expected an empty folder, and " + mShown + " holds " + there.front();
    const std::vector<std::string> lines = Split(*mark, '\n');
    if (lines.size() < 3 || lines[1] != mJob)
        return "expected an empty folder, and " + mShown + " holds what a join of other shares" +
               (lines.size() < 3 ? std::string() : ", of " + lines[2] + ",") + " has left unfinished";
    const auto names = std::span(lines).subspan(3);
    for (const std::string& name : there)
        if (!IsAmong(names, name))
            return "expected an empty folder, or what an earlier join of these shares has left there, and " +
                   mShown + " holds " + name + ", which that join has not written";
    for (const std::string& name : there)
        if (IsOfAnotherContent(name))
            return mShown + "/" + name +
                   ": expected the file that an earlier join of these shares has left there, found another "
                   "one";
    return std::nullopt;
}

void JoinFolder::Require() const {
    std::error_code error;
    if (fs::exists(mFolder, error) && !fs::is_directory(mFolder, error))
        throw CommandError(ExitStatus::WrongWords, "--out: expected a folder, found the file " + mShown);
    if (const auto why = WhatIsInTheWay()) throw CommandError(ExitStatus::WrongWords, "--out: " + *why);
}

/// The mark goes last, and by the run: whoever ends the join before leaves a folder with a mark, or none
/// with any files.
std::optional<std::string> JoinFolder::ClearLeftovers() {
    if (const auto why = WhatIsInTheWay()) return why;
    for (const std::string& name : NamesIn(mFolder)) {
        std::error_code stays;
        mHasTakenPlace = true;
        if (IsOfPart(name) && !mDigests.contains(name)) mUnknownGone.push_back(name);
        if (name != JoinMark) fs::remove(mFolder / PathFromText(name), stays);
    }
    return std::nullopt;
}

OutputCare JoinFolder::Care() {
    return {.mayEmpty = [this] { return ClearLeftovers(); },
            .emptied = [this] { WriteWholeFile(mFolder / PathFromText(JoinMark), MarkText()); },
            .over =
                [this] {
                    std::error_code stays;
                    fs::remove(mFolder / PathFromText(JoinMark), stays);
                },
            .savesAtTheEnd = true};
}

}  // namespace brenvik::app
