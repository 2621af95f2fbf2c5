// SPDX-License-Identifier: GPL-3.0-or-later
// Windows that show how many residues are selected, and follow every change.
#include <BaseWindow.h>
#include <Compound.h>
#include <Config.h>
#include <DataPoint.h>
#include <Export.h>
#include <Logger.h>
#include <Space.h>
#include <Subscriber.h>

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>
#include <vector>

namespace {

std::vector<BaseWindow *> s_Windows;

std::vector<TAMBO::Compound *> selectedResidues()
{
    std::vector<TAMBO::Compound *> chains;
    TAMBO::GetPeptides(TAMBO::Space::instance(), chains, true);
    std::vector<TAMBO::Compound *> selected;
    for (TAMBO::Compound *chain : chains)
        for (std::size_t i = 0; i < chain->ChildCount(); ++i)
            if (chain->Child(i)->IsSelected())
                selected.push_back(chain->Child(i));
    return selected;
}

} // namespace

class Counter final : public BaseWindow, public Subscriber
{
    Q_OBJECT

public:
    Counter() : BaseWindow("Counter", {300, 120}, "Counter", false, nullptr, "counter")
    {
        auto *page = new QWidget(this);
        auto *layout = new QVBoxLayout(page);
        auto *clear = new QPushButton("Select nothing");
        connect(clear, &QPushButton::clicked, this, [this] { deselect(); });
        layout->addWidget(m_Count = new QLabel);
        layout->addWidget(clear);
        setCentralWidget(page);
        commUpdate();
    }

    void commUpdate() override
    {
        const std::string text = Config::GetSetting("counter", "Text").ToString();
        m_Count->setText(QString::fromStdString(text).arg(selectedResidues().size()));
    }
    void commAdd() override { commUpdate(); }
    void commDelete() override { commUpdate(); }

    void Kill(BaseWindow *window) override
    {
        std::erase(s_Windows, window);
        delete window;
    }

private:
    void deselect()
    {
        {
            DataPoint<TAMBO::Space> change(this, TAMBO::Space::instance());
            if (!change.m_good)
                return;
            for (TAMBO::Compound *residue : selectedResidues())
                residue->SetSelected(false);
        }
        commUpdate();
    }

    QLabel *m_Count = nullptr;
};

extern "C" {

TAMBO_API void Execute0()
{
    s_Windows.push_back(new Counter);
    s_Windows.back()->show();
    Logger::Write("Counter: a window was opened");
}

TAMBO_API bool IsDone()
{
    return s_Windows.empty();
}

TAMBO_API void Cleanup()
{
    while (!s_Windows.empty())
        s_Windows.front()->close(false);
}

} // extern "C"

#include "Counter.moc"
