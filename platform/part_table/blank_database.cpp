// The blank part database: made under a name of its own, then moved into place.
#include <sqlite3.h>

#include <atomic>
#include <memory>
#include <random>
#include <system_error>

#include "part_table/engine.h"
#include "part_table/failures.h"
#include "part_table/table_layout.h"
#include "part_table/text_rules.h"

namespace brenvik::part_table {
namespace {

std::string Shown(const std::filesystem::path& file) {
    const std::u8string text = file.u8string();
    return std::string(text.begin(), text.end());
}

Failure CannotMake(const std::filesystem::path& file, const std::string& reason) {
    return DatabaseFailure(failure_number::databaseUnavailable,
                           "The part database " + Shown(file) + " can't be made: " + reason);
}

// A name in the same folder that nobody else uses at the same time.
std::filesystem::path WorkName(const std::filesystem::path& file) {
    static std::atomic<unsigned> counter = 0;
    std::filesystem::path name = file;
    name.replace_filename(".brenvik-" + std::to_string(std::random_device{}()) + "-" +
                          std::to_string(++counter) + ".tmp");
    return name;
}

void FillBlank(const std::filesystem::path& workFile, const std::filesystem::path& shown) {
    struct Closer {
        void operator()(sqlite3* handle) const { sqlite3_close_v2(handle); }
    };
    sqlite3* opened = nullptr;
    int code = sqlite3_open_v2(Shown(workFile).c_str(), &opened, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE,
                               nullptr);
    const std::unique_ptr<sqlite3, Closer> handle(opened);
    if (code == SQLITE_OK) code = InstallTextRules(handle.get());
    if (code == SQLITE_OK)
        code = sqlite3_exec(handle.get(), "PRAGMA journal_mode = MEMORY", nullptr, nullptr, nullptr);
    if (code == SQLITE_OK)
        code = sqlite3_exec(handle.get(), CreateTableStatement().c_str(), nullptr, nullptr, nullptr);
    if (code != SQLITE_OK)
        throw CannotMake(shown, handle ? sqlite3_errmsg(handle.get()) : sqlite3_errstr(code));
}

}  // namespace

void WriteBlankDatabase(const std::filesystem::path& file) {
    std::error_code error;
    const std::filesystem::path folder = file.has_parent_path() ? file.parent_path() : ".";
    if (!std::filesystem::is_directory(folder, error))
        throw CannotMake(file, "the folder " + Shown(folder) + " can't be found");
    const std::filesystem::path workFile = WorkName(file);
    try {
        FillBlank(workFile, file);
        std::filesystem::rename(workFile, file, error);
        if (error) throw CannotMake(file, error.message());
    } catch (...) {
        std::filesystem::remove(workFile, error);
        throw;
    }
}

}  // namespace brenvik::part_table
