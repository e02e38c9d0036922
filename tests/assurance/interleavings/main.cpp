// Tries every scenario of a program, or with --scenario NAME [--schedule DIGITS] the one of that name, in one order.
// With --more N each has N preemptions more. For each it prints how many schedules there are.

#include "scheduler.h"

#include <cstdio>
#include <cstdlib>
#include <span>
#include <string>

int main(int argc, char* argv[])
{
    using namespace tov::assurance;
    int more = 0;
    std::string name;
    std::string schedule;
    bool again = false;
    const std::span arguments(argv, static_cast<std::size_t>(argc));
    for (std::size_t i = 1; i + 1 < arguments.size(); i += 2) {
        const std::string option = arguments[i];
        const char* const value = arguments[i + 1];
        if (option == "--more") {
            more = std::atoi(value);
        } else if (option == "--scenario") {
            name = value;
        } else if (option == "--schedule") {
            schedule = value;
            again = true;
        } else {
            std::fprintf(stderr, "unknown option %s\n", option.c_str());
            return EXIT_FAILURE;
        }
    }

    bool known = false;
    for (Scenario scenario : scenarios()) {
        if (!name.empty() && name != scenario.name)
            continue;
        known = true;
        scenario.preemptions += more;
        if (again) {
            tryAgain(scenario, schedule);
            continue;
        }
        const std::size_t schedules = explore(scenario);
        std::printf("%zu\t%d\t%s\n", schedules, scenario.preemptions, scenario.name.c_str());
        std::fflush(stdout);
    }
    if (!known)
        std::fputs("there is no such scenario\n", stderr);
    return known ? EXIT_SUCCESS : EXIT_FAILURE;
}
