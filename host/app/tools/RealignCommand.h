// SPDX-License-Identifier: GPL-3.0-or-later
// Realigns the columns of an alignment's range with the aligner of the settings.
#pragma once

#include "Alignment.h"
#include "Result.h"

#include <QCoreApplication>
#include <QPointer>
#include <QString>
#include <QWidget>

#include <string>

namespace TAMBO::realign {
class AlignerRun;
}

namespace TAMBO::app {

class RealignCommand
{
    Q_DECLARE_TR_FUNCTIONS(RealignCommand)

public:
    // Without a user nothing is shown, and a program that does not end is given up.
    RealignCommand(QWidget *parent, bool hasUser) : m_Parent(parent), m_HasUser(hasUser) { }

    // Returns when the alignment has its new columns, or is as it was: then with one message, or,
    // when the user cancelled, with none. One step of undo.
    bool run(Alignment &alignment) const;
    // The same with all columns, which are the range then. What was done, or that there was
    // nothing to do, comes into told.
    bool runOnAll(Alignment &alignment, QString *told) const;

private:
    struct Realigned
    {
        // Or there was nothing to do.
        bool isDone = false;
        QString text;
    };
    [[nodiscard]] Result<Realigned> realign(Alignment &alignment,
                                            const Alignment::Range &range) const;
    // What it says of one that failed.
    void tell(const Failure &failure) const;
    // What is told of a run that did not end well.
    [[nodiscard]] static Failure refusal(const realign::AlignerRun &aligner, const QString &name);

    // It may be closed while the program runs.
    QPointer<QWidget> m_Parent;
    bool m_HasUser;
};

} // namespace TAMBO::app
