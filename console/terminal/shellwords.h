#pragma once

#include <string>
#include <vector>

namespace tov::console {

/// The words of `line`, divided by blanks, with quotes and backslashes as in a POSIX shell; from a word on that begins
/// with #, the line is a comment. Throws `BadUse` when a quote is not closed.
std::vector<std::string> wordsOf(const std::string& line);

/// The same of a line that is being typed: its last word is the one that goes on, empty behind a blank.
std::vector<std::string> wordsBegun(const std::string& line);

/// `word` so that `wordsOf()` takes it for one word.
std::string asOneWord(const std::string& word);

} // namespace tov::console
