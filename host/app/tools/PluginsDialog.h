// SPDX-License-Identifier: GPL-3.0-or-later
// All plug-ins that were found, in what state they are and why.
#pragma once

#include <QDialog>

namespace TAMBO::app {

class Plugins;

class PluginsDialog : public QDialog
{
    Q_OBJECT

public:
    // modelling says whether models can be built.
    PluginsDialog(const Plugins &plugins, const QString &modelling, QWidget *parent);
    ~PluginsDialog() override;
};

} // namespace TAMBO::app
