#pragma once

#include <QFuture>
#include <QPromise>
#include <QThreadPool>

#include <exception>
#include <memory>
#include <type_traits>
#include <utility>

namespace tov::workbench {

/// Calls `function`, which has nothing to do with the instrument, on a thread of Qt's pool: for files, which may be
/// slow. The future gives what it returns, or throws what it throws.
template <typename Function>
auto inBackground(Function function) -> QFuture<std::invoke_result_t<Function&>>
{
    using Answer = std::invoke_result_t<Function&>;
    const auto promise = std::make_shared<QPromise<Answer>>();
    promise->start();
    QThreadPool::globalInstance()->start([promise, function = std::move(function)]() mutable {
        try {
            if constexpr (std::is_void_v<Answer>)
                function();
            else
                promise->addResult(function());
        } catch (...) {
            promise->setException(std::current_exception());
        }
        promise->finish();
    });
    return promise->future();
}

} // namespace tov::workbench
