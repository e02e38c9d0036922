#pragma once

namespace tov::testing {

/// What the instrument throws.
struct Refusal
{
};

/// What goes wrong in the calling thread: either allocations, by `new` or by malloc, or calls of the SDK. They are
/// counted, and it strikes, only while a `Disturbed` exists.
struct Disturbance
{
    enum class Of { Allocations, SdkCalls } of = Of::Allocations;
    long nth = 0;         ///< the first that it strikes; 0 for none
    bool lasts = false;   ///< strikes all that come then
    long secondAfter = 0; ///< strikes the one that comes so many later, too; 0 for none
};

/// Makes ready for `disturbance`, instead of the last one.
void prepare(const Disturbance& disturbance) noexcept;

/// Whether the last one has struck.
bool hasStruck() noexcept;

/// A call of the SDK: throws `Refusal` if it is its turn.
void sdkIsCalled();

/// Blocks on the heap that the calling thread has and has not freed.
long liveBlocks() noexcept;

class Disturbed
{
public:
    Disturbed() noexcept;
    Disturbed(const Disturbed&) = delete;
    Disturbed& operator=(const Disturbed&) = delete;
    ~Disturbed();
};

} // namespace tov::testing
