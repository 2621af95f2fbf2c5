// SPDX-License-Identifier: GPL-3.0-or-later
#include "PageFileRun.h"

#include "Texts.h"

#include <QFileInfo>

namespace companion {

NotedDevice::~NotedDevice() = default;

qint64 NotedDevice::readData(char *, qint64)
{
    return -1;
}

qint64 NotedDevice::writeData(const char *data, qint64 size)
{
    const qint64 written = m_Target.write(data, size);
    if (written != size)
        m_HasFailed = true;
    return written;
}

PageFileRun::PageFileRun(const TAMBO::Alignment &alignment, const PagePlan &plan,
                         const QString &file, double dotsOfInch)
    : PageFileRun(alignment, plan, file, pageFormatOf(file), dotsOfInch)
{ }

PageFileRun::PageFileRun(const TAMBO::Alignment &alignment, const PagePlan &plan,
                         const QString &file, std::optional<PageFormat> format, double dotsOfInch)
    : m_Alignment(alignment), m_Revision(alignment.layoutRevision()), m_File(file)
{
    if (!format) {
        fail(tr("the ending of the name is none of .pdf, .svg, .png and .html."));
        return;
    }
    if (const QString obstacle = obstacleOf(*format, plan, dotsOfInch); !obstacle.isEmpty()) {
        fail(obstacle);
        return;
    }
    if (QFileInfo(file).isDir()) {
        fail(tr("there is a folder of that name."));
        return;
    }
    if (!m_File.open(QIODevice::WriteOnly)) {
        fail(m_File.errorString() + u'.');
        return;
    }
    m_Device.open(QIODevice::WriteOnly | QIODevice::Unbuffered);
    m_Writer = makePageWriter(*format, plan, m_Device, dotsOfInch);
    m_Run.emplace(alignment, plan, *m_Writer, 0, plan.layout.pages());
}

// What still writes goes before the file does.
PageFileRun::~PageFileRun()
{
    m_Writer.reset();
}

void PageFileRun::fail(const QString &cause)
{
    m_Error = tr("%1 was not written: %2").arg(m_File.fileName(), cause);
    m_IsDone = true;
    m_Run.reset();
    m_Writer.reset();
    if (m_File.isOpen())
        m_File.cancelWriting();
}

double PageFileRun::done() const noexcept
{
    return m_IsDone || !m_Run ? 1 : m_Run->done();
}

bool PageFileRun::isWritten() const
{
    return !m_Writer->hasFailed() && !m_Device.hasFailed();
}

bool PageFileRun::goOn(std::chrono::microseconds most)
{
    if (m_IsDone)
        return false;
    // Its rows may be others now than those that are on the pages before.
    if (m_Alignment.layoutRevision() != m_Revision) {
        fail(tr("the alignment has been changed meanwhile."));
        return false;
    }
    if (!m_Run->isDone()) {
        m_Run->goOn(most);
        if (!isWritten())
            fail(cause());
        return !m_IsDone;
    }
    if (!m_Writer->finish(most))
        return true;
    if (!m_File.flush() || !isWritten() || !m_File.commit())
        fail(cause());
    m_IsDone = true;
    return false;
}

QString PageFileRun::cause() const
{
    if (m_File.error() != QFileDevice::NoError)
        return m_File.errorString() + u'.';
    return m_Device.hasFailed() ? tr("there is no room for it.")
                                : tr("there is not enough memory, or no room for temporary files.");
}

} // namespace companion
