#pragma once

#include "tools/files/localfile.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <string>

class QWidget;

namespace tov::workbench {

/// A file dialog of `parent`, which it does not wait for: `chosen` is called when the user has chosen.
void chooseFile(QWidget& parent, const QString& title, const QString& filter,
                const std::function<void(const QString&)>& chosen);

/// The same for any number of files.
void chooseFiles(QWidget& parent, const QString& title, const std::function<void(const QStringList&)>& chosen);

/// The same for a file to be written, which the dialog suggests to call `name`; if it is there, the user has agreed
/// that it is replaced.
void chooseTarget(QWidget& parent, const QString& title, const QString& name,
                  const std::function<void(const QString&)>& chosen);

/// The path of a file as the readers and writers of files take it.
std::string localPath(const QString& path);

/// Where to write, after the user agreed to replace what is there.
LocalTarget targetAt(const QString& path);

} // namespace tov::workbench
