// A document file is given its name by an identification, and belongs to the product whose definition has it
// among its documents or that a document reference names.
#include "drafting_host/step/products/step_externals.h"

#include <algorithm>
#include <system_error>

#include "drafting_host/step/products/step_notes.h"

namespace brenvik::step {
namespace {

bool IsDocument(const Statements& statements, int number) {
    const Statement* statement = statements.Find(number);
    return statement != nullptr && statement->kind == "DOCUMENT_FILE";
}

/// The product definition that a statement ties to a document; 0 for none.
int DefinitionOf(const Statements& statements, const Statement& statement) {
    if (statement.kind == "PRODUCT_DEFINITION_WITH_ASSOCIATED_DOCUMENTS") return statement.number;
    if (statement.kind != "APPLIED_DOCUMENT_REFERENCE") return 0;
    for (const Reference& reference : statements.ReferencesOf(statement)) {
        const Statement* target = statements.Find(reference.number);
        if (target != nullptr && target->kind.starts_with("PRODUCT_DEFINITION")) return reference.number;
    }
    return 0;
}

}  // namespace

std::vector<const Statement*> ExternalNames(const Statements& statements) {
    std::vector<const Statement*> names;
    for (const Statement& statement : statements.All()) {
        if (statement.kind != "APPLIED_EXTERNAL_IDENTIFICATION_ASSIGNMENT") continue;
        const auto references = statements.ReferencesOf(statement);
        if (std::ranges::any_of(references, [&](const Reference& reference) {
                return IsDocument(statements, reference.number);
            }))
            names.push_back(&statement);
    }
    return names;
}

std::map<std::string, std::string> ExternalFiles(const Statements& statements, CodePage codePage) {
    std::map<int, std::string> files;
    for (const Statement* name : ExternalNames(statements)) {
        for (const Reference& reference : statements.ReferencesOf(*name))
            if (IsDocument(statements, reference.number))
                files.emplace(reference.number, FirstTextOf(statements, *name, codePage));
    }
    std::map<std::string, std::string> byProduct;
    if (files.empty()) return byProduct;
    for (const Statement& statement : statements.All()) {
        const int definition = DefinitionOf(statements, statement);
        if (definition == 0) continue;
        for (const Reference& reference : statements.ReferencesOf(statement)) {
            const auto file = files.find(reference.number);
            if (file == files.end() || file->second.empty()) continue;
            byProduct.emplace(ProductName(statements, definition, codePage), file->second);
        }
    }
    return byProduct;
}

std::filesystem::path ExternalPath(const std::filesystem::path& from, const std::string& name) {
    // Paths are those of another machine, often with its separators; the file lies beside the assembly.
    const std::size_t slash = name.find_last_of("/\\");
    const std::string file = slash == std::string::npos ? name : name.substr(slash + 1);
    const std::filesystem::path path = from.parent_path() / std::filesystem::path(file);
    std::error_code error;
    return std::filesystem::is_regular_file(path, error) ? path : std::filesystem::path();
}

}  // namespace brenvik::step
