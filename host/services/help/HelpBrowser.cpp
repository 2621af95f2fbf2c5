// SPDX-License-Identifier: GPL-3.0-or-later
#include "HelpBrowser.h"

#include "Directories.h"
#include "HelpPages.h"

#include <QTextDocument>

namespace TAMBO::services {

HelpBrowser::~HelpBrowser() = default;

QString HelpBrowser::directory()
{
    return Directories::shared() + QStringLiteral("/help");
}

QString HelpBrowser::contentsPage()
{
    return directory() + QStringLiteral("/index.html");
}

QVariant HelpBrowser::loadResource(int type, const QUrl &name)
{
    const QVariant loaded = QTextBrowser::loadResource(type, name);
    // Pages of plug-ins look like all others, unless they bring a style of that name.
    if (type == QTextDocument::StyleSheetResource && loaded.toByteArray().isEmpty())
        return QTextBrowser::loadResource(type,
                                          QUrl::fromLocalFile(directory() + '/' + name.fileName()));
    if (type != QTextDocument::HtmlResource || name.toLocalFile() != contentsPage())
        return loaded;
    QString page = QString::fromUtf8(loaded.toByteArray());
    const qsizetype end = page.lastIndexOf(QStringLiteral("<h2>"));
    page.insert(end < 0 ? page.size() : end, HelpPages::instance().contents());
    return page;
}

} // namespace TAMBO::services

#include "moc_HelpBrowser.cpp"
