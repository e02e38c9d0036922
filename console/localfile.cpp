#include "console/localfile.h"

#include "console/exitstatus.h"

#include <QFile>
#include <QSaveFile>

namespace tov::console {

QByteArray readLocalFile(const std::string& path)
{
    QFile file(QString::fromStdString(path));
    QByteArray contents;
    if (file.open(QIODevice::ReadOnly))
        contents = file.readAll();
    if (file.error() != QFileDevice::NoError)
        throw CommandError(ExitStatus::Failure, path + " cannot be read: " + file.errorString().toStdString());
    return contents;
}

void writeLocalFile(const std::string& path, const QByteArray& contents)
{
    QSaveFile file(QString::fromStdString(path));
    if (!file.open(QIODevice::WriteOnly) || file.write(contents) != contents.size() || !file.commit())
        throw CommandError(ExitStatus::Failure, path + " cannot be written: " + file.errorString().toStdString());
}

} // namespace tov::console
