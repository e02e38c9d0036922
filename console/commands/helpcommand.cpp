#include "console/commands/commands.h"

#include <algorithm>
#include <iterator>

namespace tov::console {

namespace {

struct Arguments
{
    std::string command;
    std::string subcommand;
};

} // namespace

void addHelpCommand(Command& program, const std::function<Command()>& made)
{
    const auto arguments = std::make_shared<Arguments>();
    const auto names = [made](const Words& before) {
        const Command whole = made();
        const Command* const parent = before.empty() ? &whole : whole.find(before.front());
        Words inner;
        if (parent != nullptr)
            std::ranges::transform(parent->commands(), std::back_inserter(inner), &Command::name);
        return inner;
    };
    program.add("help", "Show the help of a command, or list the commands")
        .optional("command", &arguments->command, "COMMAND", "Name of a command", names)
        .optional("subcommand", &arguments->subcommand, "SUBCOMMAND", "Name of one of its commands", names)
        .runs([made](ConsoleSession& console,
                     const Arguments& given) { return helpWith(made(), {given.command, given.subcommand})(console); },
              arguments);
}

} // namespace tov::console
