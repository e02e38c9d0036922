#include "tools/tuning/takennumbers.h"

#include "tools/text/values.h"

#include <algorithm>
#include <utility>

namespace tov::inline tools {

TakenNumbers::TakenNumbers(bool isRange, std::vector<double> numbers)
    : m_isRange(isRange)
    , m_numbers(std::move(numbers))
{
}

TakenNumbers TakenNumbers::range(double least, double most)
{
    return {true, least <= most ? std::vector{least, most} : std::vector<double>()};
}

TakenNumbers TakenNumbers::indices(std::size_t size)
{
    return range(0, static_cast<double>(size) - 1);
}

bool TakenNumbers::contain(double number) const
{
    if (m_isRange)
        return !m_numbers.empty() && number >= m_numbers.front() && number <= m_numbers.back();
    return std::ranges::find(m_numbers, number) != m_numbers.end();
}

std::string TakenNumbers::inColumn() const
{
    const char* const between = m_isRange ? ".." : " ";
    std::string column;
    for (const double number : m_numbers)
        column.append(column.empty() ? "" : between).append(toText(number));
    return column.empty() ? "none" : column;
}

std::string TakenNumbers::inWords() const
{
    if (m_numbers.empty())
        return "another instrument, as this one takes none";
    if (m_isRange)
        return "a whole number from " + toText(m_numbers.front()) + " to " + toText(m_numbers.back());
    std::string words;
    for (const double number : m_numbers)
        words.append(words.empty() ? "one of " : ", ").append(toText(number));
    return words;
}

} // namespace tov::inline tools
