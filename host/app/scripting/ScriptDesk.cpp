// SPDX-License-Identifier: GPL-3.0-or-later
#include "ScriptDesk.h"

#include "ChangeScope.h"
#include "ConfigStore.h"
#include "ConsoleOutput.h"
#include "HeldWorkbench.h"
#include "Hooks.h"
#include "Logger.h"
#include "OutcomeText.h"
#include "Publisher.h"
#include "RunScriptDialog.h"
#include "ScriptArguments.h"

#include <QApplication>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <optional>
#include <utility>

namespace TAMBO::app {

namespace {

using scripting::OutputKind;
using scripting::ScriptEngine;
using scripting::ScriptOutcome;

// A run has so many times as long for itself as showing its output takes.
constexpr qint64 kShareOfScript = 4;

// The script's words on long work are its own: what waits for them is the script.
class WorkOfScript
{
public:
    explicit WorkOfScript(std::function<bool()> goesOn)
        : m_Working(std::move(modelHooks().working)), m_Worked(std::move(modelHooks().worked))
    {
        modelHooks().working = [goesOn = std::move(goesOn)](const char *, double,
                                                            bool canBeGivenUp) {
            return goesOn() || !canBeGivenUp;
        };
        modelHooks().worked = nullptr;
    }
    ~WorkOfScript()
    {
        modelHooks().working = std::move(m_Working);
        modelHooks().worked = std::move(m_Worked);
    }
    WorkOfScript(const WorkOfScript &) = delete;
    WorkOfScript &operator=(const WorkOfScript &) = delete;

private:
    decltype(ModelHooks::working) m_Working;
    decltype(ModelHooks::worked) m_Worked;
};

// Where in Python it comes from is left to the log.
QString reasonOf(const Failure &failure)
{
    const QString text = QString::fromStdString(failure.message());
    const qsizetype end = text.indexOf(u'\n');
    if (end >= 0)
        Logger::Write(text, Logger::Severity::Error);
    return end < 0 ? text : text.first(end);
}

QString asTyped(const QString &source)
{
    QString shown = source;
    return QStringLiteral(">>> ") + shown.replace(u'\n', QStringLiteral("\n... "));
}

} // namespace

ScriptDesk::ScriptDesk(History &history, services::ConfigStore &settings, Actions actions,
                       Opener opener)
    : m_History(history),
      m_Settings(settings),
      m_Actions(std::move(actions)),
      m_Opener(std::move(opener)),
      m_Recent(settings),
      m_Typed(ConsoleHistory::standardFile()),
      m_Lines(ConsoleOutput::kMostLines)
{
    connect(&m_Recent, &RecentScripts::changed, this, [this] { m_Settings.saveOrLog(); });
}

ScriptDesk::~ScriptDesk() = default;

// ---- Beginning

Result<ScriptEngine *> ScriptDesk::openEngine()
{
    QApplication::setOverrideCursor(Qt::WaitCursor);
    Result<ScriptEngine *> engine = m_Opener(*this);
    QApplication::restoreOverrideCursor();
    return engine;
}

bool ScriptDesk::mayBegin()
{
    if (m_IsRunning) {
        refuse();
        return false;
    }
    if (isChanging() || Publisher::isPublishing()) {
        m_Actions.say(tr("A script cannot be run in the middle of a change."));
        return false;
    }
    return true;
}

void ScriptDesk::askAndRun(QWidget *parent)
{
    if (!mayBegin())
        return;
    if (const std::optional<RecentScripts::Script> script = askForScript(m_Recent, parent))
        run(*script);
}

bool ScriptDesk::run(const RecentScripts::Script &script)
{
    if (!mayBegin())
        return false;
    const QFileInfo file(script.file);
    const QString headline = tr("%1 cannot be run.").arg(file.fileName());
    if (!file.isFile()) {
        m_Recent.remove(file.absoluteFilePath());
        m_Actions.tellFailure(headline, {tr("%1 is not there.").arg(file.absoluteFilePath())});
        return false;
    }
    const Result<std::vector<std::string>> arguments = scriptArguments(script.arguments);
    if (!arguments) {
        m_Actions.tellFailure(headline, {QString::fromStdString(arguments.error().message())});
        return false;
    }
    const Result<ScriptEngine *> engine = openEngine();
    if (!engine) {
        m_Actions.tellFailure(headline, {reasonOf(engine.error())});
        return false;
    }
    m_Recent.setFolder(file.absolutePath());
    m_Recent.add(script);
    m_Title = file.fileName();
    emit consoleAsked();
    m_Lines.addLines(script.arguments.isEmpty()
                         ? tr("Running %1").arg(m_Title)
                         : tr("Running %1 %2").arg(m_Title, script.arguments.simplified()),
                     LineKind::Notice);
    const ScriptOutcome outcome = runWork([&] {
        return engine.value()->run(QFile::encodeName(file.absoluteFilePath()).toStdString(),
                                   arguments.value());
    });
    tellOutcome(outcome, file.fileName());
    return true;
}

ScriptEngine *ScriptDesk::engineForConsole()
{
    if (m_IsRunning)
        return nullptr;
    const Result<ScriptEngine *> engine = openEngine();
    if (engine)
        return engine.value();
    m_Lines.addLines(reasonOf(engine.error()), LineKind::Error);
    emit newsCame();
    return nullptr;
}

void ScriptDesk::execute(const QString &source)
{
    if (!mayBegin())
        return;
    m_Lines.addLines(asTyped(source), LineKind::Input);
    ScriptEngine *const engine = engineForConsole();
    if (engine == nullptr)
        return;
    m_Title = tr("What was typed");
    tellOutcome(runWork([&] { return engine->execute(source.toStdString()); }), QString());
}

// ---- While it runs

ScriptOutcome ScriptDesk::runWork(const Work &work)
{
    m_IsRunning = true;
    m_Stops = 0;
    m_IsStopNew = false;
    m_Clock.start();
    m_NextLook = kPatience;
    emit begun();
    doWhatWasPutOff();
    ScriptOutcome outcome;
    {
        // Files and models that arrive wait.
        const ArrivalPause pause;
        {
            const WorkOfScript own([this] {
                look();
                return !m_IsStopNew && m_Stops < 2;
            });
            outcome = work();
        }
        m_WasHeld = m_Held != nullptr;
        m_Held.reset();
        m_IsRunning = false;
    }
    m_Lines.breakLine();
    return outcome;
}

void ScriptDesk::write(std::string_view text, OutputKind kind)
{
    m_Lines.write(text, kind == OutputKind::Error ? LineKind::Error : LineKind::Output);
}

bool ScriptDesk::breathe()
{
    look();
    return !std::exchange(m_IsStopNew, false) && m_Stops < 2;
}

void ScriptDesk::opened(const Compound &object, const std::filesystem::path &file)
{
    if (m_Actions.opened)
        m_Actions.opened(object, file);
}

// What windows have put off at its end would come in the middle of the next one.
void ScriptDesk::stepEnded()
{
    if (m_IsLooking)
        return;
    // There is nothing to be looked at meanwhile.
    m_IsLooking = true;
    doWhatWasPutOff();
    m_IsLooking = false;
}

ScriptDesk::SessionValues ScriptDesk::sessionValues()
{
    return m_Actions.sessionValues ? m_Actions.sessionValues() : SessionValues();
}

void ScriptDesk::sessionSaved(const std::filesystem::path &file)
{
    if (m_Actions.sessionSaved)
        m_Actions.sessionSaved(file);
}

// It knows the objects as they are now, and not in the middle of a step.
void ScriptDesk::doWhatWasPutOff()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::MetaCall);
}

