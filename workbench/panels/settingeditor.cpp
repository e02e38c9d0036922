#include "workbench/panels/settingeditor.h"

#include "workbench/panels/numberbox.h"

#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QJsonArray>
#include <QLabel>
#include <QWheelEvent>

#include <optional>
#include <utility>

namespace tov::workbench {

namespace {

using Kind = TuneSetting::Kind;

/// A list that leaves the wheel to what scrolls, unless it has the focus.
class List final : public QComboBox
{
public:
    using QComboBox::QComboBox;

protected:
    void wheelEvent(QWheelEvent* event) override
    {
        if (hasFocus())
            QComboBox::wheelEvent(event);
        else
            event->ignore();
    }
};

std::optional<double> numberIn(const QJsonValue& value)
{
    return value.isDouble() ? std::optional(value.toDouble()) : std::nullopt;
}

} // namespace

SettingEditor::SettingEditor(const TuneSetting& setting, QWidget* parent)
    : QWidget(parent)
    , m_setting(setting)
{
    setObjectName(QString::fromStdString(setting.name));
    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    if (!setting.write)
        addText();
    else if (setting.kind == Kind::Switch)
        addSwitch();
    else if (setting.kind == Kind::Choice || setting.allowed)
        addList();
    else
        addNumbers(setting.kind == Kind::Range ? 2 : 1);
    if (!setting.unit.empty())
        layout->addWidget(new QLabel(QString::fromStdString(setting.unit), this));
    layout->addStretch();
}

void SettingEditor::show(const ReadSetting& read)
{
    m_read = read;
    m_show();
}

void SettingEditor::addSwitch()
{
    auto* const box = new QCheckBox(tr("on"), this);
    addWidget(box);
    m_show = [this, box] { box->setChecked(m_read.value.toBool()); };
    connect(box, &QCheckBox::clicked, this, [this](bool checked) { finish(checked); });
}

// Of the choices, or of the numbers that the instrument takes; a range of many numbers is edited as a number.
void SettingEditor::addList()
{
    constexpr double fewest = 16;
    auto* const list = new List(this);
    auto* const number = new NumberBox(this);
    list->setFocusPolicy(Qt::StrongFocus);
    list->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    addWidget(list);
    addWidget(number);
    number->setWhole();
    m_show = [this, list, number] {
        auto taken = m_read.allowed;
        if (!taken)
            taken = TakenNumbers::indices(m_setting.choices.size());
        std::vector<double> numbers = taken->numbers();
        const bool isRange = taken->isRange() && !numbers.empty();
        const bool isLong = isRange && numbers.back() - numbers.front() >= fewest;
        list->setVisible(!isLong);
        number->setVisible(isLong);
        if (isLong) {
            number->setLimits(numbers.front(), numbers.back());
            number->setToolTip(tr("From %1 to %2").arg(shownValue(numbers.front()), shownValue(numbers.back())));
            showNumber(*number, numberIn(m_read.value));
            return;
        }
        if (isRange) {
            const double last = numbers.back();
            numbers.pop_back();
            for (double next = numbers.front() + 1; next <= last; ++next)
                numbers.push_back(next);
        }
        list->clear();
        for (const double each : numbers)
            list->addItem(shownValue(each), each);
        list->setCurrentIndex(m_read.value.isDouble() ? list->findData(m_read.value.toDouble()) : -1);
    };
    connect(list, &QComboBox::activated, this, [this, list] { finish(list->currentData().toDouble()); });
    connect(number, &NumberBox::edited, this, [this, number] {
        if (const auto edited = number->number())
            finish(*edited);
    });
}

void SettingEditor::addNumbers(int count)
{
    std::vector<NumberBox*> boxes;
    for (int i = 0; i < count; ++i) {
        auto* const box = boxes.emplace_back(new NumberBox(this));
        if (m_setting.kind == Kind::WholeNumber) {
            box->setWhole();
            box->setLimits(m_setting.least, m_setting.most);
        }
        if (i > 0)
            addWidget(new QLabel(tr("to"), this));
        addWidget(box);
    }
    m_show = [this, boxes] {
        const bool isOne = boxes.size() == 1;
        for (std::size_t i = 0; i < boxes.size(); ++i)
            showNumber(*boxes[i], numberIn(isOne ? m_read.value : m_read.value[static_cast<qsizetype>(i)]));
    };
    const auto takeOver = [this, boxes] {
        QJsonArray numbers;
        for (const NumberBox* const box : boxes)
            if (const auto number = box->number())
                numbers.append(*number);
        if (std::cmp_equal(numbers.size(), boxes.size()))
            finish(boxes.size() == 1 ? numbers.first() : QJsonValue(numbers));
    };
    for (const NumberBox* const box : boxes)
        connect(box, &NumberBox::edited, this, takeOver);
}

void SettingEditor::addText()
{
    auto* const label = new QLabel(this);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    addWidget(label);
    m_show = [this, label] { label->setText(shownValue(m_read.value)); };
}

void SettingEditor::addWidget(QWidget* widget)
{
    widget->setAccessibleName(QString::fromStdString(m_setting.name));
    widget->setAccessibleDescription(QString::fromStdString(m_setting.meaning));
    layout()->addWidget(widget);
    if (focusProxy() == nullptr)
        setFocusProxy(widget);
}

void SettingEditor::showNumber(NumberBox& box, const std::optional<double>& number)
{
    if (!box.isBeingEdited())
        box.showNumber(number);
}

void SettingEditor::finish(const QJsonValue& value)
{
    if (value == m_read.value)
        return;
    m_read.value = value; // once, though the Enter key and going elsewhere both end the editing
    Q_EMIT edited(value);
}

} // namespace tov::workbench
