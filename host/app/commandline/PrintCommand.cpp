// SPDX-License-Identifier: GPL-3.0-or-later
#include "PrintCommand.h"

#include "Alignment.h"
#include "Config.h"
#include "ConfigStore.h"
#include "DataAdder.h"
#include "ExitStatus.h"
#include "Loader.h"
#include "ObjectOperations.h"
#include "ObjectSources.h"
#include "ObjectSpace.h"
#include "OpenedSession.h"
#include "PageFile.h"
#include "PagePictures.h"
#include "Plugins.h"
#include "Result.h"
#include "SessionFile.h"
#include "Text.h"

#include <QFile>
#include <QFontDatabase>
#include <QMetaObject>
#include <QPainter>
#include <QPrinter>
#include <QTemporaryFile>
#include <QWidget>

#include <algorithm>
#include <ostream>
#include <utility>
#include <vector>

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

    // Whether all was painted. The slot gives nothing back, so here, and only here, a sentence
    // stands for what happened.
    [[nodiscard]] static Result<void> outcome()
    {
        if (s_Lines.isEmpty())
            return Failure{FailureKind::Refused, "the editor painted nothing"};
        const QString &last = s_Lines.back();
        if (last.startsWith(QStringLiteral("Printed in ")))
            return {};
        return Failure{FailureKind::Refused, last.simplified().toStdString()};
    }

private:
    static void listen(QtMsgType, const QMessageLogContext &, const QString &text)
    {
        s_Lines << text;
    }

    inline static QStringList s_Lines;
    QtMessageHandler m_Before;
};

Failure wrongFont(const QString &cause)
{
    return {FailureKind::BadInput, cause.toStdString()};
}

Result<void> applySettings(const PrintOrder &order)
{
    services::ConfigStore &settings = services::ConfigStore::instance();
    if (!order.font.empty()) {
        bool isFont = false;
        const QFont font = Setting(order.font).ToFont(&isFont);
        const QString text = QString::fromStdString(order.font);
        if (!isFont)
            return wrongFont(
                QStringLiteral("--font needs a name and a size, as in \"DejaVu Sans Mono,11\", "
                               "instead of \"%1\"")
                    .arg(text));
        if (!QFontDatabase::hasFamily(font.family()))
            return wrongFont(QStringLiteral("no font called %1 is installed").arg(font.family()));
        settings.setValue(kEditor, "Font", order.font);
    }
    if (order.withElements)
        settings.setValue(kEditor, "PrintSSE", "true");
    return {};
}

Result<void> paint(QWidget &window, PrintOrder::Style style, const QString &title,
                   const QString &pdf)
{
    QPrinter printer(QPrinter::ScreenResolution);
    printer.setPageSize(QPageSize(QPageSize::A4));
    printer.setColorMode(QPrinter::Color);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setDocName(title);
    printer.setOutputFileName(pdf);
    QPainter painter;
    if (!painter.begin(&printer))
        return Failure{FailureKind::System, pdf.toStdString() + " cannot be written"};
    const PaintingTalk talk;
    QPainter *argument = &painter;
    const int value = static_cast<int>(style);
    if (!QMetaObject::invokeMethod(&window, "drawIt", Qt::DirectConnection,
                                   Q_ARG(QPainter *, argument),
                                   QGenericArgument("PrintStyle", &value)))
        return Failure{FailureKind::Refused, "the editor cannot print"};
    return PaintingTalk::outcome();
}

Result<void> writePages(const PrintOrder &order, const QString &title, const QString &pdf)
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
    // The library tells by text.
    const QString error = Pages::writePageFile(pdf, {target, title, {}});
    return error.isEmpty() ? Result<void>() : Failure{FailureKind::System, error.toStdString()};
}

Result<void> load(const std::string &file)
{
    if (sessions::isSessionFile(file))
        return OpenedSession::loadObjects(file);
    ObjectSources sources;
    Loader loader(sources);
    const LoadReport report = loader.openNow(file);
    return report.failures.empty() ? Result<void>() : Result<void>(report.failures.front().failure);
}

Result<std::vector<bool>> flagsOf(const std::vector<PrintOrder::Range> &ranges, std::size_t count,
                                  const char *noun, const std::string &file)
{
    std::vector<bool> flags(count, ranges.empty());
    for (const auto &[begin, end] : ranges) {
        if (end > count)
            return Failure{FailureKind::BadInput,
                           "the alignment has " + counted(count, noun) + ", and no " + noun + ' ' +
                               std::to_string(end),
                           {file}};
        std::fill(flags.begin() + std::ptrdiff_t(begin), flags.begin() + std::ptrdiff_t(end), true);
    }
    return flags;
}

// The one that is asked for, or an alignment of the part of it, under its name.
Result<Alignment *> printedAlignment(const PrintOrder &order, const std::string &file)
{
    std::vector<Alignment *> found;
    ObjectSpace &space = ObjectSpace::get();
    for (Compound *const object : space) {
        if (auto *const alignment = dynamic_cast<Alignment *>(object))
            found.push_back(alignment);
    }
    if (found.empty())
        return Failure{FailureKind::BadInput, file + " holds no alignment"};
    if (order.alignment > found.size())
        return Failure{FailureKind::BadInput,
                       "there " + std::string(found.size() == 1 ? "is " : "are ") +
                           counted(found.size(), "alignment") + ", and no number " +
                           std::to_string(order.alignment),
                       {file}};
    Alignment &whole = *found[order.alignment - 1];
    if (order.rows.empty() && order.columns.empty())
        return &whole;
    const auto rows = flagsOf(order.rows, whole.height(), "row", file);
    const auto columns = rows ? flagsOf(order.columns, whole.width(), "column", file) : rows;
    if (!columns)
        return columns.error();
    setObjectLocked(space, false);
    setObjectLocked(whole, false);
    const DataAdder<Space> guard(nullptr, Space::instance());
    const std::string name = whole.Name();
    renameObject(whole, "whole");
    Alignment *const part = whole.duplicate(rows.value(), columns.value(), name);
    if (part == nullptr)
        return Failure{FailureKind::Refused, "the part was not made", {file}};
    return part;
}

Result<void> print(const PrintOrder &order)
{
    const std::string file = QFile::decodeName(order.file.c_str()).toStdString();
    if (const Result<void> loaded = load(order.file); !loaded)
        return loaded.error();
    const Result<Alignment *> printed = printedAlignment(order, file);
    if (!printed)
        return printed.error();

    Plugins plugins;
    plugins.find();
    Alignment &alignment = *printed.value();
    // Left open at the end: closing it would remember where it stood.
    const Result<QWidget *> window = plugins.show(alignment);
    if (!window)
        return window.error();

    QTemporaryFile pdf(QFile::decodeName(Config::GetPersonalTmpDir().c_str()) +
                       QStringLiteral("/pages-XXXXXX.pdf"));
    if (!pdf.open())
        return Failure{FailureKind::System,
                       pdf.errorString().toStdString(),
                       {pdf.fileTemplate().toStdString()}};
    pdf.close();
    const QString title = QString::fromStdString(alignment.Name());
    const Result<void> painted = paint(*window.value(), order.style, title, pdf.fileName());
    if (!painted)
        return Failure{painted.error().kind, painted.error().message(), {file}};
    return writePages(order, title, pdf.fileName());
}

} // namespace

int runPrint(const PrintOrder &order, std::ostream &err)
{
    if (const Result<void> applied = applySettings(order); !applied)
        return complain(err, applied.error(), kWrongCall);
    if (const Result<void> printed = print(order); !printed)
        return complain(err, printed.error(), kBadInput);
    return 0;
}

} // namespace TAMBO::app
