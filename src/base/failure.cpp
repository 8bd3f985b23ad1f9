// The failure value and the table of the usual ones.
#include "base/failure.h"

#include <utility>

namespace brenvik {
namespace {

std::string Joined(const std::string& description, const std::string& detail) {
    return detail.empty() ? description : description + ": " + detail;
}

Failure Own(long number, const char* description, std::string detail) {
    return Failure(number, std::string(OwnSource), description, std::move(detail));
}

}  // namespace

Failure::Failure(long number, std::string source, std::string description, std::string detail)
    : std::runtime_error(Joined(description, detail)),
      mNumber(number),
      mSource(std::move(source)),
      mDescription(std::move(description)),
      mDetail(std::move(detail)) {}

Failure InvalidCall(std::string detail) {
    return Own(failure_number::InvalidCall, "Invalid procedure call or argument", std::move(detail));
}

Failure Overflow(std::string detail) { return Own(failure_number::Overflow, "Overflow", std::move(detail)); }

Failure SubscriptOutOfRange(std::string detail) {
    return Own(failure_number::SubscriptOutOfRange, "Subscript out of range", std::move(detail));
}

Failure DivisionByZero(std::string detail) {
    return Own(failure_number::DivisionByZero, "Division by zero", std::move(detail));
}

Failure TypeMismatch(std::string detail) {
    return Own(failure_number::TypeMismatch, "Type mismatch", std::move(detail));
}

Failure BadFileName(std::string detail) {
    return Own(failure_number::BadFileName, "Bad file name or number", std::move(detail));
}

Failure FileNotFound(std::string path) {
    return Own(failure_number::FileNotFound, "File not found", std::move(path));
}

Failure DiskFull(std::string path) { return Own(failure_number::DiskFull, "Disk full", std::move(path)); }

Failure InputPastEnd(std::string path) {
    return Own(failure_number::InputPastEnd, "Input past end of file", std::move(path));
}

Failure PermissionDenied(std::string path) {
    return Own(failure_number::PermissionDenied, "Permission denied", std::move(path));
}

Failure PathAccess(std::string path) {
    return Own(failure_number::PathAccess, "Path/File access error", std::move(path));
}

Failure PathNotFound(std::string path) {
    return Own(failure_number::PathNotFound, "Path not found", std::move(path));
}

Failure ObjectNotSet(std::string detail) {
    return Own(failure_number::ObjectNotSet, "Object variable not set", std::move(detail));
}

Failure InvalidNull(std::string detail) {
    return Own(failure_number::InvalidNull, "Invalid use of Null", std::move(detail));
}

}  // namespace brenvik