void ScriptDesk::look()
{
    if (!m_IsRunning || m_IsLooking || m_Clock.elapsed() < m_NextLook)
        return;
    m_IsLooking = true;
    hold();
    const qint64 before = m_Clock.elapsed();
    emit newsCame();
    // What timers begin looks at a model that is in the middle of something.
    QCoreApplication::processEvents(QEventLoop::X11ExcludeTimers);
    const qint64 after = m_Clock.elapsed();
    m_NextLook = after + std::max(kBetweenLooks, kShareOfScript * (after - before));
    m_IsLooking = false;
}

void ScriptDesk::hold()
{
    if (m_Held != nullptr || m_Console == nullptr)
        return;
    m_Held = std::make_unique<HeldWorkbench>(*m_Console);
    connect(m_Held.get(), &HeldWorkbench::stopAsked, this, &ScriptDesk::stop);
    connect(m_Held.get(), &HeldWorkbench::refused, this, &ScriptDesk::refuse);
    m_Actions.say(tr("%1 is running. Escape stops it.").arg(m_Title));
}

void ScriptDesk::refuse()
{
    m_Actions.say(tr("%1 is still running. Escape stops it.").arg(m_Title));
}

void ScriptDesk::stop()
{
    if (!m_IsRunning)
        return;
    ++m_Stops;
    m_IsStopNew = true;
    m_Actions.say(tr("Stopping…"));
}

void ScriptDesk::stopForGood()
{
    stop();
    stop();
}

// ---- Its end

void ScriptDesk::tellOutcome(const ScriptOutcome &outcome, const QString &name)
{
    const bool isScript = !name.isEmpty();
    const QString title = isScript ? name : tr("What was typed");
    QString said;
    if (outcome.end == ScriptOutcome::End::Failed) {
        const QString trace = QString::fromStdString(outcome.trace).trimmed();
        const QString failure = failureText(outcome, name);
        if (!trace.isEmpty())
            m_Lines.addLines(trace, LineKind::Error);
        if (isScript || trace.isEmpty())
            m_Lines.addLines(failure, LineKind::Error);
        if (isScript)
            Logger::Write(failure, Logger::Severity::Error);
        said = failure;
    } else if (outcome.end == ScriptOutcome::End::Stopped) {
        said = tr("%1 was stopped.").arg(title);
    }
    QString notice = consequenceText(outcome, name);
    if (outcome.end == ScriptOutcome::End::Stopped)
        notice = said + u' ' + notice;
    if (!notice.isEmpty())
        m_Lines.addLines(notice, LineKind::Notice);
    if (said.isEmpty())
        said = isScript ? notice : tr("What was typed is done.");
    // Short inputs of the console say themselves what has come of them.
    if (isScript || m_WasHeld)
        m_Actions.say(said);
    emit newsCame();
    emit ended();
}

} // namespace TAMBO::app

#include "moc_ScriptDesk.cpp"
