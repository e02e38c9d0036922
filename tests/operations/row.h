#pragma once

// The table of what adapters do, one row for each operation. An adapter's rows are
//
//   operations<SdkThingControl, sdk::service::IThing, FakeThing>({
//       reads("level", &SdkThingControl::level, WhenAbsent{0}, SdkAnswers{7}),
//       writes("setLevel", &SdkThingControl::setLevel, 9),
//   })
//
// An SDK operation of another name or with another argument than the adapter's is told by `as`, a getter that
// is not a member function without parameters by `readsBy`, what is answered by a callback by `requests`, and anything
// else by `does`.

#include "devices/reacquiringcontrol.h"
#include "operations/operation.h"
#include "testing/exactly.h"

#include <algorithm>
#include <any>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <type_traits>
#include <typeinfo>
#include <utility>
#include <vector>

namespace tov::testing {

template <typename Value>
struct WhenAbsent
{
    Value value;
};

template <typename Value>
struct SdkAnswers
{
    Value value;
};

/// A row of an adapter's table.
template <typename Adapter>
struct Row
{
    std::string name;
    std::vector<std::string> sdkCalls;
    std::vector<std::pair<std::string, std::any>> sdkAnswers;
    std::string whenPresent;
    std::string whenAbsent;
    std::function<std::string(Adapter&)> call;
    Tells tells = Tells::Nothing;
    std::optional<std::string> whenReleased = std::nullopt;
    std::vector<std::string> callsAfterThrow = {};
    bool borrowsAnew = false;

    /// Names the SDK call where it is not the adapter's own name and arguments, as "operation(argument, ...)".
    Row as(const std::string& otherSdkCall) const
    {
        Row row = *this;
        row.sdkCalls = {otherSdkCall};
        for (auto& answer : row.sdkAnswers)
            answer.first = otherSdkCall.substr(0, otherSdkCall.find('('));
        return row;
    }

    /// What another SDK operation answers.
    Row with(const std::string& sdkOperation, const std::any& value) const
    {
        Row row = *this;
        row.sdkAnswers.emplace_back(sdkOperation, value);
        return row;
    }

    /// The result is the same when the control has gone.
    Row keeping() const
    {
        Row row = *this;
        row.whenReleased = whenPresent;
        return row;
    }

    /// The control is borrowed anew for each SDK call. When the first one throws, `cleaningUp` are made nevertheless.
    Row inSteps(const std::vector<std::string>& cleaningUp = {}) const
    {
        Row row = *this;
        row.borrowsAnew = true;
        row.callsAfterThrow = cleaningUp;
        return row;
    }
};

/// An adapter's table.
template <typename Adapter>
using Rows = std::vector<Row<Adapter>>;

/// A getter, as anything that can be called with the adapter, that gives `result` for the SDK's answer.
template <typename Adapter, typename Getter, typename Answer, typename Result>
Row<Adapter> readsBy(const std::string& name, Getter getter, const Result& whenAbsent, const SdkAnswers<Answer>& answer,
                     const Result& result)
{
    return {
        name, {name + "()"}, {{name, answer.value}}, exactly(result), exactly(whenAbsent), [getter](Adapter& adapter) {
            return exactly(Result(std::invoke(getter, adapter)));
        }};
}

/// A getter that gives `result` for the answer of the SDK operation of the same name.
template <typename Adapter, typename Result, typename Answer>
Row<Adapter> reads(const std::string& name, Result (Adapter::*getter)() const,
                   const WhenAbsent<std::type_identity_t<Result>>& whenAbsent, const SdkAnswers<Answer>& answer,
                   const std::type_identity_t<Result>& result)
{
    return readsBy<Adapter>(name, getter, whenAbsent.value, answer, result);
}

/// A getter that passes the answer of the SDK operation of the same name through.
template <typename Adapter, typename Result>
Row<Adapter> reads(const std::string& name, Result (Adapter::*getter)() const,
                   const WhenAbsent<std::type_identity_t<Result>>& whenAbsent,
                   const SdkAnswers<std::type_identity_t<Result>>& answer)
{
    return reads(name, getter, whenAbsent, answer, answer.value);
}

/// Whatever can be called with the adapter, and the SDK calls that it makes.
template <typename Adapter>
Row<Adapter> does(const std::string& name, const std::vector<std::string>& sdkCalls,
                  const std::function<void(Adapter&)>& action)
{
    return {name, sdkCalls, {}, "done", "done", [action](Adapter& adapter) {
                action(adapter);
                return std::string("done");
            }};
}

/// A setter that passes its arguments on to the SDK operation of the same name.
template <typename Adapter, typename... Parameters>
Row<Adapter> writes(const std::string& name, void (Adapter::*setter)(Parameters...),
                    std::type_identity_t<std::decay_t<Parameters>>... arguments)
{
    std::string printed;
    ((printed += (printed.empty() ? "" : ", ") + exactly(arguments)), ...);
    return does<Adapter>(name, {name + "(" + printed + ")"},
                         [=](Adapter& adapter) { (adapter.*setter)(arguments...); });
}

/// An operation that waits until the SDK has answered by a callback, with `sdkValue` if it has a value.
template <typename Adapter>
Row<Adapter> requests(const std::string& name, const std::string& sdkCall, const std::any& sdkValue,
                      const std::string& result, Tells tells, std::function<std::string(Adapter&)> call)
{
    const std::string whenAbsent = tells == Tells::Text     ? "failed: File memory control is unavailable"
                                   : tells == Tells::Failed ? "failed: 0"
                                                            : "failed";
    return {name, {sdkCall}, {{sdkCall.substr(0, sdkCall.find('(')), sdkValue}}, result, whenAbsent, std::move(call),
            tells};
}

/// The two lifecycle operations of an adapter that is itself an observer of the SDK's.
template <typename Adapter>
Rows<Adapter> lifecycle(const std::vector<std::string>& furtherCallsWhenAvailable = {})
{
    std::vector<std::string> whenAvailable = {"addObserver()"};
    whenAvailable.insert(whenAvailable.end(), furtherCallsWhenAvailable.begin(), furtherCallsWhenAvailable.end());
    return {
        does<Adapter>("onControlsAboutToBeReleased", {"removeObserver()"},
                      [](Adapter& adapter) { adapter.onControlsAboutToBeReleased(); }),
        does<Adapter>("onControlsAvailable", whenAvailable, [](Adapter& adapter) { adapter.onControlsAvailable(); })};
}

template <typename Adapter, typename SdkIface, typename Fake>
class StageFor final : public Stage
{
public:
    explicit StageFor(Row<Adapter> row)
        : m_row(std::move(row))
    {
    }

