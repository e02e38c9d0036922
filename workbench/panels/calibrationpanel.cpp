#include "workbench/panels/calibrationpanel.h"

#include "workbench/panels/calibrationpage.h"
#include "workbench/panels/controllerspage.h"
#include "workbench/panels/correctionspage.h"

namespace tov::workbench {

CalibrationPanel::CalibrationPanel(Instrument& instrument, QWidget* parent)
    : PagedPanel(instrument, parent)
{
    addPage(new CalibrationPage(*this, ifswCalibrationKind()), tr("IF switch"), QStringLiteral("ifsw-page"));
    addPage(new CalibrationPage(*this, factoryPowerCalibrationKind()), tr("Factory power"),
            QStringLiteral("factory-power-page"));
    addPage(new CorrectionsPage(*this), tr("Corrections"), QStringLiteral("corrections-page"));
    addPage(new ControllersPage(*this), tr("Controllers"), QStringLiteral("controllers-page"));
}

} // namespace tov::workbench
