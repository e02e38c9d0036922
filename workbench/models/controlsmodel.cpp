#include "workbench/models/controlsmodel.h"

#include <QFont>

#include <algorithm>

namespace tov::workbench {

namespace {

QString textOf(ControlsModel::Presence presence)
{
    switch (presence) {
    case ControlsModel::Presence::Unknown:
        return {};
    case ControlsModel::Presence::Absent:
        return ControlsModel::tr("absent");
    case ControlsModel::Presence::Present:
        return ControlsModel::tr("present");
    case ControlsModel::Presence::CameBack:
        return ControlsModel::tr("came back");
    }
    return {};
}

} // namespace

void ControlsModel::show(const std::function<bool(const host::ControlName&)>& isPresent)
{
    for (std::size_t i = 0; i < m_rows.size(); ++i) {
        Presence& presence = m_rows.at(i).presence;
        if (!isPresent(host::controls::all.at(i)))
            presence = Presence::Absent;
        else if (presence == Presence::Absent)
            presence = Presence::CameBack;
        else if (presence == Presence::Unknown)
            presence = Presence::Present;
    }
    Q_EMIT dataChanged(index(0, State), index(rowCount() - 1, State));
}

void ControlsModel::note(const Call& call)
{
    if (call.state != Call::State::Failed)
        return;
    const auto kind = std::ranges::find(host::controls::all, call.control, [](const host::ControlName& control) {
        return QLatin1StringView(control.name.data(), static_cast<qsizetype>(control.name.size()));
    });
    if (kind == host::controls::all.end())
        return;
    const auto row = static_cast<int>(kind - host::controls::all.begin());
    m_rows.at(static_cast<std::size_t>(row)).lastError =
        QStringLiteral("%1, could not %2: %3").arg(call.began.time().toString(), call.what, call.error);
    Q_EMIT dataChanged(index(row, LastError), index(row, LastError));
}

int ControlsModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int ControlsModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant ControlsModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return {};
    const auto at = static_cast<std::size_t>(index.row());
    const Row& row = m_rows.at(at);
    if (role == Qt::FontRole && row.presence == Presence::Absent) {
        QFont font;
        font.setItalic(true);
        return font;
    }
    if (role != Qt::DisplayRole && role != Qt::ToolTipRole)
        return {};
    switch (index.column()) {
    case Name:
        return QString::fromUtf8(host::controls::all.at(at).name);
    case State:
        return textOf(row.presence);
    default:
        return row.lastError;
    }
}

QVariant ControlsModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    const std::array<QString, ColumnCount> headings = {tr("Control"), tr("State"), tr("Last error")};
    return headings.at(static_cast<std::size_t>(section));
}

} // namespace tov::workbench
