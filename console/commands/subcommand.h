#pragma once

#include "console/commands/commands.h"

#include <CLI/CLI.hpp>

#include <memory>
#include <string>
#include <utility>

namespace tov::console {

/// Declares the argument that names a file of this computer.
inline void addLocalFile(CLI::App& command, std::string& localFile)
{
    command.add_option("file", localFile, "File of this computer")->required()->type_name("FILE");
}

/// Adds a command whose arguments, the fields of `Arguments`, are declared by `declare` and that `run` carries
/// out. `run` is given the workbench and the arguments and throws `CommandError` when it fails.
template <typename Arguments, typename Declare, typename Run>
CLI::App* addSubcommand(CLI::App& parent, ChosenCommand& chosen, const std::string& name, const std::string& help,
                        Declare declare, Run run)
{
    CLI::App* const command = parent.add_subcommand(name, help);
    const auto arguments = std::make_shared<Arguments>();
    declare(*command, *arguments);
    command->callback([&chosen, arguments, run] {
        chosen = [arguments, run](Workbench& workbench) {
            run(workbench, std::as_const(*arguments));
            return ExitStatus::Success;
        };
    });
    return command;
}

/// The same for a command without arguments.
template <typename Run>
CLI::App* addSubcommand(CLI::App& parent, ChosenCommand& chosen, const std::string& name, const std::string& help,
                        Run run)
{
    CLI::App* const command = parent.add_subcommand(name, help);
    command->callback([&chosen, run] {
        chosen = [run](Workbench& workbench) {
            run(workbench);
            return ExitStatus::Success;
        };
    });
    return command;
}

} // namespace tov::console
