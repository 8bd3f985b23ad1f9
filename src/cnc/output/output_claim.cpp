// Claims by way of the files port.
#include "cnc/output/output_claim.h"

#include <string>

#include "base/skip.h"
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

}  // namespace

std::optional<OutputClaims> ClaimOutput(std::span<const std::string_view> folders) {
    FilesPort& files = *ThePlatform().files;
    OutputClaims claims;
    for (const std::string_view folder : folders) {
        const std::string place = files.PlaceOf(folder);
        // One that can't be made is told when the first file is written to it.
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
    return ClaimOutput(folders);
}

}  // namespace brenvik
