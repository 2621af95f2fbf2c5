// SPDX-License-Identifier: GPL-3.0-or-later
// Aligns some rows of an alignment to the others, whose columns stay together.
#pragma once

#include "Result.h"

#include <QCoreApplication>
#include <QPointer>
#include <QString>
#include <QWidget>

#include <vector>

namespace TAMBO {
class Alignment;
}

namespace TAMBO::app {

class AddRowsCommand
{
    Q_DECLARE_TR_FUNCTIONS(AddRowsCommand)

public:
    enum class Columns {
        // Come where the rows have residues that the others have no place for.
        AsNeeded,
        // None comes. A row with residues that have no place then is a failure.
        Kept
    };

    // Without a user nothing is shown, and a program that does not end is given up.
    AddRowsCommand(QWidget *parent, bool hasUser) : m_Parent(parent), m_HasUser(hasUser) { }

    // Returns when the rows are aligned, or all is as it was: then with one message, or, when the
    // user cancelled, with none. One step of undo. What it has done comes into told, or without one
    // into the log.
    bool run(Alignment &alignment, const std::vector<unsigned long> &rows, Columns columns,
             QString *told = nullptr) const;

private:
    // What was done.
    [[nodiscard]] Result<QString> align(Alignment &alignment, std::vector<unsigned long> rows,
                                        Columns columns) const;

    // It may be closed while the program runs.
    QPointer<QWidget> m_Parent;
    bool m_HasUser;
};

} // namespace TAMBO::app
