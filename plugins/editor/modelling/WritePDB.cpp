// SPDX-License-Identifier: GPL-3.0-or-later
#include "WritePDB.h"

#include "Alignment.h"

#include <QFile>
#include <QTextStream>

#include <vector>

namespace ZEP {

namespace {

constexpr qsizetype kShortName = 3;

QString atomRecord(unsigned long serial, const TAMBO::Compound &atom, const QString &residue,
                   unsigned long number)
{
    const QString name = QString::fromStdString(atom.Name()).toUpper();
    const TAMBO::Vertex position = atom.Position();
    QString record = QStringLiteral("ATOM  %1").arg(serial, 5);
    record += name.size() > kShortName ? QStringLiteral(" %1 ").arg(name, -4)
                                       : QStringLiteral("  %1 ").arg(name, -3);
    record += residue;
    record += QStringLiteral(" A%1 ").arg(number, 4);
    record += "   ";
    for (const float coordinate : {position.x(), position.y(), position.z()})
        record += QStringLiteral("%1").arg(static_cast<double>(coordinate), 8, 'f', 3);
    return record;
}

} // namespace

void writePDB(const QString &path, const TAMBO::Alignment *alignment)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return;
    QTextStream stream(&file);
    unsigned long number = 0;
    unsigned long serial = 0;
    std::vector<TAMBO::Compound *> atoms;
    for (unsigned long col = 0; col < alignment->width(); ++col) {
        TAMBO::Compound *residue = alignment->getItem(0, col);
        if (residue == nullptr)
            continue;
        ++number;
        const QString type = QString::fromStdString(residue->TypeName());
        atoms.clear();
        TAMBO::GetAtoms(residue, atoms, true);
        for (const TAMBO::Compound *atom : atoms)
            stream << atomRecord(++serial, *atom, type, number) << '\n';
    }
}

} // namespace ZEP
