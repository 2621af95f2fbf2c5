// SPDX-License-Identifier: GPL-3.0-or-later
// Gives rows of a list of objects' names that read alike a tool tip each that tells them apart. The
// list belongs to a plug-in, which knows the names alone.
#pragma once

#include <QObject>

class QListWidget;

namespace TAMBO::services {

class TwinTips : public QObject
{
public:
    // Looks at the list when it is shown; belongs to it.
    explicit TwinTips(QListWidget &list);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void describeTwins();

    QListWidget &m_List;
};

} // namespace TAMBO::services
