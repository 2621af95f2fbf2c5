// SPDX-License-Identifier: GPL-3.0-or-later
// Lets through the log's entries of a severity and above that hold a text, and of a fold those of
// its lines.
#pragma once

#include "Logger.h"

#include <QSortFilterProxyModel>

namespace TAMBO::app {

class LogFilter : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    using QSortFilterProxyModel::QSortFilterProxyModel;

    // What is for developers only when it is asked for.
    void setLowestSeverity(Logger::Severity severity, bool withChecks = false);
    void setText(const QString &text);
    // Whether something that is for users can be out of sight.
    [[nodiscard]] bool isNarrow() const;

protected:
    bool filterAcceptsRow(int row, const QModelIndex &parent) const override;

private:
    Logger::Severity m_Lowest = Logger::Severity::Info;
    bool m_WithChecks = false;
    QString m_Text;
};

} // namespace TAMBO::app
