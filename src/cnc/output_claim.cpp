// Claims by way of the files port.
#include "cnc/output_claim.h"

#include <string>

#include "base/skip.h"
#include "session/host_interface.h"
#include "session/message.h"
#include "session/session.h"

namespace brenvik {

namespace {

void TellRefusal(const std::string& reason) { ShowMessage("Nothing was done: " + reason, "Brenvik"); }

}  // namespace

std::optional<OutputClaims> ClaimOutput(std::span<const std::string_view> folders,
                                        const AcadDocument& drawing, std::string_view emptying) {
    FilesPort& files = *ThePlatform().files;
    OutputClaims claims;
    for (const std::string_view folder : folders) {
        const std::string place = files.PlaceOf(folder);
        if (files.FolderHolds(folder, drawing.FullName())) {
            TellRefusal(std::string(emptying) + ", and " + place + " holds the drawing itself.");
            return std::nullopt;
        }
        // One that can't be made is told when the first file is written to it.
        Skip([&] { files.MakeFolder(folder); });
        claims.push_back(files.ClaimFolder(folder));
        if (claims.back() == nullptr) {
            TellRefusal("a run is going on in " + place + ". Wait for its end, or choose another folder.");
            return std::nullopt;
        }
    }
    return claims;
}

}  // namespace brenvik
