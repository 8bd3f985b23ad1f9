// What the window knows of each drawing that stands open in the host: whether a file has its last changes.
#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "drafting_host/document/drawing_state.h"
#include "drafting_host/document/host_application.h"

namespace brenvik::desktop {

struct OpenDrawing {
    /// A command may have changed it since its file was read or written.
    bool changed = false;
    /// The drawing when a command has written its file, since the last look.
    std::optional<DrawingState> written;
};

/// A place counted from the current folder, for as long as there is one, and without detours.
std::filesystem::path Settled(const std::filesystem::path& place);
/// The place of its file; empty for a drawing that has never been saved.
std::filesystem::path FileOf(const HostDocument& document);
/// Also by links and other spellings.
bool IsSameFile(const std::filesystem::path& one, const std::filesystem::path& other);

class OpenDrawings {
  public:
    explicit OpenDrawings(const HostApplication& host) : mHost(host) {}

    /// What a look at the host finds: drawings that a command, or anybody, has opened and closed.
    struct News {
        std::vector<HostDocument*> opened;
        /// To be told apart by; they may be no more.
        std::vector<const HostDocument*> closed;
    };
    News Look();

    /// Null for a drawing that no look has found, as those are that a run opens and closes.
    OpenDrawing* Find(const HostDocument& document);
    bool IsChanged(const HostDocument& document) const;
    /// From left to right.
    std::vector<HostDocument*> All() const;
    std::vector<HostDocument*> Changed() const;
    /// The one whose file this is, or null.
    HostDocument* OfFile(const std::filesystem::path& file) const;
    /// As a person tells it from the others: its file's name, and the folder's where two are the same.
    std::string NameOf(const HostDocument& document) const;

  private:
    const HostApplication& mHost;
    std::map<const HostDocument*, OpenDrawing> mKnown;
};

}  // namespace brenvik::desktop
