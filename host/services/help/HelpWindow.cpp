// SPDX-License-Identifier: GPL-3.0-or-later
#include "HelpWindow.h"

#include "Directories.h"
#include "HelpBrowser.h"
#include "HelpPages.h"

#include <QAction>
#include <QFileInfo>
#include <QIcon>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QShortcut>
#include <QStatusBar>
#include <QTextCursor>
#include <QTextDocument>
#include <QToolBar>

namespace TAMBO::services {

namespace {

constexpr int kMargin = 24;
constexpr int kSearchWidth = 240;

// Only pages of the help itself, wherever a link or a setting may point.
QUrl pageAddress(const QString &document)
{
    const QUrl asked(document);
    const QString name = asked.path();
    const QString installed = HelpBrowser::directory() + '/' + name;
    const bool isInstalled =
        !name.isEmpty() && !name.contains('/') && QFileInfo(installed).isFile();
    const QString file = isInstalled ? installed : HelpPages::instance().fileOf(name);
    if (file.isEmpty())
        return QUrl::fromLocalFile(HelpBrowser::contentsPage());
    QUrl address = QUrl::fromLocalFile(file);
    address.setFragment(asked.fragment());
    return address;
}

} // namespace

HelpWindow::HelpWindow()
    : BaseWindow(tr("Help"), QSize(760, 700), QStringLiteral("Help"), false, nullptr, "HelpWindow"),
      m_Pages(new HelpBrowser(this))
{
    // Open help keeps nobody from leaving the workbench.
    setAttribute(Qt::WA_QuitOnClose, false);
    m_Pages->setOpenLinks(false);
    m_Pages->setFrameShape(QFrame::NoFrame);
    m_Pages->setSearchPaths({HelpBrowser::directory()});
    m_Pages->document()->setDocumentMargin(kMargin);
    setCentralWidget(m_Pages);
    m_Message = new QLabel(this);
    m_Message->setTextFormat(Qt::PlainText);
    statusBar()->addWidget(m_Message);
    makeToolBar();
    connect(m_Pages, &QTextBrowser::anchorClicked, this, &HelpWindow::follow);
    connect(m_Pages, &QTextBrowser::sourceChanged, this, [this] {
        setWindowTitle(tr("Help: %1").arg(m_Pages->documentTitle()));
        say(QString());
    });
    m_Pages->setFocus();
}

HelpWindow::~HelpWindow() = default;

void HelpWindow::makeToolBar()
{
    QToolBar *bar = addToolBar(tr("Help"));
    bar->setObjectName(QStringLiteral("HelpBar"));
    bar->setMovable(false);
    const auto add = [&](const char *icon, const QString &text, const QKeySequence &keys) {
        const QString file =
            QStringLiteral("%1/icons/%2.svg").arg(Directories::shared(), QLatin1String(icon));
        QAction *action = bar->addAction(QIcon(file), text);
        action->setShortcut(keys);
        action->setToolTip(tr("%1 (%2)").arg(text, keys.toString()));
        return action;
    };
    QAction *back = add("back", tr("Back"), Qt::ALT | Qt::Key_Left);
    QAction *forward = add("forward", tr("Forward"), Qt::ALT | Qt::Key_Right);
    QAction *contents = add("contents", tr("Contents"), Qt::ALT | Qt::Key_Home);
    back->setEnabled(false);
    forward->setEnabled(false);
    connect(back, &QAction::triggered, m_Pages, &QTextBrowser::backward);
    connect(forward, &QAction::triggered, m_Pages, &QTextBrowser::forward);
    connect(contents, &QAction::triggered, this, [this] { showDocument(QString()); });
    connect(m_Pages, &QTextBrowser::backwardAvailable, back, &QAction::setEnabled);
    connect(m_Pages, &QTextBrowser::forwardAvailable, forward, &QAction::setEnabled);

    auto *gap = new QWidget(bar);
    gap->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    bar->addWidget(gap);
    m_Search = new QLineEdit(bar);
    m_Search->setPlaceholderText(tr("Find on this page (Ctrl+F)"));
    m_Search->setAccessibleName(tr("Find on this page"));
    m_Search->setClearButtonEnabled(true);
    m_Search->setMaximumWidth(kSearchWidth);
    bar->addWidget(m_Search);
    connect(m_Search, &QLineEdit::textEdited, this, &HelpWindow::searchWhileTyping);
    connect(m_Search, &QLineEdit::returnPressed, this, [this] { search(Direction::Forward); });

    const auto key = [this](const QKeySequence &keys, auto what) {
        connect(new QShortcut(keys, this), &QShortcut::activated, this, what);
    };
    key(QKeySequence::Find, [this] {
        m_Search->setFocus();
        m_Search->selectAll();
    });
    key(Qt::Key_F3, [this] { search(Direction::Forward); });
    key(Qt::SHIFT | Qt::Key_F3, [this] { search(Direction::Backward); });
    key(Qt::Key_Escape, [this] {
        if (m_Search->hasFocus())
            m_Pages->setFocus();
        else
            BaseWindow::close();
    });
}

void HelpWindow::showDocument(const QString &document)
{
    m_Pages->setSource(pageAddress(document));
}

QUrl HelpWindow::document() const
{
    return m_Pages->source();
}

void HelpWindow::follow(const QUrl &link)
{
    if (!link.isLocalFile() && !link.isRelative())
        return;
    const QUrl target = m_Pages->source().resolved(link);
    if (HelpPages::instance().allows(target.toLocalFile()))
        return m_Pages->setSource(target);
    QString document = link.fileName();
    if (document.isEmpty())
        document = m_Pages->source().fileName();
    if (link.hasFragment())
        document += '#' + link.fragment();
    showDocument(document);
}

void HelpWindow::searchWhileTyping()
{
    // The hit grows with the text instead of jumping to the next one.
    QTextCursor cursor = m_Pages->textCursor();
    cursor.setPosition(cursor.selectionStart());
    m_Pages->setTextCursor(cursor);
    search(Direction::Forward);
}

void HelpWindow::search(Direction direction)
{
    const QString text = m_Search->text();
    say(QString());
    if (text.isEmpty())
        return;
    const QTextDocument::FindFlags flags =
        direction == Direction::Backward ? QTextDocument::FindBackward : QTextDocument::FindFlags();
    if (m_Pages->find(text, flags))
        return;
    const QTextCursor before = m_Pages->textCursor();
    m_Pages->moveCursor(direction == Direction::Backward ? QTextCursor::End : QTextCursor::Start);
    if (m_Pages->find(text, flags)) {
        say(tr("Search went on at the other end of the page"));
        return;
    }
    m_Pages->setTextCursor(before);
    say(tr("\"%1\" is not on this page").arg(text));
}

void HelpWindow::say(const QString &text)
{
    m_Message->setText(text);
}

void HelpWindow::Kill(BaseWindow *window)
{
    delete window;
}

} // namespace TAMBO::services

#include "moc_HelpWindow.cpp"
