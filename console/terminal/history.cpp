#include "console/terminal/history.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QSaveFile>

#include <algorithm>
#include <utility>

namespace tov::console {

namespace {

constexpr qsizetype most = 1000; // lines; the file may grow to twice as many
constexpr qint64 mostBytes = 1 << 20;
constexpr auto own = QFileDevice::ReadOwner | QFileDevice::WriteOwner;

/// Keeps others away from the file.
class Locked
{
public:
    explicit Locked(const QString& file)
        : m_lock(file + ".lock")
        , m_held(m_lock.tryLock(1000))
    {
    }
    explicit operator bool() const { return m_held; }

private:
    QLockFile m_lock;
    const bool m_held;
};

} // namespace

History::History(QString file)
    : m_file(std::move(file))
{
}

std::vector<std::string> History::lines() const
{
    if (!QFileInfo(m_file).isFile())
        return {};
    const Locked locked(m_file);
    QFile file(m_file);
    if (!locked || !file.open(QIODevice::ReadOnly))
        return {};
    file.seek(std::max<qint64>(0, file.size() - mostBytes));
    QByteArrayList lines = file.readAll().split('\n');
    lines.removeLast(); // behind the last end of a line
    const bool isLong = lines.size() > 2 * most || file.size() > mostBytes;
    lines = lines.mid(std::max<qsizetype>(0, lines.size() - most));
    if (isLong) {
        file.close(); // some systems replace no file that is open
        QSaveFile shorter(m_file);
        if (shorter.open(QIODevice::WriteOnly) && shorter.setPermissions(own)) {
            shorter.write(lines.join('\n') + '\n');
            shorter.commit();
        }
    }
    return {lines.begin(), lines.end()};
}

void History::add(const std::string& line) const
{
    const QFileInfo info(m_file);
    if (line.empty() || line.starts_with(' ') || (info.exists() && !info.isFile()))
        return;
    // Made one by one, because folders of the user's state may be others' to read, but not this one.
    const QDir folder = info.dir();
    if (!folder.exists()
        && (!QDir().mkpath(folder.path()) || !QFile::setPermissions(folder.path(), own | QFileDevice::ExeOwner)))
        return;
    const Locked locked(m_file);
    QFile file(m_file);
    if (locked && file.open(QIODevice::WriteOnly | QIODevice::Append, own))
        file.write(QByteArray::fromStdString(line) + '\n');
}

QString History::usualFile()
{
    const QString given = qEnvironmentVariable("XDG_STATE_HOME");
    const QString folder = QDir::isAbsolutePath(given) ? given : QDir::homePath() + "/.local/state";
    return folder + "/service-console/history";
}

} // namespace tov::console
