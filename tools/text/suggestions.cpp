#include "tools/text/suggestions.h"

#include <QString>

#include <algorithm>
#include <cstddef>
#include <utility>

namespace tov::inline tools {

namespace {

// How many letters are left out, put in, replaced or swapped with their neighbour.
qsizetype distance(const QString& one, const QString& other)
{
    const auto rowOf = [&](qsizetype first) {
        return std::vector<qsizetype>(static_cast<std::size_t>(other.size()) + 1, first);
    };
    std::vector<qsizetype> beforeLast = rowOf(0);
    std::vector<qsizetype> last = rowOf(0);
    for (std::size_t j = 0; j < last.size(); ++j)
        last[j] = static_cast<qsizetype>(j);
    for (qsizetype i = 1; i <= one.size(); ++i) {
        std::vector<qsizetype> row = rowOf(i);
        for (std::size_t j = 1; j < row.size(); ++j) {
            const QChar letter = other[static_cast<qsizetype>(j) - 1];
            row[j] = std::min({last[j] + 1, row[j - 1] + 1, last[j - 1] + (one[i - 1] == letter ? 0 : 1)});
            if (i > 1 && j > 1 && one[i - 2] == letter && one[i - 1] == other[static_cast<qsizetype>(j) - 2])
                row[j] = std::min(row[j], beforeLast[j - 2] + 1);
        }
        beforeLast = std::exchange(last, std::move(row));
    }
    return last.back();
}

} // namespace

std::string quoted(const std::string& typed)
{
    constexpr qsizetype longest = 60;
    QString shown = QString::fromStdString(typed);
    if (shown.size() > longest)
        shown = shown.left(longest - 1) + QChar(0x2026);
    return shown.prepend(u'\'').append(u'\'').toStdString();
}

std::string closest(const std::string& typed, const std::vector<std::string>& known)
{
    const QString wanted = QString::fromStdString(typed).left(100).toLower();
    qsizetype least = wanted.size() / 3 + 1; // about a third may be wrong
    std::string found;
    for (const std::string& name : known)
        if (const qsizetype distant = distance(wanted, QString::fromStdString(name)); distant < least) {
            least = distant;
            found = name;
        }
    return found;
}

BadUse unknown(const std::string& what, const std::string& typed, const std::vector<std::string>& known,
               const std::string& where)
{
    std::string choice;
    if (const std::string meant = closest(typed, known); !meant.empty())
        choice = "; did you mean '" + meant + "'?";
    else
        for (const std::string& name : known)
            choice.append(choice.empty() ? "; there are " : ", ").append(name);
    BadUse error(what + " " + quoted(typed) + where + choice);
    return error;
}

} // namespace tov::inline tools
