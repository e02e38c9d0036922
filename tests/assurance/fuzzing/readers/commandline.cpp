// The command line: it is understood or refused as bad use, and what can stand in the place of its last word begins
// with what is there.

#include "console/commandline/command.h"
#include "console/commands/commands.h"
#include "console/terminal/prompt.h"
#include "console/terminal/shellwords.h"
#include "fuzzer.h"
#include "readers/check.h"
#include "tools/errors.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace tov::testing {

namespace {

console::ConsoleSession& noInstrument()
{
    throw tools::Failure("there is no instrument");
}

void tryUnderstanding(const console::Command& program, const console::Words& words)
{
    try {
        require(bool(understand(program, words)), "what is understood can be done");
    } catch (const tools::BadUse& refused) {
        require(!std::string_view(refused.what()).empty(), "why a command line is refused is told");
    }
}

void tryCompletion(const console::Command& program, const console::Words& words)
{
    const std::string begun = isWritingDamaged() ? words.back() + "-" : words.back();
    for (const std::string& word : completions(program, words, noInstrument))
        require(word == console::localFiles || word.starts_with(begun), "what is offered begins with what was typed");
}

} // namespace

} // namespace tov::testing

// The first byte says whose command line it is, the others are the line.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace tov;
    using namespace tov::testing;
    if (size == 0)
        return -1;
    console::Options options;
    const auto commands = data[0] % 2 == 0 ? console::CommandSet::Program : console::CommandSet::Shell;
    const console::Command program = allCommands(commands, options);
    const auto words = console::wordsBegun(std::string(reinterpret_cast<const char*>(data) + 1, size - 1));
    tryUnderstanding(program, words);
    tryCompletion(program, words);
    return 0;
}
