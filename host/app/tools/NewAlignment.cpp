// SPDX-License-Identifier: GPL-3.0-or-later
#include "NewAlignment.h"

#include "Compound.h"
#include "DataAdder.h"
#include "DataMaker.h"
#include "SelectObject.h"
#include "Space.h"

#include <QCoreApplication>

#include <vector>

namespace TAMBO::app {

namespace {

// As the editor calls its own.
constexpr const char *kNewName = "SeqAli";

QString trNew(const char *text)
{
    return QCoreApplication::translate("NewAlignment", text);
}

} // namespace

NewAlignment askForNewAlignment(QWidget *parent)
{
    std::vector<Compound *> candidates;
    GetPeptides(Space::instance(), candidates, true);
    if (candidates.empty())
        return {nullptr, trNew("New Alignment: no sequences are loaded. Open files with sequences "
                               "or structures first.")};
    std::vector<Compound *> chosen;
    SelectObject dialog(candidates, chosen, parent, trNew("Sequences of a New Alignment"));
    if (dialog.exec() == 0 || chosen.empty())
        return {};
    const DataAdder<Space> guard(nullptr, Space::instance());
    if (!guard.m_good)
        return {nullptr, trNew("New Alignment: nothing can be added just now.")};
    return {DataMaker::makeAlignment(kNewName, chosen), {}};
}

} // namespace TAMBO::app
