#include "console/files/localfile.h"

#include "console/errors.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace tov::console {

QByteArray readLocalFile(const std::string& path, qint64 most)
{
    QFile file(QString::fromStdString(path));
    QByteArray contents;
    if (file.open(QIODevice::ReadOnly))
        contents = file.read(most + 1);
    if (file.error() != QFileDevice::NoError)
        throw Failure(path + " cannot be read: " + file.errorString().toStdString());
    if (contents.size() > most)
        throw Failure(path + " has more than the " + std::to_string(most) + " bytes that fit");
    return contents;
}

void writeLocalFile(const std::string& path, const QByteArray& contents)
{
    const auto failure = [&](const QFileDevice& file) {
        return Failure(path + " cannot be written: " + file.errorString().toStdString());
    };
    const QString name = QString::fromStdString(path);

    // A pipe or a device is written to; a file is replaced.
    if (const QFileInfo info(name); info.exists() && !info.isFile()) {
        QFile file(name);
        if (!file.open(QIODevice::WriteOnly) || file.write(contents) != contents.size() || !file.flush())
            throw failure(file);
        return;
    }
    QSaveFile file(name);
    if (!file.open(QIODevice::WriteOnly) || file.write(contents) != contents.size() || !file.commit())
        throw failure(file);
}

} // namespace tov::console
