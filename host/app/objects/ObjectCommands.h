// SPDX-License-Identifier: GPL-3.0-or-later
// What the user can do with objects from the tree and from context menus. Every change is made
// inside a guard, one step of undo a command.
#pragma once

#include <QCoreApplication>
#include <QString>

#include <functional>
#include <vector>

class QMenu;
class QWidget;

namespace TAMBO {
class Alignment;
class Compound;
} // namespace TAMBO

namespace TAMBO::app {

class ExportRuns;
class ObjectNotes;
class ObjectSources;
class SavedPlaces;
class WriteDialog;

class ObjectCommands
{
    Q_DECLARE_TR_FUNCTIONS(ObjectCommands)

public:
    using Objects = std::vector<Compound *>;

    // sources outlives the commands.
    explicit ObjectCommands(const ObjectSources &sources);

    // Whatever hangs on the objects at that time hangs on the dialogs' parent.
    // Dialogs are over the window in use, when that is one of the program's own, else over this.
    void setDialogParent(QWidget *parent) { m_DialogParent = parent; }
    // Shows an alignment in an editor window; without it the menu does not offer to.
    void setEditor(std::function<void(Alignment &alignment)> editor)
    {
        m_Editor = std::move(editor);
    }

    // Learns what an export has saved; outlives the commands.
    void setPlaces(SavedPlaces &places) { m_Places = &places; }
    // Shown among the properties of their objects; outlives the commands.
    void setNotes(const ObjectNotes &notes) { m_Notes = &notes; }
    // Takes over exports that take long; outlives the commands. Without it they are waited for.
    void setExports(ExportRuns &exports) { m_Exports = &exports; }

    // Objects that are locked stay as they are, and the refusal is reported as of any guard.
    // When that takes long and the user gives it up, it stops where it is and gives false.
    static bool select(const Objects &objects, bool selected);
    static void changeSelection(const Objects &selected, const Objects &deselected);
    // What was selected is kept until the next time. Both say what came of them in the status line.
    static void selectNone();
    static void selectAgain();
    static void color(const Objects &objects, const QColor &color);
    static void rename(Compound &object, const QString &name);
    static void setLocked(const Objects &objects, bool locked);
    // How many are gone now.
    static std::size_t destroy(const Objects &objects);

    [[nodiscard]] static bool isDestroyable(const Compound &object);
    // Of objects of which some lie below others, only the uppermost.
    [[nodiscard]] static Objects uppermost(const Objects &objects);

    // With a dialog each.
    void askColor(const Objects &objects) const;
    void askRename(Compound &object) const;
    // New residue numbers of what the objects are or hold, in one table.
    void askRenumber(const Objects &objects) const;
    void showProperties(const Compound &object) const;
    // Offers all objects that can be written, that of the first one picked chosen. The file that
    // was written, if any; one that takes long is written while the user goes on. Of several
    // structures, and nothing else, how they are written together, and the first file of them.
    QString askExport(const Objects &picked) const;
    [[nodiscard]] static bool canExport();

    // Pops up the menu of the objects at the pointer; returns when it is closed and what the user
    // chose is done. Any object may be gone by then.
    void popUpMenu(const Objects &objects) const;

private:
    // What the user chooses in a menu, by its entry.
    struct Entry;

    [[nodiscard]] QWidget *dialogParent() const;
    // What was written at once, the first of several.
    [[nodiscard]] QString runExport(WriteDialog &dialog) const;
    void fillMenu(QMenu &menu, const Objects &objects, std::vector<Entry> &entries) const;

    const ObjectSources &m_Sources;
    QWidget *m_DialogParent = nullptr;
    SavedPlaces *m_Places = nullptr;
    const ObjectNotes *m_Notes = nullptr;
    ExportRuns *m_Exports = nullptr;
    std::function<void(Alignment &alignment)> m_Editor;
};

} // namespace TAMBO::app
