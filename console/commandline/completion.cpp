#include "console/commandline/command.h"

#include "console/errors.h"

#include <algorithm>

namespace tov::console {

namespace {

bool isOption(const Command::Parameter& parameter)
{
    return parameter.name.starts_with("--");
}

bool takesValue(const Command::Parameter& option)
{
    return !std::holds_alternative<bool*>(option.target) && !std::holds_alternative<Command::Version>(option.target);
}

// Behind a wrong argument nothing fits.
Words choicesOf(const Command::Parameter& parameter, const Words& before)
try {
    return parameter.choices ? parameter.choices(before) : Words();
} catch (const BadUse&) {
    return {};
}

const Command::Parameter* optionNamed(const Command& command, const std::string& name)
{
    const auto in = [&](const std::vector<Command::Parameter>& parameters) {
        const auto found = std::ranges::find(parameters, name, &Command::Parameter::name);
        return found == parameters.end() ? nullptr : &*found;
    };
    const Command::Parameter* found = in(command.parameters());
    for (const auto& group : command.groups())
        if (found == nullptr)
            found = in(group.options);
    return found;
}

void addOptions(const Command& command, Words& names)
{
    names.emplace_back("--help");
    for (const auto& parameter : command.parameters())
        if (isOption(parameter))
            names.push_back(parameter.name);
    for (const auto& group : command.groups())
        for (const auto& option : group.options)
            names.push_back(option.name);
}

// What can stand behind the command and its first arguments, as far as it can be listed.
Words wordsBehind(const Command& command, const Words& arguments)
{
    Words words;
    for (const auto& inner : command.commands())
        words.push_back(inner->name());
    if (!words.empty())
        return words;
    std::size_t place = 0;
    for (const auto& parameter : command.parameters())
        if (!isOption(parameter) && place++ == arguments.size())
            return choicesOf(parameter, arguments);
    return {};
}

} // namespace

Words completions(const Command& program, const Words& words)
{
    const Command* command = &program;
    Words arguments;
    const Command::Parameter* option = nullptr; // whose value comes next
    for (std::size_t i = 0; i + 1 < words.size(); ++i) {
        if (option != nullptr) {
            option = nullptr;
        } else if (words[i].starts_with("--")) {
            option = optionNamed(program, words[i]);
            if (option == nullptr)
                option = optionNamed(*command, words[i]);
            if (option != nullptr && !takesValue(*option))
                option = nullptr;
        } else if (const Command* const inner = command->find(words[i]); arguments.empty() && inner != nullptr) {
            command = inner;
        } else {
            arguments.push_back(words[i]);
        }
    }

    const std::string begun = words.empty() ? "" : words.back();
    Words fitting;
    if (option != nullptr) {
        fitting = choicesOf(*option, arguments);
    } else if (begun.starts_with("-")) {
        addOptions(program, fitting);
        addOptions(*command, fitting);
    } else {
        fitting = wordsBehind(*command, arguments);
    }
    std::erase_if(fitting, [&](const std::string& word) { return !word.starts_with(begun); });
    std::ranges::sort(fitting);
    fitting.erase(std::ranges::unique(fitting).begin(), fitting.end());
    return fitting;
}

} // namespace tov::console
