// SPDX-License-Identifier: GPL-3.0-or-later
// What plug-ins rely on when windows, their dialogs and what they show go in any order.
#include "BaseWindow.h"
#include "DataAdder.h"
#include "DataDelete.h"
#include "DataMaker.h"
#include "ShownObjects.h"
#include "Space.h"
#include "Subscriber.h"

#include "unit/history/HistoryFixture.h"

#include <QDialog>
#include <QPointer>
#include <QTimer>

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <string>

namespace LifetimeContractTest {

// A window of a plug-in that shows an alignment, and does at a deletion what the test says.
class Window : public BaseWindow, public Subscriber
{
public:
    explicit Window(TAMBO::Alignment &alignment)
        : BaseWindow("Lifetime", {200, 100}, "Lifetime", false, nullptr, "lifetime"),
          m_Alignment(&alignment)
    {
        ShownObjects::Set(this, m_Alignment);
    }

    void commUpdate() override { }
    void commAdd() override { }
    void commDelete() override
    {
        if (atDeletion)
            atDeletion();
    }
    void Kill(BaseWindow *window) override { delete window; }

    // Asks, as a command of the window would; what the answer was, if anybody is left to have it.
    void ask(const std::function<void(QDialog &)> &meanwhile, std::string &outcome)
    {
        const QPointer<Window> alive(this);
        QDialog dialog(this);
        QTimer::singleShot(0, &dialog, [&] { meanwhile(dialog); });
        const int answer = dialog.exec();
        if (alive == nullptr)
            outcome = "the window has gone";
        else
            outcome = answer == QDialog::Accepted ? "accepted" : "cancelled";
    }

    std::function<void()> atDeletion;
    TAMBO::Alignment *m_Alignment;
};

class LifetimeContract : public HistoryFixture
{
protected:
    // Nothing is kept for undo: what is deleted is freed as soon as everybody has heard of it.
    LifetimeContract() { history.setLimit(0); }

    static TAMBO::Alignment &made()
    {
        DataAdder<TAMBO::Space> guard(nullptr, TAMBO::Space::instance());
        return *TAMBO::DataMaker::makeAlignment("family", {});
    }
    static void remove(TAMBO::Alignment &alignment)
    {
        const DataDelete<TAMBO::Alignment> guard(nullptr, &alignment);
        TAMBO::DataMaker::Destroy(&alignment);
    }
};

TEST_F(LifetimeContract, AWindowThatOutlivesItsAlignmentIsNotSaidToShowItAnyMore)
{
    TAMBO::Alignment &alignment = made();
    Window window(alignment);
    ASSERT_EQ(ShownObjects::Of(&window), &alignment);
    remove(alignment);
    EXPECT_EQ(ShownObjects::Of(&window), nullptr);
}

TEST_F(LifetimeContract, AnAlignmentThatIsDeletedCanBeAskedUntilAllHaveHeardOfIt)
{
    TAMBO::Alignment &alignment = made();
    Window window(alignment);
    std::string heard;
    window.atDeletion = [&] {
        heard = window.m_Alignment->Name();
        EXPECT_EQ(window.m_Alignment->Parent(), nullptr);
        window.m_Alignment = nullptr;
    };
    remove(alignment);
    EXPECT_EQ(heard, "family");
}

TEST_F(LifetimeContract, AWindowMayCloseItselfWhenItsAlignmentGoes)
{
    TAMBO::Alignment &alignment = made();
    const QPointer<Window> window(new Window(alignment));
    window->atDeletion = [&] { window->close(false); };
    remove(alignment);
    EXPECT_EQ(window, nullptr);
}

TEST_F(LifetimeContract, AWindowThatThrowsAtADeletionKeepsNobodyFromHearingOfIt)
{
    TAMBO::Alignment &alignment = made();
    Window first(alignment);
    Window second(alignment);
    bool isHeard = false;
    first.atDeletion = [] { throw std::runtime_error("no more"); };
    second.atDeletion = [&] { isHeard = true; };
    remove(alignment);
    EXPECT_TRUE(isHeard);
    EXPECT_EQ(ShownObjects::Of(&first), nullptr);
}

TEST_F(LifetimeContract, AnAlignmentMayGoWhileADialogOfItsWindowWaits)
{
    TAMBO::Alignment &alignment = made();
    Window window(alignment);
    window.show();
    std::string outcome;
    window.ask(
        [&](QDialog &dialog) {
            remove(alignment);
            dialog.accept();
        },
        outcome);
    EXPECT_EQ(outcome, "accepted");
    EXPECT_EQ(ShownObjects::Of(&window), nullptr);
}

TEST_F(LifetimeContract, AWindowMayGoWithItsAlignmentWhileItsDialogWaits)
{
    TAMBO::Alignment &alignment = made();
    const QPointer<Window> window(new Window(alignment));
    window->atDeletion = [&] { window->close(false); };
    window->show();
    std::string outcome;
    window->ask([&](QDialog &) { remove(alignment); }, outcome);
    EXPECT_EQ(outcome, "the window has gone");
    EXPECT_EQ(window, nullptr);
}

TEST_F(LifetimeContract, AWindowThatGoesFirstLeavesItsAlignmentAlone)
{
    TAMBO::Alignment &alignment = made();
    const QPointer<Window> window(new Window(alignment));
    window->close(false);
    ASSERT_EQ(window, nullptr);
    EXPECT_EQ(alignment.Name(), "family");
    remove(alignment);
}

} // namespace LifetimeContractTest
