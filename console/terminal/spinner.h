#pragma once

#include <chrono>
#include <future>
#include <string>
#include <utility>

namespace tov::console {

/// Shows on a terminal's standard error that something takes long, while it exists.
class Spinner
{
public:
    explicit Spinner(std::string what);
    Spinner(const Spinner&) = delete;
    Spinner& operator=(const Spinner&) = delete;

    /// Takes away what was shown.
    ~Spinner();

    void turn();

private:
    const std::string m_what;
    const bool m_isTerminal;
    unsigned int m_turns = 0;
};

/// What `work` gives, which is done on a thread of its own: Ctrl-C ends the program however long it takes.
template <typename Work>
auto withSpinner(const std::string& what, Work work)
{
    using std::chrono::milliseconds;

    auto done = std::async(std::launch::async, std::move(work));
    if (done.wait_for(milliseconds(300)) == std::future_status::ready)
        return done.get();
    Spinner spinner(what);
    while (done.wait_for(milliseconds(100)) != std::future_status::ready)
        spinner.turn();
    return done.get();
}

} // namespace tov::console
