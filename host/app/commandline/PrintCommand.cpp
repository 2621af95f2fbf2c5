// SPDX-License-Identifier: GPL-3.0-or-later
#include "PrintCommand.h"

#include "Alignment.h"
#include "Config.h"
#include "ConfigStore.h"
#include "ExitStatus.h"
#include "Loader.h"
#include "ObjectSources.h"
#include "PageFile.h"
#include "PagePictures.h"
#include "Plugins.h"

#include <QFile>
#include <QFontDatabase>
#include <QMetaObject>
#include <QPainter>
#include <QPrinter>
#include <QTemporaryFile>
#include <QWidget>

#include <ostream>
#include <utility>

namespace TAMBO::app {

namespace {

const std::string kEditor = "KALMO2";

// What the editor says while it paints is for the log of its developers; of a refusal to paint it
// is the only sign.
class PaintingTalk
{
public:
    PaintingTalk() : m_Before(qInstallMessageHandler(listen)) { s_Lines.clear(); }
    ~PaintingTalk() { qInstallMessageHandler(m_Before); }
    PaintingTalk(const PaintingTalk &) = delete;
    PaintingTalk &operator=(const PaintingTalk &) = delete;

    // Why nothing was painted; empty when all was.
    [[nodiscard]] static QString refusal()
    {
        if (s_Lines.isEmpty())
            return QStringLiteral("the editor painted nothing");
        const QString &last = s_Lines.back();
        return last.startsWith(QStringLiteral("Printed in ")) ? QString() : last.simplified();
    }

private:
    static void listen(QtMsgType, const QMessageLogContext &, const QString &text)
    {
        s_Lines << text;
    }

    inline static QStringList s_Lines;
    QtMessageHandler m_Before;
};

// The sentence, or nothing.
QString applySettings(const PrintOrder &order)
{
    services::ConfigStore &settings = services::ConfigStore::instance();
    if (!order.font.empty()) {
        bool isFont = false;
        const QFont font = Setting(order.font).ToFont(&isFont);
        const QString text = QString::fromStdString(order.font);
        if (!isFont)
            return QStringLiteral("--font needs a name and a size, as in \"DejaVu Sans Mono,11\", "
                                  "instead of \"%1\"")
                .arg(text);
        if (!QFontDatabase::hasFamily(font.family()))
            return QStringLiteral("no font called %1 is installed").arg(font.family());
        settings.setValue(kEditor, "Font", order.font);
    }
    if (order.withElements)
        settings.setValue(kEditor, "PrintSSE", "true");
    return {};
}

QString paint(QWidget &window, PrintOrder::Style style, const QString &title, const QString &pdf)
{
    QPrinter printer(QPrinter::ScreenResolution);
    printer.setPageSize(QPageSize(QPageSize::A4));
    printer.setColorMode(QPrinter::Color);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setDocName(title);
    printer.setOutputFileName(pdf);
    QPainter painter;
    if (!painter.begin(&printer))
        return QStringLiteral("%1 cannot be written").arg(pdf);
    const PaintingTalk talk;
    QPainter *argument = &painter;
    const int value = static_cast<int>(style);
    if (!QMetaObject::invokeMethod(&window, "drawIt", Qt::DirectConnection,
                                   Q_ARG(QPainter *, argument),
                                   QGenericArgument("PrintStyle", &value)))
        return QStringLiteral("the editor cannot print");
    return PaintingTalk::refusal();
}

QString writePages(const PrintOrder &order, const QString &title, const QString &pdf)
{
    const QString target = QFile::decodeName(order.output.c_str());
    switch (order.kind) {
    case PrintOrder::Kind::Svg:
        return writePagePictures(pdf, target, PagePicture::Svg);
    case PrintOrder::Kind::Png:
        return writePagePictures(pdf, target, PagePicture::Png);
    case PrintOrder::Kind::Pdf:
    case PrintOrder::Kind::PostScript:
        break;
    }
    return Pages::writePageFile(pdf, {target, title, {}});
}

QString print(const PrintOrder &order)
{
    ObjectSources sources;
    Loader loader(sources);
    const LoadReport report = loader.openNow(order.file);
    const QString file = QFile::decodeName(order.file.c_str());
    if (!report.failures.empty())
        return QString::fromStdString(report.failures.front().failure.message());
    if (report.alignments.empty())
        return QStringLiteral("%1 holds no alignment").arg(file);

    Plugins plugins;
    plugins.loadAll(Plugins::directory());
    Alignment &alignment = *report.alignments.front();
    // Left open at the end: closing it would remember where it stood.
    QWidget *window = plugins.show(alignment);
    if (window == nullptr)
        return QStringLiteral("there is no alignment editor in %1").arg(Plugins::directory());

    QTemporaryFile pdf(QFile::decodeName(Config::GetPersonalTmpDir().c_str()) +
                       QStringLiteral("/pages-XXXXXX.pdf"));
    if (!pdf.open())
        return QStringLiteral("%1: %2").arg(pdf.fileTemplate(), pdf.errorString());
    pdf.close();
    const QString title = QString::fromStdString(alignment.Name());
    const QString refusal = paint(*window, order.style, title, pdf.fileName());
    return refusal.isEmpty() ? writePages(order, title, pdf.fileName())
                             : QStringLiteral("%1: %2").arg(file, refusal);
}

} // namespace

int runPrint(const PrintOrder &order, std::ostream &err)
{
    const QString wrong = applySettings(order);
    const QString error = wrong.isEmpty() ? print(order) : wrong;
    if (error.isEmpty())
        return 0;
    err << "tambo: " << error.toStdString() << '\n';
    return wrong.isEmpty() ? kBadInput : kWrongCall;
}

} // namespace TAMBO::app
