#pragma once

#include <QString>

#include <cstdint>
#include <exception>
#include <expected>
#include <new>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>

namespace tov::python {

/// The instrument did not do what was asked for.
class OperationFailed : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// What an operation fails with: the instrument's own text, or what the adapters' one error stands for.
inline OperationFailed failure(const QString& text)
{
    return OperationFailed(text.toStdString());
}

template <typename Error>
    requires std::is_enum_v<Error>
OperationFailed failure(Error /*failed*/)
{
    return OperationFailed("the control is absent, or the instrument answered with an error");
}

/// The value of a result; throws `OperationFailed` for a failure.
template <typename Value, typename Error>
Value valueOf(std::expected<Value, Error>&& result)
{
    if (!result)
        throw failure(result.error());
    if constexpr (!std::is_void_v<Value>)
        return *std::move(result);
}

template <typename Value>
Value valueOf(Value&& value)
{
    return std::forward<Value>(value);
}

/// Runs what calls the instrument: what that throws is `OperationFailed`.
template <typename Call>
auto asFailure(Call call) -> std::invoke_result_t<Call&>
try {
    return call();
} catch (const std::bad_alloc&) {
    throw;
} catch (const std::exception& error) {
    throw failure(QString::fromUtf8(error.what())); // which Python can decode, whatever the SDK says
} catch (...) {
    throw OperationFailed("the instrument threw something that is no std::exception");
}

} // namespace tov::python
