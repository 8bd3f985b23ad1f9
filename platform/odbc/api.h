// The driver manager's functions, and its handles as owned values. Included by the sources of this folder
// only: nothing of the manager shows outside.
#pragma once

#ifdef _WIN32
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
#endif
// clang-format off
#include <sql.h>
#include <sqlext.h>
#include <sqlucode.h>
// clang-format on

#include <string_view>
#include <utility>

#include "base/failure.h"

namespace brenvik::odbc {

/// Which functions texts travel through. A driver that knows the wide-character ones gets UTF-16; the narrow
/// ones take UTF-8 as it is, where the manager would translate the wide ones into the locale's letters.
enum class TextCalls { Wide, Narrow };

/// An environment, a connection or a statement of the driver manager. Freed when it goes out of scope.
class Handle {
  public:
    Handle() = default;
    /// Fails with the parent's diagnostic when there is no such handle to be had. Texts travel as the
    /// parent's.
    Handle(SQLSMALLINT kind, const Handle& parent) : Handle(kind, parent, parent.Calls()) {}
    Handle(SQLSMALLINT kind, const Handle& parent, TextCalls calls);
    ~Handle() { Free(); }
    Handle(Handle&& other) noexcept
        : mKind(other.mKind), mCalls(other.mCalls), mHandle(std::exchange(other.mHandle, nullptr)) {}
    Handle& operator=(Handle&& other) noexcept {
        Free();
        mKind = other.mKind;
        mCalls = other.mCalls;
        mHandle = std::exchange(other.mHandle, nullptr);
        return *this;
    }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;

    SQLHANDLE Get() const { return mHandle; }
    SQLSMALLINT Kind() const { return mKind; }
    TextCalls Calls() const { return mCalls; }
    void Free() noexcept;

  private:
    SQLSMALLINT mKind = SQL_HANDLE_ENV;
    TextCalls mCalls = TextCalls::Wide;
    SQLHANDLE mHandle = nullptr;
};

/// The failure by the first diagnostic of the last call on the handle. `detail` names the case.
Failure DiagnosticOf(const Handle& handle, std::string_view detail = {});

/// Throws that failure unless the call went well or had no rows to work on.
void Require(SQLRETURN result, const Handle& handle, std::string_view detail = {});

}  // namespace brenvik::odbc
