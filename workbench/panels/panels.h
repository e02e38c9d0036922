#pragma once

#include "workbench/panels/panel.h"

#include <QString>

#include <vector>

namespace tov::workbench {

/// A page that the window has.
struct PanelKind
{
    QString title; ///< with the mnemonic of its tab
    QString name;  ///< names it to programs: in settings and of pictures
    Panel* (*make)(Instrument& instrument);
};

/// All of them, in the order of their tabs.
std::vector<PanelKind> panelKinds();

} // namespace tov::workbench
