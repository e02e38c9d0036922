#include "console/commandline/command.h"

#include <algorithm>

namespace tov::console {

Command& Command::add(std::string name, std::string help)
{
    return *m_commands.emplace_back(std::make_unique<Command>(std::move(name), std::move(help)));
}

Command& Command::argument(std::string name, std::string& value, std::string type, std::string help, Choices choices)
{
    return takes({std::move(name), &value, std::move(type), std::move(help), std::move(choices), true});
}

Command& Command::optional(std::string name, Target target, std::string type, std::string help, Choices choices)
{
    return takes({std::move(name), std::move(target), std::move(type), std::move(help), std::move(choices)});
}

Command& Command::flag(std::string name, bool& given, std::string help)
{
    return takes({std::move(name), &given, {}, std::move(help)});
}

Command& Command::oneOf(OneOf group)
{
    m_groups.push_back(std::move(group));
    return *this;
}

Command& Command::takes(Parameter parameter)
{
    m_parameters.push_back(std::move(parameter));
    return *this;
}

Command& Command::footer(std::string lines)
{
    m_footer = std::move(lines);
    return *this;
}

const Command* Command::find(const std::string& name) const
{
    const auto found = std::ranges::find(m_commands, name, [](const auto& command) { return command->name(); });
    return found == m_commands.end() ? nullptr : found->get();
}

} // namespace tov::console
