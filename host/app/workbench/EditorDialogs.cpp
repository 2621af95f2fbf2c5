// SPDX-License-Identifier: GPL-3.0-or-later
#include "EditorDialogs.h"

#include "Alignment.h"
#include "AlignmentWindow.h"

#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QDir>
#include <QEvent>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>

#include <utility>

namespace TAMBO::app {

namespace {

constexpr const char *kIsNamed = "tamboFormatIsNamed";

const Alignment *alignmentBelow(const QWidget &dialog)
{
    const AlignmentWindow *const window = AlignmentWindow::Of(dialog.parentWidget());
    // Other dialogs of it know better.
    return window == nullptr || window->mainWindow() != dialog.parentWidget() ? nullptr
                                                                              : window->alignment();
}

// The toolkit offers a file behind its printers and a line, as one of PDF.
bool isFileChosen(const QComboBox &printers)
{
    return printers.currentIndex() == printers.count() - 1;
}

} // namespace

EditorDialogs::EditorDialogs(FolderOf folderOf) : m_FolderOf(std::move(folderOf))
{
    qApp->installEventFilter(this);
}

EditorDialogs::~EditorDialogs() = default;

bool EditorDialogs::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::Show || event->spontaneous())
        return false;
    if (auto *const file = qobject_cast<QFileDialog *>(watched))
        openInFolder(*file);
    // By name, since a start opens nothing of printing.
    else if (watched->inherits("QPrintDialog"))
        nameFormat(static_cast<QDialog &>(*watched));
    return false;
}

// The name that is suggested stays. Whoever has asked for another folder than the one that the
// program was started in has one.
void EditorDialogs::openInFolder(QFileDialog &dialog) const
{
    const Alignment *const alignment = alignmentBelow(dialog);
    if (alignment == nullptr || dialog.acceptMode() != QFileDialog::AcceptSave)
        return;
    const QStringList suggested = dialog.selectedFiles();
    const QString name = QString::fromStdString(alignment->Name()) + QStringLiteral(".ali");
    if (suggested.size() != 1 || suggested.front() != QDir::current().filePath(name))
        return;
    const QString folder = m_FolderOf(*alignment);
    if (folder.isEmpty() || !QDir(folder).exists())
        return;
    dialog.setDirectory(folder);
    dialog.selectFile(name);
}

// What is written is told by the name alone: PostScript for one that ends in ".ps", else PDF.
void EditorDialogs::nameFormat(QDialog &dialog)
{
    auto *const name = dialog.findChild<QLineEdit *>(QStringLiteral("filename"));
    auto *const printers = dialog.findChild<QComboBox *>(QStringLiteral("printers"));
    if (name == nullptr || printers == nullptr || alignmentBelow(dialog) == nullptr ||
        dialog.property(kIsNamed).toBool())
        return;
    dialog.setProperty(kIsNamed, true);
    const auto tell = [&dialog, name, printers] {
        const bool isPostScript = name->text().endsWith(QStringLiteral(".ps"), Qt::CaseInsensitive);
        const QString format = isPostScript ? tr("PostScript") : tr("PDF");
        printers->setItemText(printers->count() - 1, tr("Print to File (%1)").arg(format));
        dialog.setWindowTitle(isFileChosen(*printers) ? tr("Print – %1 file").arg(format)
                                                      : tr("Print"));
        auto *const type = dialog.findChild<QLabel *>(QStringLiteral("type"));
        if (type != nullptr && isFileChosen(*printers))
            type->setText(tr("Write %1 file").arg(format));
    };
    connect(name, &QLineEdit::textChanged, &dialog, tell);
    connect(printers, &QComboBox::currentIndexChanged, &dialog, tell);
    tell();
    // The longer text has room, too.
    dialog.adjustSize();
}

} // namespace TAMBO::app

#include "moc_EditorDialogs.cpp"
