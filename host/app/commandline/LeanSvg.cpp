// SPDX-License-Identifier: GPL-3.0-or-later
#include "LeanSvg.h"

#include <QHash>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include <vector>

namespace TAMBO::app {

namespace {

// Shorter ones are as long as a reference to them.
constexpr qsizetype kLongOutline = 100;

struct Outline
{
    QString rule;
    QString data;

    bool operator==(const Outline &) const = default;
};

size_t qHash(const Outline &outline, size_t seed = 0)
{
    return qHashMulti(seed, outline.rule, outline.data);
}

// The outline that the element is, if it is nothing else and worth a reference.
bool isOutline(const QXmlStreamReader &reader, Outline &outline)
{
    if (reader.name() != u"path")
        return false;
    outline = {};
    for (const QXmlStreamAttribute &attribute : reader.attributes()) {
        if (attribute.name() == u"d")
            outline.data = attribute.value().toString();
        else if (attribute.name() == u"fill-rule")
            outline.rule = attribute.value().toString();
        else if (attribute.name() != u"vector-effect" || attribute.value() != u"none")
            return false;
    }
    return outline.data.size() >= kLongOutline;
}

// A group or a text shows nothing by itself.
bool isFrame(QStringView name)
{
    return name == u"g" || name == u"text";
}

bool isOfFont(const QXmlStreamAttribute &attribute)
{
    return attribute.name().startsWith(QLatin1String("font-"));
}

// What comes several times can only be known before the first is written.
class SvgSurvey
{
public:
    explicit SvgSurvey(const QByteArray &svg)
    {
        QXmlStreamReader reader(svg);
        reader.setNamespaceProcessing(false);
        QHash<Outline, int> counts;
        Outline outline;
        while (!reader.atEnd()) {
            reader.readNext();
            m_HasText = m_HasText || (reader.isCharacters() && !reader.isWhitespace() && m_InText);
            if (reader.isStartElement() || reader.isEndElement())
                m_InText = reader.isStartElement() && reader.name() == u"text";
            if (!reader.isStartElement() || !isOutline(reader, outline) || ++counts[outline] != 2)
                continue;
            m_Names.insert(outline, QStringLiteral("o%1").arg(m_Names.size() + 1));
            m_Shared.push_back(outline);
        }
        m_IsSound = !reader.hasError();
    }

    [[nodiscard]] bool isSound() const noexcept { return m_IsSound; }
    [[nodiscard]] bool hasText() const noexcept { return m_HasText; }
    [[nodiscard]] const std::vector<Outline> &shared() const noexcept { return m_Shared; }
    // Empty for an outline that comes once.
    [[nodiscard]] QString name(const Outline &outline) const { return m_Names.value(outline); }

private:
    QHash<Outline, QString> m_Names;
    std::vector<Outline> m_Shared;
    bool m_HasText = false;
    bool m_InText = false;
    bool m_IsSound = false;
};

class LeanSvgWriter
{
public:
    explicit LeanSvgWriter(const QByteArray &svg)
        : m_Survey(svg), m_Original(svg), m_Reader(svg), m_Writer(&m_Text)
    {
        m_Reader.setNamespaceProcessing(false);
        m_Writer.setAutoFormatting(true);
        m_Writer.setAutoFormattingIndent(0);
    }

    QByteArray text()
    {
        if (!m_Survey.isSound())
            return m_Original;
        while (!m_Reader.atEnd()) {
            m_Reader.readNext();
            if (m_Reader.isStartElement())
                begin();
            else if (m_Reader.isEndElement())
                end();
            else if (!m_Reader.isWhitespace() && !m_Reader.atEnd())
                copy();
        }
        m_Writer.writeEndDocument();
        return m_Text;
    }

private:
    void begin()
    {
        if (isFrame(m_Reader.name())) {
            m_Frames.push_back({m_Reader.name().toString(), m_Reader.attributes()});
            return;
        }
        openFrames();
        Outline outline;
        const QString name = isOutline(m_Reader, outline) ? m_Survey.name(outline) : QString();
        if (name.isEmpty()) {
            open({m_Reader.name().toString(), m_Reader.attributes()});
            return;
        }
        m_Writer.writeStartElement(QStringLiteral("use"));
        m_Writer.writeAttribute(QStringLiteral("xlink:href"), u'#' + name);
    }
    void end()
    {
        if (m_Reader.name() == u"defs")
            writeShared();
        // What was not opened has shown nothing.
        if (m_Frames.empty())
            m_Writer.writeEndElement();
        else
            m_Frames.pop_back();
    }
    void copy()
    {
        openFrames();
        m_Writer.writeCurrentToken(m_Reader);
    }

    struct Element
    {
        QString name;
        QXmlStreamAttributes attributes;
    };

    void open(const Element &element)
    {
        m_Writer.writeStartElement(element.name);
        for (const QXmlStreamAttribute &attribute : element.attributes) {
            if (m_Survey.hasText() || !isOfFont(attribute))
                m_Writer.writeAttribute(attribute);
        }
    }
    void openFrames()
    {
        for (const Element &frame : m_Frames)
            open(frame);
        m_Frames.clear();
    }
    void writeShared()
    {
        for (const Outline &outline : m_Survey.shared()) {
            m_Writer.writeEmptyElement(QStringLiteral("path"));
            m_Writer.writeAttribute(QStringLiteral("id"), m_Survey.name(outline));
            if (!outline.rule.isEmpty())
                m_Writer.writeAttribute(QStringLiteral("fill-rule"), outline.rule);
            m_Writer.writeAttribute(QStringLiteral("d"), outline.data);
        }
    }

    const SvgSurvey m_Survey;
    const QByteArray m_Original;
    QXmlStreamReader m_Reader;
    QByteArray m_Text;
    QXmlStreamWriter m_Writer;
    // Begun in the drawing, not yet in ours.
    std::vector<Element> m_Frames;
};

} // namespace

QByteArray leanSvg(const QByteArray &svg)
{
    return LeanSvgWriter(svg).text();
}

} // namespace TAMBO::app
