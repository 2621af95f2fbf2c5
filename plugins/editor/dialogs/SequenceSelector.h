// SPDX-License-Identifier: GPL-3.0-or-later
// The editor's dialog for ticking any number of objects of a list. Made on the caller's stack for
// one choice; the two lists belong to the caller.
#pragma once

#include "BaseDialog.h"

#include <vector>

class QListWidget;

namespace TAMBO {
class Compound;
}

namespace ZEP {

class SequenceSelector : public BaseDialog
{
    Q_OBJECT

public:
    // Candidates that are in chosen already open ticked. Accepting writes the ticked ones to chosen
    // in the order of the candidates; cancelling leaves it alone.
    SequenceSelector(const std::vector<TAMBO::Compound *> &candidates,
                     std::vector<TAMBO::Compound *> &chosen, QWidget *parent, const QString &title);
    ~SequenceSelector() override;

    void Apply() override;

private:
    void populate();
    void CreateTooltips();

    // Row i of the list box is candidate i.
    QListWidget *m_Box = nullptr;
    const std::vector<TAMBO::Compound *> &m_Candidates;
    std::vector<TAMBO::Compound *> &m_Chosen;
};

} // namespace ZEP
