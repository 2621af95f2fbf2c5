// SPDX-License-Identifier: GPL-3.0-or-later
// The structure view at 1280 x 800, without its window: the first picture of what is loaded,
// pictures that follow each other while it is turned, new colors, and the outline of what is
// pointed at; and the picture that is drawn well at rest. "of_copy" is the processor's time, all
// threads together, in times of copying such a picture in the same run; "wall_ms" is what a user
// waits, on a machine that may have other work.
//
// Then a window of it beside the cells of an alignment whose rows are the chains: from a residue
// that is selected in the model, as grid and tree do it, to the picture that shows it; from a click
// in the picture to the model and the picture; and from the pointer in another cell to the outline.
// The editor's own painting is no part of it.
//
// The structures are the six of the example on each other (1,340 residues), and one of them
// repeated on a grid: 135 chains of 218 residues, and 62 of some 1,600 atoms each.
#include "FileReader.h"
#include "ObjectFactory.h"
#include "ObjectSpace.h"
#include "PictureMaker.h"
#include "Selecting.h"
#include "StructureScene.h"
#include "StructureWindow.h"
#include "contract/FakeAlignmentWindow.h"

#include "Alignment.h"
#include "DataMaker.h"

#include <QApplication>
#include <QMouseEvent>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <filesystem>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace {

using structures::Camera;
using structures::Coloring;
using structures::Look;
using structures::Pick;
using structures::PictureMaker;
using structures::PictureScene;
using structures::Renderer;
using structures::Rotation;
using structures::StructureScene;
using structures::Style;

constexpr QSize kSize(1280, 800);
// Angstrom between the chains of a grid.
constexpr float kApart = 48;

// Milliseconds of all processors.
double now()
{
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return double(time.tv_sec) * 1e3 + double(time.tv_nsec) / 1e6;
}

double median(std::vector<double> times)
{
    std::sort(times.begin(), times.end());
    return times.empty() ? 0 : times[times.size() / 2];
}

std::vector<TAMBO::StructureRecord> example(const std::string &name)
{
    auto contents =
        TAMBO::readFile(std::filesystem::path(EXAMPLES_DIR) / (name + "_superposed.pdb"));
    if (!contents) {
        std::fprintf(stderr, "bench_structures: %s is not there\n", name.c_str());
        std::exit(1);
    }
    return std::move(contents->structures);
}

// Chains beside, above and behind each other.
TAMBO::StructureRecord grid(int copies)
{
    const TAMBO::StructureRecord one = std::move(example("1PPF_E").front());
    TAMBO::StructureRecord all;
    all.name = "grid";
    int side = 1;
    while (side * side * side < copies)
        ++side;
    for (int i = 0; i < copies; ++i) {
        const float shift[] = {kApart * float(i % side), kApart * float(i / side % side),
                               kApart * float(i / side / side)};
        for (TAMBO::ChainRecord chain : one.chains) {
            chain.name += std::to_string(i);
            for (TAMBO::ResidueRecord &residue : chain.residues)
                for (TAMBO::AtomRecord &atom : residue.atoms)
                    atom.position =
                        TAMBO::Vertex(atom.position.x() + shift[0], atom.position.y() + shift[1],
                                      atom.position.z() + shift[2]);
            all.chains.push_back(std::move(chain));
        }
        for (TAMBO::ElementRecord element : one.elements) {
            element.chain += std::to_string(i);
            all.elements.push_back(std::move(element));
        }
    }
    return all;
}

enum Input { Example, Residues30000, Atoms100000 };

void load(int input)
{
    TAMBO::ObjectSpace::get().reset();
    if (input == Residues30000) {
        TAMBO::ObjectFactory::adopt(grid(135));
    } else if (input == Atoms100000) {
        TAMBO::ObjectFactory::adopt(grid(62));
    } else {
        for (const char *name : {"1A0J_A", "1ABI_H", "1AU8_A", "1BRU_P", "1PPF_E", "1XXD_A"})
            for (TAMBO::StructureRecord &record : example(name))
                TAMBO::ObjectFactory::adopt(std::move(record));
    }
}

// What is loaded, as a window of it has it.
class View
{
public:
    explicit View(Style style) : m_Scene([] {}), m_Maker(nullptr)
    {
        for (const auto &structure : m_Scene.structures())
            structure->setStyle(style);
        const std::shared_ptr<const PictureScene> picture = m_Scene.picture();
        m_Camera = structures::cameraOnAll(m_Camera, picture->bounds, kSize);
        m_Maker.setScene(picture);
        m_Maker.setPalette(m_Scene.palette(Coloring::Workbench));
        draw();
    }

