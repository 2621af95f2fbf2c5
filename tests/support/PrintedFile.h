// SPDX-License-Identifier: GPL-3.0-or-later
// A PDF or PostScript file as a reader of it sees it: text with its places, fonts, and pixels.
#pragma once

#include "support/WaitUntil.h"

#include <QFile>
#include <QImage>
#include <QProcess>
#include <QRectF>
#include <QString>
#include <QTemporaryDir>
#include <poppler-qt6.h>

#include <gtest/gtest.h>

#include <memory>
#include <vector>

struct PrintedCharacter
{
    QString text;
    // In points from the upper left corner of the page.
    QRectF box;
};

class PrintedFile
{
public:
    explicit PrintedFile(const QString &path)
    {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
        m_Bytes = file.readAll();
        m_Pages = Poppler::Document::load(isPostScript() ? distilled(path) : path);
        EXPECT_NE(m_Pages, nullptr) << path.toStdString();
    }

    [[nodiscard]] bool isPostScript() const { return m_Bytes.startsWith("%!PS-Adobe-"); }
    [[nodiscard]] bool isPdf() const { return m_Bytes.startsWith("%PDF-"); }
    [[nodiscard]] const QByteArray &bytes() const { return m_Bytes; }
    [[nodiscard]] int pageCount() const { return m_Pages == nullptr ? 0 : m_Pages->numPages(); }
    [[nodiscard]] QString title() const { return m_Pages->title(); }
    [[nodiscard]] QSizeF pageSize() const { return page(0)->pageSizeF(); }
    // In reading order.
    [[nodiscard]] QString text(int number) const { return page(number)->text(QRectF()); }
    [[nodiscard]] std::vector<PrintedCharacter> characters(int number) const
    {
        std::vector<PrintedCharacter> found;
        for (const auto &word : page(number)->textList()) {
            const QString text = word->text();
            for (int i = 0; i < text.size(); ++i)
                found.push_back({text.mid(i, 1), word->charBoundingBox(i)});
        }
        return found;
    }
    // What a program finds that reads the PostScript itself.
    [[nodiscard]] QString foundText() const { return QString::fromUtf8(m_FoundText); }
    [[nodiscard]] bool embedsItsFonts() const
    {
        const QList<Poppler::FontInfo> fonts = m_Pages->fonts();
        return !fonts.isEmpty() &&
               std::all_of(fonts.begin(), fonts.end(),
                           [](const Poppler::FontInfo &font) { return font.isEmbedded(); });
    }
    // One pixel a point, times scale.
    [[nodiscard]] QImage image(int number, int scale = 1) const
    {
        constexpr int kPointsPerInch = 72;
        return page(number)->renderToImage(kPointsPerInch * scale, kPointsPerInch * scale);
    }

private:
    [[nodiscard]] std::unique_ptr<Poppler::Page> page(int number) const
    {
        return m_Pages->page(number);
    }
    QString distilled(const QString &path)
    {
        const QString text = interpreted(path, "txtwrite");
        QFile file(text);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        m_FoundText = file.readAll();
        return interpreted(path, "pdfwrite");
    }
    QString interpreted(const QString &path, const QString &device)
    {
        QProcess program;
        const QString made = m_Folder.filePath(device);
        program.start("gs", {"-q", "-dSAFER", "-dNOPAUSE", "-dBATCH", "-sDEVICE=" + device,
                             "-sOutputFile=" + made, path});
        EXPECT_TRUE(program.waitForFinished(kPatienceMilliseconds)) << "is ghostscript installed?";
        EXPECT_EQ(program.exitCode(), 0) << program.readAll().toStdString();
        return made;
    }

    QTemporaryDir m_Folder;
    QByteArray m_Bytes;
    QByteArray m_FoundText;
    std::unique_ptr<Poppler::Document> m_Pages;
};
