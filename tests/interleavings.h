#pragma once

#include <condition_variable>
#include <cstddef>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

namespace tov::testing {

/// Runs some operations in a thread each, one at a time, and goes through every order in which they can take
/// turns. An operation gives up its turn where it calls `pause()`.
class Interleavings
{
public:
    /// One try: sets the stage anew, gives the operations, and looks at the outcome.
    class Try
    {
    public:
        virtual ~Try() = default;
        virtual std::vector<std::function<void()>> operations() = 0;
        /// Between two turns.
        virtual void look() {}
        virtual void lookAtTheEnd() = 0;
    };

    /// Makes a try for every order; `make` is given what an operation calls to give up its turn. Returns how many
    /// orders there are.
    template <typename Make>
    static std::size_t explore(Make make)
    {
        std::size_t orders = 0;
        std::vector<Choice> choices;
        do {
            Interleavings turns(choices);
            const auto oneTry = make([&turns] { turns.pause(); });
            turns.run(*oneTry);
            choices = std::move(turns.m_choices);
            ++orders;
        } while (next(choices));
        return orders;
    }

private:
    struct Choice
    {
        std::size_t taken;
        std::size_t possible;
    };

    static constexpr std::size_t nobody = static_cast<std::size_t>(-1);

    explicit Interleavings(std::vector<Choice> prefix)
        : m_choices(std::move(prefix))
    {
    }

    // The next order, which shares its beginning with the last one.
    static bool next(std::vector<Choice>& choices)
    {
        while (!choices.empty() && choices.back().taken + 1 == choices.back().possible)
            choices.pop_back();
        if (choices.empty())
            return false;
        ++choices.back().taken;
        return true;
    }

    void run(Try& oneTry)
    {
        std::vector<std::size_t> unfinished;
        std::vector<std::jthread> threads;
        for (auto& operation : oneTry.operations()) {
            const std::size_t self = threads.size();
            unfinished.push_back(self);
            {
                const std::lock_guard guard(m_mutex);
                m_finished.push_back(false);
                m_given.push_back(std::make_unique<std::condition_variable>());
            }
            threads.emplace_back([this, self, operation = std::move(operation)] {
                waitForTurn(self);
                s_self = self;
                operation();
                s_self = nobody;
                endTurn(true, self);
            });
        }

        for (std::size_t turn = 0; !unfinished.empty(); ++turn) {
            if (turn == m_choices.size())
                m_choices.push_back({0, unfinished.size()});
            const std::size_t chosen = unfinished[m_choices[turn].taken];
            giveTurn(chosen);
            if (m_finished[chosen])
                std::erase(unfinished, chosen);
            oneTry.look();
        }
        threads.clear();
        oneTry.lookAtTheEnd();
    }

    void pause()
    {
        if (s_self == nobody)
            return;
        endTurn(false, s_self);
        waitForTurn(s_self);
    }

    void giveTurn(std::size_t to)
    {
        std::unique_lock lock(m_mutex);
        m_turn = to;
        m_given[to]->notify_one();
        m_ended.wait(lock, [this] { return m_turn == nobody; });
    }

    void waitForTurn(std::size_t self)
    {
        std::unique_lock lock(m_mutex);
        std::condition_variable& given = *m_given[self];
        given.wait(lock, [&] { return m_turn == self; });
    }

    void endTurn(bool finished, std::size_t self)
    {
        const std::lock_guard guard(m_mutex);
        m_finished[self] = finished;
        m_turn = nobody;
        m_ended.notify_one();
    }

    inline static thread_local std::size_t s_self = nobody;

    std::vector<Choice> m_choices;
    std::mutex m_mutex; // guards all below
    std::condition_variable m_ended;
    std::vector<std::unique_ptr<std::condition_variable>> m_given; // to each of the operations
    std::size_t m_turn = nobody;
    std::vector<bool> m_finished;
};

} // namespace tov::testing
