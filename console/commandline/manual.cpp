#include "console/commandline/manual.h"

#include "tools/files/localfile.h"

#include <QByteArray>

#include <algorithm>
#include <cctype>
#include <sstream>
#include <string_view>

namespace tov::console {

namespace {

// Text in which nothing is taken for a request, nor a hyphen for the end of a line.
std::string plain(std::string_view text)
{
    std::string written;
    bool lineBegins = true;
    for (const char character : text) {
        if (lineBegins && (character == '.' || character == '\''))
            written += "\\&";
        if (character == '\\')
            written += "\\e";
        else if (character == '-')
            written += "\\-";
        else
            written += character;
        lineBegins = character == '\n';
    }
    return written;
}

std::string bold(std::string_view text)
{
    return "\\fB" + plain(text) + "\\fR";
}

std::string italic(std::string_view text)
{
    return text.empty() ? "" : "\\fI" + plain(text) + "\\fR";
}

// A paragraph under `heading`.
std::string tagged(const std::string& heading, const std::string& text)
{
    return ".TP\n" + heading + "\n" + text + "\n";
}

std::string verbatim(const std::string& lines)
{
    if (lines.empty())
        return {};
    return ".PP\n.nf\n" + plain(lines.substr(0, lines.find_last_not_of('\n') + 1)) + "\n.fi\n";
}

std::string sentence(std::string help)
{
    help.front() = static_cast<char>(std::toupper(static_cast<unsigned char>(help.front())));
    return plain(help) + (help.ends_with('.') ? "" : ".");
}

std::string described(const Command::Parameter& parameter)
{
    const bool isVersion = std::holds_alternative<Command::Version>(parameter.target);
    const std::string help = isVersion ? "Show the version" : parameter.help;
    std::string heading = parameter.isOption() ? bold(parameter.name) : "";
    if (parameter.isOption() && !parameter.type.empty())
        heading.append(" ");
    heading.append(italic(parameter.isOption() || !parameter.type.empty() ? parameter.type : parameter.name));
    return tagged(heading, sentence(help));
}

std::string optionsOf(const Command& command)
{
    std::string lines;
    for (const Command::Parameter& parameter : command.parameters())
        if (parameter.isOption())
            lines += described(parameter);
    for (const Command::OneOf& group : command.groups())
        for (const Command::Parameter& option : group.options)
            lines += described(option);
    return lines;
}

std::string argumentsOf(const Command& command)
{
    std::string lines;
    for (const Command::Parameter& parameter : command.parameters())
        if (!parameter.isOption())
            lines += described(parameter);
    return lines;
}

// The name in bold and what stands behind it in italics.
std::string synopsisOf(const Command& command)
{
    const std::string line = command.synopsis();
    std::string shown = bold(command.name());
    if (line != command.name())
        shown.append(" ").append(italic(line.substr(command.name().size() + 1)));
    return shown;
}

std::string pageOf(const Command& command)
{
    return "service-console-" + command.name();
}

std::string exitStatuses()
{
    std::string lines;
    for (const auto& [status, meaning] : exitStatusMeanings)
        lines += tagged(bold(std::to_string(static_cast<int>(status))), sentence(std::string(meaning)));
    return lines;
}

std::vector<std::string> linesOf(const std::string& text)
{
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

// Those of the examples that call the command.
std::string examplesOf(const Command& program, const Command& command, const std::string& prose)
{
    std::string examples;
    bool inExamples = false;
    for (const std::string& line : linesOf(prose)) {
        if (line.starts_with(".SH"))
            inExamples = line == ".SH EXAMPLES";
        std::istringstream words(line);
        const Command* called = nullptr;
        for (std::string word; called == nullptr && words >> word;)
            called = program.find(QByteArray::fromStdString(word).replace("\\-", "-").toStdString());
        if (inExamples && called == &command)
            examples += line + "\n";
    }
    return examples.empty() ? "" : ".SH EXAMPLES\n.nf\n" + examples + ".fi\n";
}

std::string page(const Command& program, const Command& command, const std::string& prose)
{
    const std::string name = pageOf(command);
    std::string title = name;
    std::ranges::transform(title, title.begin(), [](unsigned char letter) { return std::toupper(letter); });
    std::string help = command.help();
    help.front() = static_cast<char>(std::tolower(static_cast<unsigned char>(help.front())));

    const std::string options = optionsOf(command);
    const std::string begin = ".B service\\-console\n[\\fIOPTION\\fR]... ";
    const std::string inFront = bold(command.name()) + " ";
    std::string synopses;
    std::string inner;
    for (const auto& each : command.commands()) {
        synopses.append(synopses.empty() ? "" : ".br\n").append(begin + inFront + synopsisOf(*each) + "\n");
        inner += tagged(inFront + synopsisOf(*each), sentence(each->help()));
        const std::string taken = argumentsOf(*each) + optionsOf(*each);
        inner += (taken.empty() ? "" : ".RS\n" + taken + ".RE\n") + verbatim(each->footer());
    }
    if (synopses.empty())
        synopses = begin + synopsisOf(command) + "\n";
    return ".TH " + plain(title) + " 1 \"\" \"DevicesService\" \"User commands\"\n.SH NAME\n" + plain(name) + " \\- "
           + plain(help) + "\n.SH SYNOPSIS\n" + synopses + ".SH DESCRIPTION\n" + sentence(command.help()) + "\n"
           + argumentsOf(command) + verbatim(command.footer()) + (inner.empty() ? "" : ".SH COMMANDS\n" + inner)
           + ".SH OPTIONS\n" + (options.empty() ? "" : options + ".PP\n")
           + "The options of\n.BR service\\-console (1)\nmay stand anywhere on the line.\n.SH EXIT STATUS\n"
           + exitStatuses() + examplesOf(program, command, prose) + ".SH SEE ALSO\n.BR service\\-console (1)\n";
}

// What stands in the place of a line of the prose.
std::string facts(const Command& program, const std::string& line)
{
    std::string lines;
    if (line == ".\\\" the options") {
        lines = optionsOf(program) + tagged(bold("--help"), "Show help, at every level.");
    } else if (line == ".\\\" the commands") {
        for (const auto& command : program.commands())
            lines += tagged(synopsisOf(*command), sentence(command->help()));
    } else if (line == ".\\\" the exit statuses") {
        lines = exitStatuses();
    } else if (line == ".\\\" the pages") {
        for (const auto& command : program.commands())
            lines.append(lines.empty() ? "" : ",\n").append(".BR " + plain(pageOf(*command)) + " (1)");
        lines += "\n";
    } else {
        lines = line + "\n";
    }
    return lines;
}

} // namespace

void writeManual(const Command& program, const std::string& folder, const std::string& prose)
{
    const std::string text = readLocalFile(prose).toStdString();
    const auto write = [&](const std::string& name, const std::string& contents) {
        writeLocalFile({folder + "/" + name + ".1", true}, QByteArray::fromStdString(contents));
    };
    std::string whole;
    for (const std::string& line : linesOf(text))
        whole += facts(program, line);
    write(program.name(), whole);
    for (const auto& command : program.commands())
        write(pageOf(*command), page(program, *command, text));
}

} // namespace tov::console
