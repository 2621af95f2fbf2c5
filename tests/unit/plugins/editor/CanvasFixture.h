// SPDX-License-Identifier: GPL-3.0-or-later
// Small alignments written as text, for tests of what shows and edits them.
#pragma once

#include "Alignment.h"
#include "DataPointBase.h"
#include "Hooks.h"
#include "ObjectFactory.h"
#include "ObjectOperations.h"
#include "ObjectSpace.h"
#include "Records.h"
#include "Subscriber.h"

#include <QColor>
#include <QFont>
#include <QImage>
#include <QString>
#include <QStringList>

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

class CountingSubscriber : public Subscriber
{
public:
    void commUpdate() override { ++m_Updates; }
    void commAdd() override { }
    void commDelete() override { }

    int m_Updates = 0;
};

class CanvasFixture : public ::testing::Test
{
protected:
    using Texts = std::vector<std::string>;

    CanvasFixture()
    {
        TAMBO::modelHooks().showMenu = [this](TAMBO::Compound &object) {
            m_Menus.push_back(&object);
        };
        m_Font.setFamily(QStringLiteral("DejaVu Sans"));
        m_Font.setPixelSize(14);
    }
    ~CanvasFixture() override
    {
        setLocked(false);
        TAMBO::ObjectSpace::get().reset();
        TAMBO::modelHooks() = {};
    }

    // '-' is a gap. The sequences are called "seq1", "seq2", ... unless names are given.
    static TAMBO::Alignment &makeAlignment(const Texts &rows, const Texts &names = {})
    {
        TAMBO::AlignmentRecord record;
        record.name = "ali";
        for (std::size_t i = 0; i < rows.size(); ++i) {
            TAMBO::RowRecord row;
            row.name = i < names.size() ? names[i] : "seq" + std::to_string(i + 1);
            row.sequence.append(rows[i]);
            record.rows.push_back(std::move(row));
        }
        const DataPointBase guard(nullptr, Publisher::Add);
        EXPECT_TRUE(guard.m_good);
        return *TAMBO::ObjectFactory::adopt(std::move(record));
    }
    static Texts textsOf(const TAMBO::Alignment &alignment)
    {
        Texts texts;
        for (unsigned long row = 0; row < alignment.height(); ++row)
            texts.push_back(alignment.GetSequence(row, false));
        return texts;
    }
    static Texts namesOf(const TAMBO::Alignment &alignment)
    {
        Texts names;
        for (unsigned long row = 0; row < alignment.height(); ++row)
            names.push_back(alignment.GetSeqName(row));
        return names;
    }
    // 'x' for a selected residue, 'o' for another, '-' for a gap.
    static std::string selectionOf(const TAMBO::Alignment &alignment, unsigned long row)
    {
        std::string text;
        for (unsigned long col = 0; col < alignment.width(); ++col) {
            const TAMBO::Compound *residue = alignment.getItem(row, col);
            text += residue == nullptr ? '-' : residue->IsSelected() ? 'x' : 'o';
        }
        return text;
    }
    // As the user does it: every guard is refused.
    static void setLocked(bool locked)
    {
        TAMBO::setObjectLocked(TAMBO::ObjectSpace::get(), locked);
    }

    QFont m_Font;
    std::vector<TAMBO::Compound *> m_Menus;
};

// How many pixels of the image have the colour.
inline int pixelsOf(const QImage &image, const QColor &color)
{
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            count += image.pixelColor(x, y) == color ? 1 : 0;
    }
    return count;
}

// Paints with one item on white.
template <typename Item> QImage drawnBy(Item &item, const QSize &size)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    item.draw(painter);
    return image;
}
