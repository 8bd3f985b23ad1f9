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

/// What stands behind the folder in the path of one of its files: "2-sided\BPart_0.dwg".
std::string NameIn(std::string_view folder, const std::string& path) { return path.substr(folder.size()); }

/// The folder within the folder that a file lies in; blank for the folder itself.
std::string FolderIn(std::string_view folder, const std::string& path) {
    const std::string name = NameIn(folder, path);
    return name.substr(0, name.rfind('\\') + 1);
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

void PartWorkers::Spread(const SpreadWork& work) { SpreadOverProcesses(ProcessesFor(work.parts), work); }

void PartWorkers::WorkApart(std::string_view folder, std::size_t part, std::span<const std::string> files) {
    if (!mReal) mReal = mFiles;
    const std::string place = std::string(folder) + NameOf(part);
    for (const std::string& file : files) {
        const std::string there = place + FolderIn(folder, file);
        mReal->MakeFolder(there);
        mLate.push_back(std::make_unique<LateFolder>(mReal->Resolve(there)));
        const fs::path first = mReal->Resolve(file), copy = mReal->Resolve(place + NameIn(folder, file));
        std::error_code unlent;
        if (fs::copy_file(first, copy, unlent)) mDrawings.KeepCopy(first, copy);
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
    Discard(folder, part);
    return true;
}

void PartWorkers::Discard(std::string_view folder, std::size_t part) {
    std::error_code ignored;
    fs::remove_all(mFiles.Resolve(std::string(folder) + NameOf(part)), ignored);
}

}  // namespace brenvik::app
