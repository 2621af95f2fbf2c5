// SPDX-License-Identifier: GPL-3.0-or-later
#include "FontNames.h"

namespace Pages {

bool FontNames::write(const QByteArray &bytes)
{
    if (m_IsSetupOver)
        return handOn(bytes);
    m_Line += bytes;
    QByteArray lines;
    qsizetype begin = 0;
    for (qsizetype end = m_Line.indexOf('\n') + 1; end > 0 && !m_IsSetupOver;
         end = m_Line.indexOf('\n', begin) + 1) {
        const QByteArray line = m_Line.sliced(begin, end - begin);
        m_IsSetupOver = line.startsWith("%%EndSetup");
        lines += renamed(line);
        begin = end;
    }
    m_Line.remove(0, begin);
    return handOn(lines) && (!m_IsSetupOver || finish());
}

bool FontNames::finish()
{
    const QByteArray rest = m_Line;
    m_Line.clear();
    return handOn(rest);
}

QByteArray FontNames::renamed(QByteArray line)
{
    const QByteArray before = "/FontName /";
    const QByteArray behind = " def\n";
    if (!line.startsWith(before) || !line.endsWith(behind))
        return line;
    const QByteArray name = line.chopped(behind.size()).sliced(before.size());
    QByteArray own = name;
    for (int number = 2; m_Names.contains(own); ++number)
        own = name + '-' + QByteArray::number(number);
    m_Names.insert(own);
    return before + own + behind;
}

bool FontNames::handOn(const QByteArray &bytes)
{
    return m_Target.write(bytes) == bytes.size();
}

} // namespace Pages
