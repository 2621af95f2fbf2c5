// SPDX-License-Identifier: GPL-3.0-or-later
// The lines for users that have come to the log since this was made.
#pragma once

#include "LogBook.h"

#include <QStringList>

class LogLines
{
public:
    LogLines() : m_Before(lastNumber()) { }

    [[nodiscard]] QStringList texts() const
    {
        QStringList texts;
        for (const auto &entry : TAMBO::services::LogBook::instance().entries())
            if (entry.number > m_Before && !entry.isForDevelopers)
                texts.append(entry.text);
        return texts;
    }
    [[nodiscard]] int count() const { return int(texts().size()); }

private:
    static quint64 lastNumber()
    {
        const auto entries = TAMBO::services::LogBook::instance().entries();
        return entries.empty() ? 0 : entries.back().number;
    }

    quint64 m_Before;
};
