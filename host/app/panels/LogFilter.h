// SPDX-License-Identifier: GPL-3.0-or-later
// Lets through the log's entries of a severity and above that hold a text.
#pragma once

#include "Logger.h"

#include <QSortFilterProxyModel>

namespace TAMBO::app {

class LogFilter : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    using QSortFilterProxyModel::QSortFilterProxyModel;

    void setLowestSeverity(Logger::Severity severity);
    void setText(const QString &text);

protected:
    bool filterAcceptsRow(int row, const QModelIndex &parent) const override;

private:
    Logger::Severity m_Lowest = Logger::Severity::Info;
    QString m_Text;
};

} // namespace TAMBO::app