    void offer() override
    {
        m_fake = std::make_shared<Fake>();
        m_fake->recordInto(m_journal);
        if constexpr (requires { m_fake->recordsObservers; })
            m_fake->recordsObservers = true;
        m_observed.push_back(m_fake);
        for (const auto& [sdkOperation, value] : m_row.sdkAnswers)
            m_fake->answer(sdkOperation, value);
    }
    void release() override { m_fake.reset(); }
    bool controlLives() const override { return !m_observed.back().expired(); }
    std::size_t livingControls() const override
    {
        return static_cast<std::size_t>(
            std::ranges::count_if(m_observed, [](const auto& control) { return !control.expired(); }));
    }
    void duringCall(std::function<void()> action) override { m_fake->duringCall = std::move(action); }
    AnsweringControl* answering() override
    {
        if constexpr (std::is_base_of_v<AnsweringControl, Fake>)
            return m_fake.get();
        else
            return nullptr;
    }
    bool makeUnusable() override
    {
        if constexpr (requires { m_fake->available; }) {
            m_fake->available = false;
            return true;
        } else {
            return false;
        }
    }
    std::vector<std::string> calls() const override { return m_journal->calls(); }

    std::string call() override { return m_row.call(m_adapter); }
    // Instead of a copy, an adapter that cannot be copied has another one on the same instrument beside it.
    std::string callOnCopy() override
    {
        if constexpr (std::is_copy_constructible_v<Adapter>) {
            Adapter copy(m_adapter);
            return m_row.call(copy);
        } else {
            Adapter other(m_reacquire);
            return m_row.call(other);
        }
    }
    std::string callOnMovedTo() override
    {
        if constexpr (std::is_move_constructible_v<Adapter>) {
            Adapter taken(std::move(m_adapter));
            return m_row.call(taken);
        } else {
            return callOnCopy();
        }
    }
    std::string callWithEmptyReacquire() override
    {
        Adapter adapter{devices::ReacquiringControl<SdkIface>(nullptr)};
        return m_row.call(adapter);
    }

private:
    Row<Adapter> m_row;
    std::shared_ptr<Journal> m_journal = std::make_shared<Journal>();
    std::shared_ptr<Fake> m_fake;
    std::vector<std::weak_ptr<Fake>> m_observed; // all that were offered
    const devices::ReacquiringControl<SdkIface> m_reacquire{[this] { return sdk::ControlHandle<SdkIface>(m_fake); }};
    Adapter m_adapter{m_reacquire};
};

/// Makes operations of an adapter's rows.
template <typename Adapter, typename SdkIface, typename Fake>
Operations operations(const Rows<Adapter>& rows)
{
    Operations all;
    for (const auto& row : rows) {
        std::vector<std::string> whenThrown(row.sdkCalls.begin(),
                                            row.sdkCalls.empty() ? row.sdkCalls.end() : row.sdkCalls.begin() + 1);
        whenThrown.insert(whenThrown.end(), row.callsAfterThrow.begin(), row.callsAfterThrow.end());
        all.push_back({typeid(Adapter), row.name, row.sdkCalls, row.whenPresent, row.whenAbsent,
                       row.whenReleased.value_or(row.whenAbsent), whenThrown, row.borrowsAnew, row.tells,
                       [row] { return std::make_unique<StageFor<Adapter, SdkIface, Fake>>(row); }});
    }
    return all;
}

/// Two parts of one table.
template <typename Adapter>
Rows<Adapter> operator+(Rows<Adapter> rows, const Rows<Adapter>& more)
{
    rows.insert(rows.end(), more.begin(), more.end());
    return rows;
}

} // namespace tov::testing
