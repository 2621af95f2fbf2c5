// SPDX-License-Identifier: GPL-3.0-or-later
// Save and Save As for what is picked in the tree, or else for the one unsaved object.
#pragma once

#include <QCoreApplication>
#include <QString>

#include <vector>

class QWidget;

namespace TAMBO {
class Compound;
}

namespace TAMBO::app {

class SavedPlaces;

class PickedSaving
{
    Q_DECLARE_TR_FUNCTIONS(PickedSaving)

public:
    using Objects = std::vector<Compound *>;

    // parent: what dialogs stand over. Both outlive this.
    PickedSaving(SavedPlaces &places, QWidget &parent) : m_Places(places), m_Parent(parent) { }

    // What of these, or around them, has a file of its own: alignments, structures, and sequences
    // that are part of neither; each once, in their order.
    [[nodiscard]] static Objects savable(const Objects &picked);
    [[nodiscard]] static bool canSave();

    // Each to its own file. What there is to say about it in one line.
    // isByUser: not picked because it was opened; then it is meant only where it is unsaved, or to
    // be saved elsewhere.
    [[nodiscard]] QString save(const Objects &picked, bool isByUser) const;
    [[nodiscard]] QString saveAs(const Objects &picked, bool isByUser) const;

private:
    // What is to be saved; when there is nothing, why.
    struct Choice
    {
        Objects objects;
        QString refusal;
    };
    [[nodiscard]] Choice choose(const Objects &picked) const;
    [[nodiscard]] Objects unsavedOf(const Objects &picked) const;

    SavedPlaces &m_Places;
    QWidget &m_Parent;
};

} // namespace TAMBO::app
