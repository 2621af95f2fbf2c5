// SPDX-License-Identifier: GPL-3.0-or-later
#include "PageFile.h"

#include "SetupFilter.h"

#include <QFile>
#include <QSaveFile>
#include <poppler-qt6.h>

#include <algorithm>
#include <memory>
#include <numeric>

namespace Pages {

namespace {

bool isPostScript(const QString &name)
{
    return name.endsWith(QStringLiteral(".ps"), Qt::CaseInsensitive);
}

QString cannotWrite(const QString &target, const QString &reason)
{
    return QStringLiteral("%1 was not written: %2").arg(target, reason);
}

QString writePostScript(const QByteArray &pdf, const PageFile &file, QIODevice &target)
{
    const std::unique_ptr<Poppler::Document> pages = Poppler::Document::loadFromData(pdf);
    if (pages == nullptr || pages->numPages() == 0)
        return QStringLiteral("the pages cannot be read back");
    QList<int> numbers(pages->numPages());
    std::iota(numbers.begin(), numbers.end(), 1);
    SetupFilter filter(GlyphNames(pdf), target);
    const std::unique_ptr<Poppler::PSConverter> converter = pages->psConverter();
    converter->setOutputDevice(&filter);
    converter->setPageList(numbers);
    converter->setTitle(file.title);
    const QSizeF size = std::unique_ptr<Poppler::Page>(pages->page(0))->pageSizeF();
    converter->setPaperWidth(qRound(size.width()));
    converter->setPaperHeight(qRound(size.height()));
    struct Listener
    {
        const Progress &progress;
        int count;
    } listener{file.progress, static_cast<int>(numbers.size())};
    if (file.progress) {
        converter->setPageConvertedCallback(
            [](int page, void *to) {
                const auto *told = static_cast<Listener *>(to);
                told->progress(page, told->count);
            },
            &listener);
    }
    const bool isConverted = converter->convert();
    return filter.finish() && isConverted ? QString() : QStringLiteral("the conversion failed");
}

} // namespace

QString writePageFile(const QString &pdf, const PageFile &file)
{
    QSaveFile target(file.target);
    if (!target.open(QIODevice::WriteOnly))
        return cannotWrite(file.target, target.errorString());
    QFile source(pdf);
    if (!isCompletePdf(pdf) || !source.open(QIODevice::ReadOnly))
        return cannotWrite(file.target,
                           QStringLiteral("the pages broke off; is there room on the disk?"));
    const QByteArray bytes = source.readAll();
    QString error;
    if (isPostScript(file.target))
        error = writePostScript(bytes, file, target);
    else
        target.write(bytes);
    if (target.error() != QFileDevice::NoError)
        error = target.errorString();
    if (!error.isEmpty()) {
        target.cancelWriting();
        return cannotWrite(file.target, error);
    }
    return target.commit() ? QString() : cannotWrite(file.target, target.errorString());
}

bool isCompletePdf(const QString &pdf)
{
    QFile file(pdf);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    constexpr qint64 kTail = 32;
    file.seek(std::max<qint64>(0, file.size() - kTail));
    return file.readAll().trimmed().endsWith("%%EOF");
}

} // namespace Pages
