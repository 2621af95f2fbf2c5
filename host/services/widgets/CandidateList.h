// SPDX-License-Identifier: GPL-3.0-or-later
// The list of a dialog, which says in its place why it is empty.
#pragma once

#include <QPainter>
#include <QString>
#include <QTreeView>

namespace TAMBO::services {

class CandidateList : public QTreeView
{
public:
    using QTreeView::QTreeView;

    void setEmptyText(const QString &text)
    {
        m_EmptyText = text;
        viewport()->update();
    }

protected:
    void paintEvent(QPaintEvent *event) override
    {
        QTreeView::paintEvent(event);
        if (m_EmptyText.isEmpty() || model()->rowCount() > 0)
            return;
        QPainter painter(viewport());
        painter.setPen(palette().color(QPalette::PlaceholderText));
        painter.drawText(viewport()->rect().adjusted(kMargin, kMargin, -kMargin, -kMargin),
                         Qt::AlignCenter | Qt::TextWordWrap, m_EmptyText);
    }

private:
    static constexpr int kMargin = 24;

    QString m_EmptyText;
};

} // namespace TAMBO::services
