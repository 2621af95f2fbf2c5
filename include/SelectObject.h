// SPDX-License-Identifier: GPL-3.0-or-later
// The workbench's dialog for picking one or several objects from a list.
#pragma once

#include "Export.h"

#include <QDialog>
#include <QString>

#include <memory>
#include <vector>

namespace TAMBO {

class Compound;

// Modal; run with exec(). The choice is written when the dialog is accepted, in the order of the
// candidates for several. It begins with chosen; where that is empty or null, with what is picked
// in the workbench's tree. Several that nothing is ticked of are accepted with the only row that
// the user's filter leaves, or, when chosen was not empty, as none. A caption that ends in " to
// add" says that the choice is added to the alignment that the parent's window shows
// (ShownObjects): of each candidate that is a row of it already the dialog says so.
class TAMBO_API SelectObject : public QDialog
{
    Q_OBJECT

public:
    SelectObject(const std::vector<Compound *> &candidates, Compound *&chosen, QWidget *parent,
                 QString caption);
    SelectObject(const std::vector<Compound *> &candidates, std::vector<Compound *> &chosen,
                 QWidget *parent, QString caption);
    ~SelectObject() override;

    int exec() override;
    void accept() override;

private:
    class Picker;
    std::unique_ptr<Picker> m_Picker;
};

} // namespace TAMBO
