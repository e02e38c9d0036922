#include "workbench/panels/panels.h"

#include "workbench/panels/overviewpanel.h"

#include <QCoreApplication>

namespace tov::workbench {

namespace {

template <typename Kind>
Panel* make(Instrument& instrument)
{
    return new Kind(instrument); // NOLINT(cppcoreguidelines-owning-memory): the window takes it
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
    };
}

} // namespace tov::workbench
