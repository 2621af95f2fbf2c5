// SPDX-License-Identifier: GPL-3.0-or-later
// Saving, opening and printing. The text of alignment files belongs to the workbench.
#include "KalmoIO.h"

#include "KALMO2.h"
#include "Logger.h"
#include "PluginManager.h"

#include <QFileDialog>
#include <QGuiApplication>
#include <QPainter>

namespace ZEP {

void KALMO2::Save(const QString &Name, TAMBO::Alignment *Ali)
{
    if (Ali == nullptr || Name.isEmpty())
        return;
    SaveRequest request{Name, Ali};
    PluginManager::Command("Parse", "PIR", "KALMO", "Save PIR", "SaveALI",
                           static_cast<void *>(&request));
}

void KALMO2::Save()
{
    // The menu is gone from the screen before the dialog opens.
    QGuiApplication::sync();
    if (m_Data == nullptr)
        return;
    const QString suggestion = QString::fromStdString(m_Data->Name()) + ".ali";
    const QString path = QFileDialog::getSaveFileName(this, QString(), suggestion, "*.ali");
    Save(path, m_Data);
}

void KALMO2::OpenFile()
{
    QGuiApplication::sync();
    PluginManager::Execute("Data", "OpenFile", "SequenceEditor", "open");
}

void KALMO2::printItBox()
{
    if (m_Data != nullptr)
        Logger::Write("Print Fat is not available yet.");
}

void KALMO2::printItChar()
{
    if (m_Data != nullptr)
        Logger::Write("Print Slim is not available yet.");
}

void KALMO2::printItBW()
{
    if (m_Data != nullptr)
        Logger::Write("Print BW is not available yet.");
}

void KALMO2::drawIt(QPainter *p, PrintStyle)
{
    const QPaintDevice *device = p == nullptr ? nullptr : p->device();
    if (m_Data != nullptr && device != nullptr && device->devType() == QInternal::Printer)
        Logger::Write("Drawing pages is not available yet.");
}

} // namespace ZEP
