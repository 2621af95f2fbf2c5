// SPDX-License-Identifier: GPL-3.0-or-later
// What the workbench knows better than the alignment windows that open the toolkit's dialogs: the
// folder that an alignment is saved in, and what kind of file a print makes.
#pragma once

#include <QObject>
#include <QString>

#include <functional>

class QDialog;
class QFileDialog;

namespace TAMBO {
class Alignment;
}

namespace TAMBO::app {

// Watches all dialogs of the application while it lives.
class EditorDialogs : public QObject
{
    Q_OBJECT

public:
    using FolderOf = std::function<QString(const Alignment &alignment)>;

    // folderOf: where the alignment came from or was saved last; empty when nobody knows.
    explicit EditorDialogs(FolderOf folderOf);
    ~EditorDialogs() override;

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void openInFolder(QFileDialog &dialog) const;
    static void nameFormat(QDialog &dialog);

    FolderOf m_FolderOf;
};

} // namespace TAMBO::app
