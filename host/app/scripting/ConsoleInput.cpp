// SPDX-License-Identifier: GPL-3.0-or-later
#include "ConsoleInput.h"

#include "ConsoleHistory.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QFontDatabase>
#include <QKeyEvent>
#include <QMimeData>
#include <QScrollBar>
#include <QStringListModel>
#include <QStyledItemDelegate>
#include <QTextBlock>

#include <algorithm>
#include <utility>

namespace TAMBO::app {

namespace {

constexpr int kMostShownLines = 8;
constexpr int kMostShownWords = 10;
constexpr int kIndent = 4;
constexpr int kWordSpacing = 1;

// Lines that stand close cut the lowest parts of letters. The list is made as high as its lines say
// that they are; what a list has between them it does not count.
class WordLine : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem &option,
                                 const QModelIndex &index) const override
    {
        return QStyledItemDelegate::sizeHint(option, index) +
               QSize(2 * kWordSpacing, 2 * kWordSpacing);
    }
};

QString indentOfLine(const QString &line)
{
    const auto end =
        std::find_if(line.begin(), line.end(), [](QChar letter) { return letter != u' '; });
    return line.first(end - line.begin());
}

QString commonBegin(const QStringList &words)
{
    QString common = words.value(0);
    for (const QString &word : words) {
        while (!word.startsWith(common))
            common.chop(1);
    }
    return common;
}

} // namespace

ConsoleInput::ConsoleInput(ConsoleHistory &history, Language language, QWidget *parent)
    : QPlainTextEdit(parent),
      m_History(history),
      m_Language(std::move(language)),
      m_Words(new QStringListModel(this)),
      m_Completer(new QCompleter(m_Words, this))
{
    setObjectName(QStringLiteral("ConsoleInput"));
    setAccessibleName(tr("Input for Python"));
    setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    m_Completer->setWidget(this);
    m_Completer->setCaseSensitivity(Qt::CaseSensitive);
    m_Completer->setMaxVisibleItems(kMostShownWords);
    m_Completer->popup()->setObjectName(QStringLiteral("ConsoleWords"));
    m_Completer->popup()->setFont(font());
    m_Completer->popup()->setItemDelegate(new WordLine(m_Completer));
    connect(m_Completer, qOverload<const QString &>(&QCompleter::activated), this,
            &ConsoleInput::insertWord);
    connect(document(), &QTextDocument::contentsChanged, this, [this] {
        fitHeight();
        if (!m_IsShowingEntry)
            m_History.leave();
    });
    fitHeight();
}

void ConsoleInput::setBusy(bool isBusy, const QString &placeholder)
{
    setReadOnly(isBusy);
    setPlaceholderText(placeholder);
    viewport()->update();
}

void ConsoleInput::fitHeight()
{
    // Lines as they are wrapped.
    int lines = 0;
    for (QTextBlock block = document()->firstBlock(); block.isValid(); block = block.next())
        lines += std::max(1, block.lineCount());
    const int shown = std::clamp(lines, 1, kMostShownLines);
    // A pixel more than the lines take, or the last one would have to be scrolled to.
    const int height = int(2 * document()->documentMargin()) + 2 * frameWidth() +
                       shown * fontMetrics().lineSpacing() + 1;
    setVerticalScrollBarPolicy(lines > shown ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff);
    if (height != maximumHeight())
        setFixedHeight(height);
}

void ConsoleInput::resizeEvent(QResizeEvent *event)
{
    QPlainTextEdit::resizeEvent(event);
    fitHeight();
}

// ---- Keys

// Tab would lead to the next widget; Shift+Tab still leads away.
bool ConsoleInput::event(QEvent *event)
{
    if (event->type() == QEvent::ShortcutOverride) {
        // What cannot be taken back here is the workbench's: what a script has just done.
        auto *const key = static_cast<QKeyEvent *>(event);
        if ((key->matches(QKeySequence::Undo) && !document()->isUndoAvailable()) ||
            (key->matches(QKeySequence::Redo) && !document()->isRedoAvailable())) {
            event->ignore();
            return false;
        }
    }
    if (event->type() == QEvent::KeyPress) {
        auto *const key = static_cast<QKeyEvent *>(event);
        if (key->key() == Qt::Key_Backtab || (key->key() == Qt::Key_Tab && isReadOnly())) {
            setTabChangesFocus(true);
            focusNextPrevChild(key->key() == Qt::Key_Tab);
            setTabChangesFocus(false);
            key->accept();
            return true;
        }
    }
    return QPlainTextEdit::event(event);
}

