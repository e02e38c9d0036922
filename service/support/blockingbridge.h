#pragma once

#include "devices/reacquiringcontrol.h"
#include "service/support/stackarena.h"

#include <QString>

#include <cstddef>
#include <expected>
#include <functional>
#include <future>
#include <memory>
#include <system_error>
#include <type_traits>
#include <utility>

namespace tov::devices::service {

/// How a result type says that the SDK operation succeeded without a value, and that it failed.
template <typename Result>
struct Outcome;

template <>
struct Outcome<bool>
{
    static bool succeeded() { return true; }
    static bool failed(const std::error_code& /*error*/) { return false; }
    static bool absent() { return false; }
};

/// Failures are the text that the error code's category has for it; only the file memory answers so.
template <typename Value>
struct Outcome<std::expected<Value, QString>>
{
    static std::expected<void, QString> succeeded() { return {}; }
    static std::unexpected<QString> failed(const std::error_code& error)
    {
        return std::unexpected(QString::fromStdString(error.message()));
    }
    static std::unexpected<QString> absent()
    {
        return std::unexpected(QStringLiteral("File memory control is unavailable"));
    }
};

/// Failures are all alike.
template <typename Value, typename Error>
    requires std::is_enum_v<Error>
struct Outcome<std::expected<Value, Error>>
{
    static std::expected<void, Error> succeeded() { return {}; }
    static std::unexpected<Error> failed(const std::error_code& /*error*/) { return std::unexpected(Error::Failed); }
    static std::unexpected<Error> absent() { return std::unexpected(Error::Failed); }
};

/// Whether `error` means success: its number alone decides, whatever its category.
inline bool isSuccess(const std::error_code& error)
{
    return error.value() == 0;
}

/// The answer of an SDK operation that has no value.
template <typename Result, auto convert>
void fulfil(std::promise<Result>& promise, const std::error_code& error)
{
    promise.set_value(isSuccess(error) ? Result(Outcome<Result>::succeeded()) : Result(Outcome<Result>::failed(error)));
}

/// The answer of an SDK operation that has one; it is not looked at after a failure.
template <typename Result, auto convert, typename Value>
void fulfil(std::promise<Result>& promise, Value&& value, const std::error_code& error)
{
    promise.set_value(isSuccess(error) ? Result(convert(std::forward<Value>(value)))
                                       : Result(Outcome<Result>::failed(error)));
}

/// Passes a value on as it is.
struct PassOn
{
    template <typename Value>
    Value operator()(Value&& value) const
    {
        return std::forward<Value>(value);
    }
};

/// Calls the SDK operation `operation` with `arguments` and a callback, and waits for its answer without a
/// time limit. `control` must be kept alive by the caller. The value that comes with a success is converted
/// by `convert`.
///
/// The SDK must call the callback exactly once, on any thread. A second call throws `std::future_error`
/// there; without a call this never returns. What the operation throws passes through.
template <typename Result, auto convert = PassOn(), typename T, typename Operation, typename... Arguments>
Result callAndWait(T& control, Operation operation, Arguments&&... arguments)
{
    // Room for what the promise shares with its future: a call then allocates nothing.
    using Arena = StackArena<160 + 2 * sizeof(Result)>;
    Arena arena;
    std::promise<Result> promise(std::allocator_arg, StackAllocator<std::byte, Arena>(arena));
    std::future<Result> future = promise.get_future();

    const auto callback = [answered = &promise](auto&&... answer) {
        fulfil<Result, convert>(*answered, std::forward<decltype(answer)>(answer)...);
    };
    static_assert(sizeof callback == sizeof(void*), "std::function must hold the callback without allocating");

    std::invoke(operation, control, std::forward<Arguments>(arguments)..., callback);
    return future.get();
}

/// Whether `control` can be used now: it says so itself if it has a say.
template <typename T>
bool isUsable(T& control)
{
    if constexpr (requires { control.isAvailable(); })
        return control.isAvailable();
    else
        return true;
}

/// `callAndWait()` on the control that `handle` lends; the result for an absent control when there is none that can be
/// used. The control is let go of after everything else.
template <typename Result, auto convert = PassOn(), typename T, typename Operation, typename... Arguments>
Result request(const ReacquiringControl<T>& handle, Operation operation, Arguments&&... arguments)
{
    if (const auto locked = handle.lock(); locked && isUsable(*locked))
        return callAndWait<Result, convert>(*locked, operation, std::forward<Arguments>(arguments)...);
    return Outcome<Result>::absent();
}

} // namespace tov::devices::service
