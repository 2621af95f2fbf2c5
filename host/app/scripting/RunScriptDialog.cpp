// SPDX-License-Identifier: GPL-3.0-or-later
#include "RunScriptDialog.h"

#include "Directories.h"

#include <QFileInfo>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>

namespace TAMBO::app {

RunScriptDialog::RunScriptDialog(const RecentScripts &recent, QWidget *parent)
    : QFileDialog(parent, tr("Run Script")), m_Recent(recent), m_Arguments(new QLineEdit)
{
    setObjectName(QStringLiteral("RunScriptDialog"));
    // The desktop's own has no room for the arguments.
    setOption(QFileDialog::DontUseNativeDialog);
    setFileMode(QFileDialog::ExistingFile);
    setNameFilters({tr("Scripts in Python (*.py)"), tr("All files (*)")});
    setLabelText(QFileDialog::Accept, tr("&Run"));
    m_Arguments->setObjectName(QStringLiteral("ScriptArguments"));
    m_Arguments->setPlaceholderText(tr("What the script finds in sys.argv, as in a shell"));
    auto *const label = new QLabel(tr("Ar&guments:"));
    label->setBuddy(m_Arguments);
    if (auto *const grid = qobject_cast<QGridLayout *>(layout())) {
        const int row = grid->rowCount();
        grid->addWidget(label, row, 0);
        grid->addWidget(m_Arguments, row, 1);
    }
    connect(this, &QFileDialog::currentChanged, this, &RunScriptDialog::offerArguments);
    // By its name in the toolkit's dialog: what is typed is told nowhere else.
    if (auto *const name = findChild<QLineEdit *>(QStringLiteral("fileNameEdit")))
        connect(name, &QLineEdit::textChanged, this, [this](const QString &typed) {
            offerArguments(directory().absoluteFilePath(typed));
        });
    // Those that come with the program are a beginning.
    const QString examples = services::Directories::shared() + QStringLiteral("/examples/scripts");
    if (!recent.folder().isEmpty())
        setDirectory(recent.folder());
    else if (QFileInfo(examples).isDir())
        setDirectory(examples);
    const std::vector<RecentScripts::Script> scripts = recent.scripts();
    if (!scripts.empty() && QFileInfo(scripts.front().file).isFile()) {
        selectFile(scripts.front().file);
        offerArguments(scripts.front().file);
    }
}

void RunScriptDialog::offerArguments(const QString &file)
{
    if (m_Arguments->isModified())
        return;
    QString arguments;
    for (const RecentScripts::Script &script : m_Recent.scripts()) {
        if (script.file == file)
            arguments = script.arguments;
    }
    m_Arguments->setText(arguments);
}

RecentScripts::Script RunScriptDialog::script() const
{
    return {selectedFiles().value(0), m_Arguments->text().trimmed()};
}

std::optional<RecentScripts::Script> askForScript(const RecentScripts &recent, QWidget *parent)
{
    RunScriptDialog dialog(recent, parent);
    if (dialog.exec() == QDialog::Rejected)
        return std::nullopt;
    return dialog.script();
}

} // namespace TAMBO::app

#include "moc_RunScriptDialog.cpp"
