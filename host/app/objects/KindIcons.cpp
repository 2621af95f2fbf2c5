// SPDX-License-Identifier: GPL-3.0-or-later
#include "KindIcons.h"

#include "Config.h"

#include <QPainter>
#include <QPixmap>

namespace TAMBO::app {

namespace {

QIcon installed(const QString &name)
{
    return QIcon(
        QStringLiteral("%1/%2.svg").arg(QString::fromStdString(Config::GetIconDir()), name));
}

// Of kinds without a picture of their own.
const char *fileOf(ObjectKind kind)
{
    switch (kind) {
    case ObjectKind::Structure:
        return "kind-structure";
    case ObjectKind::Chain:
        return "kind-chain";
    case ObjectKind::Sequence:
        return "kind-sequence";
    case ObjectKind::Alignment:
        return "kind-alignment";
    case ObjectKind::Residue:
        return "kind-residue";
    case ObjectKind::Helix:
        return "kind-helix";
    case ObjectKind::Strand:
        return "kind-strand";
    case ObjectKind::Turn:
        return "kind-turn";
    case ObjectKind::Group:
    case ObjectKind::Atom:
    case ObjectKind::Other:
        break;
    }
    return nullptr;
}

// Calls draw with a painter on a square of one unit.
template <typename Draw> QIcon drawn(const Draw &draw)
{
    QIcon icon;
    for (const int size : {16, 24, 32, 48}) {
        QPixmap pixmap(size, size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        painter.setRenderHint(QPainter::Antialiasing);
        draw(painter, size);
        painter.end();
        icon.addPixmap(pixmap);
    }
    return icon;
}

QIcon ball(const QColor &color)
{
    return drawn([&color](QPainter &painter, int size) {
        const QPointF middle(size / 2.0, size / 2.0);
        painter.setPen(QPen(color.darker(130), size / 16.0));
        painter.setBrush(color);
        painter.drawEllipse(middle, size * 0.28, size * 0.28);
    });
}

QIcon withLock(const QIcon &icon)
{
    const QIcon lock = installed(QStringLiteral("lock"));
    return drawn([&](QPainter &painter, int size) {
        const int part = size * 5 / 8;
        painter.drawPixmap(0, 0, icon.pixmap(size, size));
        painter.drawPixmap(size - part, size - part, lock.pixmap(part, part));
    });
}

} // namespace

const QIcon &KindIcons::icon(ObjectKind kind, bool locked)
{
    const auto [place, isNew] = m_Icons.try_emplace({kind, locked});
    if (isNew) {
        const char *file = fileOf(kind);
        const QColor color = kind == ObjectKind::Group ? QColor(0xd9, 0x8a, 0x2b) : Qt::gray;
        const QIcon plain = file != nullptr ? installed(QString::fromLatin1(file)) : ball(color);
        place->second = locked ? withLock(plain) : plain;
    }
    return place->second;
}

} // namespace TAMBO::app
