#pragma once

#include "workbench/panels/pagedpanel.h"

namespace tov::workbench {

/// What the instrument remembers: files, its memory as a whole, potentiometers, who it is, and the system terms.
class MemoryPanel final : public PagedPanel
{
    Q_OBJECT

public:
    explicit MemoryPanel(Instrument& instrument, QWidget* parent = nullptr);
};

} // namespace tov::workbench
