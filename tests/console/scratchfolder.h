#pragma once

#include <gtest/gtest.h>

#include <QByteArray>
#include <QFile>
#include <QString>
#include <QTemporaryDir>

namespace tov::testing {

/// Tests with files in a folder of their own, one of which keeps an instrument.
class ScratchFolder : public ::testing::Test
{
protected:
    QTemporaryDir folder;
    const QString state = folder.filePath("state");

    QString write(const QString& name, const QByteArray& contents) const
    {
        QFile file(folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(contents);
        return file.fileName();
    }

    static QByteArray read(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("cannot be read");
    }
};

} // namespace tov::testing
