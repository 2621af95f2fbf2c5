// SPDX-License-Identifier: GPL-3.0-or-later
#include "ProgramTable.h"

#include "ColumnStatistics.h"

#include <Alignment.h>
#include <ProgramCommand.h>
#include <Space.h>

#include <QByteArray>

namespace {

const TAMBO::Alignment *firstAlignment()
{
    for (TAMBO::Compound *object : *TAMBO::Space::instance())
        if (object->Kind() == TAMBO::CompoundKind::Alignment)
            return static_cast<const TAMBO::Alignment *>(object);
    return nullptr;
}

QByteArray line(std::size_t number, const ColumnStatistics &column)
{
    QByteArray text = QByteArray::number(qulonglong(number)) + '\t' +
                      QByteArray::number(double(column.occupancy), 'f', 4) + '\t' + column.letter;
    // No residue: nothing that could be frequent or uncertain.
    if (column.isEmpty())
        return text + "\t-\t-\n";
    return text + '\t' + QByteArray::number(column.share, 'f', 4) + '\t' +
           QByteArray::number(column.entropy, 'f', 4) + '\n';
}

} // namespace

void printTable(ProgramCommand &call)
{
    if (call.arguments.size() != 1) {
        call.errors->write("Usage: tambo column-statistics FILE\n");
        call.exitStatus = 2;
        return;
    }
    // Says itself what is wrong with the file.
    if (!call.openFile(call.arguments.front())) {
        call.exitStatus = 1;
        return;
    }
    const TAMBO::Alignment *alignment = firstAlignment();
    if (!alignment) {
        // As the workbench words its own.
        call.errors->write("tambo: " + call.arguments.front().toLocal8Bit() +
                           ": there is no alignment in it\n");
        call.exitStatus = 1;
        return;
    }
    call.output->write("column\toccupancy\tletter\tshare\tentropy\n");
    std::size_t number = 0;
    for (const ColumnStatistics &column : statisticsOf(*alignment))
        call.output->write(line(++number, column));
}
