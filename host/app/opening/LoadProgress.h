// SPDX-License-Identifier: GPL-3.0-or-later
// Says that files are being read and lets the user give up; comes up only when it takes a while.
#pragma once

#include <QDialog>
#include <QString>
#include <QTimer>

#include <functional>

class QLabel;
class QProgressBar;

namespace TAMBO::app {

class Loader;
class ModelsReader;

class LoadProgress : public QDialog
{
    Q_OBJECT

public:
    static constexpr int kPatienceMilliseconds = 300;

    // They outlive the dialog.
    LoadProgress(Loader &loader, QWidget *parent);
    LoadProgress(ModelsReader &reader, QWidget *parent);
    ~LoadProgress() override;

    // Gives up the loading.
    void reject() override;

private:
    LoadProgress(std::function<void()> cancel, QWidget *parent);

    void begin();
    void end();
    // Comes up; what stands in it is made when it does so for the first time.
    void appear();
    void make();
    void tell();
    void advance(const QString &fileName, double fraction);
    void advanceMaking(double fraction);

    std::function<void()> m_Cancel;
    QString m_FileName;
    // The files are read.
    bool m_IsMaking = false;
    double m_Fraction = 0.0;
    // Null before the first time.
    QLabel *m_Text = nullptr;
    QProgressBar *m_Bar = nullptr;
    QTimer m_Patience;
};

} // namespace TAMBO::app
