// The blank part database: made in memory, and put in place as a whole file.
#include <sqlite3.h>

#include <memory>
#include <string>
#include <string_view>
#include <system_error>

#include "base/path_text.h"
#include "part_table/engine.h"
#include "part_table/failures.h"
#include "part_table/table_layout.h"
#include "part_table/text_rules.h"

namespace brenvik::part_table {
namespace {

Failure CannotMake(const std::filesystem::path& file, const std::string& reason) {
    return DatabaseFailure(failure_number::DatabaseUnavailable,
                           "The part database " + PathText(file) + " can't be made: " + reason);
}

/// The bytes of a database file with the empty part table.
std::string BlankContent(const std::filesystem::path& shown) {
    struct Closer {
        void operator()(sqlite3* handle) const { sqlite3_close_v2(handle); }
    };
    struct Releaser {
        void operator()(unsigned char* bytes) const { sqlite3_free(bytes); }
    };
    sqlite3* opened = nullptr;
    int code = sqlite3_open_v2(":memory:", &opened, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr);
    const std::unique_ptr<sqlite3, Closer> handle(opened);
    if (code == SQLITE_OK) code = InstallTextRules(handle.get());
    if (code == SQLITE_OK)
        code = sqlite3_exec(handle.get(), CreateTableStatement().c_str(), nullptr, nullptr, nullptr);
    if (code != SQLITE_OK)
        throw CannotMake(shown, handle ? sqlite3_errmsg(handle.get()) : sqlite3_errstr(code));
    sqlite3_int64 size = 0;
    const std::unique_ptr<unsigned char, Releaser> bytes(sqlite3_serialize(handle.get(), "main", &size, 0));
    if (bytes == nullptr) throw CannotMake(shown, sqlite3_errstr(SQLITE_NOMEM));
    return std::string(reinterpret_cast<const char*>(bytes.get()), static_cast<std::size_t>(size));
}

}  // namespace

void WriteBlankDatabase(const std::filesystem::path& file, const WholeFileWriter& write) {
    std::error_code error;
    const std::filesystem::path folder = file.has_parent_path() ? file.parent_path() : ".";
    if (!std::filesystem::is_directory(folder, error))
        throw CannotMake(file, "the folder " + PathText(folder) + " can't be found");
    const std::string content = BlankContent(file);
    try {
        write(file, content);
    } catch (const Failure& failure) {
        throw CannotMake(file, failure.what());
    }
}

}  // namespace brenvik::part_table
