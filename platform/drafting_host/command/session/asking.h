// A stretch of a command as a coroutine: it runs until it asks something and goes on when the answer is
// typed, be it in the same call or in a later one. Stretches call each other with co_await. Leaving one
// before its end (Escape, a drawing closed) destroys it with all that it holds.
#pragma once

#include <coroutine>
#include <exception>
#include <optional>
#include <utility>

namespace brenvik {

template <class Result>
class Asking;

namespace asking_detail {

class PromiseBase {
  public:
    std::suspend_always initial_suspend() const noexcept { return {}; }

    struct BackToCaller {
        bool await_ready() const noexcept { return false; }
        template <class Promise>
        std::coroutine_handle<> await_suspend(std::coroutine_handle<Promise> own) const noexcept {
            return own.promise().caller;
        }
        void await_resume() const noexcept {}
    };
    BackToCaller final_suspend() const noexcept { return {}; }
    void unhandled_exception() noexcept { failure = std::current_exception(); }
    void RethrowFailure() const {
        if (failure) std::rethrow_exception(failure);
    }

    std::coroutine_handle<> caller = std::noop_coroutine();
    std::exception_ptr failure;
};

template <class Result>
class Promise : public PromiseBase {
  public:
    Asking<Result> get_return_object();
    void return_value(Result value) { result = std::move(value); }
    Result Take() {
        RethrowFailure();
        return std::move(*result);
    }

    std::optional<Result> result;
};

template <>
class Promise<void> : public PromiseBase {
  public:
    Asking<void> get_return_object();
    void return_void() const noexcept {}
    void Take() const { RethrowFailure(); }
};

}  // namespace asking_detail

/// Owns a stretch of a command; nothing of it runs before Start or co_await.
template <class Result>
class [[nodiscard]] Asking {
  public:
    using promise_type = asking_detail::Promise<Result>;
    using Handle = std::coroutine_handle<promise_type>;

    explicit Asking(Handle handle) : mHandle(handle) {}
    Asking(Asking&& other) noexcept : mHandle(std::exchange(other.mHandle, {})) {}
    Asking& operator=(Asking&& other) noexcept {
        std::swap(mHandle, other.mHandle);
        return *this;
    }
    ~Asking() {
        if (mHandle) mHandle.destroy();
    }

    void Start() { mHandle.resume(); }
    bool Done() const { return mHandle.done(); }
    /// What it came to, once it is done; throws what it threw.
    Result Take() { return mHandle.promise().Take(); }

    bool await_ready() const noexcept { return false; }
    std::coroutine_handle<> await_suspend(std::coroutine_handle<> caller) noexcept {
        mHandle.promise().caller = caller;
        return mHandle;
    }
    Result await_resume() { return Take(); }

  private:
    Handle mHandle;
};

namespace asking_detail {

template <class Result>
Asking<Result> Promise<Result>::get_return_object() {
    return Asking<Result>(Asking<Result>::Handle::from_promise(*this));
}

inline Asking<void> Promise<void>::get_return_object() {
    return Asking<void>(Asking<void>::Handle::from_promise(*this));
}

}  // namespace asking_detail

}  // namespace brenvik
