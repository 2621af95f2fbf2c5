// SPDX-License-Identifier: GPL-3.0-or-later
#include "StatusDesk.h"

#include "StatusLine.h"

namespace TAMBO::services {

StatusDesk &StatusDesk::instance()
{
    static StatusDesk desk;
    return desk;
}

void StatusDesk::say(const QString &text)
{
    if (!text.isEmpty())
        emit said(text);
}

} // namespace TAMBO::services

void StatusLine::Say(const QString &text)
{
    TAMBO::services::StatusDesk::instance().say(text);
}

#include "moc_StatusDesk.cpp"
