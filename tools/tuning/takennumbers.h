#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace tov::inline tools {

/// Which numbers a setting takes on an instrument.
class TakenNumbers
{
public:
    /// The whole numbers from `least` to `most`; none where that is less.
    static TakenNumbers range(double least, double most);

    /// The indices of a list of this size.
    static TakenNumbers indices(std::size_t size);

    template <typename Number>
    static TakenNumbers list(const std::vector<Number>& numbers)
    {
        return {false, {numbers.begin(), numbers.end()}};
    }

    bool contain(double number) const;

    /// Whether they are all the whole numbers between two.
    bool isRange() const { return m_isRange; }

    /// The numbers, of a range its two ends; empty when none is taken.
    const std::vector<double>& numbers() const { return m_numbers; }

    /// As a column of a table shows them: "0..63", or a list divided by blanks.
    std::string inColumn() const;

    /// As a message says what to use instead of another one.
    std::string inWords() const;

private:
    TakenNumbers(bool isRange, std::vector<double> numbers);

    bool m_isRange;
    std::vector<double> m_numbers; // of a range the two ends; empty when none is taken
};

} // namespace tov::inline tools
