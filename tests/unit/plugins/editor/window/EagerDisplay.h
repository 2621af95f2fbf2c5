// SPDX-License-Identifier: GPL-3.0-or-later
// The names and the header of an alignment with every item made at once, to compare with an editor
// window, which makes them when somebody asks.
#pragma once

#include "Alignment.h"
#include "CellMeasures.h"
#include "ColItem.h"
#include "IdItem.h"
#include "QCanvas.h"
#include "QCanvasRectangle.h"
#include "QCanvasText.h"
#include "RowItem.h"
#include "View.h"

#include <QFontMetrics>

#include <limits>
#include <string>

class EagerDisplay
{
public:
    EagerDisplay() : m_Panel(header, nullptr, nullptr, 0)
    {
        m_Panel.setCellSizeSource([this] { return QSize(m_Measures.cellWidth(), own().height()); });
    }

    void setFont(const QFont &font)
    {
        m_Font = font;
        m_Measures.setFont(font);
    }
    void setCell(const QSize &size) { m_Measures.setCell(size); }
    // 0 for eight cells.
    void setNameWidth(int width) { m_NameWidth = width; }

    void populate(TAMBO::Alignment &alignment)
    {
        m_Data = &alignment;
        const int width = (static_cast<int>(alignment.width()) + 1) * m_Measures.cellWidth();
        const int height = (static_cast<int>(alignment.height()) + 1) * m_Measures.cellHeight();
        header.clear();
        header.resize(width, 4 * own().height());
        m_Numbering.clear();
        for (unsigned long col = 0; col < alignment.width(); ++col)
            addColumn(col);
        auto *marker = new QCanvasRectangle(0, 3 * own().height(), 1, 1, &header);
        m_Panel.setMarker(marker);
        m_Panel.SetRange(alignment.range().first, alignment.range().second);
        marker->show();
        createNumbering();
        populateNames(alignment.height(), height);
    }
    void populateNames(unsigned long rows, int height)
    {
        names.clear();
        const int wanted = m_NameWidth > 0 ? m_NameWidth : 8 * own().width();
        names.resize(wanted, height);
        const CellMeasures::Letters &letters = m_Measures.nameLetters();
        const int right = wanted - own().width();
        for (unsigned long row = 0; row < rows; ++row) {
            const int y = static_cast<int>(row) * m_Measures.cellHeight();
            auto *item = new RowItem(m_Data, row, letters.font, &names, right, y);
            if (!m_Measures.isOwn())
                item->setPlace(QRect(0, y, right, m_Measures.cellHeight()), letters.areShown);
            item->setZ(3.0);
            item->show();
        }
    }
    void createNumbering()
    {
        for (const QCanvasItem *item : std::as_const(m_Numbering))
            delete item;
        m_Numbering.clear();
        unsigned long count = 1;
        int free = std::numeric_limits<int>::min();
        for (unsigned long col = 0; col < m_Data->width(); ++col) {
            auto *residue = dynamic_cast<TAMBO::Residue *>(m_Data->getItem(0, col));
            if (residue == nullptr)
                continue;
            if (count % 10 == 0)
                addNumber(QString::fromStdString(residue->GetSeqId().getValue()), col, free);
            ++count;
            if (const TAMBO::Compound *element = residue->GetSSE())
                addElement(QChar(QLatin1Char(element->TypeCode())).toLower(), col);
        }
    }
    void setRange(unsigned long begin, unsigned long end) { m_Panel.SetRange(begin, end); }

    QCanvas names;
    QCanvas header;

private:
    using CellMeasures = ZEP::CellMeasures;

    [[nodiscard]] QSize own() const { return m_Measures.ownCell(); }
    void addColumn(unsigned long col)
    {
        const CellMeasures::Letters &letters = m_Measures.columnLetters();
        const int line = own().height();
        const int x = centre(col);
        const auto place = [&](PlacedText &item, int number) {
            if (!m_Measures.isOwn())
                item.setPlace(QRect(static_cast<int>(col) * m_Measures.cellWidth(), number * line,
                                    m_Measures.cellWidth(), line),
                              letters.areShown);
        };
        auto *consensus = new IdItem(m_Data, col, letters.font, &header, x, 2.0 * line);
        place(*consensus, 2);
        consensus->show();
        auto *mark = new ColItem(m_Data, col, letters.font, &header, x, 3.0 * line);
        place(*mark, 3);
        mark->setZ(3.0);
        mark->show();
    }
    [[nodiscard]] int centre(unsigned long col) const
    {
        return static_cast<int>((static_cast<double>(col) + 0.5) * m_Measures.cellWidth());
    }
    void addNumber(const QString &text, unsigned long col, int &free)
    {
        if (!m_Measures.isOwn()) {
            const int length = QFontMetrics(m_Font).horizontalAdvance(text);
            const int left = centre(col) - length / 2;
            if (left < free)
                return;
            free = left + length + own().width();
        }
        addText(text, m_Font, col, 0);
    }
    void addElement(const QString &letter, unsigned long col)
    {
        const CellMeasures::Letters &letters = m_Measures.columnLetters();
        if (letters.areShown) {
            addText(letter, letters.font, col, own().width());
            return;
        }
        const int width = m_Measures.cellWidth();
        auto *bar =
            new QCanvasRectangle(static_cast<int>(col) * width, own().width() + own().height() / 3,
                                 width, own().height() / 3, &header);
        bar->setPen(Qt::NoPen);
        bar->setBrush(Qt::darkGray);
        bar->setZ(2.0);
        bar->show();
        m_Numbering.append(bar);
    }
    void addText(const QString &text, const QFont &font, unsigned long col, int y)
    {
        auto *item = new QCanvasText(text, font, &header);
        item->setTextFlags(Qt::AlignHCenter);
        item->move((static_cast<double>(col) + 0.5) * m_Measures.cellWidth(), y);
        item->setZ(2.0);
        item->show();
        m_Numbering.append(item);
    }

    TAMBO::Alignment *m_Data = nullptr;
    QFont m_Font;
    CellMeasures m_Measures;
    int m_NameWidth = 0;
    QCanvasItemList m_Numbering;
    Panel m_Panel;
};
