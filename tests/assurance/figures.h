#pragma once

#include <fstream>
#include <iostream>
#include <string>
#include <utility>
#include <vector>

namespace tov::testing {

/// What a program of this folder found, in figures: shown to people, and written as one flat JSON object.
class Figures
{
public:
    void add(const std::string& name, long long value) { m_rows.emplace_back(name, std::to_string(value)); }

    void show() const
    {
        for (const auto& [name, value] : m_rows)
            std::cout << "  " << name << ": " << value << '\n';
    }

    /// False when the file cannot be written.
    bool write(const std::string& path) const
    {
        std::ofstream file(path);
        file << "{";
        for (std::size_t i = 0; i < m_rows.size(); ++i)
            file << (i > 0 ? "," : "") << "\n  \"" << m_rows[i].first << "\": " << m_rows[i].second;
        file << "\n}\n";
        file.close();
        return static_cast<bool>(file);
    }

private:
    std::vector<std::pair<std::string, std::string>> m_rows;
};

} // namespace tov::testing
