// SPDX-License-Identifier: GPL-3.0-or-later
// A window with a view of the made structure.
#pragma once

#include "MadeStructure.h"
#include "StructureWindow.h"
#include "support/ScopedSettings.h"
#include "support/WaitUntil.h"
#include "unit/model/ModelFixture.h"

#include <QCoreApplication>
#include <QPoint>

class OpenView : public ModelFixture
{
protected:
    OpenView()
    {
        m_Window->resize(700, 500);
        waitForPicture();
    }
    ~OpenView() override
    {
        while (!structures::StructureWindow::opened().isEmpty())
            structures::StructureWindow::opened().front()->close(false);
    }

    structures::StructureView &view() { return m_Window->view(); }
    void waitForPicture()
    {
        QCoreApplication::processEvents();
        waitUntil([this] { return view().isComplete() && view().goal() == view().camera(); });
    }
    // From there all residues of the helix are to be seen.
    void lookFromTheSide()
    {
        structures::Camera camera = view().camera();
        camera.rotation = structures::Rotation::about({1, 0, 0}, 1.4F);
        view().setCamera(camera);
        waitForPicture();
    }
    // Somewhere where a residue of chain A is to be seen.
    QPoint placeOfResidue(std::uint32_t wanted)
    {
        const structures::Molecule &molecule = m_Window->scene().structures().front()->molecule();
        return placeOfPick(structures::pickOfResidue(molecule, wanted));
    }
    QPoint placeOfPick(structures::Pick wanted)
    {
        for (int y = 0; y < view().height(); ++y)
            for (int x = 0; x < view().width(); ++x)
                if (view().pickAt({x, y}) == wanted)
                    return {x, y};
        ADD_FAILURE() << "pick " << wanted << " is not to be seen";
        return {};
    }
    // Of chain A.
    [[nodiscard]] std::vector<std::size_t> selected() const
    {
        std::vector<std::size_t> found;
        for (std::size_t i = 0; i < 24; ++i)
            if (m_Structure->Child(0)->Child(i)->IsSelected())
                found.push_back(i);
        return found;
    }

    ScopedSettings m_Settings{""};
    TAMBO::Compound *m_Structure = MadeStructure::make("1abc");
    structures::StructureWindow *m_Window = &structures::StructureWindow::open();
};
