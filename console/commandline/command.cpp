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

std::string Command::synopsis() const
{
    std::string line = m_name;
    for (const Parameter& parameter : m_parameters) {
        const std::string& shown = parameter.type.empty() ? parameter.name : parameter.type;
        if (!parameter.isOption())
            line.append(parameter.required ? " " + shown : " [" + shown + "]");
    }
    for (const OneOf& group : m_groups) {
        std::string options;
        for (const Parameter& option : group.options)
            options.append(options.empty() ? " " : "|").append(option.name);
        line.append(options);
    }
    for (const Parameter& option : m_parameters)
        if (option.isOption())
            line.append(" [").append(option.name).append(option.takesValue() ? " " + option.type : "").append("]");
    return line;
}

Words Command::optionNames() const
{
    Words names{"--help"};
    for (const Parameter& parameter : m_parameters)
        if (parameter.isOption())
            names.push_back(parameter.name);
    for (const OneOf& group : m_groups)
        for (const Parameter& option : group.options)
            names.push_back(option.name);
    return names;
}

const Command::Parameter* Command::optionNamed(const std::string& name) const
{
    const auto in = [&](const std::vector<Parameter>& parameters) {
        const auto found = std::ranges::find(parameters, name, &Parameter::name);
        return found == parameters.end() || !found->isOption() ? nullptr : &*found;
    };
    const Parameter* found = in(m_parameters);
    for (const OneOf& group : m_groups)
        if (found == nullptr)
            found = in(group.options);
    return found;
}

const Command* Command::find(const std::string& name) const
{
    const auto found = std::ranges::find(m_commands, name, [](const auto& command) { return command->name(); });
    return found == m_commands.end() ? nullptr : found->get();
}

} // namespace tov::console
