#pragma once

// The contract that every operation of every value adapter keeps, as one parameterized suite
// (valueadaptercontract_test.cpp). An adapter joins it with a table of its operations:
//
//   INSTANTIATE_TEST_SUITE_P(SdkThingControl, ValueAdapter,
//                            operations<SdkThingControl, sdk::service::IThing, FakeThing>({
//                                reads("level", &SdkThingControl::level, WhenAbsent{0}, SdkAnswers{7}),
//                                writes("setLevel", &SdkThingControl::setLevel, 9),
//                            }), operationName);
//
// An SDK operation of another name or with another argument than the adapter's is told by `as`, a getter that
// is not a member function without parameters by `readsBy`.

#include "devices/reacquiringcontrol.h"
#include "fakes/exactly.h"
#include "fakes/recordingcontrol.h"

#include <gtest/gtest.h>

#include <any>
#include <functional>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace tov::testing {

/// An adapter on an instrument whose controls record their calls into one journal. Results are compared as
/// they print.
class Stage
{
public:
    virtual ~Stage() = default;

    /// Offers a new control.
    virtual void offer() = 0;
    /// Lets go of the control that is offered.
    virtual void release() = 0;
    /// Whether the control that was offered last still lives.
    virtual bool controlLives() const = 0;
    /// What the control that is offered runs inside its calls.
    virtual void duringCall(std::function<void()> action) = 0;
    /// The calls of all controls so far.
    virtual std::vector<std::string> calls() const = 0;

    /// Each calls the operation and gives its result.
    virtual std::string call() = 0;
    virtual std::string callOnCopy() = 0;
    virtual std::string callOnMovedTo() = 0;
    virtual std::string callWithEmptyReacquire() = 0;
};

/// One operation and what is expected of it.
struct ValueOperation
{
    std::string name;
    std::string sdkCall;
    std::string whenPresent;
    std::string whenAbsent;
    std::function<std::unique_ptr<Stage>()> makeStage;
};

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
    std::string sdkOperation;
    std::string sdkCall;
    std::any sdkAnswer;
    std::string whenPresent;
    std::string whenAbsent;
    std::function<std::string(Adapter&)> call;

    /// Names the SDK call where it is not the adapter's own name and arguments, as "operation(argument, ...)".
    Row as(const std::string& otherSdkCall) const
    {
        Row row = *this;
        row.sdkOperation = otherSdkCall.substr(0, otherSdkCall.find('('));
        row.sdkCall = otherSdkCall;
        return row;
    }
};

/// A getter, as anything that can be called with the adapter, that gives `result` for the SDK's answer.
template <typename Adapter, typename Getter, typename Answer, typename Result>
Row<Adapter> readsBy(const std::string& name, Getter getter, const Result& whenAbsent, const SdkAnswers<Answer>& answer,
                     const Result& result)
{
    return {name, name, name + "()", answer.value, exactly(result), exactly(whenAbsent), [getter](Adapter& adapter) {
                return exactly(Result(std::invoke(getter, std::as_const(adapter))));
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

/// A setter that passes its arguments on to the SDK operation of the same name.
template <typename Adapter, typename... Parameters>
Row<Adapter> writes(const std::string& name, void (Adapter::*setter)(Parameters...),
                    std::type_identity_t<std::decay_t<Parameters>>... arguments)
{
    std::string printed;
    ((printed += (printed.empty() ? "" : ", ") + exactly(arguments)), ...);
    return {name, name, name + "(" + printed + ")", {}, "done", "done", [=](Adapter& adapter) {
                (adapter.*setter)(arguments...);
                return std::string("done");
            }};
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
        m_observed = m_fake;
        if (m_row.sdkAnswer.has_value())
            m_fake->answer(m_row.sdkOperation, m_row.sdkAnswer);
    }
    void release() override { m_fake.reset(); }
    bool controlLives() const override { return !m_observed.expired(); }
    void duringCall(std::function<void()> action) override { m_fake->duringCall = std::move(action); }
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
    std::weak_ptr<Fake> m_observed;
    const devices::ReacquiringControl<SdkIface> m_reacquire{[this] { return sdk::ControlHandle<SdkIface>(m_fake); }};
    Adapter m_adapter{m_reacquire};
};

/// Turns an adapter's table into the operations that the suite walks.
template <typename Adapter, typename SdkIface, typename Fake>
auto operations(const std::vector<Row<Adapter>>& rows)
{
    std::vector<ValueOperation> all;
    for (const auto& row : rows)
        all.push_back({row.name, row.sdkCall, row.whenPresent, row.whenAbsent,
                       [row] { return std::make_unique<StageFor<Adapter, SdkIface, Fake>>(row); }});
    return ::testing::ValuesIn(all);
}

inline std::string operationName(const ::testing::TestParamInfo<ValueOperation>& info)
{
    return info.param.name;
}

inline void PrintTo(const ValueOperation& operation, std::ostream* stream)
{
    *stream << operation.name;
}

class ValueAdapter : public ::testing::TestWithParam<ValueOperation>
{
protected:
    const ValueOperation& operation = GetParam();
    std::unique_ptr<Stage> stage = operation.makeStage();
};

} // namespace tov::testing
