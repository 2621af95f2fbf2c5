// SPDX-License-Identifier: GPL-3.0-or-later
#include "PluginsDialog.h"

#include "PlainText.h"
#include "PluginLoader.h"
#include "Plugins.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QStyle>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace TAMBO::app {

namespace {

using services::PluginRecord;
using services::PluginState;

QString stateText(PluginState state)
{
    switch (state) {
    case PluginState::Loaded:
        return PluginsDialog::tr("loaded");
    case PluginState::MissingFile:
        return PluginsDialog::tr("file missing");
    case PluginState::Broken:
        return PluginsDialog::tr("cannot be loaded");
    case PluginState::UnresolvedSymbol:
        return PluginsDialog::tr("does not fit");
    case PluginState::LacksFunction:
        return PluginsDialog::tr("no plug-in");
    case PluginState::ThrewOnLoad:
        return PluginsDialog::tr("failed on loading");
    case PluginState::ThrewInCall:
        return PluginsDialog::tr("failed");
    }
    return {};
}

} // namespace

PluginsDialog::PluginsDialog(const services::PluginLoader &plugins, const QString &directory,
                             const QString &modelling, QWidget *parent)
    : QDialog(parent)
{
    setWindowTitle(tr("Plug-ins"));
    resize(640, 280);

    auto *list = new QTreeWidget;
    list->setObjectName(QStringLiteral("PluginList"));
    list->setHeaderLabels({tr("Plug-in"), tr("File"), tr("State"), tr("Reason")});
    list->setRootIsDecorated(false);
    list->setWordWrap(true);
    for (const PluginRecord &plugin : plugins.records()) {
        auto *item = new QTreeWidgetItem(
            list, {Plugins::titleOf(plugin), plugin.name, stateText(plugin.state), plugin.reason});
        item->setIcon(2, style()->standardIcon(plugin.isUsable() ? QStyle::SP_DialogApplyButton
                                                                 : QStyle::SP_MessageBoxWarning));
        item->setToolTip(1, plainToolTip(plugin.file));
        item->setToolTip(3, plainToolTip(plugin.reason));
    }
    for (int column = 0; column < 3; ++column)
        list->resizeColumnToContents(column);

    auto *place = new QLabel(plugins.records().empty() ? tr("No plug-ins in %1").arg(directory)
                                                       : tr("Plug-ins in %1").arg(directory));
    place->setTextFormat(Qt::PlainText);
    place->setTextInteractionFlags(Qt::TextSelectableByMouse);
    place->setWordWrap(true);
    auto *engine = new QLabel(modelling);
    engine->setObjectName(QStringLiteral("ModellingState"));
    engine->setTextFormat(Qt::PlainText);
    engine->setTextInteractionFlags(Qt::TextSelectableByMouse);
    engine->setWordWrap(true);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(list);
    layout->addWidget(place);
    layout->addWidget(engine);
    layout->addWidget(buttons);
}

PluginsDialog::~PluginsDialog() = default;

} // namespace TAMBO::app

#include "moc_PluginsDialog.cpp"
