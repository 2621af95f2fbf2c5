// SPDX-License-Identifier: GPL-3.0-or-later
#include "PagePainter.h"

#include "Export.h"
#include "LeanSvg.h"

#include <QBuffer>
#include <QFileInfo>
#include <QImage>
#include <QImageWriter>
#include <QPainter>
#include <QSaveFile>
#include <QSvgGenerator>
#include <poppler-qt6.h>

#include <memory>
#include <vector>

namespace TAMBO::app {

namespace {

constexpr int kPointsPerInch = 72;
// Readable on a screen, and small enough for a mail.
constexpr int kDotsPerInch = 150;

QString numbered(const QString &target, int number)
{
    const QFileInfo file(target);
    const qsizetype stem = target.size() - file.suffix().size() - 1;
    return target.left(stem) + u'-' + QString::number(number) + target.mid(stem);
}

Failure unwrittenPage(const QString &file, const QString &cause)
{
    return {FailureKind::System,
            QStringLiteral("%1 was not written: %2").arg(file, cause).toStdString()};
}

bool writePng(const Poppler::Page &page, QIODevice &file)
{
    return QImageWriter(&file, "png").write(page.renderToImage(kDotsPerInch, kDotsPerInch));
}

// Letters become outlines, so that a viewer needs none of the fonts.
bool writeSvg(const Poppler::Page &page, const QString &title, QIODevice &file)
{
    QBuffer drawing;
    QSvgGenerator generator;
    generator.setOutputDevice(&drawing);
    generator.setTitle(title);
    generator.setDescription(QString());
    generator.setResolution(kPointsPerInch);
    const QSize size = page.pageSize();
    generator.setSize(size);
    generator.setViewBox(QRect(QPoint(), size));
    QPainter painter(&generator);
    const bool isDrawn = page.renderToPainter(&painter, kPointsPerInch, kPointsPerInch);
    if (!painter.end() || !isDrawn)
        return false;
    const QByteArray bytes = leanSvg(drawing.data());
    return file.write(bytes) == bytes.size();
}

// One file per page; old files are replaced when all pages are complete.
Result<void> writePages(const QString &pdf, const QString &target, PagePicture kind)
{
    const std::unique_ptr<Poppler::Document> pages = Poppler::Document::load(pdf);
    if (pages == nullptr)
        return unwrittenPage(target, QStringLiteral("the pages cannot be read back"));
    pages->setRenderBackend(kind == PagePicture::Svg ? Poppler::Document::QPainterBackend
                                                     : Poppler::Document::SplashBackend);
    pages->setRenderHint(Poppler::Document::Antialiasing);
    pages->setRenderHint(Poppler::Document::TextAntialiasing);
    std::vector<std::unique_ptr<QSaveFile>> files;
    for (int number = 0; number < pages->numPages(); ++number) {
        const auto &file =
            files.emplace_back(std::make_unique<QSaveFile>(numbered(target, number + 1)));
        const std::unique_ptr<Poppler::Page> page = pages->page(number);
        if (!file->open(QIODevice::WriteOnly) ||
            !(kind == PagePicture::Svg ? writeSvg(*page, pages->title(), *file)
                                       : writePng(*page, *file)) ||
            file->error() != QFileDevice::NoError)
            return unwrittenPage(file->fileName(), file->errorString());
    }
    for (const auto &file : files) {
        if (!file->commit())
            return unwrittenPage(file->fileName(), file->errorString());
    }
    return {};
}

} // namespace

} // namespace TAMBO::app

extern "C" TAMBO_API void tamboPaintPages(const QString &pdf, const QString &target,
                                          TAMBO::app::PagePicture kind,
                                          TAMBO::Result<void> &outcome)
{
    outcome = TAMBO::app::writePages(pdf, target, kind);
}
