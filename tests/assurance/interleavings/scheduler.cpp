#include "scheduler.h"

#include <pthread.h>
#include <sanitizer/common_interface_defs.h>
#include <semaphore.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <exception>
#include <ranges>
#include <string_view>
#include <thread>
#include <unistd.h>
#include <utility>

// The linker puts the ones that wrap in the place of the real ones.
// NOLINTBEGIN(clang-diagnostic-reserved-identifier,readability-identifier-naming)
extern "C" {
int __real_pthread_mutex_lock(pthread_mutex_t* mutex);
int __real_pthread_mutex_trylock(pthread_mutex_t* mutex);
int __real_pthread_mutex_unlock(pthread_mutex_t* mutex);
void* __real__Znwm(std::size_t size);
int __wrap_pthread_mutex_lock(pthread_mutex_t* mutex);
int __wrap_pthread_mutex_trylock(pthread_mutex_t* mutex);
int __wrap_pthread_mutex_unlock(pthread_mutex_t* mutex);
void* __wrap__Znwm(std::size_t size);
}
// NOLINTEND(clang-diagnostic-reserved-identifier,readability-identifier-naming)

namespace tov::assurance {

namespace {

constexpr int exitOfAFinding = 3;

/// Not std::binary_semaphore, which turns in circles before it waits.
class Signal
{
public:
    Signal() { sem_init(&m_semaphore, 0, 0); }
    Signal(const Signal&) = delete;
    Signal& operator=(const Signal&) = delete;
    ~Signal() { sem_destroy(&m_semaphore); }

    void give() { sem_post(&m_semaphore); }
    void wait()
    {
        while (sem_wait(&m_semaphore) != 0) {
        }
    }

private:
    sem_t m_semaphore{};
};

/// A thread of the pool and what it does in the present try. Only the thread whose turn it is looks at these.
struct Player
{
    Signal turn;
    std::function<void()> operation; // none: the pool ends
    bool ended = true;
    bool pausesAtAllocations = false;
    pthread_mutex_t* wanted = nullptr;              // the mutex that it waits for
    const std::function<bool()>* awaited = nullptr; // the condition that it waits for
    std::vector<pthread_mutex_t*> held;
};

class Scheduler
{
public:
    struct Choice
    {
        std::size_t taken;
        std::size_t possible; // 0: not known
    };

    Scheduler()
    {
        m_steps.reserve(1000);
        for (std::size_t i = 0; i < m_players.size(); ++i) {
            m_players.at(i).held.reserve(10);
            m_threads.at(i) = std::thread([this, i] { play(m_players.at(i)); });
        }
    }
    Scheduler(const Scheduler&) = delete;
    Scheduler& operator=(const Scheduler&) = delete;
    ~Scheduler()
    {
        for (Player& player : m_players)
            player.turn.give();
        for (std::thread& thread : m_threads)
            thread.join();
    }

    std::size_t explore(const Scenario& scenario)
    {
        m_choices.clear();
        m_tried = 0;
        do
            tryOnce(scenario);
        while (next());
        return m_tried;
    }

    void tryAgain(const Scenario& scenario, std::vector<Choice> choices)
    {
        m_choices = std::move(choices);
        m_tried = 0;
        tryOnce(scenario);
    }

    void pause(const char* where)
    {
        if (s_self == nullptr)
            return;
        Player& self = *s_self;
        const bool pauses = std::exchange(self.pausesAtAllocations, false); // not at those of the scheduler
        m_steps.push_back({&self, where});
        m_scene->look();
        passTurn();
        self.pausesAtAllocations = pauses;
    }

    void waitUntil(const std::function<bool()>& condition)
    {
        if (s_self == nullptr || condition())
            return;
        s_self->awaited = &condition;
        pause("waits");
        s_self->awaited = nullptr;
    }

    void lock(pthread_mutex_t* mutex)
    {
        s_self->wanted = mutex;
        pause("locks");
        s_self->wanted = nullptr;
        s_self->held.push_back(mutex);
    }
    static void unlock(const pthread_mutex_t* mutex) { std::erase(s_self->held, mutex); }

    void report(std::string_view finding) const
    {
        std::printf("FOUND after %zu schedules of \"%s\": %.*s\nschedule: ", m_tried + 1,
                    m_scenario == nullptr ? "" : m_scenario->name.c_str(), static_cast<int>(finding.size()),
                    finding.data());
        for (const Choice& choice : m_choices | std::views::take(m_next))
            std::printf("%zu", choice.taken);
        std::puts("");
        for (const auto& [player, where] : m_steps)
            std::printf("  thread %td %s\n", player - m_players.data() + 1, where);
        std::fflush(stdout);
    }

    inline static thread_local Player* s_self = nullptr;

private:
    struct Step
    {
        const Player* player;
        const char* where;
    };

    void play(Player& self)
    {
        for (self.turn.wait(); self.operation; self.turn.wait()) {
            s_self = &self;
            self.operation();
            m_steps.push_back({&self, "ends"});
            s_self = nullptr;
            self.ended = true;
            if (Player* const chosen = choose(self))
                chosen->turn.give();
            else
                m_allEnded.give();
        }
    }

    void tryOnce(const Scenario& scenario)
    {
        m_scenario = &scenario;
        m_next = 0;
        m_preemptionsLeft = scenario.preemptions;
        m_steps.clear();
        const auto scene = scenario.makeScene();
        m_scene = scene.get();
        auto operations = scene->operations();
        expect(operations.size() <= m_players.size(), "the scene has more threads than the pool");
        for (std::size_t i = 0; i < operations.size(); ++i) {
            m_players.at(i).operation = std::move(operations[i]);
            m_players.at(i).ended = false;
        }
        Player nobody;
        choose(nobody)->turn.give();
        m_allEnded.wait();
        for (Player& player : m_players)
            player.operation = nullptr;
        scene->lookAtTheEnd();
        ++m_tried;
    }