void ConsoleInput::keyPressEvent(QKeyEvent *event)
{
    if (isReadOnly()) {
        QPlainTextEdit::keyPressEvent(event);
        return;
    }
    const bool isOffering = m_Completer->popup()->isVisible();
    if (isOffering) {
        switch (event->key()) {
        // The list takes them.
        case Qt::Key_Return:
        case Qt::Key_Enter:
        case Qt::Key_Escape:
        case Qt::Key_Tab:
        case Qt::Key_Backtab:
            event->ignore();
            return;
        default:
            break;
        }
    }
    if (takesKey(*event))
        return;
    QPlainTextEdit::keyPressEvent(event);
    if (isOffering)
        offerWords(false);
}

bool ConsoleInput::takesKey(const QKeyEvent &event)
{
    const QTextCursor cursor = textCursor();
    switch (event.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if ((event.modifiers() & Qt::ShiftModifier) != 0)
            beginLine();
        else
            enter();
        return true;
    case Qt::Key_Tab:
        if (event.modifiers() != Qt::NoModifier)
            return false;
        if (cursor.block().text().first(cursor.positionInBlock()).trimmed().isEmpty())
            insertPlainText(QString(kIndent - cursor.positionInBlock() % kIndent, u' '));
        else
            offerWords(true);
        return true;
    case Qt::Key_Up:
        if (event.modifiers() != Qt::NoModifier || cursor.block().blockNumber() > 0)
            return false;
        showEntry(m_History.earlier(toPlainText()));
        return true;
    case Qt::Key_Down:
        if (event.modifiers() != Qt::NoModifier ||
            cursor.block().blockNumber() + 1 < document()->blockCount())
            return false;
        showEntry(m_History.later());
        return true;
    case Qt::Key_Backspace: {
        // An indent as it was made.
        const QString before = cursor.block().text().first(cursor.positionInBlock());
        if (event.modifiers() != Qt::NoModifier || cursor.hasSelection() || before.isEmpty() ||
            !before.trimmed().isEmpty() || before.size() % kIndent != 0)
            return false;
        QTextCursor indent = cursor;
        indent.movePosition(QTextCursor::Left, QTextCursor::KeepAnchor, kIndent);
        indent.removeSelectedText();
        return true;
    }
    default:
        return false;
    }
}

void ConsoleInput::showEntry(const QString *entry)
{
    if (entry == nullptr)
        return;
    m_IsShowingEntry = true;
    // As an edit, which Ctrl+Z takes back.
    QTextCursor all(document());
    all.select(QTextCursor::Document);
    all.insertText(*entry);
    m_IsShowingEntry = false;
    moveCursor(QTextCursor::End);
}

// In the middle of several lines a line is begun; at the end they are run, unless more is to come.
// A block ends with an empty line, as in Python's own console.
void ConsoleInput::enter()
{
    const QTextCursor cursor = textCursor();
    const bool isLast = cursor.block().blockNumber() + 1 == document()->blockCount();
    QString source = toPlainText();
    if (source.trimmed().isEmpty()) {
        clear();
        return;
    }
    if (!isLast)
        return beginLine();
    const qsizetype line = source.lastIndexOf(u'\n') + 1;
    if (QStringView(source).mid(line).trimmed().isEmpty())
        source.truncate(line);
    if (!m_Language.isComplete(source))
        return beginLine();
    while (source.endsWith(u'\n'))
        source.chop(1);
    m_History.add(source);
    clear();
    emit entered(source);
}

void ConsoleInput::beginLine()
{
    const QTextCursor cursor = textCursor();
    const QString before = cursor.block().text().first(cursor.positionInBlock());
    QString indent = indentOfLine(before);
    if (before.trimmed().endsWith(u':'))
        indent += QString(kIndent, u' ');
    insertPlainText(u'\n' + indent);
    ensureCursorVisible();
}

// ---- Words

