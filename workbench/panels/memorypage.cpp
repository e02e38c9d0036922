#include "workbench/panels/memorypage.h"

#include "tools/errors.h"
#include "tools/files/localfile.h"
#include "tools/text/bytes.h"
#include "workbench/panels/controlsection.h"
#include "workbench/panels/filechoice.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QLocale>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>
#include <functional>
#include <utility>

namespace tov::workbench {

using devices::service::IMemoryOperationsControl;
namespace controls = host::controls;

namespace {

using Error = IMemoryOperationsControl::Error;
using Bytes = std::vector<std::byte>;

QString bytes(std::size_t count)
{
    return QLocale().toString(static_cast<qulonglong>(count));
}

// What a file would make of the memory. Throws `Failure` when it does not fit.
std::expected<Bytes, Error> contentsFor(IMemoryOperationsControl& memory, const std::string& path, bool fills)
{
    Bytes contents = toBytes(readLocalFile(path, muchMemory));
    const auto now = memory.read();
    if (!now)
        return std::unexpected(now.error());
    const std::size_t size = now->size();
    if (contents.size() > size || (contents.size() < size && !fills))
        throw Failure(path + " has " + std::to_string(contents.size()) + " bytes and the memory "
                      + std::to_string(size));
    contents.resize(size, std::byte{0xFF});
    return contents;
}

} // namespace

MemoryPage::MemoryPage(Panel& panel)
    : Page(panel)
    , m_progress(new QProgressBar(this))
    , m_result(new QLabel(this))
{
    auto* const section = new ControlSection(instrument(), controls::memoryOperations, {}, this);
    contents().addWidget(section);
    contents().addStretch();
    addButtons(section->contents());

    m_progress->setObjectName(QStringLiteral("memory-progress"));
    m_progress->setAccessibleName(tr("How far the memory is"));
    m_progress->setRange(0, 100);
    m_progress->hide();
    m_result->setObjectName(QStringLiteral("memory-result"));
    section->contents().addSpacing(fontMetrics().height());
    section->contents().addWidget(m_progress);
    section->contents().addWidget(m_result);

    connect(&instrument(), &Instrument::notified, this, [this](const Notification& told) {
        if (told.control == QString::fromUtf8(controls::memoryOperations.name) && told.numbers.size() == 2)
            showProgress(told);
    });
}

void MemoryPage::addButtons(QVBoxLayout& layout)
{
    m_buttons = new QWidget(this);
    auto* const grid = new QGridLayout(m_buttons);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(fontMetrics().averageCharWidth() * 2);
    grid->setColumnStretch(1, 1);
    const auto add = [&](const char* name, const QString& label, const QString& does, std::function<void()> act) {
        auto* const button = new QPushButton(label, m_buttons);
        button->setObjectName(QString::fromLatin1(name));
        connect(button, &QPushButton::clicked, this, std::move(act));
        const int row = grid->rowCount();
        grid->addWidget(button, row, 0);
        auto* const text = new QLabel(does, m_buttons);
        text->setWordWrap(true);
        grid->addWidget(text, row, 1);
    };
    add("dump", tr("Copy &into a file…"), tr("Reads the whole memory and writes it into a file of this computer."),
        [this] {
            chooseTarget(*this, tr("Where to copy the memory"), QStringLiteral("memory.bin"),
                         [this](const QString& path) { dump(path); });
        });
    add("load", tr("Load &from a file…"), tr("Replaces the whole memory by a file of the same size."), [this] {
        chooseFile(*this, tr("What to replace the memory by"), tr("All files (*)"),
                   [this](const QString& path) { look(path); });
    });
    m_fills = new QCheckBox(tr("Fill the memory &behind a shorter file with 0xFF"), m_buttons);
    m_fills->setObjectName(QStringLiteral("fills"));
    grid->addWidget(m_fills, grid->rowCount(), 1);
    add("erase", tr("Er&ase…"), tr("Erases the whole memory."), [this] {
        confirm(tr("Erase the instrument's memory? What it holds is lost."), tr("&Yes, erase"), [this] { erase(); });
    });
    add("check", tr("Chec&k"), tr("Lets the instrument look whether its memory is intact."), [this] { check(); });
    layout.addWidget(m_buttons);
}

template <typename Function, typename Answered>
void MemoryPage::carryOut(const QString& what, Function function, Answered answered)
{
    panel().clearFault();
    m_buttons->setEnabled(false);
    m_progress->setValue(0);
    m_progress->setFormat(tr("%p %"));
    m_progress->show();
    m_result->setText(tr("To %1 …").arg(what));
    panel().ask(controls::memoryOperations, what, std::move(function), std::move(answered), [this] {
        m_buttons->setEnabled(true);
        m_progress->hide();
        m_result->clear();
    });
}

// The numbers are the bytes in all and the bytes done.
void MemoryPage::showProgress(const Notification& told)
{
    const double all = told.numbers[0];
    if (all > 0.0)
        m_progress->setValue(static_cast<int>(std::clamp(told.numbers[1] / all, 0.0, 1.0) * 100.0));
}

void MemoryPage::dump(const QString& path)
{
    carryOut(
        tr("copy the memory into a file"),
        [target = targetAt(path)](IMemoryOperationsControl& memory) -> std::expected<std::size_t, Error> {
            const auto contents = memory.read();
            if (!contents)
                return std::unexpected(contents.error());
            writeLocalFile(target, toByteArray(*contents));
            return contents->size();
        },
        [this](const std::expected<std::size_t, Error>& size) {
            showResult(tr("%1 bytes were copied into the file.").arg(bytes(*size)));
        });
}

void MemoryPage::look(const QString& path)
{
    carryOut(
        tr("look whether the file fits the memory"),
        [path = localPath(path), fills = m_fills->isChecked()](IMemoryOperationsControl& memory) {
            return contentsFor(memory, path, fills);
        },
        [this, path](const std::expected<Bytes, Error>& contents) {
            confirm(tr("Replace the instrument's memory by the %1 bytes of %2?").arg(bytes(contents->size()), path),
                    tr("&Yes, replace"), [this, contents = *contents] { load(contents); });
        });
}

void MemoryPage::load(const Bytes& contents)
{
    carryOut(
        tr("write the memory"), [contents](IMemoryOperationsControl& memory) { return memory.write(contents); },
        [this, size = contents.size()](const std::expected<void, Error>&) {
            showResult(tr("%1 bytes were written.").arg(bytes(size)));
        });
}

void MemoryPage::erase()
{
    carryOut(
        tr("erase the memory"), [](IMemoryOperationsControl& memory) { return memory.erase(); },
        [this](const std::expected<void, Error>&) { showResult(tr("The memory is erased.")); });
}

void MemoryPage::check()
{
    carryOut(
        tr("check the memory"), [](IMemoryOperationsControl& memory) { return memory.integrityCheck(); },
        [this](const std::expected<void, Error>&) { showResult(tr("The memory is intact.")); });
}

void MemoryPage::showResult(const QString& text)
{
    m_result->setText(text);
}

} // namespace tov::workbench
