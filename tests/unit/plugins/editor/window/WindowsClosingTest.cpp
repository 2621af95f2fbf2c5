// SPDX-License-Identifier: GPL-3.0-or-later
// Whoever hears of a change may close editor windows: the one whose user made the change, while its
// command is not over yet, and others that are still to be told.
#include "Hands.h"
#include "WindowFixture.h"

#include "PluginRoutes.h"

#include <QInputDialog>
#include <QListWidget>

#include <functional>

namespace WindowsClosingTest {

using TAMBO::services::PluginRoutes;
using Answers = TAMBO::services::SelectObjectAnswers;

// Closes all windows when it hears of the first change.
class Closer : public Subscriber
{
public:
    explicit Closer(std::function<void()> close) : m_Close(std::move(close)) { }

    void commUpdate() override { closeAll(); }
    void commAdd() override { closeAll(); }
    void commDelete() override { closeAll(); }

    void closeAll()
    {
        if (m_Armed)
            m_Close();
        m_Closed = m_Closed || m_Armed;
    }

    bool m_Armed = false;
    bool m_Closed = false;

private:
    std::function<void()> m_Close;
};

struct Command
{
    const char *name;
    std::function<void(ZEP::KALMO2 &window, TAMBO::Alignment &shown)> run;

    friend void PrintTo(const Command &command, std::ostream *out) { *out << command.name; }
};

class ClosingWindows : public WindowFixture, public ::testing::WithParamInterface<Command>
{
};

void deleteAll(ZEP::KALMO2 &window)
{
    DialogDriver dialogs;
    dialogs.expect([](QDialog &dialog) {
        dialog.findChild<QListWidget *>()->selectAll();
        static_cast<BaseDialog &>(dialog).Ok();
    });
    window.DeleteAlignment();
}

// Answers the next input dialog.
template <typename Run> void answering(const QString &text, const Run &run)
{
    DialogDriver dialogs;
    dialogs.expect([&text](QDialog &dialog) {
        dynamic_cast<QInputDialog &>(dialog).setTextValue(text);
        dialog.accept();
    });
    run();
}

// The workbench realigns, and reads the model back.
class Routes
{
public:
    Routes()
    {
        PluginRoutes::instance().registerExecute(
            "Calculate", "Alignment", "Malign", [](const PluginCall &call) {
                const DataPoint<TAMBO::Alignment> guard(nullptr,
                                                        static_cast<TAMBO::Alignment *>(call.data));
                guard->insertGap(0, 0);
                return true;
            });
        PluginRoutes::instance().registerCommand("Parse", "PDB", "ReadPDB", [](const PluginCall &) {
            const DataPointBase guard(nullptr, Publisher::Add);
            return true;
        });
    }
    ~Routes()
    {
        PluginRoutes::instance().removeExecute("Calculate", "Alignment", "Malign");
        PluginRoutes::instance().removeCommand("Parse", "PDB", "ReadPDB");
    }
};

std::vector<Command> commands()
{
    using TAMBO::Alignment;
    using Window = ZEP::KALMO2;
    constexpr auto kLeft = Hands::kLeft;
    constexpr auto kMiddle = Hands::kMiddle;
    return {
        {"GapDrag", [](Window &w, Alignment &) { Hands(w).drag(kLeft, 0, 2, 3); }},
        {"GapsDrag", [](Window &w, Alignment &) { Hands(w).drag(kMiddle, 0, 2, 3); }},
        {"NewGap", [](Window &w, Alignment &) { Hands(w).clickCell(kMiddle, 0, 0); }},
        {"ResidueClick", [](Window &w, Alignment &) { Hands(w).clickCell(kLeft, 0, 0); }},
        {"NameClick", [](Window &w, Alignment &) { Hands(w).clickName(kLeft, 1); }},
        {"MarkClick", [](Window &w, Alignment &) { Hands(w).clickMark(kLeft, 1); }},
        {"NewColumn", [](Window &w, Alignment &) { Hands(w).clickMark(kMiddle, 1); }},
        {"ColumnRemoval",
         [](Window &w, Alignment &) { Hands(w).clickMark(kMiddle, 1, Qt::ShiftModifier); }},
        {"RowRemoval",
         [](Window &w, Alignment &) { Hands(w).clickName(kMiddle, 1, Qt::ShiftModifier); }},
        {"RangeFull", [](Window &w, Alignment &) { w.RangeFull(); }},
        {"RangeSelect",
         [](Window &w, Alignment &shown) {
             shown.range({0, 2});
             w.RangeSelect();
         }},
        {"RangeRemove",
         [](Window &w, Alignment &shown) {
             shown.range({0, 2});
             w.RangeRemove();
         }},
        {"GetSequences",
         [](Window &w, Alignment &shown) {
             Answers::push({shown.GetSeq(0)});
             w.GetSequences();
         }},
        {"AddSequences",
         [](Window &w, Alignment &shown) {
             Answers::push({shown.GetSeq(0)});
             w.AddSequences();
         }},
        {"CombineAlignment",
         [](Window &w, Alignment &shown) {
             Answers::push({shown.duplicate(1)});
             w.CombineAlignment();
         }},
        {"Duplicate", [](Window &w, Alignment &) { w.Duplicate(); }},
        {"DeleteAlignment", [](Window &w, Alignment &) { deleteAll(w); }},
        {"RangeReNumber",
         [](Window &w, Alignment &) {
             WindowParts(w).header->SetRange(0, 2);
             answering("77", [&w] { w.RangeReNumber(); });
         }},
        {"RangeAddSSE",
         [](Window &w, Alignment &) {
             WindowParts(w).header->SetRange(0, 5);
             answering("H", [&w] { w.RangeAddSSE(); });
         }},
        {"ColoringByProperty",
         [](Window &w, Alignment &) {
             std::vector<QColor> table(21, Qt::red);
             w.setColor(table.data());
         }},
        {"SubSequence",
         [](Window &w, Alignment &) {
             answering("C", [&w] { QMetaObject::invokeMethod(&w, "selectSubSequence"); });
         }},
        {"Realignment",
         [](Window &w, Alignment &shown) {
             const Routes routes;
             shown.range({0, 3});
             w.malign();
         }},
        {"ModelReadBack",
         [](Window &w, Alignment &) {
             const Routes routes;
             QMetaObject::invokeMethod(&w, "JobReady");
         }},
    };
}

const std::vector<std::string> kRows = {"AC-DE", "ACDE-", "ACDEF"};

TEST_P(ClosingWindows, MayGoWhileTheirCommandIsPublished)
{
    TAMBO::Alignment &shown = alignment(kRows);
    Closer closer([this] { closeWindows(); });
    show(shown, {600, 300});
    ZEP::KALMO2 &window = show(shown, {600, 300});
    show(shown, {600, 300});
    const MessageRecorder quiet;
    closer.m_Armed = true;
    GetParam().run(window, shown);
    EXPECT_TRUE(closer.m_Closed);
    QCoreApplication::processEvents();
}

TEST_P(ClosingWindows, MayGoBetweenTheOnesThatAreTold)
{
    TAMBO::Alignment &shown = alignment(kRows);
    show(shown, {600, 300});
    ZEP::KALMO2 &window = show(shown, {600, 300});
    Closer closer([this] { closeWindows(); });
    show(shown, {600, 300});
    const MessageRecorder quiet;
    closer.m_Armed = true;
    GetParam().run(window, shown);
    EXPECT_TRUE(closer.m_Closed);
    QCoreApplication::processEvents();
}

INSTANTIATE_TEST_SUITE_P(Commands, ClosingWindows, testing::ValuesIn(commands()),
                         [](const auto &info) { return std::string(info.param.name); });

} // namespace WindowsClosingTest
