#pragma once

#include "assurance/commandline.h"

#include <chrono>
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

    /// Adds the seconds since `begin`, shows all under `title`, and writes them where the command line says. Gives the
    /// program's status.
    int finish(const CommandLine& commandLine, std::chrono::steady_clock::time_point begin, const char* title,
               bool isWell)
    {
        using namespace std::chrono;

        add("seconds", duration_cast<seconds>(steady_clock::now() - begin).count());
        std::cout << title << ":\n";
        for (const auto& [name, value] : m_rows)
            std::cout << "  " << name << ": " << value << '\n';
        if (!commandLine.json.empty() && !write(commandLine.json)) {
            std::cerr << "cannot write " << commandLine.json << '\n';
            return 2;
        }
        return isWell ? 0 : 1;
    }

private:
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

    std::vector<std::pair<std::string, std::string>> m_rows;
};

} // namespace tov::testing
