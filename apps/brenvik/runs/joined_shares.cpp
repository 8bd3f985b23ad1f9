// Each file goes into the run's folder by its fingerprint.
#include "runs/joined_shares.h"

#include <algorithm>
#include <filesystem>
#include <optional>
#include <set>
#include <system_error>

#include "base/letter_case.h"
#include "base/sha256.h"
#include "base/skip.h"
#include "cnc/output/output_claim.h"
#include "cnc/part/part_file_name.h"
#include "cnc/run/part_result.h"
#include "file_roots/file_content.h"
#include "file_roots/places.h"
#include "file_roots/whole_file.h"
#include "runs/taken_files.h"
#include "shell/exit_status.h"

namespace brenvik::app {

namespace {

namespace fs = std::filesystem;

/// What a part's files on its second side begin with.
const std::string SecondSideHead = std::string(SecondSideMark) + std::string(PartFileHead);

/// What the names of a share's files on second sides begin with.
const std::string SecondSides = std::string(SecondSideFolderName) + "\\";

bool IsNameOfARun(std::string_view name) {
    if (name.starts_with(SecondSides)) name.remove_prefix(SecondSides.size());
    return name.find_first_of("\\/") == std::string_view::npos && IsFileOfARun(std::string(name));
}

/// Files for machines, and whatever somebody has made of a part's file under its name.
bool LooksAsMade(const std::string& name) {
    const std::string lower = FoldLower(name);
    const auto ends = [&lower](std::string_view ending) { return lower.ends_with(ending); };
    return IsFileOfARun(name) || StartsWithIgnoreCase(name, PartFileHead) ||
           StartsWithIgnoreCase(name, SecondSideHead) || ends(".dxf") || ends(".nc") || ends(".mpr");
}

std::string PlaceOf(const std::string& folder, std::string name) {
    std::ranges::replace(name, '\\', '/');
    return folder + "/" + name;
}

}  // namespace

void RequireFilesOf(const ShareInFolder& share) {
    for (const SharedPart& part : share.share.done.parts) {
        if (part.end.kind != WorkerEnd::Kind::Done) continue;
        const std::vector<std::string> files = UnpackResult(part.end.text).files;
        for (std::size_t file = 0; file < files.size(); ++file) {
            const std::string place = PlaceOf(share.folder, files[file]);
            const std::optional<std::string> digest =
                IsNameOfARun(files[file]) ? DigestOfFile(place) : std::nullopt;
            if (digest && file < part.digests.size() && *digest == part.digests[file]) continue;
            throw CommandError(ExitStatus::Unreadable,
                               place + ": expected the file as share " + std::to_string(share.share.number) +
                                   "/" + std::to_string(share.share.of) + " has written it, found " +
                                   (digest ? "another one" : "none"));
        }
    }
}

std::vector<std::string> FilesOfNoShare(const std::vector<ShareInFolder>& shares) {
    std::vector<std::string> foreign;
    for (const ShareInFolder& share : shares) {
        std::set<std::string, LessIgnoreCase> own{PlaceOf(share.folder, std::string(ShareText))};
        for (const SharedPart& part : share.share.done.parts)
            if (part.end.kind == WorkerEnd::Kind::Done)
                for (const std::string& file : UnpackResult(part.end.text).files)
                    own.insert(PlaceOf(share.folder, file));
        const std::string second = share.folder + "/" + std::string(SecondSideFolderName);
        for (const std::string& folder : {share.folder, second}) {
            std::error_code error;
            for (fs::directory_iterator entry(PathFromText(folder), error), end; !error && entry != end;
                 entry.increment(error)) {
                const std::string name = TextFromPath(entry->path().filename()), place = folder + "/" + name;
                std::error_code unknown;
                if (name.starts_with(WorkFilePrefix)) continue;
                if (entry->is_directory(unknown) && !EqualsIgnoreCase(place, second))
                    foreign.push_back(place + "/");
                else if (LooksAsMade(name) && !own.contains(place))
                    foreign.push_back(place);
            }
        }
    }
    std::ranges::sort(foreign);
    return foreign;
}

JoinedShares::JoinedShares(FileRoots& roots, const std::vector<ShareInFolder>& shares) : mFiles(roots) {
    for (const ShareInFolder& share : shares) {
        mParts.resize(std::max(mParts.size(), share.share.done.partsOfRun));
        for (const SharedPart& part : share.share.done.parts)
            if (part.part < mParts.size()) mParts[part.part] = {&share, &part};
    }
}

void JoinedShares::Spread(const SpreadWork& work) {
    for (std::size_t part = 0; part < work.parts; ++part) {
        WorkerEnd end{WorkerEnd::Kind::Talked, {}};
        if (work.parts == mParts.size() && mParts[part].part != nullptr) end = mParts[part].part->end;
        if (!work.take(part, end)) return;
    }
}

bool JoinedShares::TakeOver(std::string_view folder, std::size_t part, std::span<const std::string> files,
                            std::span<const std::string> made) {
    const Known& known = mParts[part];
    const std::vector<std::string>& digests = known.part->digests;
    bool isSamePart = false;
    Skip([&] { isSamePart = Sha256(mFiles.ReadFile(files.front())) == known.part->drawing; });
    if (!isSamePart || digests.size() != made.size()) return false;
    const bool areTaken = TakeAllOrNone(mFiles, folder, made, [&](std::size_t at, const std::string& path) {
        const auto content = ContentIfAny(PathFromText(PlaceOf(known.share->folder, made[at])));
        if (!content || !IsNameOfARun(made[at]) || Sha256(*content) != digests[at]) return false;
        if (made[at].starts_with(SecondSides)) mFiles.MakeFolder(std::string(folder) + SecondSides);
        WriteWholeFile(mFiles.Resolve(path), *content);
        return true;
    });
    if (!areTaken) return false;
    for (const std::string& file : files) Skip([&] { mFiles.RemoveFile(file); });
    return true;
}

}  // namespace brenvik::app
