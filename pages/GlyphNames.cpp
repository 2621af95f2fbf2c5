// SPDX-License-Identifier: GPL-3.0-or-later
#include "GlyphNames.h"

#include <QList>
#include <QRegularExpression>
#include <QSet>
#include <QString>

#include <algorithm>

namespace Pages {

namespace {

using Names = QHash<int, QByteArray>;

// As the toolkit writes its files: a table of places at the end, fonts outside of compressed
// streams, and the table of letters not compressed.
class Objects
{
public:
    explicit Objects(const QByteArray &pdf) : m_Pdf(pdf)
    {
        const qsizetype start = pdf.lastIndexOf("startxref");
        if (start < 0)
            return;
        const QByteArray place = pdf.mid(start + 9, 24).simplified().split(' ').value(0);
        const qsizetype table = place.toLongLong();
        const qsizetype lines = pdf.indexOf('\n', table) + 1;
        if (table <= 0 || lines <= 0 || !pdf.sliced(std::min(table, pdf.size())).startsWith("xref"))
            return;
        const QByteArray head = pdf.sliced(lines, std::min<qsizetype>(40, pdf.size() - lines));
        const int count = head.simplified().split(' ').value(1).toInt();
        constexpr qsizetype kEntry = 20;
        qsizetype at = pdf.indexOf('\n', lines) + 1;
        for (int i = 0; i < count && at > 0 && at + kEntry <= pdf.size(); ++i, at += kEntry)
            m_Places.append(pdf.sliced(at, 10).toLongLong());
    }

