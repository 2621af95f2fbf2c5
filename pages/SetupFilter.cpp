// SPDX-License-Identifier: GPL-3.0-or-later
#include "SetupFilter.h"

#include <algorithm>
#include <utility>

namespace Pages {

namespace {

const QByteArray kEnd("%%EndSetup");

} // namespace

SetupFilter::SetupFilter(GlyphNames names, QIODevice &target)
    : m_Names(std::move(names)), m_Target(target)
{
    open(QIODevice::WriteOnly | QIODevice::Unbuffered);
}

bool SetupFilter::finish()
{
    if (!std::exchange(m_IsSetupOver, true))
        handOn(m_Names.applied(m_Setup));
    return !m_HasFailed;
}

qint64 SetupFilter::readData(char *, qint64)
{
    return -1;
}

qint64 SetupFilter::writeData(const char *data, qint64 size)
{
    if (m_IsSetupOver) {
        handOn(QByteArray::fromRawData(data, size));
        return size;
    }
    // The mark may come in two parts.
    const qsizetype from = std::max<qsizetype>(0, m_Setup.size() - kEnd.size());
    m_Setup.append(data, size);
    const qsizetype end = m_Setup.indexOf(kEnd, from);
    if (end < 0)
        return size;
    m_IsSetupOver = true;
    handOn(m_Names.applied(m_Setup.first(end)));
    handOn(m_Setup.sliced(end));
    m_Setup.clear();
    return size;
}

void SetupFilter::handOn(const QByteArray &bytes)
{
    m_HasFailed = m_HasFailed || m_Target.write(bytes) != bytes.size();
}

} // namespace Pages
