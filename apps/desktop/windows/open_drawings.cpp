// The host has the list of its open drawings, in the order in which they were opened; what is known beside
// that goes by their identity.
#include "windows/open_drawings.h"

#include <algorithm>
#include <system_error>

#include "file_roots/places.h"

namespace brenvik::desktop {

namespace fs = std::filesystem;

fs::path Settled(const fs::path& place) {
    std::error_code unknown;
    const fs::path absolute = fs::absolute(place, unknown);
    return (unknown ? place : absolute).lexically_normal();
}

fs::path FileOf(const HostDocument& document) {
    const std::string name = document.FullName();
    return name.empty() ? fs::path() : Settled(document.Host().Resolve(name));
}

bool IsSameFile(const fs::path& one, const fs::path& other) {
    if (one.empty() || other.empty()) return false;
    std::error_code unknown;
    return one == other || (fs::equivalent(one, other, unknown) && !unknown);
}

namespace {

/// How many folders have to be named, from the last one up, to tell two files of one name apart.
int FoldersApart(const fs::path& one, const fs::path& other) {
    int folders = 1;
    fs::path a = one.parent_path(), b = other.parent_path();
    for (; a.has_filename() && a.filename() == b.filename(); ++folders) {
        a = a.parent_path();
        b = b.parent_path();
    }
    return folders;
}

}  // namespace

OpenDrawings::News OpenDrawings::Look() {
    News news;
    const std::vector<HostDocument*> open = All();
    std::erase_if(mKnown, [&](const auto& known) {
        if (std::ranges::find(open, known.first) != open.end()) return false;
        news.closed.push_back(known.first);
        return true;
    });
    for (HostDocument* document : open)
        if (mKnown.try_emplace(document).second) news.opened.push_back(document);
    return news;
}

OpenDrawing* OpenDrawings::Find(const HostDocument& document) {
    const auto found = mKnown.find(&document);
    return found == mKnown.end() ? nullptr : &found->second;
}

bool OpenDrawings::IsChanged(const HostDocument& document) const {
    const auto found = mKnown.find(&document);
    return found != mKnown.end() && found->second.changed;
}

std::vector<HostDocument*> OpenDrawings::All() const {
    std::vector<HostDocument*> all;
    for (const auto& document : mHost.OpenDocuments()) all.push_back(document.get());
    return all;
}

std::vector<HostDocument*> OpenDrawings::Changed() const {
    std::vector<HostDocument*> changed = All();
    std::erase_if(changed, [this](const HostDocument* document) { return !IsChanged(*document); });
    return changed;
}

HostDocument* OpenDrawings::OfFile(const fs::path& file) const {
    for (const auto& document : mHost.OpenDocuments())
        if (IsSameFile(FileOf(*document), file)) return document.get();
    return nullptr;
}

std::string OpenDrawings::NameOf(const HostDocument& document) const {
    const fs::path file = FileOf(document);
    int folders = 0;
    for (const auto& other : mHost.OpenDocuments())
        if (other.get() != &document && FileOf(*other).filename() == file.filename())
            folders = std::max(folders, FoldersApart(file, FileOf(*other)));
    const std::string name = TextFromPath(file.filename());
    if (folders == 0) return name;
    fs::path from, parent = file.parent_path();
    for (; folders > 0 && parent.has_filename(); --folders, parent = parent.parent_path())
        from = from.empty() ? parent.filename() : parent.filename() / from;
    return name + " (" + TextFromPath(from) + ")";
}

}  // namespace brenvik::desktop