    void draw() { m_Maker.drawNow(m_Camera, Look(), kSize); }
    void recolor(Coloring coloring) { m_Maker.setPalette(m_Scene.palette(coloring)); }
    [[nodiscard]] std::vector<Pick> visible() const
    {
        return m_Maker.picksIn(QRect(QPoint(), kSize));
    }
    // Looks up a place too, as the window does.
    void point(Pick pick)
    {
        m_Maker.point(std::vector<Pick>{m_Maker.pickAt(640, 400) == pick ? 0 : pick});
    }

    [[nodiscard]] StructureScene &scene() noexcept { return m_Scene; }
    [[nodiscard]] const Camera &camera() const noexcept { return m_Camera; }

private:
    StructureScene m_Scene;
    PictureMaker m_Maker;
    Camera m_Camera;
};

// What a renderer is asked for of it.
class Drawing
{
public:
    explicit Drawing(View &view)
        : m_Scene(view.scene().picture()), m_Palette(view.scene().palette(Coloring::Workbench))
    {
        m_Request.parts = m_Scene->parts;
        m_Request.bounds = m_Scene->bounds;
        m_Request.camera = view.camera();
        m_Request.size = kSize;
    }

    [[nodiscard]] const structures::PictureRequest &request() const noexcept { return m_Request; }
    [[nodiscard]] const structures::Palette &palette() const noexcept { return m_Palette; }

private:
    std::shared_ptr<const PictureScene> m_Scene;
    structures::Palette m_Palette;
    structures::PictureRequest m_Request;
};

// Runs work(i) and copies a picture in turns.
template <typename Work> void measure(benchmark::State &state, const Work &work)
{
    const QImage from(kSize, QImage::Format_RGB32);
    QImage to(kSize, QImage::Format_RGB32);
    std::vector<double> times;
    std::vector<double> walls;
    std::vector<double> copies;
    int i = 0;
    for (auto _ : state) {
        const double start = now();
        const auto begin = std::chrono::steady_clock::now();
        work(i++);
        walls.push_back(
            std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin)
                .count());
        times.push_back(now() - start);
        state.PauseTiming();
        for (int copy = 0; copy < 3; ++copy) {
            const double before = now();
            std::memcpy(to.bits(), from.constBits(), std::size_t(from.sizeInBytes()));
            benchmark::DoNotOptimize(to.bits());
            copies.push_back(now() - before);
        }
        state.ResumeTiming();
    }
    state.counters["processor_ms"] = median(times);
    state.counters["wall_ms"] = median(walls);
    state.counters["of_copy"] = median(times) / median(copies);
}

void firstPicture(benchmark::State &state)
{
    load(int(state.range(0)));
    measure(state, [&](int) { const View view(static_cast<Style>(state.range(1))); });
}

// As long as all of it can be afforded; the mesh of fewer triangles where the window takes it as
// well.
void turning(benchmark::State &state)
{
    load(int(state.range(0)));
    View view(static_cast<Style>(state.range(1)));
    const Drawing drawing(view);
    structures::PictureRequest request = drawing.request();
    request.isCoarse = state.range(0) != Example;
    Renderer renderer;
    measure(state, [&](int) {
        request.camera.rotation = Rotation::about({0.3F, 1, 0.1F}, 0.05F) * request.camera.rotation;
        renderer.draw(request, drawing.palette());
    });
}

void newColors(benchmark::State &state)
{
    load(int(state.range(0)));
    View view(static_cast<Style>(state.range(1)));
    measure(state,
            [&](int i) { view.recolor(i % 2 == 0 ? Coloring::Chain : Coloring::Workbench); });
}

// From one residue or atom that is to be seen to another.
void pointing(benchmark::State &state)
{
    load(int(state.range(0)));
    View view(static_cast<Style>(state.range(1)));
    const std::vector<Pick> visible = view.visible();
    measure(state, [&](int i) { view.point(visible[std::size_t(i) * 977 % visible.size()]); });
}

void atRest(benchmark::State &state)
{
    load(int(state.range(0)));
    View view(static_cast<Style>(state.range(1)));
    const Drawing drawing(view);
    structures::PictureRequest request = drawing.request();
    request.perAxis = 2;
    Renderer renderer(std::size_t(40) << 20);
    measure(state, [&](int) { renderer.draw(request, drawing.palette()); });
}

