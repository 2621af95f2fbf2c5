// SPDX-License-Identifier: GPL-3.0-or-later
#include "Caption.h"

#include "Alignment.h"
#include "AlignmentWindow.h"

#include <QMainWindow>

namespace companion {

namespace {

// The toolkit takes "[*]" for a place of its own.
QString literal(QString text)
{
    return text.replace(QStringLiteral("[*]"), QStringLiteral("[*][*]"));
}

} // namespace

Caption::Caption(TAMBO::AlignmentWindow &window)
    : AlignmentViewObserver(window), m_Own(window.mainWindow()->windowTitle())
{
    show();
}

Caption::~Caption()
{
    if (window() != nullptr)
        window()->mainWindow()->setWindowTitle(m_Own);
}

void Caption::show()
{
    const TAMBO::Alignment *const alignment = window()->alignment();
    const QString name =
        alignment == nullptr ? QString() : literal(QString::fromStdString(alignment->Name()));
    const QString caption = name.isEmpty() ? m_Own : QStringLiteral("%1 – %2").arg(m_Own, name);
    if (window()->mainWindow()->windowTitle() != caption)
        window()->mainWindow()->setWindowTitle(caption);
}

} // namespace companion
