#pragma once

#include "testing/answeringcontrol.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <system_error>
#include <typeindex>
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
    /// How many of the controls that were offered still live, the one that is offered included.
    virtual std::size_t livingControls() const = 0;
    /// What the control that is offered runs inside its calls.
    virtual void duringCall(std::function<void()> action) = 0;
    /// The control that is offered if it answers by callbacks.
    virtual AnsweringControl* answering() = 0;
    /// Has the control that is offered say that it cannot be used now; false when it has no say.
    virtual bool makeUnusable() = 0;
    /// The calls of all controls so far.
    virtual std::vector<std::string> calls() const = 0;

    /// Each calls the operation and gives its result.
    virtual std::string call() = 0;
    virtual std::string callOnCopy() = 0;
    virtual std::string callOnMovedTo() = 0;
    virtual std::string callWithEmptyReacquire() = 0;
};

/// How an operation tells of an error code that the instrument answers with.
enum class Tells {
    Nothing, ///< it is not answered by a callback
    Text,    ///< the error code's text
    Failed,  ///< one value for all
    False,
};

/// One operation and what is expected of it.
struct Operation
{
    std::type_index adapter;
    std::string name; ///< the adapter's operation; where one has several rows, a word follows that says which
    std::vector<std::string> sdkCalls;
    std::string whenPresent;
    std::string whenAbsent;
    std::string whenReleased;                 ///< after a call that found the control
    std::vector<std::string> callsWhenThrown; ///< by the first call
    bool borrowsAnew;                         ///< for each of its calls
    Tells tells;
    std::function<std::unique_ptr<Stage>()> makeStage;

    /// The result for this answer, which is an error.
    std::string whenAnswered(const std::error_code& error) const
    {
        switch (tells) {
        case Tells::Text:
            return "failed: " + error.message();
        case Tells::Failed:
            return "failed: 0";
        case Tells::Nothing:
        case Tells::False:
            break;
        }
        return "failed";
    }
};

using Operations = std::vector<Operation>;

} // namespace tov::testing
