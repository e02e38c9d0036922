#include "console/whole/changes.h"

#include <QJsonDocument>

#include <algorithm>
#include <map>
#include <utility>

namespace tov::console {

namespace {

QJsonValue at(const QJsonObject& row, const std::string& column)
{
    return row[QString::fromStdString(column)];
}

QJsonObject rowWithKeysOf(const Part& part, const QJsonArray& rows, const QJsonObject& wanted)
{
    for (const auto& element : rows) {
        const QJsonObject row = element.toObject();
        if (std::ranges::all_of(part.keys, [&](const std::string& key) { return at(row, key) == at(wanted, key); }))
            return row;
    }
    return {};
}

// Of two rows for the same place only one could be restored.
void requireDifferentKeys(const Part& part, const QJsonArray& rows, const std::string& place)
{
    std::map<std::string, qsizetype> first;
    for (qsizetype i = 0; i < rows.size() && !part.keys.empty(); ++i) {
        QJsonArray keys; // as JSON, where no two become the same text
        for (const std::string& key : part.keys)
            keys.append(at(rows[i].toObject(), key));
        const std::string item = QJsonDocument(keys).toJson().toStdString();
        if (const auto [found, isNew] = first.try_emplace(item, i); !isNew)
            throw Failure(place + "[" + std::to_string(i) + "]: expected another row than ["
                          + std::to_string(found->second) + "], which has the same keys");
    }
}

bool areRestored(const Part& part, const QJsonObject& now, const QJsonObject& saved)
{
    return std::ranges::all_of(part.restored,
                               [&](const std::string& column) { return at(now, column) == at(saved, column); });
}

std::string shownColumns(const Part& part, const QJsonObject& row)
{
    std::string text;
    for (const std::string& column : part.restored)
        text.append(text.empty() ? "" : " ").append(cell(at(row, column)));
    return row.isEmpty() ? "-" : text;
}

Change changeOf(const Part& part, const SavedRow& saved, const QJsonObject& now)
{
    Restoring restoring = part.restore(saved, now);
    if (const std::string error = errorOf(now); !error.empty())
        restoring.refusal = error;
    return {.part = part.name,
            .item = itemOf(part, saved.row()),
            .was = shownColumns(part, now),
            .becomes = shownColumns(part, saved.row()),
            .refusal = std::move(restoring.refusal),
            .make = std::move(restoring.act)};
}

Change removalOf(const Part& part, const QJsonObject& now)
{
    return {.part = part.name,
            .item = itemOf(part, now),
            .was = shownColumns(part, now),
            .becomes = "-",
            .refusal = {},
            .make = [&part, now](host::InstrumentSession& session) { part.remove(session, now); }};
}

bool areTheSame(const std::vector<Change>& some, const std::vector<Change>& others)
{
    return std::ranges::equal(some, others, &Change::isTheSameAs);
}

const Change* findItem(const std::vector<Change>& changes, const std::string& item)
{
    const auto found = std::ranges::find(changes, item, &Change::item);
    return found == changes.end() ? nullptr : &*found;
}

} // namespace

std::vector<Change> changesTo(host::InstrumentSession& session, const Part& part, const QJsonValue& saved,
                              const std::string& place)
{
    const QJsonArray savedRows = saved.toArray();
    requireDifferentKeys(part, savedRows, place);
    const QJsonValue read = readPart(session, part);
    const QJsonArray rows = read.toArray();

    std::vector<Change> changes;
    if (part.remove && saved.isArray()) // first, which makes room; not when nothing was saved
        for (const auto& element : rows)
            if (const QJsonObject now = element.toObject(); rowWithKeysOf(part, savedRows, now).isEmpty())
                changes.push_back(removalOf(part, now));
    for (qsizetype i = 0; i < savedRows.size(); ++i) {
        const QJsonObject row = savedRows[i].toObject();
        if (!errorOf(row).empty())
            continue;
        const QJsonObject now = rowWithKeysOf(part, rows, row);
        Change change = changeOf(part, SavedRow(row, place + "[" + std::to_string(i) + "]"), now);
        if (areRestored(part, now, row))
            continue;
        if (const std::string error = errorOf(read); !error.empty())
            change.refusal = error;
        changes.push_back(std::move(change));
    }
    return changes;
}

std::vector<TriedChange> restorePart(host::InstrumentSession& session, const Part& part, const QJsonValue& saved,
                                     const std::string& place, const std::vector<Change>& planned)
{
    constexpr int mostRounds = 20; // more than settings depend on one another; some may never come to rest
    std::map<std::string, std::string> errors;
    std::vector<Change> left = planned;
    for (int round = 0; round < mostRounds && !left.empty(); ++round) {
        for (const Change& change : left) {
            errors[change.item] = change.refusal;
            if (!change.refusal.empty())
                continue;
            try {
                change.make(session);
            } catch (const std::exception& error) {
                errors[change.item] = error.what();
            }
        }
        std::vector<Change> next = changesTo(session, part, saved, place);
        const bool helped = !areTheSame(next, left);
        left = std::move(next);
        if (!helped)
            break;
    }

    std::vector<TriedChange> tried;
    for (const Change& change : planned) {
        const Change* const still = findItem(left, change.item);
        std::string error = still == nullptr ? "" : errors[change.item];
        if (still != nullptr && error.empty())
            error = "the instrument holds " + still->was;
        tried.push_back({change, std::move(error)});
    }
    for (const Change& change : left) // that another change has brought about
        if (findItem(planned, change.item) == nullptr)
            tried.push_back({change, "the instrument holds " + change.was});
    return tried;
}

} // namespace tov::console
