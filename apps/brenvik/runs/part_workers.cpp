// A folder for each part, below the one that is filled, so that its files only have to be given their names.
#include "runs/part_workers.h"

#include <algorithm>
#include <set>
#include <system_error>

#include "base/skip.h"
#include "base/text.h"
#include "drafting_host/document/files/body_texts.h"
#include "drafting_host/document/host_solids.h"
#include "file_roots/places.h"
#include "file_roots/whole_file.h"
#include "runs/taken_files.h"
#include "workers/processors.h"
#include "workers/worker_processes.h"

namespace brenvik::app {

namespace {

namespace fs = std::filesystem;

/// A run of fewer parts is over before it pays to share it out.
constexpr std::size_t FewestToSpread = 8;

std::string NameOf(std::size_t part) {
    return std::string(WorkFilePrefix) + "part-" + std::to_string(part) + "\\";
}

/// Folders that their parts have left wait under these names for the next ones: to make a folder and to
/// remove it takes longer than to put a small file there.
constexpr int MostFree = 8;

std::string NameOfFree(int place) {
    return std::string(WorkFilePrefix) + "part-free-" + std::to_string(place);
}

/// Whether no file is left in a folder or in those within it.
bool HasNoFiles(const fs::path& folder) {
    std::error_code error;
    for (fs::recursive_directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error))
        if (!entry->is_directory()) return false;
    return !error;
}

/// What stands behind the folder in the path of one of its files: "2-sided\BPart_0.dwg".
std::string NameIn(std::string_view folder, const std::string& path) { return path.substr(folder.size()); }

/// The folder within the folder that a file lies in; blank for the folder itself.
std::string FolderIn(std::string_view folder, const std::string& path) {
    const std::string name = NameIn(folder, path);
    return name.substr(0, name.rfind('\\') + 1);
}

/// Nobody writes into a part's drawing: it is deleted, or another one comes in its place. So a second name is
/// as good as a copy.
bool LendFile(const fs::path& file, const fs::path& copy) {
    std::error_code unlent;
    fs::create_hard_link(file, copy, unlent);
    return !unlent || fs::copy_file(file, copy, unlent);
}

}  // namespace

/// What takes long in writing a solid is its body's text. A text that no process could make is made with the
/// drawing, as are all of them where there is one process.
void PartWorkers::DrawAhead(std::span<AcadEntity* const> entities,
                            const std::function<bool(std::size_t entity)>& take) {
    const int processes = ProcessesFor(entities.size());
    if (processes < 2) return WorkersPort::DrawAhead(entities, take);
    const auto body = [entities](std::size_t entity) {
        const auto* solid = dynamic_cast<const HostShapeEntity*>(entities[entity]);
        return solid == nullptr ? TopoDS_Shape() : solid->Shape();
    };
    SpreadOverProcesses(processes, {entities.size(),
                                    [&body](std::size_t entity) {
                                        const TopoDS_Shape shape = body(entity);
                                        return shape.IsNull() ? std::string()
                                                              : BodyTextOf(shape).value_or("");
                                    },
                                    [&](std::size_t entity, const WorkerEnd& end) {
                                        if (end.kind == WorkerEnd::Kind::Done && !end.text.empty())
                                            KeepBodyText(body(entity), end.text);
                                        return take(entity);
                                    }});
}

int PartWorkers::ProcessesFor(std::size_t parts) {
    const bool isWorthIt = mJobs > 0 || parts >= FewestToSpread;
    if (!isWorthIt || parts < 2 || !IsAloneInItsProcess()) return 1;
    return static_cast<int>(std::min(parts, static_cast<std::size_t>(mJobs > 0 ? mJobs : ProcessorsToUse())));
}

void PartWorkers::Spread(const SpreadWork& work) {
    const std::unique_ptr<PartWorkers, void (*)(PartWorkers*)> atTheEnd(this, [](PartWorkers* workers) {
        std::error_code ignored;
        for (const fs::path& folder : workers->mFreed) fs::remove_all(folder, ignored);
        workers->mFreed.clear();
    });
    SpreadOverProcesses(ProcessesFor(work.parts), work);
}

/// In a worker: the folder of a part.
void PartWorkers::MakePlace(std::string_view folder, const std::string& place) {
    const fs::path within = mReal->Resolve(folder), there = mReal->Resolve(place);
    for (int free = 0; free < MostFree; ++free) {
        std::error_code taken;
        fs::rename(within / NameOfFree(free), there, taken);
        if (!taken) return;
    }
}

/// The folder of a part that has been taken over.
void PartWorkers::FreePlace(std::string_view folder, std::size_t part) {
    const fs::path place = mFiles.Resolve(std::string(folder) + NameOf(part));
    if (HasNoFiles(place))
        for (int free = 0; free < MostFree; ++free) {
            const fs::path waiting = mFiles.Resolve(folder) / NameOfFree(free);
            std::error_code taken;
            fs::rename(place, waiting, taken);
            if (taken) continue;
            mFreed.insert(waiting);
            return;
        }
    Discard(folder, part);
}

void PartWorkers::WorkApart(std::string_view folder, std::size_t part, std::span<const std::string> files) {
    if (!mReal) mReal = mFiles;
    const std::string place = std::string(folder) + NameOf(part);
    MakePlace(folder, place);
    for (const std::string& file : files) {
        const std::string there = place + FolderIn(folder, file);
        mReal->MakeFolder(there);
        mLate.push_back(std::make_unique<LateFolder>(mReal->Resolve(there)));
        const fs::path first = mReal->Resolve(file), copy = mReal->Resolve(place + NameIn(folder, file));
        if (LendFile(first, copy)) mDrawings.KeepCopy(first, copy);
    }
    mFiles.MapFolder(folder, mReal->Resolve(place));
}

std::vector<std::string> PartWorkers::MadeApart(std::string_view folder, std::span<const std::string> files) {
    std::set<std::string> folders;
    for (const std::string& file : files) folders.insert(FolderIn(folder, file));
    std::vector<std::string> made;
    for (const std::string& inFolder : folders)
        for (const std::string& name : mFiles.ListFiles(std::string(folder) + inFolder, "*.*"))
            if (std::ranges::find(files, std::string(folder) + inFolder + name) == files.end())
                made.push_back(inFolder + name);
    return made;
}

bool PartWorkers::TakeOver(std::string_view folder, std::size_t part, std::span<const std::string> files,
                           std::span<const std::string> made) {
    const std::string place = std::string(folder) + NameOf(part);
    std::vector<std::string> deleted;
    for (const std::string& file : files)
        if (!mFiles.FileExists(place + NameIn(folder, file))) deleted.push_back(file);
    const bool areTaken = TakeAllOrNone(mFiles, folder, made, [&](std::size_t at, const std::string& path) {
        mFiles.MoveFileOver(place + made[at], path);
        return true;
    });
    if (!areTaken) return false;
    for (const std::string& file : deleted) Skip([&] { mFiles.RemoveFile(file); });
    FreePlace(folder, part);
    return true;
}

void PartWorkers::Discard(std::string_view folder, std::size_t part) {
    std::error_code ignored;
    fs::remove_all(mFiles.Resolve(std::string(folder) + NameOf(part)), ignored);
}

}  // namespace brenvik::app
