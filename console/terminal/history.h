#pragma once

#include <QString>

#include <string>
#include <vector>

namespace tov::console {

/// The lines that a user typed, in a file that only the user can read. Several programs may use it at once. A file that
/// cannot be used is as none.
class History
{
public:
    /// `file` need not be there.
    explicit History(QString file);

    /// The last lines, the newest at the end.
    std::vector<std::string> lines() const;

    /// Appends a line; one that begins with a blank is not kept.
    void add(const std::string& line) const;

    /// In the user's folder for state.
    static QString usualFile();

private:
    const QString m_file;
};

} // namespace tov::console
