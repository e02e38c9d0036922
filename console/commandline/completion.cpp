#include "console/commandline/command.h"

#include "console/terminal/prompt.h"

#include <algorithm>
#include <exception>
#include <iterator>
#include <utility>

namespace tov::console {

namespace {

/// Notes what an option says, as far as it matters for what can be offered behind it.
struct Note
{
    const std::string& value;

    void operator()(bool* given) const { *given = true; }
    void operator()(int* /*count*/) const {}
    void operator()(std::string* text) const { *text = value; }
    void operator()(std::optional<std::string>* text) const { *text = value; }
    void operator()(std::vector<std::string>* texts) const { texts->push_back(value); }
    void operator()(const Command::Version& /*version*/) const {}
};

// Behind a wrong argument nothing fits, nor does what an instrument would know that cannot be opened.
Words choicesOf(const Command::Parameter& parameter, const Words& before, const ConsoleOf& console)
try {
    Words words = parameter.choices(before, console);
    if (parameter.type.contains("FILE"))
        words.emplace_back(localFiles);
    return words;
} catch (const std::exception&) {
    return {};
}

/// The words before the last one, understood as far as they can be.
struct Typed
{
    Typed(const Command& program, const Words& words)
        : command(&program)
    {
        for (std::size_t i = 0; i + 1 < words.size(); ++i)
            add(program, words[i]);
    }

    const Command::Parameter* find(const Command& program, const std::string& name) const
    {
        const Command::Parameter* const found = program.optionNamed(name);
        return found != nullptr ? found : command->optionNamed(name);
    }

    const Command* command; // the innermost that was named
    Words arguments;
    const Command::Parameter* option = nullptr; // whose value comes next

private:
    void add(const Command& program, const std::string& word)
    {
        if (option != nullptr) {
            std::visit(Note{word}, std::exchange(option, nullptr)->target);
        } else if (word.starts_with("--")) {
            const auto equals = word.find('=');
            const Command::Parameter* const named = find(program, word.substr(0, equals));
            if (named != nullptr && named->takesValue() && equals == std::string::npos)
                option = named;
            else if (named != nullptr)
                std::visit(Note{equals == std::string::npos ? "" : word.substr(equals + 1)}, named->target);
        } else if (const Command* const inner = command->find(word); arguments.empty() && inner != nullptr) {
            command = inner;
        } else {
            arguments.push_back(word);
        }
    }
};

// What can stand behind the command and its first arguments, as far as it can be listed.
Words wordsBehind(const Typed& typed, const ConsoleOf& console)
{
    Words words;
    std::ranges::transform(typed.command->commands(), std::back_inserter(words), &Command::name);
    if (!words.empty())
        return words;
    std::size_t place = 0;
    for (const auto& parameter : typed.command->parameters())
        if (!parameter.isOption() && place++ == typed.arguments.size())
            return choicesOf(parameter, typed.arguments, console);
    return {};
}

} // namespace

Words completions(const Command& program, const Words& words, const ConsoleOf& console)
{
    const Typed typed(program, words);
    std::string begun = words.empty() ? "" : words.back();
    std::string before; // of the last word what is no part of the words to offer
    const Command::Parameter* option = typed.option;
    if (const auto equals = begun.find('=');
        option == nullptr && begun.starts_with("--") && equals != std::string::npos) {
        option = typed.find(program, begun.substr(0, equals));
        if (option == nullptr)
            return {};
        before = begun.substr(0, equals + 1);
        begun.erase(0, before.size());
    }

    Words fitting;
    if (option != nullptr) {
        fitting = choicesOf(*option, typed.arguments, console);
    } else if (begun.starts_with("-")) {
        fitting = program.optionNames();
        std::ranges::copy(typed.command->optionNames(), std::back_inserter(fitting));
    } else {
        fitting = wordsBehind(typed, console);
    }
    std::erase_if(fitting, [&](const std::string& word) { return word != localFiles && !word.starts_with(begun); });
    std::ranges::sort(fitting);
    fitting.erase(std::ranges::unique(fitting).begin(), fitting.end());
    for (std::string& word : fitting)
        if (word != localFiles)
            word.insert(0, before);
    return fitting;
}

} // namespace tov::console
