#include "workbench/panels/filespage.h"

#include "tools/files/localfile.h"
#include "workbench/panels/controlsection.h"
#include "workbench/panels/filechoice.h"
#include "workbench/panels/tables.h"

#include <QDragEnterEvent>
#include <QFileInfo>
#include <QItemSelectionModel>
#include <QLabel>
#include <QLocale>
#include <QMimeData>
#include <QProgressBar>
#include <QPushButton>
#include <QShortcut>
#include <QTableView>
#include <QUrl>
#include <QVBoxLayout>

#include <algorithm>
#include <limits>

namespace tov::workbench {

using devices::service::IFileMemoryControl;
namespace controls = host::controls;

namespace {

QStringList localFilesOf(const QMimeData& data)
{
    QStringList paths;
    for (const QUrl& url : data.urls())
        if (url.isLocalFile())
            paths.append(url.toLocalFile());
    return paths;
}

QString nameOnInstrument(const QString& path)
{
    return QFileInfo(path).fileName();
}

QString sizeOf(std::uint64_t bytes)
{
    constexpr auto most = static_cast<std::uint64_t>(std::numeric_limits<qint64>::max());
    return QLocale().formattedDataSize(static_cast<qint64>(std::min(bytes, most)));
}

QString quoted(const QStringList& names)
{
    return QStringLiteral("“%1”").arg(names.join(QStringLiteral("”, “")));
}

} // namespace

FilesPage::FilesPage(Panel& panel)
    : Page(panel)
    , m_rows({tr("Name"), tr("Bytes"), tr("Second word")})
    , m_room(new QLabel(this))
    , m_used(new QProgressBar(this))
    , m_storing(new QProgressBar(this))
{
    auto* const section = new ControlSection(instrument(), controls::fileMemory, {}, this);
    QVBoxLayout& layout = section->contents();
    contents().addWidget(section);
    m_table = makeTable(m_rows, QStringLiteral("files"), tr("Files of the instrument"), section, {48});
    m_table->setSelectionMode(QAbstractItemView::ExtendedSelection);
    layout.addWidget(m_table, 1);

    auto* const room = new QHBoxLayout;
    m_room->setObjectName(QStringLiteral("room"));
    m_used->setAccessibleName(tr("How much of the room is used"));
    m_used->setMaximumWidth(fontMetrics().averageCharWidth() * 40);
    m_storing->setObjectName(QStringLiteral("storing"));
    m_storing->setFormat(tr("%v of %m files"));
    m_storing->setAccessibleName(tr("How many files are stored"));
    m_storing->hide();
    room->addWidget(m_used, 1);
    room->addWidget(m_room);
    room->addStretch(1);
    room->addWidget(m_storing, 1);
    layout.addLayout(room);
    addButtons(layout);

    setAcceptDrops(true);
    connect(m_table->selectionModel(), &QItemSelectionModel::selectionChanged, this, &FilesPage::enableButtons);
    auto* const deletes = new QShortcut(QKeySequence::Delete, m_table);
    deletes->setContext(Qt::WidgetShortcut);
    connect(deletes, &QShortcut::activated, this, &FilesPage::askToDelete);
    enableButtons();
}

void FilesPage::refresh()
{
    if (!instrument().isPresent(controls::fileMemory))
        return;
    panel().ask(
        controls::fileMemory, tr("list the files"), [](IFileMemoryControl& files) { return files.fileList(); },
        [this](const std::expected<QList<FileInfo>, QString>& files) { show(*files); });
    panel().ask(
        controls::fileMemory, tr("read how much room there is"),
        [](IFileMemoryControl& files) { return files.spaceInfo(); },
        [this](const std::expected<SpaceInfo, QString>& space) { show(*space); });
}

void FilesPage::addFiles(const QStringList& paths)
{
    panel().clearFault();
    panel().ask(
        controls::fileMemory, tr("list the files"), [](IFileMemoryControl& files) { return files.fileList(); },
        [this, paths](const std::expected<QList<FileInfo>, QString>& files) {
            show(*files);
            storeUnlessReplacing(paths);
        });
}

void FilesPage::dragEnterEvent(QDragEnterEvent* event)
{
    if (instrument().isPresent(controls::fileMemory) && !localFilesOf(*event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void FilesPage::dropEvent(QDropEvent* event)
{
    addFiles(localFilesOf(*event->mimeData()));
    event->acceptProposedAction();
}

void FilesPage::addButtons(QVBoxLayout& layout)
{
    auto* const buttons = new QHBoxLayout;
    auto* const hint = new QLabel(tr("Files can be dropped here."), this);
    hint->setForegroundRole(QPalette::PlaceholderText);
    buttons->addWidget(hint);
    buttons->addStretch();
    const auto add = [&](const char* name, const QString& label) {
        auto* const button = new QPushButton(label, this);
        button->setObjectName(QString::fromLatin1(name));
        buttons->addWidget(button);
        return button;
    };
    connect(add("add-files", tr("&Add…")), &QPushButton::clicked, this, [this] {
        chooseFiles(*this, tr("Files to be stored in the instrument"),
                    [this](const QStringList& paths) { addFiles(paths); });
    });
    m_get = add("get-file", tr("Copy to a &file…"));
    connect(m_get, &QPushButton::clicked, this, [this] {
        const FileInfo file = chosenFiles().first();
        chooseTarget(*this, tr("Where to copy the file"), nameOnInstrument(file.name),
                     [this, file](const QString& path) { get(file, path); });
    });
    m_delete = add("delete-files", tr("Delete…"));
    connect(m_delete, &QPushButton::clicked, this, &FilesPage::askToDelete);
    layout.addLayout(buttons);
}

QList<FilesPage::FileInfo> FilesPage::chosenFiles() const
{
    QList<FileInfo> files;
    for (const QModelIndex& row : m_table->selectionModel()->selectedRows())
        files.append(m_files.at(row.row()));
    return files;
}

void FilesPage::enableButtons()
{
    const auto chosen = chosenFiles().size();
    m_get->setEnabled(chosen == 1);
    m_delete->setEnabled(chosen > 0);
}

void FilesPage::show(const QList<FileInfo>& files)
{
    m_files = files;
    RowsModel::Rows rows;
    rows.reserve(static_cast<std::size_t>(files.size()));
    for (const FileInfo& file : files)
        rows.push_back({file.name, file.word1, file.word2});
    m_rows.setRows(std::move(rows));
    enableButtons();
}

void FilesPage::show(const SpaceInfo& space)
{
    m_space = space;
    constexpr int whole = 1000;
    const double share = space.value1 > 0 ? static_cast<double>(space.value2) / static_cast<double>(space.value1) : 0.0;
    m_used->setRange(0, whole);
    m_used->setValue(static_cast<int>(std::clamp(share, 0.0, 1.0) * whole));
    m_room->setText(tr("%1 of %2 used, %3 free").arg(sizeOf(space.value2), sizeOf(space.value1), sizeOf(space.value3)));
}

void FilesPage::storeUnlessReplacing(const QStringList& paths)
{
    QStringList names;
    QStringList replaced;
    QStringList alike;
    for (const QString& path : paths) {
        const QString name = nameOnInstrument(path);
        if (names.contains(name))
            alike.append(name);
        else if (std::ranges::find(m_files, name, &FileInfo::name) != m_files.end())
            replaced.append(name);
        names.append(name);
    }
    alike.removeDuplicates();
    QStringList sentences;
    if (!replaced.isEmpty())
        sentences.append(tr("The instrument has %1 already.").arg(quoted(replaced)));
    if (!alike.isEmpty())
        sentences.append(tr("Several of the files are called %1, of which the last one stays.").arg(quoted(alike)));
    if (sentences.isEmpty())
        store(paths);
    else
        confirm(tr("%1 Replace?").arg(sentences.join(' ')), tr("&Yes, replace"), [this, paths] { store(paths); });
}

void FilesPage::store(const QStringList& paths)
{
    panel().clearFault();
    // Whichever of the three figures it is, the room is not more.
    const auto room =
        m_space ? std::max({m_space->value1, m_space->value2, m_space->value3}) : std::uint64_t{muchMemory};
    const auto most = static_cast<qint64>(std::min(room, static_cast<std::uint64_t>(muchMemory)));
    m_storing->setMaximum(m_toStore == 0 ? static_cast<int>(paths.size())
                                         : m_storing->maximum() + static_cast<int>(paths.size()));
    if (m_toStore == 0)
        m_storing->setValue(0);
    m_toStore += static_cast<int>(paths.size());
    m_storing->setVisible(m_toStore > 0);
    for (const QString& path : paths)
        panel().ask(
            controls::fileMemory, tr("store %1").arg(quoted({nameOnInstrument(path)})),
            [name = nameOnInstrument(path), path = localPath(path), most](IFileMemoryControl& files) {
                return files.writeFile(name, readLocalFile(path, most));
            },
            [](const std::expected<void, QString>&) {}, [this] { storedOne(); });
}

void FilesPage::storedOne()
{
    m_storing->setValue(m_storing->value() + 1);
    if (--m_toStore > 0)
        return;
    m_storing->hide();
    refresh();
}

void FilesPage::get(const FileInfo& file, const QString& path)
{
    panel().clearFault();
    panel().ask(
        controls::fileMemory, tr("get “%1”").arg(file.name),
        [file, target = targetAt(path)](IFileMemoryControl& files) -> std::expected<void, QString> {
            const auto contents = files.readFile(file);
            if (!contents)
                return std::unexpected(contents.error());
            writeLocalFile(target, *contents);
            return {};
        },
        [](const std::expected<void, QString>&) {});
}

void FilesPage::askToDelete()
{
    const QList<FileInfo> files = chosenFiles();
    if (files.isEmpty())
        return;
    QStringList names;
    for (const FileInfo& file : files)
        names.append(file.name);
    confirm(tr("Delete %1 from the instrument?").arg(quoted(names)), tr("&Yes, delete"),
            [this, files] { remove(files); });
}

void FilesPage::remove(const QList<FileInfo>& files)
{
    panel().clearFault();
    for (const FileInfo& file : files)
        panel().ask(
            controls::fileMemory, tr("delete “%1”").arg(file.name),
            [file](IFileMemoryControl& store) { return store.deleteFile(file); },
            [](const std::expected<void, QString>&) {});
    refresh();
}

} // namespace tov::workbench
