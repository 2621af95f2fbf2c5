// SPDX-License-Identifier: GPL-3.0-or-later
#include "HelpPages.h"

#include <QFileInfo>
#include <QUrl>

#include <algorithm>

namespace TAMBO::services {

HelpPages &HelpPages::instance()
{
    static HelpPages pages;
    return pages;
}

void HelpPages::add(HelpPage page)
{
    const auto known = std::ranges::find(m_Pages, page.file, &HelpPage::file);
    if (known == m_Pages.end())
        m_Pages.push_back(std::move(page));
    else
        *known = std::move(page);
}

QString HelpPages::fileOf(const QString &name) const
{
    const auto first = [&](auto isMeant) {
        // It may have gone since.
        const auto found = std::ranges::find_if(m_Pages, [&](const HelpPage &page) {
            return isMeant(page) && QFileInfo(page.file).isFile();
        });
        return found == m_Pages.end() ? QString() : found->file;
    };
    const QString file = first([&](const HelpPage &page) { return page.name == name; });
    if (!file.isEmpty())
        return file;
    return first([&](const HelpPage &page) { return QFileInfo(page.file).fileName() == name; });
}

bool HelpPages::allows(const QString &file) const
{
    const QFileInfo info(file);
    const bool isPage = info.isFile() && (info.suffix() == QStringLiteral("html") ||
                                          info.suffix() == QStringLiteral("htm"));
    const QString path = info.canonicalFilePath();
    return isPage && std::ranges::any_of(m_Pages, [&](const HelpPage &page) {
               const QString folder = QFileInfo(QFileInfo(page.file).path()).canonicalFilePath();
               return !folder.isEmpty() && path.startsWith(folder + u'/');
           });
}

QString HelpPages::contents() const
{
    if (m_Pages.empty())
        return {};
    QString list = QStringLiteral("<h2>Plug-ins</h2>\n<ul>\n");
    for (const HelpPage &page : m_Pages)
        list +=
            QStringLiteral("<li><a href=\"%1\">%2</a></li>\n")
                .arg(
                    QString::fromLatin1(QUrl::fromLocalFile(page.file).toEncoded()).toHtmlEscaped(),
                    page.title.toHtmlEscaped());
    return list + QStringLiteral("</ul>\n");
}

} // namespace TAMBO::services
