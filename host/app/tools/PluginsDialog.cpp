// SPDX-License-Identifier: GPL-3.0-or-later
#include "PluginsDialog.h"

#include "PlainText.h"
#include "PluginLoader.h"
#include "Plugins.h"

#include <QDialogButtonBox>
#include <QFileInfo>
#include <QHeaderView>
#include <QLabel>
#include <QStyle>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace TAMBO::app {

namespace {

using services::PluginRecord;
using services::PluginState;

enum PluginColumn { TitleColumn, LibraryColumn, FolderColumn, StateColumn, ReasonColumn };

constexpr QSize kPluginsSize(860, 440);
// In full below the list, for the plug-in that is picked there.
constexpr int kReasonLines = 3;
// The rest of a longer path is in the tool tip.
constexpr int kWidestFolder = 260;

QIcon stateIcon(const QStyle &style, PluginState state)
{
    if (state == PluginState::Loaded)
        return style.standardIcon(QStyle::SP_DialogApplyButton);
    const bool isNormal = state == PluginState::Found || state == PluginState::Overruled;
    return style.standardIcon(isNormal ? QStyle::SP_MessageBoxInformation
                                       : QStyle::SP_MessageBoxWarning);
}

QTreeWidgetItem *firstWithReason(const QTreeWidget &list)
{
    for (int row = 0; row < list.topLevelItemCount(); ++row)
        if (!list.topLevelItem(row)->text(ReasonColumn).isEmpty())
            return list.topLevelItem(row);
    return list.topLevelItem(0);
}

QString stateText(PluginState state)
{
    switch (state) {
    case PluginState::Found:
        return PluginsDialog::tr("not loaded");
    case PluginState::Loaded:
        return PluginsDialog::tr("loaded");
    case PluginState::MissingFile:
        return PluginsDialog::tr("file missing");
    case PluginState::Overruled:
        return PluginsDialog::tr("not used");
    case PluginState::BrokenDescriptor:
        return PluginsDialog::tr("bad descriptor");
    case PluginState::WrongVersion:
        return PluginsDialog::tr("wrong version");
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

PluginsDialog::PluginsDialog(const Plugins &plugins, const QString &modelling, QWidget *parent)
    : QDialog(parent)
{
    setWindowTitle(tr("Plug-ins"));
    resize(kPluginsSize);

    auto *list = new QTreeWidget;
    list->setObjectName(QStringLiteral("PluginList"));
    list->setHeaderLabels({tr("Plug-in"), tr("File"), tr("Folder"), tr("State"), tr("Reason")});
    list->setRootIsDecorated(false);
    list->setTextElideMode(Qt::ElideMiddle);
    for (const PluginRecord &plugin : plugins.loader().records()) {
        const QString folder = QFileInfo(plugin.file).path();
        auto *item = new QTreeWidgetItem(list, {Plugins::titleOf(plugin), plugin.name, folder,
                                                stateText(plugin.state), plugin.reason});
        item->setIcon(TitleColumn, Plugins::iconOf(plugin));
        item->setIcon(StateColumn, stateIcon(*style(), plugin.state));
        item->setToolTip(LibraryColumn, plainToolTip(plugin.file));
        item->setToolTip(FolderColumn, plainToolTip(folder));
        item->setToolTip(ReasonColumn, plainToolTip(plugin.reason));
    }
    for (int column = TitleColumn; column < ReasonColumn; ++column)
        list->resizeColumnToContents(column);
    list->setColumnWidth(FolderColumn, std::min(list->columnWidth(FolderColumn), kWidestFolder));

    auto *reason = new QLabel;
    reason->setObjectName(QStringLiteral("PluginReason"));
    reason->setTextFormat(Qt::PlainText);
    reason->setTextInteractionFlags(Qt::TextSelectableByMouse);
    reason->setWordWrap(true);
    reason->setAlignment(Qt::AlignTop);
    reason->setMinimumHeight(kReasonLines * reason->fontMetrics().lineSpacing());
    connect(list, &QTreeWidget::currentItemChanged, reason, [reason](const QTreeWidgetItem *item) {
        reason->setText(item == nullptr ? QString() : item->text(ReasonColumn));
    });
    list->setCurrentItem(firstWithReason(*list));

    const QString folders = plugins.folders().paths().join(QStringLiteral("\n"));
    auto *place =
        new QLabel(plugins.loader().records().empty()
                       ? tr("There are no plug-ins in these folders:\n%1").arg(folders)
                       : tr("Plug-ins are looked for in these folders:\n%1").arg(folders));
    place->setObjectName(QStringLiteral("PluginFolders"));
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
    layout->addWidget(list, 1);
    layout->addWidget(reason);
    layout->addWidget(place);
    layout->addWidget(engine);
    layout->addWidget(buttons);
}

PluginsDialog::~PluginsDialog() = default;

} // namespace TAMBO::app

#include "moc_PluginsDialog.cpp"
