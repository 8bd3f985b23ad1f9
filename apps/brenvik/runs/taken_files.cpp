// A file that couldn't be taken back is reported by the work that comes upon it.
#include "runs/taken_files.h"

#include "base/skip.h"

namespace brenvik::app {

bool TakeAllOrNone(FilesPort& files, std::string_view folder, std::span<const std::string> names,
                   const std::function<bool(std::size_t at, const std::string& path)>& take) {
    const auto path = [&](std::size_t at) { return std::string(folder) + names[at]; };
    std::size_t taken = 0;
    Skip([&] {
        while (taken < names.size() && take(taken, path(taken))) ++taken;
    });
    if (taken == names.size()) return true;
    for (std::size_t at = 0; at < taken; ++at) Skip([&] { files.RemoveFile(path(at)); });
    return false;
}

}  // namespace brenvik::app
