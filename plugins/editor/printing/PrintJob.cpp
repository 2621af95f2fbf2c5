// SPDX-License-Identifier: GPL-3.0-or-later
#include "PrintJob.h"

#include "Config.h"
#include "MessageBox.h"
#include "PageFile.h"
#include "Printouts.h"

#include <QDialogButtonBox>
#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QLineEdit>
#include <QPainter>
#include <QPointer>
#include <QPrintDialog>
#include <QPrinter>
#include <QProgressDialog>
#include <QPushButton>
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

// Paints into a file of its own, which goes with the object. The error is empty, or a cause.
QString paintAside(QTemporaryFile &pdf, QPrinter &printer, const Paint &paint)
{
    const QString folder =
        QFile::decodeName(QByteArray::fromStdString(Config::GetPersonalTmpDir()));
    pdf.setFileTemplate(folder + "/pages-XXXXXX.pdf");
    if (!pdf.open())
        return pdf.errorString();
    pdf.close();
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(pdf.fileName());
    paintPages(printer, paint);
    return {};
}

// What is at the target stays until the pages are painted.
QString printToFile(QPrinter &printer, const QString &title, QWidget *window, const Paint &paint)
{
    const QString target = printer.outputFileName();
    QTemporaryFile pdf;
    const QString error = paintAside(pdf, printer, paint);
    if (!error.isEmpty())
        return QStringLiteral("%1 was not written: %2").arg(target, error);
    const QString failure = writeFile(pdf.fileName(), target, title, window);
    if (failure.isEmpty())
        Printouts::Written(target);
    return failure;
}

QString printOnPaper(QPrinter &printer, const Paint &paint)
{
    if (!paintPages(printer, paint))
        return QStringLiteral("The printer \"%1\" did not take the pages.")
            .arg(printer.printerName());
    Printouts::Sent(printer.printerName());
    return {};
}

// The toolkit's dialog looks for a name without a folder in the working folder, asks about what is
// there, and then writes to the user's home.
void keepNamesWhole(QPrintDialog &dialog, const QString &folder)
{
    auto *name = dialog.findChild<QLineEdit *>(QStringLiteral("filename"));
    const auto *buttons = dialog.findChild<QDialogButtonBox *>();
    const QPushButton *print = buttons == nullptr ? nullptr : buttons->button(QDialogButtonBox::Ok);
    if (name == nullptr || print == nullptr)
        return;
    // Before the click itself, which makes the dialog look.
    QObject::connect(print, &QPushButton::pressed, name, [name, folder] {
        if (!name->text().isEmpty())
            name->setText(QDir::cleanPath(QDir(folder).filePath(name->text())));
    });
}

// Nothing of it is kept, but what painting tells is told.
void refuse(QPrinter &printer, const Paint &paint, const QString &cause)
{
    QTemporaryFile nowhere;
    static_cast<void>(paintAside(nowhere, printer, paint));
    Printouts::Refused(cause);
}

QString print(QPrinter &printer, QWidget *window, const PrintJob &job)
{
    const QString obstacle = job.obstacle(printer);
    if (!obstacle.isEmpty()) {
        refuse(printer, job.paint, obstacle);
        return {};
    }
    return printer.outputFileName().isEmpty() ? printOnPaper(printer, job.paint)
                                              : printToFile(printer, job.title, window, job.paint);
}

} // namespace

void runPrintJob(QWidget *window, const PrintJob &job)
{
    QPrinter printer(QPrinter::ScreenResolution);
    printer.setPageSize(QPageSize(QPageSize::A4));
    printer.setColorMode(QPrinter::Color);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setDocName(job.title);
    printer.setOutputFileName(job.folder + '/' + job.title + ".ps");
    QPrintDialog dialog(&printer, window);
    // All pages are printed, so nobody is asked which.
    dialog.setOption(QAbstractPrintDialog::PrintPageRange, false);
    keepNamesWhole(dialog, job.folder);
    const QPointer<QWidget> alive(window);
    // Dialogs run event loops, in which the window may be closed.
    if (dialog.exec() == QDialog::Rejected || !alive)
        return;
    const QString error = print(printer, window, job);
    if (!error.isEmpty())
        tell(alive, QMessageBox::Warning, QStringLiteral("Print"), error);
}

} // namespace ZEP
