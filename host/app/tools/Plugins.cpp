// SPDX-License-Identifier: GPL-3.0-or-later
#include "Plugins.h"

#include "Alignment.h"
#include "Config.h"
#include "SelectObjectAnswers.h"

#include <QApplication>
#include <QCoreApplication>
#include <QDir>
#include <QMetaMethod>
#include <QPointer>
#include <QSet>
#include <QWidget>

#include <algorithm>

namespace TAMBO::app {

namespace {

using services::PluginRecord;

// The slot by which a window lets the user choose the alignment to show.
constexpr const char *kChooseAlignment = "GetAlignment";

bool canChooseAlignment(const QWidget &window)
{
    const QByteArray signature = QByteArray(kChooseAlignment) + "()";
    return window.metaObject()->indexOfMethod(signature.constData()) >= 0;
}

} // namespace

QString Plugins::directory()
{
    const QString moved = qEnvironmentVariable("TAMBO_PLUGIN_DIR");
    if (!moved.isEmpty())
        return moved;
    return QDir::cleanPath(QCoreApplication::applicationDirPath() +
                           QStringLiteral("/../lib/tambo/plugins"));
}

void Plugins::loadAll(const QString &directory)
{
    const QStringList patterns = {QStringLiteral("*.so"), QStringLiteral("*.so.*")};
    QSet<QString> taken;
    for (const QFileInfo &file : QDir(directory).entryInfoList(patterns, QDir::Files, QDir::Name)) {
        const QString library = file.canonicalFilePath();
        if (library.isEmpty() || taken.contains(library))
            continue;
        taken.insert(library);
        m_Loader.load(library);
    }
}

QString Plugins::titleOf(const PluginRecord &plugin)
{
    QString stem = plugin.name.section(QStringLiteral(".so"), 0, 0);
    if (stem.startsWith(QStringLiteral("lib")))
        stem.remove(0, 3);
    const std::string title = Config::GetSetting("Plugins", stem.toStdString()).ToString();
    return title.empty() ? stem : QString::fromStdString(title);
}

QWidget *Plugins::open(const PluginRecord &plugin)
{
    const QWidgetList before = QApplication::topLevelWidgets();
    if (!m_Loader.execute(plugin))
        return nullptr;
    for (QWidget *window : QApplication::topLevelWidgets()) {
        if (window->isVisible() && window->windowType() == Qt::Window && !before.contains(window))
            return window;
    }
    return nullptr;
}

QWidget *Plugins::show(Alignment &alignment)
{
    for (const PluginRecord &plugin : m_Loader.records()) {
        QPointer<QWidget> window = plugin.isUsable() ? open(plugin) : nullptr;
        if (window == nullptr)
            continue;
        if (!canChooseAlignment(*window)) {
            window->close();
            continue;
        }
        showIn(*window, alignment);
        return window;
    }
    return nullptr;
}

void Plugins::showIn(QWidget &window, Alignment &alignment)
{
    if (!canChooseAlignment(window))
        return;
    services::SelectObjectAnswers::push({&alignment});
    QMetaObject::invokeMethod(&window, kChooseAlignment);
    // A window that did not ask must not leave its answer to the next question.
    services::SelectObjectAnswers::clear();
}

bool Plugins::hasUsable() const
{
    return std::ranges::any_of(m_Loader.records(), &PluginRecord::isUsable);
}

} // namespace TAMBO::app
