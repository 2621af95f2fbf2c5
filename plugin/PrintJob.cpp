// SPDX-License-Identifier: GPL-3.0-or-later
#include "PrintJob.h"

#include "Config.h"
#include "PageFile.h"

#include <QFile>
#include <QGuiApplication>
#include <QMessageBox>
#include <QPainter>
#include <QPrintDialog>
#include <QPrinter>
#include <QProgressDialog>
#include <QTemporaryFile>

namespace ZEP {

namespace {

using Paint = std::function<void(QPainter &painter)>;

// False when the printer does not take the pages.
bool paintPages(QPrinter &printer, const Paint &paint)
{
    QPainter painter;
    if (!painter.begin(&printer))
        return false;
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    paint(painter);
    qDebug("Printing Ready.");
    const bool isDone = painter.end();
    QGuiApplication::restoreOverrideCursor();
    return isDone;
}

QString writeFile(const QString &pdf, const QString &target, const QString &title, QWidget *window)
{
    // The conversion to PostScript cannot be stopped half-way.
    QProgressDialog dialog(QStringLiteral("Writing %1…").arg(target), QString(), 0, 0, window);
    dialog.setWindowModality(Qt::ApplicationModal);
    return Pages::writePageFile(pdf, {target, title, [&dialog](int page, int count) {
                                          dialog.setMaximum(count);
                                          dialog.setValue(page);
                                      }});
}

// The pages are painted into a file of their own first: what is at the target stays until then.
QString printToFile(QPrinter &printer, const QString &title, QWidget *window, const Paint &paint)
{
    const QString target = printer.outputFileName();
    const QString folder =
        QFile::decodeName(QByteArray::fromStdString(Config::GetPersonalTmpDir()));
    QTemporaryFile pdf(folder + "/pages-XXXXXX.pdf");
    if (!pdf.open())
        return QStringLiteral("%1 was not written: %2").arg(target, pdf.errorString());
    pdf.close();
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(pdf.fileName());
    paintPages(printer, paint);
    return writeFile(pdf.fileName(), target, title, window);
}

QString printOnPaper(QPrinter &printer, const Paint &paint)
{
    return paintPages(printer, paint) ? QString()
                                      : QStringLiteral("The printer \"%1\" did not take the pages.")
                                            .arg(printer.printerName());
}

} // namespace

void runPrintJob(QWidget *window, const QString &title, const Paint &paint)
{
    QPrinter printer(QPrinter::ScreenResolution);
    printer.setPageSize(QPageSize(QPageSize::A4));
    printer.setColorMode(QPrinter::Color);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setDocName(title);
    printer.setOutputFileName(title + ".ps");
    QPrintDialog dialog(&printer, window);
    // All pages are printed, so nobody is asked which.
    dialog.setOption(QAbstractPrintDialog::PrintPageRange, false);
    if (dialog.exec() == QDialog::Rejected)
        return;
    const QString error = printer.outputFileName().isEmpty()
                              ? printOnPaper(printer, paint)
                              : printToFile(printer, title, window, paint);
    if (!error.isEmpty())
        QMessageBox::warning(window, QStringLiteral("Print"), error);
}

} // namespace ZEP
