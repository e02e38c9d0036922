#pragma once

#include "conformance/bench/answers.h"
#include "conformance/bench/bench.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace tov::conformance {

/// A call that can be made again and again.
struct Call
{
    std::function<void(Answered)> make;
    std::function<void()> restore; ///< afterwards everything is as it was; null when nothing changes
};

/// An operation that is answered by a callback.
struct CallbackOperation
{
    /// What it does to the instrument.
    enum class Effect { Reads, Writes, Erases };

    devices::ControlName control;
    std::string name; ///< that of the SDK's function
    Effect effect = Effect::Reads;
    /// Makes a call of it, of a control that is there. Throws `NotApplicable` when there is nothing to call it with.
    std::function<Call(Bench&, const std::shared_ptr<void>&)> prepare;
    bool tells = false; ///< whether observers hear of it
};

/// All of them but one: what it writes into the RAM of a potentiometer cannot be read and restored.
const std::vector<CallbackOperation>& callbackOperations();

/// Throws `NotAllowed` if the user has not allowed what the operation does.
void beAllowed(const Bench& bench, const CallbackOperation& operation);

/// Which operations a check is about.
using Which = std::function<bool(const CallbackOperation&)>;
bool everyOperation(const CallbackOperation& operation);
bool onlyReads(const CallbackOperation& operation);
bool ofTheFileMemory(const CallbackOperation& operation);

/// Does `work` with each of these operations that may be looked at, and says with which.
Seen forEachOperation(Bench& bench, const Which& which,
                      const std::function<void(const CallbackOperation&, const std::string& name, const Call&)>& work);

/// Has an operation answer in a way of its own as long as this lives. Throws `NotApplicable` when it cannot be had.
class Answering
{
public:
    Answering(Bench& bench, const CallbackOperation& operation, Bench::Answer answer);
    Answering(const Answering&) = delete;
    Answering& operator=(const Answering&) = delete;
    ~Answering();

private:
    Bench& m_bench;
    const CallbackOperation& m_operation;
};

/// The same; null when it cannot be had.
std::unique_ptr<Answering> answeringIfItCan(Bench& bench, const CallbackOperation& operation, Bench::Answer answer);

} // namespace tov::conformance
