// The folders that a run empties: one run at a time, and never the drawing that it is called on.
#pragma once

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "session/ports/files_port.h"

namespace brenvik {

class AcadDocument;

/// What a run that did only a share of its parts is known by, in its folder.
inline constexpr std::string_view ShareText = "share.txt";
/// What a run that puts shares together is known by until it has come to its end.
inline constexpr std::string_view JoinMark = "join.unfinished";

/// Held until the run has ended.
using OutputClaims = std::vector<std::unique_ptr<FolderClaim>>;

/// Makes the output folders and claims them one after the other, so that other programs keep out. Empty,
/// after a message to the user, when another program's run is using one of them, or when two are the same.
std::optional<OutputClaims> ClaimOutput(std::span<const std::string_view> folders);

/// The same for folders that will be emptied; also refused when one of them holds the drawing. `emptying`
/// names the work, for the message: "a run empties its output folder". The caller's care has a last word.
std::optional<OutputClaims> ClaimOutputToEmpty(std::span<const std::string_view> folders,
                                               const AcadDocument& drawing, std::string_view emptying);

/// Whether a run may have left a file of this name in its output folder.
bool IsFileOfARun(const std::string& name);

/// Reports the files of a folder that `isOwn` doesn't recognise, since they will be gone. Call it before
/// emptying the folder.
void NoteForeignFiles(std::string_view folder, bool (*isOwn)(const std::string& name));

}  // namespace brenvik