// A window on the screen, of which nothing is left to be drawn, and cells of an alignment.
class ShownWindow : public QObject
{
public:
    explicit ShownWindow(Style style) : m_Window(structures::StructureWindow::open())
    {
        std::vector<TAMBO::Compound *> rows;
        for (const auto &structure : m_Window.scene().structures()) {
            structure->setStyle(style);
            for (std::uint32_t i = 0; i < structure->molecule().chains.size(); ++i)
                rows.push_back(structure->chain(i));
        }
        m_Grid.m_Alignment = TAMBO::DataMaker::makeAlignment("rows", rows);
        m_Grid.m_Rows = rows.size();
        m_Grid.m_Columns = m_Grid.m_Alignment->width();
        m_Grid.m_Visible = {1000000, 1000000};
        m_Window.resize(1280 + m_Window.width() - view().width(),
                        800 + m_Window.height() - view().height());
        view().setScene(m_Window.scene().picture());
        while (!view().isComplete())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        settle();
        view().installEventFilter(this);
        for (const Pick pick : visible())
            if (const auto place = m_Window.scene().placeOf(pick))
                m_Residues.push_back(place->structure->residue(place->place.residue));
    }
    ~ShownWindow() override { m_Window.close(false); }
    ShownWindow(const ShownWindow &) = delete;
    ShownWindow &operator=(const ShownWindow &) = delete;

    // Until the view has been painted, or does not seem to need it.
    void settle()
    {
        for (int round = 0; round < 200 && !std::exchange(m_IsPainted, false); ++round)
            QCoreApplication::processEvents();
    }
    void select(int i)
    {
        structures::select({m_Residues[std::size_t(i) * 977 % m_Residues.size()]},
                           structures::Selecting::Only);
        settle();
    }
    void click(int i)
    {
        const QPoint place(400 + i * 37 % 480, 250 + i * 23 % 300);
        for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
            QMouseEvent event(type, place, view().mapToGlobal(place), Qt::LeftButton,
                              type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton, {});
            QCoreApplication::sendEvent(&view(), &event);
        }
        settle();
    }
    void pointInGrid(int i)
    {
        const QPoint place(5 + i * 10 % 2000, 5 + i * 20 % int(20 * m_Grid.m_Rows));
        QMouseEvent event(QEvent::MouseMove, place, place, Qt::NoButton, Qt::NoButton, {});
        benchmark::DoNotOptimize(m_Grid.offer(TAMBO::WindowArea::Cells, event));
        settle();
    }
    structures::StructureView &view() { return m_Window.view(); }

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        m_IsPainted = m_IsPainted || event->type() == QEvent::Paint;
        return false;
    }

private:
    [[nodiscard]] std::vector<Pick> visible()
    {
        std::vector<Pick> picks;
        for (int y = 0; y < view().height(); y += 3)
            for (int x = 0; x < view().width(); x += 3)
                picks.push_back(view().pickAt({x, y}));
        std::sort(picks.begin(), picks.end());
        picks.erase(std::unique(picks.begin(), picks.end()), picks.end());
        return picks;
    }

    FakeAlignmentWindow m_Grid;
    structures::StructureWindow &m_Window;
    std::vector<TAMBO::Compound *> m_Residues;
    bool m_IsPainted = false;
};

void selecting(benchmark::State &state)
{
    load(int(state.range(0)));
    ShownWindow window(static_cast<Style>(state.range(1)));
    measure(state, [&](int i) { window.select(i); });
}

void clicking(benchmark::State &state)
{
    load(int(state.range(0)));
    ShownWindow window(static_cast<Style>(state.range(1)));
    measure(state, [&](int i) { window.click(i); });
}

void pointingInGrid(benchmark::State &state)
{
    load(int(state.range(0)));
    ShownWindow window(static_cast<Style>(state.range(1)));
    measure(state, [&](int i) { window.pointInGrid(i); });
}

void linkedInput(benchmark::internal::Benchmark *benchmark)
{
    benchmark->ArgNames({"input", "style"});
    for (const Style style : {Style::Cartoon, Style::Spheres}) {
        benchmark->Args({Example, long(style)});
        benchmark->Args({Residues30000, long(style)});
    }
    benchmark->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(31);
}

void everyInput(benchmark::internal::Benchmark *benchmark)
{
    benchmark->ArgNames({"input", "style"});
    for (const Style style : {Style::Cartoon, Style::Trace, Style::Sticks, Style::Spheres})
        benchmark->Args({Example, long(style)});
    for (const Style style :
         {Style::Cartoon, Style::Trace, Style::Sticks, Style::BallsAndSticks, Style::Spheres})
        benchmark->Args({Residues30000, long(style)});
    for (const Style style : {Style::BallsAndSticks, Style::Spheres})
        benchmark->Args({Atoms100000, long(style)});
    benchmark->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(15);
}

BENCHMARK(firstPicture)->Apply(everyInput);
BENCHMARK(turning)->Apply(everyInput);
BENCHMARK(newColors)->Apply(everyInput);
BENCHMARK(pointing)->Apply(everyInput);
BENCHMARK(atRest)->Apply(everyInput);
BENCHMARK(selecting)->Apply(linkedInput);
BENCHMARK(clicking)->Apply(linkedInput);
BENCHMARK(pointingInGrid)->Apply(linkedInput);

} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
