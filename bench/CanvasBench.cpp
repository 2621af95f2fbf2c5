// SPDX-License-Identifier: GPL-3.0-or-later
// The canvas on a full-HD view: repainting and scrolling against copying the frame in memory, and
// rebuilding a display of 10 rows against one of 10,000.
#include "LatticeSource.h"
#include "QCanvas.h"
#include "QCanvasText.h"
#include "QCanvasView.h"

#include <QApplication>
#include <QFontMetrics>
#include <QImage>
#include <QPainter>

#include <benchmark/benchmark.h>

#include <cstring>
#include <memory>

namespace {

constexpr QSize kFrame(1920, 1080);

// Protein-like cells: 20 letters in about as many colours, and gaps.
class Residues : public LatticeSource
{
public:
    Residues() { m_Font.setPixelSize(12); }

    QCanvasItem *makeItem(QCanvas &canvas, const Cell &, const QRect &) override
    {
        return new QCanvasText(&canvas);
    }
    void readCells(unsigned long row, unsigned long begin, unsigned long end,
                   std::vector<CellLook> &out) const override
    {
        constexpr const char *kLetters = "ARNDCQEGHILKMFPSTWYV";
        for (unsigned long col = begin; col < end; ++col) {
            const unsigned long kind = (row * 7919 + col * 104729) % 29;
            if (kind >= 20)
                out.emplace_back();
            else
                out.push_back({kLetters[kind], 0xff000000U | static_cast<QRgb>(kind * 0x0a1937)});
        }
    }
    void drawCell(QPainter &painter, const QRectF &rect, const CellLook &look) const override
    {
        painter.fillRect(rect, QColor::fromRgb(look.background));
        painter.setFont(m_Font);
        painter.drawText(rect, Qt::AlignCenter, QString(QLatin1Char(look.letter)));
    }
    QFont font() const override { return m_Font; }

    QFont m_Font;
};

QSize cellSize()
{
    const QFontMetrics metrics(Residues().font());
    return {metrics.boundingRect(QLatin1Char('W')).width() + 4, metrics.lineSpacing()};
}

void giveResidues(QCanvas &canvas, unsigned long rows, unsigned long columns)
{
    const QSize cell = cellSize();
    canvas.resize((static_cast<int>(columns) + 1) * cell.width(),
                  (static_cast<int>(rows) + 1) * cell.height());
    canvas.setLattice(CellLattice(rows, columns, cell.width(), cell.height()),
                      std::make_unique<Residues>());
}

// What repaints are measured against.
void copyFrame(benchmark::State &state)
{
    QImage from(kFrame, QImage::Format_RGB32);
    QImage to(kFrame, QImage::Format_RGB32);
    from.fill(Qt::yellow);
    to.fill(Qt::blue);
    for ([[maybe_unused]] auto _ : state) {
        std::memcpy(to.bits(), from.constBits(), static_cast<std::size_t>(from.sizeInBytes()));
        benchmark::ClobberMemory();
    }
}
BENCHMARK(copyFrame);

void repaintFullView(benchmark::State &state)
{
    const double scale = static_cast<double>(state.range(0)) / 100;
    QCanvas canvas;
    giveResidues(canvas, 1000, 1000);
    QImage frame(kFrame, QImage::Format_RGB32);
    frame.setDevicePixelRatio(scale);
    const QRect seen(4000, 4000, qRound(kFrame.width() / scale), qRound(kFrame.height() / scale));
    for ([[maybe_unused]] auto _ : state) {
        QPainter painter(&frame);
        painter.translate(-seen.topLeft());
        canvas.drawArea(seen, &painter);
    }
}
BENCHMARK(repaintFullView)->ArgName("percent")->Arg(100)->Arg(125)->Arg(200);

// One step of the wheel, from the scroll bar to the painted strip.
void scrollFullView(benchmark::State &state)
{
    QCanvas canvas;
    giveResidues(canvas, 10000, 10000);
    QCanvasView view(&canvas);
    view.setHScrollBarMode(QCanvasView::AlwaysOff);
    view.setVScrollBarMode(QCanvasView::AlwaysOff);
    view.resize(kFrame);
    view.show();
    QCoreApplication::processEvents();
    const int step = 3 * cellSize().height();
    const bool sideways = state.range(0) != 0;
    int place = 0;
    for ([[maybe_unused]] auto _ : state) {
        place = place > 100000 ? 0 : place + step;
        view.setContentsPos(sideways ? place : 0, sideways ? 0 : place);
        QCoreApplication::sendPostedEvents();
    }
}
BENCHMARK(scrollFullView)->ArgName("sideways")->Arg(0)->Arg(1);

// Clear and build again: a lattice, and two text items a column.
void rebuildColumns(benchmark::State &state)
{
    const auto rows = static_cast<unsigned long>(state.range(0));
    const auto columns = static_cast<unsigned long>(state.range(1));
    const QFont font = Residues().font();
    const QSize cell = cellSize();
    QCanvas residues;
    QCanvas header;
    for ([[maybe_unused]] auto _ : state) {
        residues.clear();
        header.clear();
        residues.resize(0, 0);
        header.resize(0, 0);
        giveResidues(residues, rows, columns);
        header.resize(residues.width(), 4 * cell.height());
        for (int col = 0; col < static_cast<int>(columns); ++col) {
            for (const int line : {2, 3}) {
                auto *item = new QCanvasText(QStringLiteral("O"), font, &header);
                item->move(col * cell.width(), line * cell.height());
                item->setTextFlags(Qt::AlignHCenter);
                item->show();
            }
        }
        residues.update();
        header.update();
    }
    state.SetItemsProcessed(state.iterations() * static_cast<long>(columns) * 2);
}
BENCHMARK(rebuildColumns)
    ->ArgNames({"rows", "columns"})
    ->Args({10, 2000})
    ->Args({10000, 2000})
    ->Args({10000, 10000});

// What is to be seen of a header of 10,000 columns.
void repaintHeader(benchmark::State &state)
{
    QCanvas header;
    const QFont font = Residues().font();
    const QSize cell = cellSize();
    header.resize(10000 * cell.width(), 4 * cell.height());
    for (int col = 0; col < 10000; ++col) {
        for (const int line : {2, 3}) {
            auto *item = new QCanvasText(QStringLiteral("O"), font, &header);
            item->move(col * cell.width(), line * cell.height());
            item->setTextFlags(Qt::AlignHCenter);
            item->show();
        }
    }
    QImage frame(kFrame.width(), header.height(), QImage::Format_RGB32);
    for ([[maybe_unused]] auto _ : state) {
        QPainter painter(&frame);
        painter.translate(-50000, 0);
        header.drawArea(QRect(50000, 0, frame.width(), frame.height()), &painter);
    }
}
BENCHMARK(repaintHeader);

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
