// SPDX-License-Identifier: GPL-3.0-or-later
// The dialog that tool dialogs of the workbench derive from.
#pragma once

#include "Export.h"

#include <QDialog>
#include <QSize>
#include <QString>

class QBoxLayout;
class QDialogButtonBox;

// It comes up over its parent; where the user has moved it, and its size, are remembered under the
// caption. Whatever way the dialog is left, but by OK, ends in Cancel().
class TAMBO_API BaseDialog : public QDialog
{
    Q_OBJECT

public:
    enum Button { OkButton = 1, CancelButton = 2, ApplyButton = 4 };

    // buttons: a sum of Button. spacing: pixels between controls. helpText: shown by the dialog's
    // What's-this help. vertical: the buttons stand in a column at the right. modal: the dialog
    // blocks its window also when it is not run with exec().
    BaseDialog(const QString &caption, const QSize &size, int buttons, int spacing,
               const QString &helpText, bool vertical, bool modal, QWidget *parent,
               const char *name);
    ~BaseDialog() override;

    // The layout that takes the controls, which become children of the dialog.
    [[nodiscard]] QBoxLayout *GetTopLevelLayout() const;
    // Ends the construction: adds the buttons behind the controls. Gives the widget that the
    // controls are children of, the dialog itself.
    QWidget *StartWidget();
    // Whether the user wants tool tips.
    [[nodiscard]] bool ShowToolTips() const;

public slots:
    virtual void setupTooltips();
    // Apply() and accept.
    virtual void Ok();
    virtual void Cancel();
    virtual void Apply();
    void reject() override;
    void done(int result) override;

protected:
    void closeEvent(QCloseEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    void savePlace() const;

    QSize m_FirstSize;
    int m_ButtonSum;
    bool m_Vertical;
    bool m_Placed = false;
    QBoxLayout *m_TopLevelLayout = nullptr;
    QDialogButtonBox *m_Buttons = nullptr;
};
