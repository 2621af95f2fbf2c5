// SPDX-License-Identifier: GPL-3.0-or-later
#include "ConsolePanel.h"

#include "ConsoleInput.h"
#include "ConsoleOutput.h"
#include "ScriptDesk.h"

#include <QAction>
#include <QApplication>
#include <QFile>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QTextDocument>
#include <QToolButton>
#include <QVBoxLayout>

namespace TAMBO::app {

namespace {

// Places in a text, in bytes of UTF-8 and in the toolkit's characters.
std::size_t bytesBefore(const QString &text, qsizetype place)
{
    return std::size_t(QStringView(text).first(place).toUtf8().size());
}

qsizetype charactersBefore(const std::string &text, std::size_t place)
{
    return QString::fromUtf8(text.data(), qsizetype(std::min(place, text.size()))).size();
}

// From 1; empty when there is none.
QString lineOfFile(const QString &name, int line)
{
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return {};
    QByteArray text;
    for (int i = 0; i < line && !file.atEnd(); ++i)
        text = file.readLine();
    return QString::fromUtf8(text).trimmed();
}

} // namespace

ConsolePanel::ConsolePanel(ScriptDesk &desk, QWidget *parent) : QWidget(parent), m_Desk(desk)
{
    setObjectName(QStringLiteral("Console"));
    desk.setConsole(this);
    connect(&desk, &ScriptDesk::begun, this, &ConsolePanel::showState);
    connect(&desk, &ScriptDesk::ended, this, &ConsolePanel::showState);
    connect(&desk, &ScriptDesk::newsCame, this, &ConsolePanel::showNews);
}

ConsolePanel::~ConsolePanel() = default;

void ConsolePanel::make()
{
    if (m_Output != nullptr)
        return;
    m_Output = new ConsoleOutput;
    ConsoleInput::Language language;
    language.isComplete = [this](const QString &source) {
        scripting::ScriptEngine *const engine = m_Desk.engineForConsole();
        // Without one, running it says why.
        return engine == nullptr || engine->isComplete(source.toStdString());
    };
    language.complete = [this](const QString &source, qsizetype cursor) {
        ConsoleInput::Completion completion;
        scripting::ScriptEngine *const engine = m_Desk.engineForConsole();
        if (engine == nullptr)
            return completion;
        const std::string text = source.toStdString();
        const auto found = engine->complete(text, bytesBefore(source, cursor));
        completion.start = charactersBefore(text, found.start);
        for (const std::string &word : found.words)
            completion.words << QString::fromStdString(word);
        return completion;
    };
    m_Input = new ConsoleInput(m_Desk.typed(), language);
    m_Prompt = new QLabel(QStringLiteral(">>>"));
    m_Prompt->setFont(m_Input->font());
    m_Prompt->setBuddy(m_Input);
    m_Stop = new QToolButton;
    m_Stop->setObjectName(QStringLiteral("ConsoleStop"));
    m_Stop->setText(tr("Stop"));
    m_Stop->setToolTip(tr("Stop what runs (Escape); a second time it is ended whatever it does"));
    connect(m_Stop, &QToolButton::clicked, &m_Desk, &ScriptDesk::stop);

    // Once the key has been dealt with: what runs holds the events.
    connect(m_Input, &ConsoleInput::entered, &m_Desk, &ScriptDesk::execute, Qt::QueuedConnection);
    connect(m_Output, &ConsoleOutput::typed, this, [this](QKeyEvent *event) {
        m_Input->setFocus();
        QCoreApplication::sendEvent(m_Input, event);
    });
    connect(m_Output, &ConsoleOutput::placeClicked, this, &ConsolePanel::showPlace);
    auto *const clear = new QAction(tr("Clear"), this);
    clear->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_L));
    clear->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    connect(clear, &QAction::triggered, m_Output, &QPlainTextEdit::clear);
    addAction(clear);

    auto *const line = new QHBoxLayout;
    line->setSpacing(4);
    const int margin = m_Input->frameWidth() + int(m_Input->document()->documentMargin());
    m_Prompt->setContentsMargins(margin, margin, 0, 0);
    line->addWidget(m_Prompt, 0, Qt::AlignTop);
    line->addWidget(m_Input, 1, Qt::AlignTop);
    line->addWidget(m_Stop, 0, Qt::AlignTop);
    auto *const layout = new QVBoxLayout(this);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->setSpacing(4);
    layout->addWidget(m_Output, 1);
    layout->addLayout(line);
    setTabOrder(m_Output, m_Input);
    setTabOrder(m_Input, m_Stop);
    showState();
    showNews();
}

void ConsolePanel::showEvent(QShowEvent *event)
{
    make();
    QWidget::showEvent(event);
}

void ConsolePanel::focusInput()
{
    make();
    m_Input->setFocus();
}

void ConsolePanel::showNews()
{
    if (m_Output != nullptr)
        m_Output->show(m_Desk.takeNews());
}

void ConsolePanel::showState()
{
    if (m_Input == nullptr)
        return;
    const bool isBusy = m_Desk.isRunning();
    m_Input->setBusy(isBusy, isBusy ? tr("Running… Escape stops it")
                                    : tr("Python: tambo.alignments(). Tab completes"));
    m_Stop->setEnabled(isBusy);
}

void ConsolePanel::showPlace(const QString &file, int line, const QString &text)
{
    const QString shown = text.isEmpty() ? lineOfFile(file, line) : text;
    emit said(shown.isEmpty()
                  ? tr("%1 has no line %2 any more.").arg(QFileInfo(file).fileName()).arg(line)
                  : tr("%1, line %2: %3").arg(QFileInfo(file).fileName()).arg(line).arg(shown));
}

} // namespace TAMBO::app

#include "moc_ConsolePanel.cpp"
