#pragma once

#include "tools/errors.h"
#include "tools/files/localfile.h"
#include "tools/text/number.h"

#include <QByteArray>

#include <cmath>
#include <concepts>
#include <string>
#include <string_view>
#include <vector>

namespace tov::inline tools {

/// A field of a file of comma-separated values, which knows where it stands.
struct CsvField
{
    std::string text;
    std::string at; // "points.csv, line 3, column 7"

    /// The number that the field holds. Throws `Failure`, which says where it is.
    template <typename Number>
    Number number() const;
};

/// Fails because of what stands in `field`: what was expected instead.
[[noreturn]] void failAt(const CsvField& field, const std::string& expected);

/// Fails because the file at `path` ends too early.
[[noreturn]] void failAtEnd(const std::string& path, const std::string& expected);

/// A line of such a file.
using CsvRow = std::vector<CsvField>;

/// The lines of a file of this computer. Fields are separated by commas and never quoted, blanks around them do not
/// count; empty lines and those that begin with # are left out. Throws `Failure` when it cannot be read.
std::vector<CsvRow> readCsvFile(const std::string& path);

/// Takes the heading off the front of `rows`. Throws `Failure` unless its fields are `headings`.
void takeHeading(std::vector<CsvRow>& rows, const std::string& path, const std::vector<std::string>& headings);

/// Throws `Failure` unless `row` has `count` fields.
void expectFields(const CsvRow& row, std::size_t count);

/// Writes lines of fields that need no quotes. Throws `Failure`.
void writeCsvFile(const LocalTarget& target, const std::vector<std::vector<std::string>>& rows);

template <typename Number>
Number CsvField::number() const
{
    if constexpr (std::integral<Number>) {
        if (const auto parsed = parseNumber<Number>(text))
            return *parsed;
        failAt(*this, "a whole number that fits");
    } else {
        if (const auto parsed = parseReal<Number>(text); parsed && std::isfinite(*parsed))
            return *parsed;
        failAt(*this, "a number that fits");
    }
}

} // namespace tov::inline tools
