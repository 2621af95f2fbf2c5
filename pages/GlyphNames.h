// SPDX-License-Identifier: GPL-3.0-or-later
// Which letters the glyphs of a PDF file's fonts stand for. The converter to PostScript numbers
// glyphs only; with their names, programs find text in PostScript and in what is made of it.
#pragma once

#include <QByteArray>
#include <QHash>

namespace Pages {

class GlyphNames
{
public:
    // Fonts that do not say what their glyphs stand for, or in a way unknown here, are left out.
    explicit GlyphNames(const QByteArray &pdf);

    // By number, of the font that the file calls so; empty for an unknown font.
    [[nodiscard]] QHash<int, QByteArray> of(const QByteArray &font) const;
    // What comes before the first page of a PostScript file, with the glyphs of its fonts named.
    // Everything else in it, and glyphs without a known letter, stay as they are.
    [[nodiscard]] QByteArray applied(const QByteArray &setup) const;

private:
    QHash<QByteArray, QHash<int, QByteArray>> m_Fonts;
};

} // namespace Pages
