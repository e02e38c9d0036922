#include "workbench/panels/filechoice.h"

#include <QFileDialog>

namespace tov::workbench {

namespace {

QFileDialog& make(QWidget& parent, const QString& title, const std::function<void(const QStringList&)>& chosen)
{
    auto* const dialog = new QFileDialog(&parent, title);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    QObject::connect(dialog, &QFileDialog::filesSelected, &parent, chosen);
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
    QFileDialog& dialog = make(parent, title, first(chosen));
    dialog.setFileMode(QFileDialog::ExistingFile);
    dialog.setNameFilter(filter);
    dialog.open(); // which returns at once
}

void chooseFiles(QWidget& parent, const QString& title, const std::function<void(const QStringList&)>& chosen)
{
    QFileDialog& dialog = make(parent, title, chosen);
    dialog.setFileMode(QFileDialog::ExistingFiles);
    dialog.open();
}

void chooseTarget(QWidget& parent, const QString& title, const QString& name,
                  const std::function<void(const QString&)>& chosen)
{
    QFileDialog& dialog = make(parent, title, first(chosen));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.selectFile(name);
    dialog.open();
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
