// SPDX-License-Identifier: GPL-3.0-or-later
// Runs scripts, and what is typed into the console, on the objects that are loaded. Owns what is to
// be remembered of it; the console shows it.
#pragma once

#include "ConsoleHistory.h"
#include "OutputLines.h"
#include "RecentScripts.h"
#include "ScriptEngine.h"

#include <QElapsedTimer>
#include <QObject>
#include <QPointer>

#include <filesystem>
#include <functional>
#include <memory>

namespace TAMBO::app {

class HeldWorkbench;

class ScriptDesk : public QObject, private scripting::ScriptHost
{
    Q_OBJECT

public:
    using SessionValues = scripting::ScriptHost::SessionValues;
    struct Actions
    {
        // In the status line.
        std::function<void(const QString &text)> say;
        // In a box.
        std::function<void(const QString &headline, const QStringList &causes)> tellFailure;
        // A script has opened a file. May be empty.
        std::function<void(const Compound &object, const std::filesystem::path &file)> opened;
        // What it saves in a session beside objects and steps, and that it has. May be empty.
        std::function<SessionValues()> sessionValues;
        std::function<void(const std::filesystem::path &file)> sessionSaved;
    };
    // How the engine is found; for tests.
    using Opener = std::function<Result<scripting::ScriptEngine *>(scripting::ScriptHost &host)>;

    // In milliseconds: short runs come and go without a look at events.
    static constexpr qint64 kPatience = 150;
    static constexpr qint64 kBetweenLooks = 50;

    // All of them outlive this.
    ScriptDesk(History &history, services::ConfigStore &settings, Actions actions,
               Opener opener = scripting::scriptEngine);
    ~ScriptDesk() override;

    [[nodiscard]] RecentScripts &recent() noexcept { return m_Recent; }
    [[nodiscard]] ConsoleHistory &typed() noexcept { return m_Typed; }
    // What goes on while a script runs.
    void setConsole(QWidget *console) { m_Console = console; }

    // With a file dialog.
    void askAndRun(QWidget *parent);
    // Once it is back, the run has ended. False when there was none, which the user was told.
    bool run(const RecentScripts::Script &script);
    // What was typed into the console.
    void execute(const QString &source);
    [[nodiscard]] bool isRunning() const noexcept { return m_IsRunning; }
    // What runs, if it runs. Asked a second time it stops whatever the script does about it.
    void stop();
    void stopForGood();
    // The engine for what is typed; null, said in the console, when there is none.
    [[nodiscard]] scripting::ScriptEngine *engineForConsole();

    // What is to be shown since it was asked last.
    [[nodiscard]] OutputLines::News takeNews() { return m_Lines.take(); }

signals:
    // Its output is to be seen.
    void consoleAsked();
    void begun();
    void ended();
    void newsCame();

private:
    using Work = std::function<scripting::ScriptOutcome()>;

    History &history() override { return m_History; }
    void write(std::string_view text, scripting::OutputKind kind) override;
    bool breathe() override;
    void opened(const Compound &object, const std::filesystem::path &file) override;
    void stepEnded() override;
    SessionValues sessionValues() override;
    void sessionSaved(const std::filesystem::path &file) override;

    void doWhatWasPutOff();
    [[nodiscard]] bool mayBegin();
    [[nodiscard]] Result<scripting::ScriptEngine *> openEngine();
    scripting::ScriptOutcome runWork(const Work &work);
    void look();
    void hold();
    // name: of the script; empty for the console.
    void tellOutcome(const scripting::ScriptOutcome &outcome, const QString &name);
    void refuse();

    History &m_History;
    services::ConfigStore &m_Settings;
    Actions m_Actions;
    Opener m_Opener;
    RecentScripts m_Recent;
    ConsoleHistory m_Typed;
    OutputLines m_Lines;
    QPointer<QWidget> m_Console;
    std::unique_ptr<HeldWorkbench> m_Held;
    // During the last run.
    bool m_WasHeld = false;
    // What runs, for the user.
    QString m_Title;
    bool m_IsRunning = false;
    bool m_IsLooking = false;
    int m_Stops = 0;
    // The script has not been told of the last one.
    bool m_IsStopNew = false;
    QElapsedTimer m_Clock;
    qint64 m_NextLook = 0;
};

} // namespace TAMBO::app
