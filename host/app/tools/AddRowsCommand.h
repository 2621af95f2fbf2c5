// SPDX-License-Identifier: GPL-3.0-or-later
// Aligns some rows of an alignment, or sequences that become rows of it, to the others, whose
// columns stay together.
#pragma once

#include "AddedRows.h"
#include "Result.h"

#include <QCoreApplication>
#include <QPointer>
#include <QString>
#include <QWidget>

#include <functional>
#include <vector>

namespace TAMBO {
class Alignment;
class Compound;
} // namespace TAMBO

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

    // The sequences become rows behind the others when they are aligned; those that are rows
    // already are left out. As run(); told also says that there was nothing to add.
    bool add(Alignment &alignment, const std::vector<Compound *> &sequences, QString *told) const;

private:
    // Of which rows take part, and what is said of them.
    struct Work
    {
        realign::AddedRows sent;
        Columns columns;
        // While the program runs; the second one above what it says.
        QString title;
        std::function<QString(const QString &program)> waiting;
        // Of a failure, before the cause.
        QString refused;
        std::function<QString(unsigned long row)> nameOf;
    };

    // What was done.
    [[nodiscard]] Result<QString> align(Alignment &alignment, std::vector<unsigned long> rows,
                                        Columns columns) const;
    [[nodiscard]] Result<QString> alignNew(Alignment &alignment,
                                           const std::vector<Compound *> &sequences) const;
    // By the program; the alignment is as it was then.
    [[nodiscard]] Result<realign::AddedRows::Layout> layoutOf(const Alignment &alignment,
                                                              const Work &work) const;
    [[nodiscard]] static QString withColumns(const QString &what,
                                             const realign::AddedRows::Layout &layout);
    bool tell(const Result<QString> &outcome, QString *told) const;

    // It may be closed while the program runs.
    QPointer<QWidget> m_Parent;
    bool m_HasUser;
};

} // namespace TAMBO::app
