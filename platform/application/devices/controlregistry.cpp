#include "devices/controlregistry.h"

#include <algorithm>
#include <iomanip>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>

namespace tov::devices {

namespace {

std::string describe(std::uint64_t key)
{
    std::ostringstream text;
    text << "control key 0x" << std::uppercase << std::hex << std::setfill('0') << std::setw(16) << key;
    return text.str();
}

auto find(const std::vector<ControlRegistry::ControlEntryBase>& entries, std::uint64_t key)
{
    return std::ranges::find(entries, key, &ControlRegistry::ControlEntryBase::key);
}

} // namespace

void ControlRegistry::addEntry(const ControlEntryBase& entry)
{
    if (find(m_entries, entry.key) != m_entries.end())
        throw std::invalid_argument(describe(entry.key) + " is already registered");
    m_entries.push_back(entry);
}

std::any ControlRegistry::create(std::uint64_t key, std::any owner) const
{
    const auto entry = find(m_entries, key);
    if (entry == m_entries.end())
        throw std::out_of_range(describe(key) + " is not registered");
    return entry->create(std::move(owner));
}

} // namespace tov::devices
