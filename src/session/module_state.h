// The state of a module: one struct for each, made at first use and dropped when the library is unloaded,
// so that the next load, and every test, starts clean.
#pragma once

#include <functional>
#include <optional>

namespace brenvik {

/// Adds what unloading has to run. Later entries run first.
void AtUnload(std::function<void()> reset);
/// Drops the state of every module.
void ResetModules();

namespace detail {

template <class State>
class ModuleStateHolder {
  public:
    ModuleStateHolder() {
        AtUnload([this] { mState.reset(); });
    }
    State& Get() {
        if (!mState) mState.emplace();
        return *mState;
    }

  private:
    std::optional<State> mState;
};

}  // namespace detail

/// The module state of this type. A single-instance form is the state of its module too:
/// `StateOf<frmSettings>()`.
template <class State>
State& StateOf() {
    static detail::ModuleStateHolder<State> holder;
    return holder.Get();
}

}  // namespace brenvik
