#include "workbench/panels/temperaturespanel.h"

#include "tools/files/csvlog.h"
#include "workbench/instrument/background.h"
#include "workbench/panels/controlsection.h"
#include "workbench/panels/filechoice.h"
#include "workbench/panels/plot.h"
#include "workbench/panels/tables.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDateTimeAxis>
#include <QDoubleSpinBox>
#include <QHBoxLayout>
#include <QImage>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QSettings>
#include <QSplitter>
#include <QTableView>
#include <QTimer>
#include <QVBoxLayout>

#include <algorithm>
#include <stdexcept>
#include <string>
#include <vector>

namespace tov::workbench {

using provider::ITestHooks;
using std::chrono::minutes;
using std::chrono::seconds;

namespace {

constexpr qsizetype mostPoints = 500; // of a curve: about the width of a plot
constexpr double noLimit = -273.0;    // °C, where no limit can be
const auto spanKey = QStringLiteral("temperatures/span");
const auto limitKey = QStringLiteral("temperatures/limit");

void write(const LocalTarget& target, const std::vector<std::vector<std::string>>& lines)
{
    CsvLog log(target, lines.front());
    for (std::size_t i = 1; i < lines.size(); ++i)
        log.add(lines[i]);
    log.requireWritten();
}

QPushButton* addButton(QHBoxLayout& row, const QString& name, const QString& label)
{
    auto* const button = new QPushButton(label);
    button->setObjectName(name);
    row.addWidget(button);
    return button;
}

} // namespace

TemperaturesPanel::TemperaturesPanel(Instrument& instrument, QWidget* parent)
    : Panel(instrument, parent)
    , m_feed(instrument)
    , m_drawing(new QTimer(this))
    , m_clock(new QTimer(this))
{
    addChoices();
    addViews();

    m_drawing->setSingleShot(true);
    m_drawing->setInterval(50);
    m_clock->setInterval(seconds(1));
    connect(m_drawing, &QTimer::timeout, this, &TemperaturesPanel::draw);
    connect(m_clock, &QTimer::timeout, this, &TemperaturesPanel::keepUp);
    connect(&m_feed, &TemperatureFeed::told, this, [this](const TemperatureReading& reading) {
        m_model.add(reading);
        m_drawing->start();
    });
    connect(&m_model, &TemperaturesModel::choiceChanged, m_drawing, qOverload<>(&QTimer::start));
    const auto follow = [this] {
        enableTime();
        if (this->instrument().state() == Instrument::State::Open && !isVisible())
            refresh(); // which is not done for a panel behind the others
    };
    connect(&instrument, &Instrument::stateChanged, this, follow);
    connect(&instrument, &Instrument::controlsOffered, this, follow);
    enableTime();
}

void TemperaturesPanel::refresh()
{
    if (instrument().isPresent(host::controls::temperature))
        follow(tr("read the temperatures"), m_feed.read(), [this](const TemperatureReading& reading) {
            m_model.add(reading);
            m_drawing->start();
        });
}

void TemperaturesPanel::showEvent(QShowEvent* event)
{
    Panel::showEvent(event);
    enableTime();
    m_drawing->start();
}

void TemperaturesPanel::hideEvent(QHideEvent* event)
{
    Panel::hideEvent(event);
    m_clock->stop();
}

void TemperaturesPanel::addChoices()
{
    auto* const row = new QHBoxLayout;
    auto* const spanLabel = new QLabel(tr("&Show"), this);
    m_span = new QComboBox(this);
    m_span->setObjectName(QStringLiteral("span"));
    m_span->addItem(tr("1 min"), 60);
    m_span->addItem(tr("10 min"), 600);
    m_span->addItem(tr("1 h"), 3600);
    m_span->addItem(tr("all"), 0);
    m_span->setCurrentIndex(std::clamp(QSettings().value(spanKey, 1).toInt(), 0, m_span->count() - 1));
    spanLabel->setBuddy(m_span);
    row->addWidget(spanLabel);
    row->addWidget(m_span);
    connect(m_span, &QComboBox::currentIndexChanged, this, [this](int index) {
        QSettings().setValue(spanKey, index);
        draw();
    });
    row->addSpacing(fontMetrics().averageCharWidth() * 2);
    addLimit(*row);
    row->addStretch();
    addTime(*row);
    addFiles(*row);
    contents().addLayout(row);
}

void TemperaturesPanel::addLimit(QHBoxLayout& row)
{
    auto* const label = new QLabel(tr("L&imit of all"), this);
    m_limit = new QDoubleSpinBox(this);
    m_limit->setObjectName(QStringLiteral("limit"));
    m_limit->setRange(noLimit, 1000.0);
    m_limit->setDecimals(1);
    m_limit->setSpecialValueText(tr("none"));
    m_limit->setSuffix(tr(" °C"));
    m_limit->setKeyboardTracking(false);
    label->setBuddy(m_limit);
    row.addWidget(label);
    row.addWidget(m_limit);
    connect(m_limit, &QDoubleSpinBox::valueChanged, this, [this](double limit) {
        QSettings().setValue(limitKey, limit);
        m_model.setLimits(limit > noLimit ? std::optional(limit) : std::nullopt);
    });
    const double remembered = QSettings().value(limitKey, noLimit).toDouble();
    m_limit->setValue(remembered > noLimit ? remembered : noLimit);
}

void TemperaturesPanel::addTime(QHBoxLayout& row)
{
    m_keepsUp = new QCheckBox(tr("Cloc&k runs"), this);
    m_keepsUp->setObjectName(QStringLiteral("keeps-up"));
    m_keepsUp->setChecked(true);
    m_keepsUp->setToolTip(tr("Whether time passes for an instrument with a clock of its own"));
    row.addWidget(m_keepsUp);
    connect(m_keepsUp, &QCheckBox::toggled, this, &TemperaturesPanel::enableTime);
    m_pass = addButton(row, QStringLiteral("pass"), tr("Let time &pass"));
    m_pass->setToolTip(tr("At once, for an instrument with a clock of its own"));
    auto* const menu = new QMenu(m_pass);
    menu->addAction(tr("&10 seconds"), this, [this] { passTime(seconds(10)); });
    menu->addAction(tr("1 &minute"), this, [this] { passTime(minutes(1)); });
    menu->addAction(tr("10 m&inutes"), this, [this] { passTime(minutes(10)); });
    menu->addAction(tr("1 &hour"), this, [this] { passTime(minutes(60)); });
    m_pass->setMenu(menu);
}

void TemperaturesPanel::addFiles(QHBoxLayout& row)
{
    const auto* const readings = addButton(row, QStringLiteral("save-readings"), tr("Save &readings…"));
    connect(readings, &QPushButton::clicked, this, [this] {
        chooseTarget(*this, tr("Save the readings"), QStringLiteral("temperatures.csv"),
                     [this](const QString& path) { saveReadings(path); });
    });
    const auto* const picture = addButton(row, QStringLiteral("save-picture"), tr("Save pict&ure…"));
    connect(picture, &QPushButton::clicked, this, [this] {
        chooseTarget(*this, tr("Save the picture"), QStringLiteral("temperatures.png"),
                     [this](const QString& path) { savePicture(path); });
    });
}

void TemperaturesPanel::addViews()
{
    auto* const section = new ControlSection(instrument(), host::controls::temperature, {}, this);
    auto* const axis = new QDateTimeAxis(this);
    axis->setFormat(QStringLiteral("HH:mm:ss"));
    axis->setTickCount(7);
    const QDateTime now = QDateTime::currentDateTime();
    axis->setRange(now.addSecs(-1), now); // without times it would have no room for labels, then and later
    m_plot = new Plot(tr("The temperatures over time"), this, axis);
    m_plot->setObjectName(QStringLiteral("temperatures-plot"));
    m_plot->setTitles({}, tr("Temperature (°C)"));

    auto* const views = new QSplitter(Qt::Vertical, this);
    views->setChildrenCollapsible(false);
    views->addWidget(m_plot);
    auto* const table =
        makeTable(m_model, QStringLiteral("temperatures-table"), tr("Temperatures and limits"), this, {24});
    table->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed
                           | QAbstractItemView::AnyKeyPressed);
    views->addWidget(table);
    views->setStretchFactor(0, 3);
    views->setStretchFactor(1, 2);
    views->setSizes({300, 200}); // in the same relation at first, whatever they would like
    section->contents().addWidget(views);
    contents().addWidget(section, 1);
}

