#pragma once

namespace tov::testing {

/// Stands in for the base of the same name, which keeps every call: here they are too many to be kept. Every operation
/// answers a value-initialized value.
class RecordingControl
{
public:
    RecordingControl() = default;
    RecordingControl(const RecordingControl&) = delete;
    RecordingControl& operator=(const RecordingControl&) = delete;

protected:
    ~RecordingControl() = default;

    template <typename Result = void, typename... Arguments>
    Result called(const auto& /*operation*/, const Arguments&... /*arguments*/)
    {
        return Result();
    }
};

} // namespace tov::testing
