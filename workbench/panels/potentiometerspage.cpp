#include "workbench/panels/potentiometerspage.h"

#include "workbench/panels/controlsection.h"
#include "workbench/panels/tables.h"

#include <QTableView>
#include <QVBoxLayout>

#include <utility>
#include <vector>

namespace tov::workbench {

using devices::service::IPotentiometersControl;
namespace controls = host::controls;

namespace {

using Error = IPotentiometersControl::Error;
using Potentiometer = PotentiometersModel::Potentiometer;

// The table is of use, though not all of its values could be read.
struct Reading
{
    std::vector<Potentiometer> potentiometers;

    // The indices of those whose values could not be read, as a list.
    QString failedOnes() const
    {
        QStringList failed;
        for (std::size_t i = 0; i < potentiometers.size(); ++i)
            if (!potentiometers[i].eeprom)
                failed.append(QString::number(i));
        return failed.join(QStringLiteral(", "));
    }
    QString failedPart() const
    {
        const QString failed = failedOnes();
        return failed.isEmpty()
                   ? QString()
                   : PotentiometersPage::tr("the instrument reported a failure for EEPROM of %1").arg(failed);
    }
};

Reading read(IPotentiometersControl& control)
{
    Reading reading;
    auto& potentiometers = reading.potentiometers;
    for (auto& info : control.potentiometers()) {
        const auto eeprom = control.readFromEeprom(potentiometers.size());
        potentiometers.push_back({std::move(info), eeprom ? std::optional(*eeprom) : std::nullopt});
    }
    return reading;
}

} // namespace

PotentiometersPage::PotentiometersPage(Panel& panel)
    : Page(panel)
{
    auto* const section = new ControlSection(instrument(), controls::potentiometers, {}, this);
    auto* const table = makeTable(m_model, QStringLiteral("potentiometers-table"),
                                  tr("Potentiometers of the instrument"), section, {8, 30});
    table->setSelectionBehavior(QAbstractItemView::SelectItems);
    table->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed
                           | QAbstractItemView::AnyKeyPressed);
    section->contents().addWidget(table);
    contents().addWidget(section);

    connect(&m_model, &PotentiometersModel::eepromEntered, this, &PotentiometersPage::writeEeprom);
    connect(&m_model, &PotentiometersModel::ramEntered, this, &PotentiometersPage::writeRam);
    connect(&instrument(), &Instrument::controlsReleased, &m_model, &PotentiometersModel::forgetRam);
}

void PotentiometersPage::refresh()
{
    if (!instrument().isPresent(controls::potentiometers))
        return;
    panel().ask(controls::potentiometers, tr("read the potentiometers"), read, [this](Reading reading) {
        if (const QString failed = reading.failedOnes(); !failed.isEmpty())
            panel().showFault(tr("Could not read what is in EEPROM of the potentiometers %1: the instrument "
                                 "reported a failure.")
                                  .arg(failed));
        m_model.setPotentiometers(std::move(reading.potentiometers));
    });
}

void PotentiometersPage::writeEeprom(int row, int value)
{
    panel().clearFault();
    panel().ask(
        controls::potentiometers, tr("write %1 to EEPROM of potentiometer %2").arg(value).arg(row),
        [index = static_cast<std::size_t>(row), value](IPotentiometersControl& control) -> std::expected<int, Error> {
            if (const auto written = control.writeToEeprom(index, value); !written)
                return std::unexpected(written.error());
            return control.readFromEeprom(index);
        },
        [this, row, value](const std::expected<int, Error>& now) {
            m_model.setEeprom(row, *now);
            if (*now != value)
                panel().showFault(tr("Potentiometer %1 did not take %2; it holds %3.").arg(row).arg(value).arg(*now));
        });
}

void PotentiometersPage::writeRam(int row, int value)
{
    panel().clearFault();
    panel().ask(
        controls::potentiometers, tr("write %1 to RAM of potentiometer %2").arg(value).arg(row),
        [index = static_cast<std::size_t>(row), value](IPotentiometersControl& control) {
            return control.writeToRam(index, value);
        },
        [this, row, value](const std::expected<void, Error>&) { m_model.setRam(row, value); });
}

} // namespace tov::workbench
