// SPDX-License-Identifier: GPL-3.0-or-later
#include "Toolbar.h"

#include "Check.h"
#include "Config.h"
#include "Logger.h"
#include "ToolbarButtons.h"

#include <QAction>
#include <QFile>
#include <QFileInfo>
#include <QIcon>
#include <QMainWindow>
#include <QMetaObject>
#include <QWidget>

using namespace TAMBO::services;

namespace {

std::string settingsSection(const QObject &window)
{
    const std::string name = window.metaObject()->className();
    const auto end = name.rfind("::");
    return end == std::string::npos ? name : name.substr(end + 2);
}

QIcon buttonIcon(const QString &file)
{
    const QString path =
        QFile::decodeName(QByteArray::fromStdString(Config::GetIconDir())) + '/' + file;
    // A button without a picture shows its text.
    return QFileInfo(path).isFile() ? QIcon(path) : QIcon();
}

// Slots are given as the toolkit's macro writes them, or as they stand.
QByteArray slotSignature(const char *slot)
{
    const QByteArray name = QMetaObject::normalizedSignature(slot);
    const bool isMarked = name.startsWith('1') || name.startsWith('2');
    return isMarked ? name : '1' + name;
}

} // namespace

Toolbar::Toolbar(const QString &key, QMainWindow *window, const QString &title,
                 Qt::ToolBarArea area, QObject *receiver, const char *slot)
    : QToolBar(title, window)
{
    TAMBO_CHECK_PTR(window, "Toolbar", 1);
    setObjectName(key);
    if (receiver != nullptr && slot != nullptr)
        connect(this, SIGNAL(pressed(int, int, bool)), receiver, slotSignature(slot).constData());
    if (window == nullptr)
        return;

    const std::string section = settingsSection(*window);
    const std::string buttons = Config::GetSetting(section, key.toStdString()).ToString();
    std::vector<QString> problems;
    for (const ToolbarButton &button :
         parseToolbarButtons(QString::fromStdString(buttons), problems)) {
        if (button.isSeparator) {
            addSeparator();
            continue;
        }
        QAction *action = addAction(buttonIcon(button.icon), button.text);
        action->setObjectName(QStringLiteral("%1.%2").arg(key).arg(button.number));
        action->setToolTip(button.toolTip);
        action->setCheckable(button.isToggle);
        connect(action, &QAction::triggered, this,
                [this, number = button.number](bool state) { emit pressed(number, 0, state); });
        QWidget *widget = widgetForAction(action);
        widget->setAccessibleName(button.text);
        widget->setAccessibleDescription(button.toolTip);
    }
    for (const QString &problem : problems)
        Logger::Write(
            QStringLiteral("A button is left out of the tool bar %1: %2").arg(title, problem),
            Logger::Severity::Warning);
    window->addToolBar(area, this);
}

Toolbar::~Toolbar() = default;
