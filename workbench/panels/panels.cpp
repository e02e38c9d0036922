#include "workbench/panels/panels.h"

#include "workbench/panels/calibrationpanel.h"
#include "workbench/panels/logpanel.h"
#include "workbench/panels/memorypanel.h"
#include "workbench/panels/overviewpanel.h"
#include "workbench/panels/temperaturespanel.h"
#include "workbench/panels/tuningpanel.h"

#include <QCoreApplication>

namespace tov::workbench {

namespace {

template <typename Kind>
Panel* make(Instrument& instrument)
{
    return new Kind(instrument); // the window takes it
}

QString title(const char* text)
{
    return QCoreApplication::translate("tov::workbench::PanelKind", text);
}

} // namespace

std::vector<PanelKind> panelKinds()
{
    return {
        {title("&Overview"), QStringLiteral("overview"), make<OverviewPanel>},
        {title("&Tuning"), QStringLiteral("tuning"), make<TuningPanel>},
        {title("T&emperatures"), QStringLiteral("temperatures"), make<TemperaturesPanel>},
        {title("&Memory"), QStringLiteral("memory"), make<MemoryPanel>},
        {title("&Calibration"), QStringLiteral("calibration"), make<CalibrationPanel>},
        {title("&Log"), QStringLiteral("log"), make<LogPanel>},
    };
}

} // namespace tov::workbench
