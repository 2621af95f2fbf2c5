// SPDX-License-Identifier: GPL-3.0-or-later
// What tests of the colouring and selection commands share: dialogs that are answered, colours and
// selections as text, structures, and when what is repainted.
#pragma once

#include "WindowFixture.h"

#include "DataMaker.h"
#include "Space.h"
#include "Structure.h"

#include <QColorDialog>
#include <QInputDialog>
#include <QMenuBar>
#include <QPainter>

#include <array>
#include <optional>

// Which canvases of a window are repainted, seen through their views.
class Repaints : public QObject
{
public:
    struct Views
    {
        bool cells = false;
        bool names = false;
        bool header = false;

        friend bool operator==(const Views &, const Views &) = default;
    };

    // What was still to be painted is painted first, and does not count.
    explicit Repaints(const ZEP::KALMO2 &window) : m_Parts(window)
    {
        for (QCanvasView *view :
             {static_cast<QCanvasView *>(m_Parts.view), static_cast<QCanvasView *>(m_Parts.header),
              static_cast<QCanvasView *>(m_Parts.names)})
            view->viewport()->installEventFilter(this);
        (void)take();
    }

    // What has been updated since.
    [[nodiscard]] Views take()
    {
        QCoreApplication::processEvents();
        return std::exchange(m_Painted, {});
    }
    // What has been updated already, while a notification is going on.
    [[nodiscard]] Views takeNow()
    {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::UpdateRequest);
        return std::exchange(m_Painted, {});
    }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Paint) {
            m_Painted.cells = m_Painted.cells || watched == m_Parts.view->viewport();
            m_Painted.header = m_Painted.header || watched == m_Parts.header->viewport();
            m_Painted.names = m_Painted.names || watched == m_Parts.names->viewport();
        }
        return false;
    }

private:
    WindowParts m_Parts;
    Views m_Painted;
};

// Notes what had been repainted when it was told of an update.
class RepaintListener : public Subscriber
{
public:
    explicit RepaintListener(Repaints &repaints) : m_Repaints(repaints) { }

    void commUpdate() override { seen.push_back(m_Repaints.takeNow()); }
    void commAdd() override { }
    void commDelete() override { }

    std::vector<Repaints::Views> seen;

private:
    Repaints &m_Repaints;
};

class ColoringFixture : public WindowFixture
{
protected:
    static constexpr Repaints::Views kNothing{};
    static constexpr Repaints::Views kCells{true, false, false};
    static constexpr Repaints::Views kAll{true, true, true};

    static DialogDriver::Handler pick(const QColor &color)
    {
        return [color](QDialog &dialog) {
            auto *colors = qobject_cast<QColorDialog *>(&dialog);
            ASSERT_NE(colors, nullptr);
            colors->setCurrentColor(color);
            colors->accept();
        };
    }
    static DialogDriver::Handler enter(int number)
    {
        return [number](QDialog &dialog) {
            auto *input = qobject_cast<QInputDialog *>(&dialog);
            ASSERT_NE(input, nullptr);
            ASSERT_EQ(input->inputMode(), QInputDialog::IntInput);
            input->setIntValue(number);
            input->accept();
        };
    }
    static DialogDriver::Handler enter(const QString &text)
    {
        return [text](QDialog &dialog) {
            auto *input = qobject_cast<QInputDialog *>(&dialog);
            ASSERT_NE(input, nullptr);
            ASSERT_EQ(input->inputMode(), QInputDialog::TextInput);
            input->setTextValue(text);
            input->accept();
        };
    }
    static void trigger(const ZEP::KALMO2 &window, const QString &title, const QString &text)
    {
        for (const QAction *menu : window.menuBar()->actions()) {
            if (menu->text() != title)
                continue;
            for (QAction *entry : menu->menu()->actions())
                if (entry->text() == text)
                    entry->trigger();
        }
    }
    static void run(ZEP::KALMO2 &window, const char *slot,
                    const std::vector<DialogDriver::Handler> &answers)
    {
        DialogDriver dialogs;
        for (const DialogDriver::Handler &answer : answers)
            dialogs.expect(answer);
        call(window, slot);
        EXPECT_EQ(dialogs.titles().size(), static_cast<qsizetype>(answers.size()));
    }

    // Of each row: '#' for a residue of that colour, '.' for another one, '-' for a gap.
    static Texts colored(const TAMBO::Alignment &alignment, const Color &color)
    {
        return described(
            alignment, [&](const TAMBO::Compound &residue) { return residue.OwnColor() == color; });
    }
    static Texts selected(const TAMBO::Alignment &alignment)
    {
        return described(alignment,
                         [](const TAMBO::Compound &residue) { return residue.IsSelected(); });
    }
    static std::vector<Color> colorsOf(const TAMBO::Alignment &alignment)
    {
        std::vector<Color> colors;
        (void)described(alignment, [&](const TAMBO::Compound &residue) {
            colors.push_back(residue.OwnColor());
            return true;
        });
        return colors;
    }
    // Every cell of the canvas as it is painted, at the corner that no letter covers.
    static QColor paintedColor(const ZEP::KALMO2 &window, int row, int col)
    {
        const WindowParts parts(window);
        const CellLattice &lattice = parts.cells->lattice();
        QImage image(parts.cells->size(), QImage::Format_RGB32);
        QPainter painter(&image);
        parts.cells->drawArea(parts.cells->rect(), &painter);
        painter.end();
        return image.pixelColor(col * lattice.cellWidth() + 1, row * lattice.cellHeight() + 1);
    }

    // A chain with one CA atom per place; none where the place is undefined.
    using Places = std::vector<TAMBO::Vertex>;
    TAMBO::Compound *chain(const Places &places)
    {
        TAMBO::StructureRecord record;
        record.name = "structure";
        TAMBO::ChainRecord &made = record.chains.emplace_back();
        made.name = "A";
        for (const TAMBO::Vertex &place : places) {
            TAMBO::ResidueRecord &residue = made.residues.emplace_back();
            residue.letter = 'A';
            residue.number = TAMBO::SequenceNumber(static_cast<long>(made.residues.size()));
            residue.atoms.push_back({"N", "N", TAMBO::Vertex(9, 9, 9)});
            if (place.isDefined())
                residue.atoms.push_back({"CA", "C", place});
        }
        const DataPointBase guard(nullptr, Publisher::Add);
        return TAMBO::ObjectFactory::adopt(std::move(record))->Child(0);
    }
    TAMBO::Alignment &alignmentOf(const std::vector<TAMBO::Compound *> &sequences)
    {
        const DataPointBase guard(nullptr, Publisher::Add);
        return *TAMBO::DataMaker::makeAlignment("made", sequences);
    }

private:
    template <typename Condition>
    static Texts described(const TAMBO::Alignment &alignment, const Condition &holds)
    {
        Texts rows;
        for (unsigned long row = 0; row < alignment.height(); ++row) {
            std::string &text = rows.emplace_back();
            for (unsigned long col = 0; col < alignment.width(); ++col) {
                const TAMBO::Compound *residue = alignment.getItem(row, col);
                text += residue == nullptr ? '-' : holds(*residue) ? '#' : '.';
            }
        }
        return rows;
    }
};
