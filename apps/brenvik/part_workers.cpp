// A folder for each part, below the one that is filled, so that its files only have to be given their names.
#include "part_workers.h"

#include <algorithm>
#include <system_error>

#include "base/skip.h"
#include "base/text.h"
#include "file_roots/places.h"
#include "file_roots/whole_file.h"
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
        std::error_code unlent;
        fs::copy_file(mReal->Resolve(file), mReal->Resolve(place + NameIn(folder, file)), unlent);
    }
    mFiles.MapFolder(folder, mReal->Resolve(place));
}

bool PartWorkers::TakeOver(std::string_view folder, std::size_t part, std::span<const std::string> files) {
    const std::string place = std::string(folder) + NameOf(part);
    std::vector<std::string> deleted;
    const bool isTaken = Skip([&] {
        for (const std::string& file : files) {
            const std::string lent = place + NameIn(folder, file), inFolder = FolderIn(folder, file);
            if (mFiles.FileExists(lent))
                mFiles.RemoveFile(lent);
            else
                deleted.push_back(file);
            for (const std::string& name : mFiles.ListFiles(place + inFolder, "*.*"))
                mFiles.MoveFileOver(place + inFolder + name, std::string(folder) + inFolder + name);
        }
    });
    if (!isTaken) return false;
    for (const std::string& file : deleted) Skip([&] { mFiles.RemoveFile(file); });
    Discard(folder, part);
    return true;
}

void PartWorkers::Discard(std::string_view folder, std::size_t part) {
    std::error_code ignored;
    fs::remove_all(mFiles.Resolve(std::string(folder) + NameOf(part)), ignored);
}

}  // namespace brenvik::app
