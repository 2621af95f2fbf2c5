// SPDX-License-Identifier: GPL-3.0-or-later
#include "LossQuestion.h"

#include <QFileInfo>
#include <QPushButton>

namespace TAMBO::app {

LossQuestion::LossQuestion(const QString &name, const QString &file, const QStringList &losses,
                           QWidget *parent)
    : QMessageBox(QMessageBox::Warning, tr("Save"), QString(), QMessageBox::NoButton, parent)
{
    setObjectName(QStringLiteral("LossQuestion"));
    // Names of files and objects are no markup.
    setTextFormat(Qt::PlainText);
    setText(tr("Something is lost when %1 is saved to %2.").arg(name, QFileInfo(file).fileName()));
    setInformativeText(losses.join(u'\n') + tr("\n\nYou are asked about this once for this file."));
    m_SaveAs = addButton(tr("Save &As…"), QMessageBox::ActionRole);
    m_SaveAs->setObjectName(QStringLiteral("SaveAs"));
    m_Save = addButton(tr("&Save with Losses"), QMessageBox::DestructiveRole);
    m_Save->setObjectName(QStringLiteral("Save"));
    setEscapeButton(addButton(QMessageBox::Cancel));
    // By which nothing is lost.
    setDefaultButton(m_SaveAs);
}

LossQuestion::~LossQuestion() = default;

LossQuestion::Answer LossQuestion::answer() const
{
    if (clickedButton() == m_SaveAs)
        return Answer::SaveAs;
    return clickedButton() == m_Save ? Answer::Save : Answer::Cancel;
}

} // namespace TAMBO::app

#include "moc_LossQuestion.cpp"
