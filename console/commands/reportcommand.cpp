#include "console/commands/commands.h"

#include "console/terminal/terminal.h"
#include "console/whole/document.h"
#include "tools/files/localfile.h"

namespace tov::console {

namespace {

void report(ConsoleSession& console, const LocalTarget& page)
{
    requireWritable(page);
    const QJsonObject document = readInstrument(console, DocumentKind::Report);
    if (!page.path.empty())
        writeLocalFile(page, documentPage(document));
    if (page.isStandardOutput())
        return;
    console.output().answer(page.path.empty() ? documentText(document, terminalWidth()) : page.path + ": written\n",
                            document);
}

} // namespace

void addReportCommand(Command& program)
{
    const auto page = std::make_shared<LocalTarget>();
    program.add("report", "Show everything that can be read of the instrument")
        .takes({.name = "--html",
                .target = &page->path,
                .type = "FILE",
                .help = "Write it as a page to this file instead",
                .mustNotBeEmpty = "a file name is needed"})
        .flag("--force", page->force, "Replace the file if it is there")
        .runs(report, page);
}

} // namespace tov::console
