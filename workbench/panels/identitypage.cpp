#include "workbench/panels/identitypage.h"

#include "tools/text/number.h"
#include "tools/text/values.h"
#include "workbench/panels/controlsection.h"
#include "workbench/panels/tables.h"
#include "workbench/panels/valuelabel.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QItemSelectionModel>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTableView>
#include <QVBoxLayout>

#include <limits>
#include <tuple>
#include <utility>

namespace tov::workbench {

using devices::service::ISerialNumberControl;
using devices::service::IUsbIdControl;
namespace controls = host::controls;

namespace {

using SerialError = ISerialNumberControl::Error;
using SerialNumber = std::expected<unsigned int, SerialError>;

auto wordsOf(const IUsbIdControl::UsbId& id)
{
    return std::tie(id.id1, id.id2, id.id3);
}

QString hexadecimalWord(std::uint16_t word)
{
    return QString::fromStdString(hexadecimal(word, 4));
}

QString textOf(const IUsbIdControl::UsbId& id)
{
    return QStringLiteral("%1 %2 %3").arg(hexadecimalWord(id.id1), hexadecimalWord(id.id2), hexadecimalWord(id.id3));
}

ValueLabel* valueCalled(const QString& objectName, const QString& name)
{
    auto* const label = new ValueLabel(name);
    label->setObjectName(objectName);
    return label;
}

} // namespace

IdentityPage::IdentityPage(Panel& panel)
    : Page(panel)
    , m_offered({tr("First word"), tr("Second word"), tr("Third word"), tr("Model"), tr("Tag"), tr("First data"),
                 tr("Second data")})
{
    addSerialNumber();
    addUsbId();
}

void IdentityPage::refresh()
{
    if (instrument().isPresent(controls::serialNumber))
        panel().ask(
            controls::serialNumber, tr("read the serial number"),
            [](ISerialNumberControl& control) { return control.serialNumber(); },
            [this](const SerialNumber& number) { show(*number); });
    if (!instrument().isPresent(controls::usbId))
        return;
    panel().ask(
        controls::usbId, tr("read the USB identifier"), [](IUsbIdControl& control) { return control.usbId(); },
        [this](const UsbId& id) { show(id); });
    panel().ask(
        controls::usbId, tr("list the USB identifiers"), [](IUsbIdControl& control) { return control.usbIds(); },
        [this](const std::vector<UsbId>& ids) { showOffered(ids); });
}

void IdentityPage::addSerialNumber()
{
    auto* const section = new ControlSection(instrument(), controls::serialNumber, tr("Serial number"), this);
    auto* const form = new QFormLayout;
    m_serialNumber = valueCalled(QStringLiteral("serial-number-now"), tr("Serial number"));
    form->addRow(tr("Now:"), m_serialNumber);
    m_newSerialNumber = new QLineEdit(section);
    m_newSerialNumber->setObjectName(QStringLiteral("serial-number-new"));
    m_newSerialNumber->setMaximumWidth(fontMetrics().averageCharWidth() * 20);
    auto* const write = new QPushButton(tr("Wr&ite…"), section);
    write->setObjectName(QStringLiteral("write-serial-number"));
    auto* const row = new QHBoxLayout;
    row->addWidget(m_newSerialNumber);
    row->addWidget(write);
    row->addStretch();
    form->addRow(tr("New:"), row);
    m_newSerialNumber->setAccessibleName(tr("New serial number"));
    section->contents().addLayout(form);
    contents().addWidget(section);
    connect(write, &QPushButton::clicked, this, &IdentityPage::askToWriteSerialNumber);
    connect(m_newSerialNumber, &QLineEdit::returnPressed, this, &IdentityPage::askToWriteSerialNumber);
}

void IdentityPage::addUsbId()
{
    auto* const section = new ControlSection(instrument(), controls::usbId, tr("USB identifier"), this);
    auto* const form = new QFormLayout;
    m_usbId = valueCalled(QStringLiteral("usb-id-now"), tr("USB identifier"));
    form->addRow(tr("Now:"), m_usbId);
    auto* const row = new QHBoxLayout;
    for (std::size_t i = 0; i < m_newUsbId.size(); ++i) {
        auto* const word = m_newUsbId.at(i) = new QSpinBox(section);
        word->setObjectName(QStringLiteral("usb-id-%1").arg(i + 1));
        word->setAccessibleName(tr("Word %1 of the new USB identifier").arg(i + 1));
        word->setRange(0, std::numeric_limits<std::uint16_t>::max());
        word->setDisplayIntegerBase(16);
        word->setPrefix(QStringLiteral("0x"));
        word->setMinimumWidth(fontMetrics().averageCharWidth() * 16); // by itself it makes room for decimals
        row->addWidget(word);
    }
    auto* const write = new QPushButton(tr("W&rite…"), section);
    write->setObjectName(QStringLiteral("write-usb-id"));
    row->addWidget(write);
    row->addStretch();
    form->addRow(tr("New:"), row);
    section->contents().addLayout(form);
    section->contents().addWidget(new QLabel(tr("What the instrument offers; a row that is chosen is taken over:")));
    auto* const table = makeTable(m_offered, QStringLiteral("usb-ids"), tr("USB identifiers on offer"), section,
                                  {14, 14, 14, 28, 8, 24});
    table->setSelectionMode(QAbstractItemView::SingleSelection);
    section->contents().addWidget(table);
    contents().addWidget(section, 1);

    connect(table->selectionModel(), &QItemSelectionModel::currentRowChanged, this, [this](const QModelIndex& chosen) {
        if (!chosen.isValid())
            return;
        const UsbId& id = m_offeredIds.at(static_cast<std::size_t>(chosen.row()));
        m_newUsbId[0]->setValue(id.id1);
        m_newUsbId[1]->setValue(id.id2);
        m_newUsbId[2]->setValue(id.id3);
    });
    connect(write, &QPushButton::clicked, this, [this] {
        const UsbId id = enteredId();
        confirm(tr("Write the USB identifier %1?").arg(textOf(id)), tr("&Yes, write"), [this, id] { writeUsbId(id); });
    });
}

void IdentityPage::show(unsigned int serialNumber)
{
    m_serialNumber->showValue(QString::number(serialNumber));
    if (m_newSerialNumber->text().isEmpty())
        m_newSerialNumber->setText(m_serialNumber->text());
}

void IdentityPage::show(const UsbId& id)
{
    m_usbId->showValue(tr("%1, %2, tag %3").arg(textOf(id), QString::fromStdString(id.modelName)).arg(id.tag));
    m_newUsbId[0]->setValue(id.id1);
    m_newUsbId[1]->setValue(id.id2);
    m_newUsbId[2]->setValue(id.id3);
}

void IdentityPage::showOffered(const std::vector<UsbId>& ids)
{
    const auto inHexadecimal = [](std::uint64_t bits) { return QString::fromStdString(hexadecimal(bits, 16)); };
    RowsModel::Rows rows;
    rows.reserve(ids.size());
    for (const UsbId& id : ids)
        rows.push_back({hexadecimalWord(id.id1), hexadecimalWord(id.id2), hexadecimalWord(id.id3),
                        QString::fromStdString(id.modelName), id.tag, inHexadecimal(id.data1),
                        inHexadecimal(id.data2)});
    m_offeredIds = ids;
    m_offered.setRows(std::move(rows));
}

IdentityPage::UsbId IdentityPage::enteredId() const
{
    UsbId id;
    id.id1 = static_cast<std::uint16_t>(m_newUsbId[0]->value());
    id.id2 = static_cast<std::uint16_t>(m_newUsbId[1]->value());
    id.id3 = static_cast<std::uint16_t>(m_newUsbId[2]->value());
    return id;
}

void IdentityPage::askToWriteSerialNumber()
{
    panel().clearFault();
    const std::string entered = m_newSerialNumber->text().trimmed().toStdString();
    const auto number = parseNumber<unsigned int>(entered);
    if (!number) {
        panel().showFault(tr("“%1” is no serial number: enter a whole number from 0 to %2.")
                              .arg(m_newSerialNumber->text())
                              .arg(std::numeric_limits<unsigned int>::max()));
        return;
    }
    confirm(tr("Write the serial number %1?").arg(*number), tr("&Yes, write"),
            [this, number = *number] { writeSerialNumber(number); });
}

void IdentityPage::writeSerialNumber(unsigned int number)
{
    panel().ask(
        controls::serialNumber, tr("write the serial number %1").arg(number),
        [number](ISerialNumberControl& control) -> SerialNumber {
            if (const auto written = control.writeSerialNumber(number); !written)
                return std::unexpected(written.error());
            return control.serialNumber();
        },
        [this, number](const SerialNumber& kept) {
            show(*kept);
            if (*kept != number)
                panel().showFault(tr("The instrument did not take %1; it holds %2.").arg(number).arg(*kept));
        });
}

void IdentityPage::writeUsbId(const UsbId& id)
{
    panel().clearFault();
    panel().ask(
        controls::usbId, tr("write the USB identifier"),
        [id](IUsbIdControl& control) -> std::expected<UsbId, bool> {
            if (!control.writeUsbId(id))
                return std::unexpected(false);
            return control.usbId();
        },
        [this, id](const std::expected<UsbId, bool>& kept) {
            show(*kept);
            if (wordsOf(*kept) != wordsOf(id))
                panel().showFault(tr("The instrument did not take %1; it holds %2.").arg(textOf(id), textOf(*kept)));
        });
}

} // namespace tov::workbench
