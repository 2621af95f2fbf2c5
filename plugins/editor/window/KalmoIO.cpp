// SPDX-License-Identifier: GPL-3.0-or-later
// Saving, opening and printing. The text of alignment files belongs to the workbench.
#include "AlignmentPages.h"
#include "Config.h"
#include "KALMO2.h"
#include "PageMeasures.h"
#include "PrintJob.h"
#include "Printouts.h"
#include "WorkbenchCommands.h"

#include <QFileDialog>
#include <QGuiApplication>
#include <QPainter>
#include <QPointer>
#include <QPrinter>

namespace ZEP {

namespace {

bool printsElements()
{
    return Config::GetSetting("KALMO2", "PrintSSE").ToBool();
}

} // namespace

void KALMO2::Save(const QString &Name, TAMBO::Alignment *Ali)
{
    if (Ali == nullptr || Name.isEmpty())
        return;
    TAMBO::WorkbenchCommands::saveAlignment("KALMO", "Save PIR", *Ali, Name);
}

void KALMO2::Save()
{
    // The menu is gone from the screen before the dialog opens.
    QGuiApplication::sync();
    if (m_Data == nullptr)
        return;
    const QString suggestion = QString::fromStdString(m_Data->Name()) + ".ali";
    const QPointer<KALMO2> alive(this);
    const QString path = QFileDialog::getSaveFileName(this, QString(), suggestion, "*.ali");
    // The dialog runs an event loop, in which the window may have been closed.
    if (alive)
        Save(path, m_Data);
}

void KALMO2::OpenFile()
{
    QGuiApplication::sync();
    TAMBO::WorkbenchCommands::openFile("SequenceEditor");
}

void KALMO2::printItBox()
{
    print(Fat);
}

void KALMO2::printItChar()
{
    print(Slim);
}

void KALMO2::printItBW()
{
    print(BlackAndWhite);
}

void KALMO2::print(PrintStyle style)
{
    if (m_Data == nullptr)
        return;
    PrintJob job;
    job.title = QString::fromStdString(m_Data->Name());
    job.folder = Printouts::Folder(*m_Data);
    job.paint = [this, style](QPainter &painter) { drawIt(&painter, style); };
    // The alignment may have gone while the dialog was open.
    job.obstacle = [this](const QPrinter &printer) {
        return m_Data == nullptr
                   ? QString()
                   : PageMeasures(m_Font, printer, *m_Data, printsElements()).obstacleText();
    };
    runPrintJob(this, job);
}

void KALMO2::drawIt(QPainter *p, PrintStyle Box)
{
    QPaintDevice *device = p == nullptr ? nullptr : p->device();
    if (m_Data == nullptr || device == nullptr || device->devType() != QInternal::Printer)
        return;
    AlignmentPages::Options options;
    options.font = m_Font;
    options.style = Box;
    options.withElements = printsElements();
    AlignmentPages(*p, static_cast<QPrinter &>(*device), *m_Data, options).print();
}

} // namespace ZEP
