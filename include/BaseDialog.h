// SPDX-License-Identifier: GPL-3.0-or-later
// The dialog that tool dialogs of the workbench derive from.
#pragma once

#include "Export.h"

#include <QDialog>
#include <QSize>
#include <QString>

class QBoxLayout;

// Buttons are given as a sum: 1 OK, 2 Cancel, 4 Apply. Size and place are remembered under the
// caption.
class TAMBO_API BaseDialog : public QDialog
{
    Q_OBJECT

public:
    // spacing: pixels between controls. helpText: shown by the dialog's What's-this help.
    // modal, vertical: whether the dialog blocks its window, and whether the buttons stand in a
    // column at the right.
    BaseDialog(const QString &caption, const QSize &size, int buttons, int spacing,
               const QString &helpText, bool modal, bool vertical, QWidget *parent,
               const char *name);
    ~BaseDialog() override;

    // Ends the construction and gives the widget that holds the controls.
    QWidget *StartWidget();
    [[nodiscard]] QBoxLayout *GetTopLevelLayout() const;
    [[nodiscard]] bool ShowToolTips() const;

public slots:
    virtual void setupTooltips();
    // Apply() and accept.
    virtual void Ok();
    virtual void Cancel();
    virtual void Apply();

protected:
    void closeEvent(QCloseEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    void savePlace() const;

    QString m_PlaceKey;
    QSize m_FirstSize;
    QWidget *m_Controls = nullptr;
    QBoxLayout *m_TopLevelLayout = nullptr;
    bool m_Placed = false;
};
