// SPDX-License-Identifier: GPL-3.0-or-later
#include "HistoryModel.h"

#include "History.h"

#include <QFont>
#include <QGuiApplication>
#include <QLocale>
#include <QPalette>

#include <algorithm>

namespace TAMBO::app {

HistoryModel::HistoryModel(const History &history, QObject *parent)
    : QAbstractListModel(parent), m_History(history)
{
    refresh();
}

void HistoryModel::refresh()
{
    beginResetModel();
    m_Present = m_History.position();
    m_First = m_Present > kReach ? m_Present - kReach : 0;
    m_Last = std::min(m_History.size(), m_Present + kReach);
    endResetModel();
}

int HistoryModel::presentRow() const
{
    return int(m_Present - m_First);
}

std::size_t HistoryModel::positionOf(int row) const
{
    return m_First + std::size_t(row);
}

int HistoryModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_Last - m_First + 1);
}

QVariant HistoryModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const std::size_t position = positionOf(index.row());
    switch (role) {
    case Qt::DisplayRole:
        if (position == 0)
            return tr("Beginning");
        if (index.row() == 0)
            return tr("%1 earlier steps").arg(QLocale().toString(qulonglong(position)));
        return QString::fromStdString(m_History.label(position - 1));
    case Qt::FontRole:
        if (position == m_Present) {
            QFont font;
            font.setBold(true);
            return font;
        }
        return {};
    case Qt::ForegroundRole:
        return position > m_Present
                   ? QVariant(QGuiApplication::palette().color(QPalette::PlaceholderText))
                   : QVariant();
    default:
        return {};
    }
}

} // namespace TAMBO::app

#include "moc_HistoryModel.cpp"