void TemperaturesPanel::enableTime()
{
    const auto& abilities = instrument().abilities();
    const bool can = instrument().state() == Instrument::State::Open
                     && std::ranges::find(abilities, ITestHooks::Ability::PassTime) != abilities.end();
    m_keepsUp->setVisible(can);
    m_pass->setVisible(can);
    const bool runs = can && m_keepsUp->isChecked() && isVisible();
    if (runs && !m_clock->isActive()) {
        m_since.start();
        m_clock->start();
    } else if (!runs) {
        m_clock->stop();
    }
}

void TemperaturesPanel::keepUp()
{
    m_clock->stop(); // until that is done
    const QString what = tr("keep up with the clock");
    follow(
        what, m_feed.keepUp(std::chrono::milliseconds(m_since.restart())), [](const provider::Result<void>&) {},
        [this] {
            if (m_keepsUp->isChecked() && isVisible() && instrument().state() == Instrument::State::Open)
                m_clock->start();
        });
}

void TemperaturesPanel::passTime(seconds time)
{
    m_pass->setEnabled(false);
    follow(
        tr("let %1 s pass").arg(time.count()), m_feed.passTime(time), [](const provider::Result<void>&) {},
        [this] { m_pass->setEnabled(true); });
}

void TemperaturesPanel::draw()
{
    const TemperatureHistory& history = m_model.history();
    if (!isVisible() || !history.end().isValid())
        return;
    const auto span = m_span->currentData().toLongLong();
    const QDateTime begin = span > 0 ? history.end().addSecs(-span) : history.begin();
    m_plot->setCurves(m_model.curves(begin, mostPoints));
    m_plot->setLevels(m_model.limits());
    m_plot->fit(static_cast<double>(begin.toMSecsSinceEpoch()),
                static_cast<double>(std::max(history.end(), begin.addSecs(1)).toMSecsSinceEpoch()));
}

void TemperaturesPanel::saveReadings(const QString& path)
{
    clearFault();
    follow(tr("save the readings"),
           inBackground([target = targetAt(path), history = m_model.history()] { write(target, history.lines()); }),
           [] {});
}

void TemperaturesPanel::savePicture(const QString& path)
{
    clearFault();
    follow(tr("save the picture"), inBackground([path, picture = m_plot->grab().toImage()] {
               if (!picture.save(path, "PNG"))
                   throw std::runtime_error(path.toStdString() + " cannot be written");
           }),
           [] {});
}

} // namespace tov::workbench
