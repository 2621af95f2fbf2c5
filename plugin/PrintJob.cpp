// SPDX-License-Identifier: GPL-3.0-or-later
#include "PrintJob.h"

#include "Config.h"

#include <QFile>
#include <QMessageBox>
#include <QPainter>
#include <QPrintDialog>
#include <QPrinter>
#include <QProgressDialog>
#include <QSaveFile>
#include <QTemporaryFile>
#include <poppler-qt6.h>

#include <memory>
#include <numeric>

namespace ZEP {

namespace {

bool isPostScript(const QString &name)
{
    return name.endsWith(QLatin1String(".ps"), Qt::CaseInsensitive);
}

QString cannotWrite(const QString &target, const QString &reason)
{
    return QStringLiteral("%1 was not written: %2").arg(target, reason);
}

// Painters of the toolkit write PDF only.
QString writePostScript(const Poppler::Document &pages, QSaveFile &file, QWidget *window)
{
    const int count = pages.numPages();
    // The converter cannot be stopped half-way.
    QProgressDialog progress(QStringLiteral("Writing PostScript…"), QString(), 0, count, window);
    progress.setWindowModality(Qt::ApplicationModal);
    QList<int> numbers(count);
    std::iota(numbers.begin(), numbers.end(), 1);
    const std::unique_ptr<Poppler::PSConverter> converter = pages.psConverter();
    converter->setOutputDevice(&file);
    converter->setPageList(numbers);
    const QSizeF size = std::unique_ptr<Poppler::Page>(pages.page(0))->pageSizeF();
    converter->setPaperWidth(qRound(size.width()));
    converter->setPaperHeight(qRound(size.height()));
    converter->setPageConvertedCallback(
        [](int page, void *dialog) { static_cast<QProgressDialog *>(dialog)->setValue(page); },
        &progress);
    return converter->convert() ? QString() : QStringLiteral("the conversion failed");
}

// The pages are painted into a file of their own first: what is at the target stays until then.
QString printToFile(QPrinter &printer, const QString &target, QWidget *window,
                    const std::function<void(QPainter &painter)> &paint)
{
    const QString folder =
        QFile::decodeName(QByteArray::fromStdString(Config::GetPersonalTmpDir()));
    QTemporaryFile pdf(folder + "/pages-XXXXXX.pdf");
    if (!pdf.open())
        return cannotWrite(target, pdf.errorString());
    pdf.close();
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(pdf.fileName());
    QPainter painter;
    if (!painter.begin(&printer))
        return cannotWrite(target, QStringLiteral("%1 cannot be written").arg(pdf.fileName()));
    paint(painter);
    qDebug("Printing Ready.");
    painter.end();
    return convertPages(pdf.fileName(), target, window);
}

} // namespace

void runPrintJob(QWidget *window, const QString &title,
                 const std::function<void(QPainter &painter)> &paint)
{
    QPrinter printer(QPrinter::ScreenResolution);
    printer.setPageSize(QPageSize(QPageSize::A4));
    printer.setColorMode(QPrinter::Color);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setDocName(title);
    printer.setOutputFileName(title + ".ps");
    QPrintDialog dialog(&printer, window);
    if (dialog.exec() == QDialog::Rejected)
        return;
    const QString target = printer.outputFileName();
    QString error;
    if (!target.isEmpty()) {
        error = printToFile(printer, target, window, paint);
    } else if (QPainter painter; painter.begin(&printer)) {
        paint(painter);
        qDebug("Printing Ready.");
        painter.end();
    } else {
        error = QStringLiteral("The printer \"%1\" does not answer.").arg(printer.printerName());
    }
    if (!error.isEmpty())
        QMessageBox::warning(window, QStringLiteral("Print"), error);
}

QString convertPages(const QString &pdf, const QString &target, QWidget *window)
{
    QSaveFile file(target);
    if (!file.open(QIODevice::WriteOnly))
        return cannotWrite(target, file.errorString());
    const std::unique_ptr<Poppler::Document> pages = Poppler::Document::load(pdf);
    if (pages == nullptr || pages->numPages() == 0)
        return cannotWrite(target, QStringLiteral("no pages came of it; is the disk full?"));
    if (isPostScript(target)) {
        const QString error = writePostScript(*pages, file, window);
        if (!error.isEmpty()) {
            file.cancelWriting();
            return cannotWrite(target, error);
        }
    } else {
        QFile source(pdf);
        const bool isRead = source.open(QIODevice::ReadOnly);
        const QByteArray bytes = source.readAll();
        if (!isRead || file.write(bytes) != bytes.size()) {
            file.cancelWriting();
            return cannotWrite(target, file.errorString());
        }
    }
    return file.commit() ? QString() : cannotWrite(target, file.errorString());
}

} // namespace ZEP
