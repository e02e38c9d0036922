// The words of a shell's line: what is written as one word each is read as these words again.

#include "console/terminal/shellwords.h"
#include "fuzzer.h"
#include "readers/check.h"
#include "tools/errors.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tov::testing {

namespace {

// The words of `line`, or none when it is refused.
std::vector<std::string> wordsIfAny(const std::string& line)
{
    try {
        return console::wordsOf(line);
    } catch (const tools::BadUse& refused) {
        require(std::string_view(refused.what()).ends_with("is not closed"),
                "a line is refused for an open quote only");
        return {};
    }
}

} // namespace

} // namespace tov::testing

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace tov;
    using namespace tov::testing;
    const std::string line(reinterpret_cast<const char*>(data), size);
    const auto begun = console::wordsBegun(line);
    require(!begun.empty(), "a line that is being typed has a last word");
    const auto words = wordsIfAny(line);
    std::string again;
    for (const std::string& word : words)
        again += (again.empty() ? "" : " ") + console::asOneWord(word);
    if (isWritingDamaged() && words.size() == 3)
        again += "'";
    require(wordsIfAny(again) == words, "words that are written as one word each are read again");
    return 0;
}
