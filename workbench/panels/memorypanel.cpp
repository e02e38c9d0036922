#include "workbench/panels/memorypanel.h"

#include "workbench/panels/filespage.h"
#include "workbench/panels/identitypage.h"
#include "workbench/panels/memorypage.h"
#include "workbench/panels/potentiometerspage.h"
#include "workbench/panels/termspage.h"

namespace tov::workbench {

MemoryPanel::MemoryPanel(Instrument& instrument, QWidget* parent)
    : PagedPanel(instrument, parent)
{
    addPage(new FilesPage(*this), tr("Files"), QStringLiteral("files-page"));
    addPage(new MemoryPage(*this), tr("Memory"), QStringLiteral("memory-page"));
    addPage(new PotentiometersPage(*this), tr("Potentiometers"), QStringLiteral("potentiometers-page"));
    addPage(new IdentityPage(*this), tr("Identity"), QStringLiteral("identity-page"));
    addPage(new TermsPage(*this), tr("System terms"), QStringLiteral("terms-page"));
}

} // namespace tov::workbench
