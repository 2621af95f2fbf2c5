// SPDX-License-Identifier: GPL-3.0-or-later
#include "ResultsWatch.h"

#include <chrono>
#include <utility>

namespace TAMBO::app {

namespace {

using namespace std::chrono_literals;

constexpr std::chrono::milliseconds kBetweenWatches = 1s;

} // namespace

ResultsWatch::ResultsWatch(const std::filesystem::path &folder, QObject *parent)
    : QObject(parent), m_Look(std::make_unique<ResultsLook>(folder)), m_Worker(new QObject)
{
    m_Worker->moveToThread(&m_Thread);
    connect(&m_Thread, &QThread::finished, m_Worker, &QObject::deleteLater);
    m_Pause.setSingleShot(true);
    m_Pause.setInterval(kBetweenWatches);
    connect(&m_Pause, &QTimer::timeout, this, &ResultsWatch::lookNow);
    m_Thread.start();
}

ResultsWatch::~ResultsWatch()
{
    m_Thread.quit();
    m_Thread.wait();
}

void ResultsWatch::lookNow()
{
    if (std::exchange(m_IsLooking, true)) {
        m_IsAskedAgain = true;
        return;
    }
    QMetaObject::invokeMethod(m_Worker, [this] {
        const auto news = std::make_shared<const ResultsLook::News>(m_Look->look());
        QMetaObject::invokeMethod(this, [this, news] { looked(news); });
    });
}

void ResultsWatch::looked(const std::shared_ptr<const ResultsLook::News> &news)
{
    m_IsLooking = false;
    if (std::exchange(m_IsAskedAgain, false))
        lookNow();
    else
        m_Pause.start();
    emit found(news);
}

} // namespace TAMBO::app

#include "moc_ResultsWatch.cpp"
