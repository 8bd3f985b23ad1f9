// The texts of the host's refusals.
#include "drafting_host/document/geometry/host_failure.h"

#include <utility>

#include "base/file_failure.h"

namespace brenvik::host_failure {
namespace {

Failure Make(long number, std::string description, std::string detail = {}) {
    return Failure(number, "Drafting host", std::move(description), std::move(detail));
}

}  // namespace

Failure KeyNotFound(std::string detail) {
    return Make(host_failure_number::KeyNotFound, "Key not found", std::move(detail));
}
Failure DuplicateKey(std::string detail) {
    return Make(host_failure_number::DuplicateKey, "Duplicate key", std::move(detail));
}
Failure WasErased(std::string detail) {
    return Make(host_failure_number::WasErased, "Object was erased", std::move(detail));
}
Failure OnLockedLayer(std::string_view layer) {
    return Make(host_failure_number::OnLockedLayer, "Object is on a locked layer", std::string(layer));
}
Failure Cancelled(std::string_view prompt) {
    return Make(host_failure_number::Cancelled, "The prompt was cancelled", std::string(prompt));
}
Failure InvalidArgument(std::string detail) {
    return Make(host_failure_number::InvalidArgument, "Invalid argument", std::move(detail));
}
Failure NotPossible(std::string detail) {
    return Make(host_failure_number::NotPossible, "Operation not possible", std::move(detail));
}
Failure InvalidFile(std::string_view file, std::size_t line, std::string_view expected,
                    std::string_view found) {
    std::string detail(file);
    if (line > 0) detail += ", line " + std::to_string(line);
    detail += ": expected " + std::string(expected) + ", found " + std::string(found);
    return InvalidFileFormat(std::move(detail));
}

}  // namespace brenvik::host_failure
