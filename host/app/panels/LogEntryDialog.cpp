// SPDX-License-Identifier: GPL-3.0-or-later
#include "LogEntryDialog.h"

#include <QDialogButtonBox>
#include <QFontDatabase>
#include <QPlainTextEdit>
#include <QVBoxLayout>

namespace TAMBO::app {

LogEntryDialog::LogEntryDialog(const QString &title, const QString &text, QWidget *parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("LogEntry"));
    setWindowTitle(title);
    auto *view = new QPlainTextEdit(text);
    view->setReadOnly(true);
    // What programs say is often set in columns.
    view->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(view);
    layout->addWidget(buttons);
    resize(80 * fontMetrics().averageCharWidth() + 80, 24 * fontMetrics().lineSpacing());
}

LogEntryDialog::~LogEntryDialog() = default;

} // namespace TAMBO::app

#include "moc_LogEntryDialog.cpp"
