// SPDX-License-Identifier: GPL-3.0-or-later
// Lists of as many sequences as a large family has: choosing some of them, the object tree, the
// history. Of each act the longest time during which the window does not answer, and the sum of all
// that it takes; the time is the processor's.
#include "Alignment.h"
#include "ConfigStore.h"
#include "DataMaker.h"
#include "DataPoint.h"
#include "History.h"
#include "Hooks.h"
#include "MadeAlignment.h"
#include "ObjectCommands.h"
#include "ObjectFactory.h"
#include "ObjectOperations.h"
#include "ObjectSpace.h"
#include "ObjectTree.h"
#include "ObjectTreeModel.h"
#include "SelectObject.h"
#include "WritableObject.h"
#include "WriteJob.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTreeView>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace {

constexpr unsigned long kColumns = 20;

double now()
{
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

// The act, and then the event loop until it has nothing to do any more, and is over.
void measure(
    const char *what, const std::function<void()> &act,
    const std::function<bool()> &isOver = [] { return true; })
{
    constexpr double kIdle = 0.3;
    double start = now();
    act();
    double longest = now() - start;
    double sum = longest;
    for (int idle = 0; idle < 3 || !isOver();) {
        start = now();
        QCoreApplication::processEvents();
        const double taken = now() - start;
        longest = std::max(longest, taken);
        sum += taken;
        idle = taken < kIdle ? idle + 1 : 0;
    }
    std::printf("  %-44s %9.2f %9.2f\n", what, longest, sum);
    std::fflush(stdout);
}

QPushButton *button(const QWidget &dialog, const QString &text)
{
    for (QPushButton *found : dialog.findChildren<QPushButton *>()) {
        if (found->text().remove(u'&') == text)
            return found;
    }
    std::fprintf(stderr, "bench_list: no button %s\n", qPrintable(text));
    std::exit(1);
}

void choose()
{
    std::vector<TAMBO::Compound *> candidates;
    measure("Choose: candidates",
            [&] { TAMBO::GetPeptides(TAMBO::Space::instance(), candidates, true); });
    std::vector<TAMBO::Compound *> chosen;
    std::unique_ptr<TAMBO::SelectObject> dialog;
    measure("Choose: opened", [&] {
        dialog = std::make_unique<TAMBO::SelectObject>(candidates, chosen, nullptr, "sequences");
        dialog->resize(560, 460);
        dialog->show();
    });
    auto *filter = dialog->findChild<QLineEdit *>();
    auto *list = dialog->findChild<QTreeView *>();
    for (const char *text : {"7", "77", "777", "77", "row", "", "nothing", ""}) {
        const std::string what = std::string("Choose: filter \"") + text + '"';
        measure(what.c_str(), [&] { filter->setText(QString::fromLatin1(text)); });
    }
    measure("Choose: all", [&] { button(*dialog, "Select all")->click(); });
    measure("Choose: none", [&] { button(*dialog, "Select none")->click(); });
    measure("Choose: sorted by name", [&] { list->sortByColumn(0, Qt::DescendingOrder); });
    measure("Choose: sorted by size", [&] { list->sortByColumn(2, Qt::AscendingOrder); });
    measure("Choose: to the end",
            [&] { list->verticalScrollBar()->setValue(list->verticalScrollBar()->maximum()); });
    measure("Choose: all again", [&] { button(*dialog, "Select all")->click(); });
    measure("Choose: accepted", [&] { dialog->accept(); });
    measure("Choose: closed", [&] { dialog.reset(); });
    measure("Choose: opened with all of them chosen", [&] {
        dialog = std::make_unique<TAMBO::SelectObject>(candidates, chosen, nullptr, "sequences");
    });
}

void unsaved(TAMBO::History &history, TAMBO::Alignment &alignment)
{
    measure("History: label of the opening", [&] { static_cast<void>(history.undoLabel()); });
    measure("History: the label again", [&] { static_cast<void>(history.undoLabel()); });
    measure("History: alignment is saved", [&] { history.markSaved(alignment); });
    alignment.insertGap(0, 1);
    measure("History: is it modified?", [&] { static_cast<void>(history.isModified(alignment)); });
    TAMBO::renameObject(*alignment.GetSeq(0), "renamed");
    measure("History: what is unsaved, one renamed",
            [&] { static_cast<void>(history.unsavedObjects()); });
    {
        const DataPointBase guard(nullptr, Publisher::Update);
        for (unsigned long row = 0; row < alignment.height(); ++row)
            TAMBO::renameObject(*alignment.GetSeq(row), "row" + std::to_string(row) + "r");
    }
    measure("History: label of all renamed", [&] { static_cast<void>(history.undoLabel()); });
    measure("History: the label again", [&] { static_cast<void>(history.undoLabel()); });
    measure("History: is it modified, all renamed?",
            [&] { static_cast<void>(history.isModified(alignment)); });
    measure("History: what is unsaved, all renamed",
            [&] { static_cast<void>(history.unsavedObjects()); });
    history.undo();
    alignment.insertGap(0, 1);
    measure("History: saved after that", [&] { history.markSaved(alignment); });
}

void tree(TAMBO::Alignment &alignment)
{
    std::unique_ptr<TAMBO::app::ObjectTreeModel> model;
    std::unique_ptr<TAMBO::app::ObjectTree> view;
    measure("Tree: made", [&] {
        model = std::make_unique<TAMBO::app::ObjectTreeModel>(*TAMBO::Space::instance());
        view = std::make_unique<TAMBO::app::ObjectTree>(*model);
        view->resize(400, 600);
        view->show();
    });
    measure("Tree: unfolded", [&] { view->expand(model->sequencesIndex()); });
    measure("Tree: one renamed", [&] { TAMBO::renameObject(*alignment.GetSeq(0), "again"); });
    TAMBO::Alignment *copy = nullptr;
    measure("Tree: one more", [&] {
        const DataPointBase guard(nullptr, Publisher::Add);
        copy = alignment.duplicate(1);
    });
    measure("Tree: one less", [&] {
        const DataPointBase guard(nullptr, Publisher::Delete);
        TAMBO::DataMaker::Destroy(copy);
    });
    measure("Tree: to the end", [&] {
        for (int i = 0; i < 3; ++i) {
            view->verticalScrollBar()->setValue(view->verticalScrollBar()->maximum());
            QCoreApplication::processEvents();
        }
    });
    std::printf("  %-44s %9d\n", "Tree: rows made", model->rowCount(model->sequencesIndex()));
    measure("Tree: all picked", [&] { view->selectAll(); });
    measure("Tree: what is picked", [&] { static_cast<void>(view->pickedObjects()); });
    measure("Tree: one more, all picked", [&] {
        const DataPointBase guard(nullptr, Publisher::Add);
        copy = alignment.duplicate(1);
    });
    measure("Tree: one less, all picked", [&] {
        const DataPointBase guard(nullptr, Publisher::Delete);
        TAMBO::DataMaker::Destroy(copy);
    });
    measure("Tree: none picked", [&] { view->clearSelection(); });
}

// Every second sequence, which an alignment shows, and then those that are left with the alignment.
void destroy(TAMBO::History &history, TAMBO::Alignment &alignment)
{
    using TAMBO::app::ObjectCommands;
    TAMBO::app::ObjectTreeModel model(*TAMBO::Space::instance());
    ObjectCommands::Objects some;
    ObjectCommands::Objects all{&alignment};
    for (unsigned long row = 0; row < alignment.height(); ++row) {
        all.push_back(alignment.GetSeq(row));
        if (row % 2 == 0)
            some.push_back(alignment.GetSeq(row));
    }
    measure("Objects: all selected", [&] { ObjectCommands::select(all, true); });
    measure("Objects: all deselected", [&] { ObjectCommands::select(all, false); });
    measure("Objects: every second deleted", [&] { ObjectCommands::destroy(some); });
    measure("Objects: that undone", [&] { history.undo(); });
    measure("Objects: that redone", [&] { history.redo(); });
    measure("Objects: that undone again", [&] { history.undo(); });
    measure("Objects: all deleted", [&] { ObjectCommands::destroy(all); });
    measure("Objects: that undone", [&] { history.undo(); });
    measure("History: what is unsaved then", [&] { static_cast<void>(history.unsavedObjects()); });
}

// From the choice of the alignment in the dialog to the complete file.
void exportWhole(const TAMBO::Alignment &alignment, const QString &path)
{
    using TAMBO::app::WritableObject;
    using TAMBO::app::WriteJob;
    std::shared_ptr<const WritableObject> object;
    measure("Export: snapshot", [&] { object = std::make_shared<WritableObject>(alignment); });
    TAMBO::WriteOptions options;
    options.format = TAMBO::FileFormat::Fasta;
    measure("Export: what is lost", [&] { static_cast<void>(object->losses(options)); });
    const auto job = std::make_unique<WriteJob>(object, path, options);
    object.reset();
    measure(
        "Export: written", [&] { job->start(); }, [&] { return job->isOver(); });
}

// What can be given up, so that it is when that share of it is done: the longest time between two
// looks, and the time from the look that ends it to the end of all, with what is taken back.
void giveUp(const char *what, double share, const std::function<void()> &act)
{
    double last = now();
    double longest = 0;
    bool isEnded = false;
    TAMBO::modelHooks().working = [&](const char *, double done, bool canBeGivenUp) {
        longest = std::max(longest, now() - last);
        isEnded = canBeGivenUp && done >= share;
        last = now();
        return !isEnded;
    };
    act();
    TAMBO::modelHooks().working = nullptr;
    std::printf("  %-44s %9.2f %9.2f%s\n", what, longest, now() - last,
                isEnded ? "" : ", to its end");
    std::fflush(stdout);
}

void cancel(TAMBO::Alignment &alignment)
{
    using TAMBO::app::ObjectCommands;
    std::printf("  %-44s %9s %9s\n", "Given up", "looks, ms", "end, ms");
    ObjectCommands::Objects all;
    for (unsigned long row = 0; row < alignment.height(); ++row)
        all.push_back(alignment.GetSeq(row));
    std::array<Color, 256> colors;
    colors.fill(Color(0xff0000));
    const std::vector<char> letters(alignment.width(), 'A');
    for (const double share : {0.5, 0.99}) {
        std::printf("  when %.2f of it is done\n", share);
        giveUp("Alignment: coloring by letter", share, [&] { alignment.colorByLetter(colors); });
        giveUp("Alignment: coloring letters", share,
               [&] { alignment.colorLetters(letters, Color(0xff0000)); });
        giveUp("Alignment: selecting letters", share, [&] { alignment.selectLetters(letters); });
        giveUp("Alignment: counting letters", share,
               [&] { static_cast<void>(alignment.majorities()); });
        giveUp("Objects: coloring", share, [&] { ObjectCommands::color(all, Qt::red); });
        giveUp("Objects: selecting", share, [&] { ObjectCommands::select(all, true); });
        ObjectCommands::select(all, false);
        giveUp("Objects: deleting", share, [&] { ObjectCommands::destroy(all); });
        giveUp("Export: snapshot", share,
               [&] { static_cast<void>(TAMBO::app::WritableObject::asked(alignment)); });
    }
    TAMBO::WriteOptions options;
    options.format = TAMBO::FileFormat::Fasta;
    const QTemporaryDir folder;
    TAMBO::app::WriteJob job(std::make_shared<TAMBO::app::WritableObject>(alignment),
                             folder.filePath(QStringLiteral("written.fasta")), options);
    job.start();
    while (job.done() < 0.3)
        QCoreApplication::processEvents();
    QElapsedTimer clock;
    clock.start();
    job.cancel();
    while (!job.isOver())
        QCoreApplication::processEvents();
    std::printf("  %-44s %9s %9.2f\n", "Export: cancelled", "",
                static_cast<double>(clock.nsecsElapsed()) / 1e6);
}

void run(unsigned long rows, unsigned long columns)
{
    TAMBO::History history;
    TAMBO::setEditRecorder(&history);
    history.setLimit(std::size_t(4) << 30);
    TAMBO::Alignment *alignment = nullptr;
    {
        const DataPointBase guard(nullptr, Publisher::Add);
        alignment = TAMBO::ObjectFactory::adopt(madeAlignment(rows, columns));
    }
    std::printf("\n%lu sequences %32s %9s\n", rows, "longest, ms", "sum, ms");
    choose();
    tree(*alignment);
    cancel(*alignment);
    unsaved(history, *alignment);
    const QTemporaryDir folder;
    exportWhole(*alignment, folder.filePath(QStringLiteral("written.fasta")));
    destroy(history, *alignment);
    TAMBO::setEditRecorder(nullptr);
    history.clear();
    TAMBO::ObjectSpace::get().reset();
}

} // namespace

int main(int argc, char **argv)
{
    const QTemporaryDir directory;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("TAMBO_USER_DIR", directory.path().toUtf8());
    const QApplication application(argc, argv);
    TAMBO::services::ConfigStore::setInstance(std::make_unique<TAMBO::services::ConfigStore>(
        QString(), directory.filePath(QStringLiteral("settings.ini"))));
    if (argc > 1) {
        run(std::strtoul(argv[1], nullptr, 10),
            argc > 2 ? std::strtoul(argv[2], nullptr, 10) : kColumns);
    } else {
        for (const unsigned long rows : {10'000UL, 100'000UL, 1'000'000UL})
            run(rows, kColumns);
    }
    TAMBO::services::ConfigStore::setInstance(nullptr);
}
