// What goes wrong in the user's world: files, answers, databases, the host. A failure carries the
// three things a message box shows: number, source and description. Defects of the program are not
// failures; they end it through Invariant.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

namespace brenvik {

/// The numbers of the usual failures. Hosts and databases bring numbers of their own, so a
/// Failure's number is not limited to these.
namespace failure_number {
inline constexpr long InvalidCall = 5;
inline constexpr long Overflow = 6;
inline constexpr long SubscriptOutOfRange = 9;
inline constexpr long DivisionByZero = 11;
inline constexpr long TypeMismatch = 13;
inline constexpr long BadFileName = 52;
inline constexpr long FileNotFound = 53;
inline constexpr long DiskFull = 61;
inline constexpr long InputPastEnd = 62;
inline constexpr long PermissionDenied = 70;
inline constexpr long PathAccess = 75;
inline constexpr long PathNotFound = 76;
inline constexpr long ObjectNotSet = 91;
inline constexpr long InvalidNull = 94;
inline constexpr long CannotCreateObject = 429;
}  // namespace failure_number

/// A failure of the user's world, thrown by value.
///
/// `description` is the text of the message box. `detail` is optional and names the case (the path,
/// the text that is no number); what() joins the two, for error streams and logs.
class Failure : public std::runtime_error {
  public:
    Failure(long number, std::string source, std::string description, std::string detail = {});

    long number() const noexcept { return mNumber; }
    const std::string& source() const noexcept { return mSource; }
    const std::string& description() const noexcept { return mDescription; }
    const std::string& detail() const noexcept { return mDetail; }

  private:
    long mNumber;
    std::string mSource;
    std::string mDescription;
    std::string mDetail;
};

/// The source of failures that the system raises itself.
inline constexpr std::string_view OwnSource = "Brenvik";

// The usual failures, source "Brenvik", each with its fixed description. `detail` names the case.
// They return the failure, so that the throw stands where the reader looks for it.
Failure InvalidCall(std::string detail = {});          ///< 5, "Invalid procedure call or argument"
Failure Overflow(std::string detail = {});             ///< 6, "Overflow"
Failure SubscriptOutOfRange(std::string detail = {});  ///< 9, "Subscript out of range"
Failure DivisionByZero(std::string detail = {});       ///< 11, "Division by zero"
Failure TypeMismatch(std::string detail = {});         ///< 13, "Type mismatch"
Failure BadFileName(std::string detail = {});          ///< 52, "Bad file name or number"
Failure FileNotFound(std::string path = {});           ///< 53, "File not found"
Failure DiskFull(std::string path = {});               ///< 61, "Disk full"
Failure InputPastEnd(std::string path = {});           ///< 62, "Input past end of file"
Failure PermissionDenied(std::string path = {});       ///< 70, "Permission denied"
Failure PathAccess(std::string path = {});             ///< 75, "Path/File access error"
Failure PathNotFound(std::string path = {});           ///< 76, "Path not found"
Failure ObjectNotSet(std::string detail = {});         ///< 91, "Object variable not set"
Failure InvalidNull(std::string detail = {});          ///< 94, "Invalid use of Null"

}  // namespace brenvik
