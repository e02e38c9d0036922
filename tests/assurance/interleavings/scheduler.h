#pragma once

#include <algorithm>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace tov::assurance {

/// One try of a scenario, on a stage that its constructor has set.
class Scene
{
public:
    Scene() = default;
    Scene(const Scene&) = delete;
    Scene& operator=(const Scene&) = delete;
    virtual ~Scene() = default;

    /// What threads do, each one of these.
    virtual std::vector<std::function<void()>> operations() = 0;
    /// Wherever threads can take turns.
    virtual void look() {}
    virtual void lookAtTheEnd() = 0;
};

/// A scene of threads that do one deed each.
template <typename Deed>
class SceneOf : public Scene
{
public:
    explicit SceneOf(std::vector<Deed> deeds)
        : m_deeds(std::move(deeds))
    {
    }

    std::vector<std::function<void()>> operations() final
    {
        std::vector<std::function<void()>> all;
        for (const Deed deed : m_deeds)
            all.emplace_back([this, deed] { perform(deed); });
        return all;
    }

protected:
    auto howManyDo(Deed deed) const { return std::ranges::count(m_deeds, deed); }
    bool doing(Deed deed) const { return howManyDo(deed) > 0; }

    virtual void perform(Deed deed) = 0;

private:
    const std::vector<Deed> m_deeds;
};

/// What is tried in every order in which its threads can take turns, if no more than `preemptions` of these turns take
/// the processor from a thread that could go on. Turns that a thread gives away, as it waits or ends, are free.
struct Scenario
{
    std::string name;
    int preemptions;
    std::function<std::unique_ptr<Scene>()> makeScene;
};

/// The scenarios of this program.
std::vector<Scenario> scenarios();

/// Tries `scenario` in every order and returns how many there are. What is found ends the program.
std::size_t explore(const Scenario& scenario);

/// Tries `scenario` in the one order that was printed as `schedule`.
void tryAgain(const Scenario& scenario, const std::string& schedule);

// For the threads of a scene, between which turns change here and wherever one locks or unlocks a mutex. Elsewhere
// these do nothing, but for `expect()`.

/// Lets others take their turns.
void pause(const char* where);

/// Lets others take their turns until `condition` holds.
void waitUntil(const std::function<bool()>& condition);

/// Whether this thread has locked a mutex.
bool holdsALock();

/// Whether this is a thread of a scene.
bool isOnStage();

/// Reports `finding` with the schedule that led to it, and ends the program, if `fine` is false.
void expect(bool fine, const char* finding);

/// While it lives, turns change wherever its thread allocates too.
class PausesAtAllocations
{
public:
    PausesAtAllocations();
    PausesAtAllocations(const PausesAtAllocations&) = delete;
    PausesAtAllocations& operator=(const PausesAtAllocations&) = delete;
    ~PausesAtAllocations();
};

} // namespace tov::assurance
