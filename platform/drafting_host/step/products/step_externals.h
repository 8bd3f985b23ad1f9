// Parts of a STEP assembly that lie in files of their own.
#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "drafting_host/step/texts/step_statements.h"
#include "drafting_host/step/texts/step_text.h"

namespace brenvik::step {

/// The names of files by the names of the products that they hold, as the statements refer to them.
std::map<std::string, std::string> ExternalFiles(const Statements& statements, CodePage codePage);

/// The statements that name such files. The modeller would follow them by itself, past all checks.
std::vector<const Statement*> ExternalNames(const Statements& statements);

/// Where a file that `from` refers to lies: by its name beside it. Blank when there is none.
std::filesystem::path ExternalPath(const std::filesystem::path& from, const std::string& name);

}  // namespace brenvik::step