    [[nodiscard]] int count() const { return static_cast<int>(m_Places.size()); }
    // Empty when there is no such object.
    [[nodiscard]] QByteArray text(int number) const
    {
        const qsizetype begin = m_Places.value(number, 0);
        const QByteArray head = QByteArray::number(number) + " 0 obj";
        if (begin <= 0 || begin >= m_Pdf.size() || m_Pdf.indexOf(head, begin) != begin)
            return {};
        const qsizetype end = m_Pdf.indexOf("endobj", begin);
        return end < 0 ? QByteArray() : m_Pdf.sliced(begin, end - begin);
    }

private:
    const QByteArray &m_Pdf;
    QList<qsizetype> m_Places;
};

QByteArray match(const char *pattern, const QByteArray &text)
{
    const QRegularExpressionMatch found =
        QRegularExpression(QString::fromLatin1(pattern)).match(QString::fromLatin1(text));
    return found.captured(1).toLatin1();
}

int reference(const char *key, const QByteArray &object)
{
    const QByteArray pattern = QByteArray(key) + R"(\s*\[?\s*(\d+) 0 R)";
    return match(pattern.constData(), object).toInt();
}

// A name that readers of fonts take apart: "uni" and the letter's number, in units of 16 bits.
QByteArray nameOf(const QByteArray &units)
{
    return units.isEmpty() || units.size() % 4 != 0 ? QByteArray() : "uni" + units.toUpper();
}

QByteArray next(const QByteArray &units, int offset)
{
    // Of several units only the last one counts on.
    const QByteArray last = units.right(4);
    return units.chopped(last.size()) + QByteArray::number(last.toInt(nullptr, 16) + offset, 16)
                                            .rightJustified(last.size(), '0');
}

// Lines "<first> <last> <letter>" and "<first> <last> [<letter> <letter> …]".
Names readRanges(const QByteArray &table)
{
    static const QRegularExpression kLine(
        QStringLiteral(R"(<([0-9A-Fa-f]{4})>\s*<([0-9A-Fa-f]{4})>\s*(<[0-9A-Fa-f]+>|\[[^\]]*\]))"));
    static const QRegularExpression kUnits(QStringLiteral("<([0-9A-Fa-f]+)>"));
    Names names;
    const QString text = QString::fromLatin1(table);
    for (const QRegularExpressionMatch &line : kLine.globalMatch(text)) {
        const int first = line.captured(1).toInt(nullptr, 16);
        const int last = line.captured(2).toInt(nullptr, 16);
        QList<QByteArray> letters;
        for (const QRegularExpressionMatch &letter : kUnits.globalMatch(line.captured(3)))
            letters.append(letter.captured(1).toLatin1());
        const bool isList = line.captured(3).startsWith(u'[');
        for (int glyph = first; glyph <= last && !letters.isEmpty(); ++glyph) {
            const int place = glyph - first;
            if (isList && place >= letters.size())
                break;
            names.insert(glyph, nameOf(isList ? letters.at(place) : next(letters[0], place)));
        }
    }
    return names;
}

// Two glyphs of a font may stand for the same letter but need names of their own; what follows
// the dot does not count.
void makeUnlike(Names &names)
{
    QSet<QByteArray> taken;
    QList<int> glyphs = names.keys();
    std::sort(glyphs.begin(), glyphs.end());
    for (const int glyph : glyphs) {
        QByteArray &name = names[glyph];
        if (taken.contains(name))
            name += ".g" + QByteArray::number(glyph);
        taken.insert(name);
    }
}

} // namespace

GlyphNames::GlyphNames(const QByteArray &pdf)
{
    const Objects objects(pdf);
    for (int number = 1; number < objects.count(); ++number) {
        const QByteArray font = objects.text(number);
        if (!font.contains("/Subtype /Type0"))
            continue;
        const QByteArray inner = objects.text(reference("/DescendantFonts", font));
        const QByteArray facts = objects.text(reference("/FontDescriptor", inner));
        const QByteArray name = match(R"(/FontName\s*/(\S+))", facts);
        Names names = readRanges(objects.text(reference("/ToUnicode", font)));
        names.removeIf([](const Names::iterator &entry) {
            // Nothing, and what stands for the lack of a glyph.
            return entry.value().isEmpty() || entry.value() == "uni0000";
        });
        makeUnlike(names);
        if (!name.isEmpty() && !names.isEmpty())
            m_Fonts.insert(name, names);
    }
}

QHash<int, QByteArray> GlyphNames::of(const QByteArray &font) const
{
    return m_Fonts.value(font);
}

// The converter splits a font into parts of 256 glyphs, FONT_00, FONT_01, …, and calls the glyphs
// of each c00 to cff.
QByteArray GlyphNames::applied(const QByteArray &setup) const
{
    static const QRegularExpression kPart(
        QStringLiteral(R"(^/FontName /(\S+)_([0-9a-f]{2}) def$)"));
    static const QRegularExpression kGlyph(
        QStringLiteral(R"(^(?:dup \d+ )?/c([0-9a-f]{2}) (?:put|\d+ def)$)"));
    QByteArray result;
    result.reserve(setup.size() * 2);
    Names names;
    int first = 0;
    for (qsizetype at = 0; at < setup.size();) {
        const qsizetype stop = setup.indexOf('\n', at);
        const qsizetype end = stop < 0 ? setup.size() : stop + 1;
        QByteArray line = setup.sliced(at, end - at);
        at = end;
        if (line.startsWith("/FontName ")) {
            const auto part = kPart.match(QString::fromLatin1(line).trimmed());
            names = m_Fonts.value(part.captured(1).toLatin1());
            first = part.captured(2).toInt(nullptr, 16) * 256;
        } else if (!names.isEmpty() && line.startsWith("FontName ")) {
            names.clear();
        } else if (!names.isEmpty() && (line.startsWith("/c") || line.startsWith("dup "))) {
            const auto glyph = kGlyph.match(QString::fromLatin1(line).trimmed());
            const QByteArray number = glyph.captured(1).toLatin1();
            const QByteArray name = names.value(first + number.toInt(nullptr, 16));
            if (glyph.hasMatch() && !name.isEmpty())
                line.replace("/c" + number, "/" + name);
        }
        result += line;
    }
    return result;
}

} // namespace Pages
