// SPDX-License-Identifier: GPL-3.0-or-later
// How an aligner is called: a line of words with places for the files.
#pragma once

#include "Result.h"

#include <QString>
#include <QStringList>

namespace TAMBO::realign {

struct AlignerCommand
{
    QString program;
    // "{input}", "{added}" and "{output}" stand for the names of the files. Without "{output}" the
    // program prints the alignment.
    QStringList arguments;
    bool printsAnswer = true;

    [[nodiscard]] QStringList argumentsFor(const QString &input, const QString &output,
                                           const QString &added = {}) const;
};

// Words are parted by blanks; quotes hold a word with blanks together. There has to be "{input}".
[[nodiscard]] Result<AlignerCommand> parseAlignerCommand(const QString &line);

} // namespace TAMBO::realign
