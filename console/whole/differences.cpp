#include "console/whole/differences.h"

#include "console/whole/document.h"

#include <algorithm>
#include <map>
#include <utility>

namespace tov::console {

namespace {

constexpr auto absent = "-";

/// The rows of a part by their paths.
class Rows
{
public:
    Rows(const Part& part, const QJsonArray& rows)
    {
        for (const auto& element : rows) {
            const QJsonObject row = element.toObject();
            std::string path = part.name;
            if (const std::string item = itemOf(part, row); !item.empty())
                path.append("/").append(item);
            else if (rows.size() > 1)
                path.append("/").append(std::to_string(m_paths.size() + 1));
            while (m_rows.contains(path)) // an instrument may have two of a name
                path += "'";
            m_paths.push_back(path);
            m_rows.emplace(path, row);
        }
    }

    const std::vector<std::string>& paths() const noexcept { return m_paths; }

    const QJsonObject* find(const std::string& path) const
    {
        const auto found = m_rows.find(path);
        return found == m_rows.end() ? nullptr : &found->second;
    }

private:
    std::vector<std::string> m_paths; // in the order of the rows
    std::map<std::string, QJsonObject> m_rows;
};

// All compared values of a row, or what is wrong with it.
std::string whole(const Part& part, const QJsonObject* row)
{
    if (row == nullptr)
        return absent;
    if (const std::string error = errorOf(*row); !error.empty())
        return error;
    std::string text;
    for (const std::string& column : part.compared)
        text.append(text.empty() ? "" : ", ").append(cell((*row)[QString::fromStdString(column)]));
    return text;
}

void compareRows(const Part& part, const std::string& path, const QJsonObject* a, const QJsonObject* b,
                 std::vector<Difference>& differences)
{
    if (a == nullptr || b == nullptr || !errorOf(*a).empty() || !errorOf(*b).empty()) {
        if (whole(part, a) != whole(part, b))
            differences.push_back({path, whole(part, a), whole(part, b)});
        return;
    }
    for (const std::string& column : part.compared) {
        const QString name = QString::fromStdString(column);
        std::string place = path;
        if (part.compared.size() > 1)
            place.append("/").append(column);
        if ((*a)[name] != (*b)[name])
            differences.push_back({std::move(place), cell((*a)[name]), cell((*b)[name])});
    }
}

std::string shortly(const QJsonValue& part)
{
    if (part.isUndefined())
        return absent;
    const std::string error = errorOf(part);
    return error.empty() ? "there" : error;
}

} // namespace

std::vector<Difference> differencesBetween(const QJsonObject& a, const QJsonObject& b)
{
    std::vector<Difference> differences;
    for (const Part& part : parts()) {
        if (part.compared.empty())
            continue;
        const QJsonValue partOfA = withoutContents(partOf(a, part));
        const QJsonValue partOfB = withoutContents(partOf(b, part));
        if (!partOfA.isArray() || !partOfB.isArray()) {
            if (partOfA != partOfB)
                differences.push_back({part.name, shortly(partOfA), shortly(partOfB)});
            continue;
        }
        const Rows rowsOfA(part, partOfA.toArray());
        const Rows rowsOfB(part, partOfB.toArray());
        for (const std::string& path : rowsOfA.paths())
            compareRows(part, path, rowsOfA.find(path), rowsOfB.find(path), differences);
        for (const std::string& path : rowsOfB.paths())
            if (rowsOfA.find(path) == nullptr)
                compareRows(part, path, nullptr, rowsOfB.find(path), differences);
    }
    return differences;
}

} // namespace tov::console
