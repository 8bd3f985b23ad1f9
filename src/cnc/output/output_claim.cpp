// Claims by way of the files port.
#include "cnc/output/output_claim.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>

#include "base/first_of.h"
#include "base/letter_case.h"
#include "base/skip.h"
#include "base/text.h"
#include "base/wildcard.h"
#include "cnc/output/output_care.h"
#include "cnc/output/work_lists.h"
#include "cnc/part/part_file_name.h"
#include "parts/part_trouble.h"
#include "session/message.h"
#include "session/ports/host_interface.h"
#include "session/session.h"

namespace brenvik {

namespace {

void TellRefusal(const std::string& reason) { ShowMessage("Nothing was done: " + reason, "Brenvik"); }

/// Whether both lead to one folder, as by a link.
bool AreSame(FilesPort& files, std::string_view folder, std::string_view other) {
    return files.FolderHolds(folder, std::string(other) + "file");
}

/// A folder can hold thousands.
constexpr std::size_t MostNames = 10;

}  // namespace

std::optional<OutputClaims> ClaimOutput(std::span<const std::string_view> folders) {
    FilesPort& files = *ThePlatform().files;
    OutputClaims claims;
    for (const std::string_view folder : folders) {
        const std::string place = files.PlaceOf(folder);
        // One that can't be made is reported when the first file is written to it.
        Skip([&] { files.MakeFolder(folder); });
        for (const std::string_view earlier : folders.first(claims.size())) {
            if (!AreSame(files, earlier, folder)) continue;
            TellRefusal(place + " and " + files.PlaceOf(earlier) +
                        " are one folder, in which the files of both would mix: two folders were expected.");
            return std::nullopt;
        }
        claims.push_back(files.ClaimFolder(folder));
        if (claims.back() == nullptr) {
            TellRefusal("a run is going on in " + place + ". Wait for its end, or choose another folder.");
            return std::nullopt;
        }
    }
    return claims;
}

std::optional<OutputClaims> ClaimOutputToEmpty(std::span<const std::string_view> folders,
                                               const AcadDocument& drawing, std::string_view emptying) {
    FilesPort& files = *ThePlatform().files;
    for (const std::string_view folder : folders) {
        if (!files.FolderHolds(folder, drawing.FullName())) continue;
        TellRefusal(std::string(emptying) + ", and " + files.PlaceOf(folder) + " holds the drawing itself.");
        return std::nullopt;
    }
    std::optional<OutputClaims> claims = ClaimOutput(folders);
    const auto& mayEmpty = CareOfOutput().mayEmpty;
    if (!claims || !mayEmpty) return claims;
    const std::optional<std::string> refusal = mayEmpty();
    if (!refusal) return claims;
    TellRefusal(*refusal);
    return std::nullopt;
}

bool IsFileOfARun(const std::string& name) {
    constexpr auto patterns =
        std::to_array<std::string_view>({FirstSideDxfFiles, SecondSideDxfFiles, FirstSideDrawings,
                                         SecondSideDrawings, WorkDrawingName, WorkDrawing2Name});
    const auto matches = [&](std::string_view pattern) {
        return MatchesWildcards(name, pattern, FileWildcards);
    };
    return std::ranges::any_of(patterns, matches) || IsWorkList(name) || EqualsIgnoreCase(name, ShareText) ||
           EqualsIgnoreCase(name, JoinMark) ||
           EqualsIgnoreCase(name, std::string(ShareText) + std::string(UnfinishedListEnding));
}

void NoteForeignFiles(std::string_view folder, bool (*isOwn)(const std::string& name)) {
    FilesPort& files = *ThePlatform().files;
    std::vector<std::string> foreign;
    Skip([&] { foreign = files.ListFiles(folder, "*.*"); });
    std::erase_if(foreign, isOwn);
    if (foreign.empty()) return;
    const std::string count = foreign.size() == 1 ? "1 file" : std::to_string(foreign.size()) + " files";
    NotePartTrouble({"", "",
                     count + " of others went as " + files.PlaceOf(folder) +
                         " was emptied: " + FirstOf(std::move(foreign), MostNames),
                     true, true});
}

}  // namespace brenvik
