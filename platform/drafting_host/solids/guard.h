// The border to the modeller: what it raises becomes a failure of ours here, so that none of its own
// exceptions ever reaches the host or a user.
#pragma once

#include <Standard_Failure.hxx>
#include <Standard_OutOfMemory.hxx>
#include <new>
#include <stdexcept>
#include <string>
#include <utility>

#include "base/failure.h"

namespace brenvik::solids {

/// Of the machine's, and no fault of the solid.
inline constexpr const char* WantOfMemory = "there is not enough memory for it";

/// Runs `step` and hands back its result. An exception of the modeller, or of the memory it asks for,
/// leaves as a Failure (5, "Invalid procedure call or argument") whose detail starts with `what`.
template <class Step>
auto Guarded(const char* what, Step&& step) -> decltype(step()) {
    try {
        return std::forward<Step>(step)();
    } catch (const Failure&) {
        throw;
    } catch (const std::bad_alloc&) {
        throw InvalidCall(std::string(what) + ": " + WantOfMemory);
    } catch (const Standard_OutOfMemory&) {
        throw InvalidCall(std::string(what) + ": " + WantOfMemory);
    } catch (const Standard_Failure& failure) {
        const char* text = failure.GetMessageString();
        std::string detail = std::string(what) + ": " + failure.DynamicType()->Name();
        if (text != nullptr && *text != '\0') detail += std::string(", ") + text;
        throw InvalidCall(detail);
    } catch (const std::exception& failure) {
        throw InvalidCall(std::string(what) + ": " + failure.what());
    }
}

}  // namespace brenvik::solids
