#include "workbench/panels/filechoice.h"

#include <QFileDialog>

namespace tov::workbench {

namespace {

QFileDialog& open(QWidget& parent, const QString& title, const std::function<void(const QStringList&)>& chosen)
{
    auto* const dialog = new QFileDialog(&parent, title);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    QObject::connect(dialog, &QFileDialog::filesSelected, &parent, chosen);
    dialog->open(); // which returns at once
    return *dialog;
}

std::function<void(const QStringList&)> first(const std::function<void(const QString&)>& chosen)
{
    return [chosen](const QStringList& files) { chosen(files.first()); };
}

} // namespace

void chooseFile(QWidget& parent, const QString& title, const QString& filter,
                const std::function<void(const QString&)>& chosen)
{
    QFileDialog& dialog = open(parent, title, first(chosen));
    dialog.setFileMode(QFileDialog::ExistingFile);
    dialog.setNameFilter(filter);
}

void chooseFiles(QWidget& parent, const QString& title, const std::function<void(const QStringList&)>& chosen)
{
    open(parent, title, chosen).setFileMode(QFileDialog::ExistingFiles);
}

void chooseTarget(QWidget& parent, const QString& title, const QString& name,
                  const std::function<void(const QString&)>& chosen)
{
    QFileDialog& dialog = open(parent, title, first(chosen));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.selectFile(name);
}

std::string localPath(const QString& path)
{
    return path.toStdString();
}

LocalTarget targetAt(const QString& path)
{
    return {.path = localPath(path), .force = true};
}

} // namespace tov::workbench