// isAsked: by Tab, which puts in what all words begin with.
void ConsoleInput::offerWords(bool isAsked)
{
    const QString source = toPlainText();
    const qsizetype cursor = textCursor().position();
    const Completion found = m_Language.complete(source, cursor);
    const qsizetype start = std::clamp(found.start, qsizetype(0), cursor);
    const QString typed = source.mid(start, cursor - start);
    // After a space, or behind what was completed, nothing is offered by itself.
    if (found.words.isEmpty() || (!isAsked && typed.isEmpty() && start == cursor &&
                                  (cursor == 0 || source[cursor - 1] != u'.'))) {
        m_Completer->popup()->hide();
        return;
    }
    m_WordStart = start;
    if (isAsked) {
        const QString common = commonBegin(found.words);
        if (common.size() > typed.size() || found.words.size() == 1)
            replaceWord(common);
        if (found.words.size() == 1)
            return;
    }
    // What stands before the last dot is seen in the input.
    const qsizetype dot = typed.lastIndexOf(u'.') + 1;
    QStringList shown = found.words;
    if (commonBegin(found.words).startsWith(QStringView(typed).first(dot))) {
        m_WordStart += dot;
        for (QString &word : shown)
            word.remove(0, dot);
    }
    m_Words->setStringList(shown);
    // They have been chosen already.
    m_Completer->setCompletionMode(QCompleter::UnfilteredPopupCompletion);
    QTextCursor place = textCursor();
    place.setPosition(int(m_WordStart));
    QRect area = cursorRect(place);
    area.setWidth(m_Completer->popup()->sizeHintForColumn(0) + 2 * kWordSpacing +
                  2 * m_Completer->popup()->frameWidth() +
                  m_Completer->popup()->verticalScrollBar()->sizeHint().width());
    m_Completer->complete(area);
    fitList();
    m_Completer->popup()->setCurrentIndex(m_Completer->completionModel()->index(0, 0));
    m_Completer->popup()->scrollToTop();
}

// The toolkit leaves some pixels, in which a part of another line is seen.
void ConsoleInput::fitList()
{
    QAbstractItemView &list = *m_Completer->popup();
    const int shown = std::min(kMostShownWords, list.model()->rowCount());
    const int height = shown * list.sizeHintForRow(0) + 2 * list.frameWidth();
    QRect place = list.geometry();
    const bool isAbove = place.top() < viewport()->mapToGlobal(cursorRect().topLeft()).y();
    if (isAbove)
        place.setTop(place.bottom() + 1 - height);
    else
        place.setHeight(height);
    list.setGeometry(place);
}

void ConsoleInput::insertWord(const QString &word)
{
    replaceWord(word);
    setFocus();
}

void ConsoleInput::replaceWord(const QString &word)
{
    QTextCursor cursor = textCursor();
    const int end = cursor.position();
    cursor.setPosition(int(std::min<qsizetype>(m_WordStart, end)));
    cursor.setPosition(end, QTextCursor::KeepAnchor);
    cursor.insertText(word);
    setTextCursor(cursor);
}

// ---- Paste

QString ConsoleInput::withoutPrompts(const QString &text)
{
    const QStringList lines = text.split(u'\n');
    const auto isPrompt = [](const QString &line) {
        const QString begin = line.trimmed().first(std::min<qsizetype>(3, line.trimmed().size()));
        return begin == QLatin1String(">>>") || begin == QLatin1String("...");
    };
    const auto first = std::find_if(lines.begin(), lines.end(),
                                    [](const QString &line) { return !line.trimmed().isEmpty(); });
    if (first == lines.end() || !first->trimmed().startsWith(QLatin1String(">>>")))
        return text;
    QStringList kept;
    for (const QString &line : lines) {
        if (!isPrompt(line))
            continue;
        const QString rest = line.mid(indentOfLine(line).size() + 3);
        kept << (rest.startsWith(u' ') ? rest.mid(1) : rest);
    }
    return kept.join(u'\n');
}

void ConsoleInput::insertFromMimeData(const QMimeData *source)
{
    if (!source->hasText())
        return;
    insertPlainText(
        withoutPrompts(source->text().replace(QLatin1String("\r\n"), QLatin1String("\n"))));
    ensureCursorVisible();
}

} // namespace TAMBO::app

#include "moc_ConsoleInput.cpp"
