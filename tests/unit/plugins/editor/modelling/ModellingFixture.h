// SPDX-License-Identifier: GPL-3.0-or-later
// Editor windows with a template, a target, and a program called kestram that a test writes.
#pragma once

#include "PluginRoutes.h"
#include "WindowFixture.h"

#include "Config.h"
#include "Structure.h"

#include <QDir>
#include <QFile>
#include <QMessageBox>
#include <QProcess>
#include <QTemporaryDir>

#include <functional>

class ModellingFixture : public WindowFixture
{
protected:
    // What the user was told.
    struct Told
    {
        QString title;
        QString text;
        QMessageBox::Icon icon = QMessageBox::NoIcon;
        const QWidget *parent = nullptr;
        QMessageBox::StandardButtons buttons;

        friend bool operator==(const Told &, const Told &) = default;
    };

    ModellingFixture();
    ~ModellingFixture() override;

    // The program kestram, alone on the search path but for the system's programs. In the shell's
    // language; "wait_for_go" in it waits until the test calls letGo().
    void install(const QByteArray &script);
    void letGo();
    // Leaves the system's programs only.
    void uninstall();

    static QString scratch(const QString &name = {});
    static QByteArray contents(const QString &name);
    static bool exists(const QString &name) { return QFile::exists(scratch(name)); }
    // A file that a program writes for the test; in a folder of the test's own.
    QString note(const QString &name) const { return m_Folder.filePath(name); }
    QByteArray noted(const QString &name) const;
    // Until the condition holds, with the events that come meanwhile.
    static void waitFor(const std::function<bool()> &condition);
    // The job of the window has ended and all boxes about it are closed.
    static void waitForIdle(ZEP::KALMO2 &window);
    static QProcess &processOf(ZEP::KALMO2 &window);
    static bool isRunning(ZEP::KALMO2 &window)
    {
        return processOf(window).state() != QProcess::NotRunning;
    }

    // "AC-D" with atoms over "A-CD", and further rows without.
    TAMBO::Alignment &templateAndTarget(const Texts &more = {});
    static TAMBO::Structure &structure(const std::string &name, const std::string &letters);

    // One job from the menu command to the end, its box closed.
    void runJob(ZEP::KALMO2 &window);
    DialogDriver::Handler close();

    static Told complete(const ZEP::KALMO2 &window)
    {
        return {"Tambo", "Run of Kestram complete.", QMessageBox::Information, &window,
                QMessageBox::Ok};
    }
    static Told failed(const ZEP::KALMO2 &window)
    {
        return {"Tambo", "Failed to run KESTRAM", QMessageBox::Warning, &window, QMessageBox::Ok};
    }
    static Told notStarted(const ZEP::KALMO2 &window)
    {
        return {"Tambo", "Failed to start KESTRAM", QMessageBox::Warning, &window, QMessageBox::Ok};
    }

    // In the order in which they came: "save", "read", "told"; and what tests add.
    std::vector<std::string> m_Order;
    std::vector<Told> m_Told;
    // What the window asked to be saved and to be read.
    std::vector<std::pair<QString, TAMBO::Alignment *>> m_Saved;
    std::vector<QByteArray> m_Read;
    // What is read is a model.
    bool m_Model = false;
    // Run at the command that reads the model.
    std::function<void()> m_OnRead;

private:
    QByteArray m_SystemPath;
    QTemporaryDir m_Folder;
    int m_Go = -1;
};

inline void PrintTo(const QString &text, std::ostream *stream)
{
    *stream << '"' << text.toStdString() << '"';
}