    // The next order, which shares its beginning with the last one.
    bool next()
    {
        while (!m_choices.empty() && m_choices.back().taken + 1 == m_choices.back().possible)
            m_choices.pop_back();
        if (m_choices.empty())
            return false;
        ++m_choices.back().taken;
        return true;
    }

    void passTurn()
    {
        Player* const self = s_self;
        Player* const chosen = choose(*self);
        if (chosen == self)
            return;
        chosen->turn.give();
        self->turn.wait();
    }

    // Who goes on after `last`; nobody when all have ended.
    Player* choose(const Player& last)
    {
        std::array<Player*, 3> able{};
        std::size_t count = 0;
        for (Player& player : m_players)
            if (&player == &last && canGoOn(player))
                able.at(count++) = &player;
        const bool lastCanGoOn = count > 0;
        if (!lastCanGoOn || m_preemptionsLeft > 0)
            for (Player& player : m_players)
                if (&player != &last && canGoOn(player))
                    able.at(count++) = &player;
        if (count == 0) {
            expect(std::ranges::all_of(m_players, &Player::ended), "all threads wait: a deadlock");
            return nullptr;
        }
        if (count == 1)
            return able[0];

        if (m_next == m_choices.size())
            m_choices.push_back({.taken = 0, .possible = count});
        Choice& choice = m_choices[m_next];
        if (choice.possible == 0)
            choice.possible = count;
        expect(choice.possible == count && choice.taken < count, "the same order does not lead to the same place");
        ++m_next;
        Player* const chosen = able.at(choice.taken);
        if (lastCanGoOn && chosen != &last)
            --m_preemptionsLeft;
        return chosen;
    }

    bool canGoOn(const Player& player) const
    {
        if (player.ended || (player.awaited != nullptr && !(*player.awaited)()))
            return false;
        return player.wanted == nullptr || std::ranges::none_of(m_players, [&](const Player& other) {
                   return std::ranges::find(other.held, player.wanted) != other.held.end();
               });
    }

    std::array<Player, 3> m_players;
    std::array<std::thread, 3> m_threads;
    Signal m_allEnded;
    const Scenario* m_scenario = nullptr;
    Scene* m_scene = nullptr;
    std::size_t m_tried = 0;
    std::vector<Choice> m_choices;
    std::size_t m_next = 0; // choice
    int m_preemptionsLeft = 0;
    std::vector<Step> m_steps;
};

Scheduler& scheduler()
{
    static Scheduler theOne;
    return theOne;
}

void reportDeath()
{
    scheduler().report("the sanitizer ends the program");
}

} // namespace

std::size_t explore(const Scenario& scenario)
{
    __sanitizer_set_death_callback(reportDeath);
    std::set_terminate([] { expect(false, "the program ends itself"); });
    return scheduler().explore(scenario);
}

void tryAgain(const Scenario& scenario, const std::string& schedule)
{
    __sanitizer_set_death_callback(reportDeath);
    std::vector<Scheduler::Choice> choices;
    for (const char digit : schedule)
        choices.push_back({.taken = static_cast<std::size_t>(digit - '0'), .possible = 0});
    scheduler().tryAgain(scenario, std::move(choices));
}

void pause(const char* where)
{
    if (isOnStage())
        scheduler().pause(where);
}

void waitUntil(const std::function<bool()>& condition)
{
    if (isOnStage())
        scheduler().waitUntil(condition);
}

bool holdsALock()
{
    return isOnStage() && !Scheduler::s_self->held.empty();
}

bool isOnStage()
{
    return Scheduler::s_self != nullptr;
}

void expect(bool fine, const char* finding)
{
    if (fine)
        return;
    scheduler().report(finding);
    _exit(exitOfAFinding);
}

PausesAtAllocations::PausesAtAllocations()
{
    if (isOnStage())
        Scheduler::s_self->pausesAtAllocations = true;
}

PausesAtAllocations::~PausesAtAllocations()
{
    if (isOnStage())
        Scheduler::s_self->pausesAtAllocations = false;
}

} // namespace tov::assurance

using tov::assurance::Scheduler;
using tov::assurance::scheduler;

// NOLINTBEGIN(clang-diagnostic-reserved-identifier,readability-identifier-naming)

int __wrap_pthread_mutex_lock(pthread_mutex_t* mutex)
{
    if (tov::assurance::isOnStage())
        scheduler().lock(mutex);
    return __real_pthread_mutex_lock(mutex);
}

int __wrap_pthread_mutex_trylock(pthread_mutex_t* mutex)
{
    tov::assurance::pause("tries to lock");
    const int result = __real_pthread_mutex_trylock(mutex);
    if (result == 0 && tov::assurance::isOnStage())
        Scheduler::s_self->held.push_back(mutex);
    return result;
}

int __wrap_pthread_mutex_unlock(pthread_mutex_t* mutex)
{
    const int result = __real_pthread_mutex_unlock(mutex);
    if (tov::assurance::isOnStage()) {
        Scheduler::unlock(mutex);
        tov::assurance::pause("has unlocked");
    }
    return result;
}

void* __wrap__Znwm(std::size_t size)
{
    if (tov::assurance::isOnStage() && Scheduler::s_self->pausesAtAllocations)
        tov::assurance::pause("allocates");
    return __real__Znwm(size);
}

// NOLINTEND(clang-diagnostic-reserved-identifier,readability-identifier-naming)
