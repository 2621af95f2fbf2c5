// SPDX-License-Identifier: GPL-3.0-or-later
#include "ConsoleOutput.h"

#include "ConsoleColors.h"

#include <QApplication>
#include <QFontDatabase>
#include <QMouseEvent>
#include <QPainter>
#include <QRegularExpression>
#include <QScrollBar>
#include <QTextBlock>

#include <algorithm>

namespace TAMBO::app {

namespace {

// What Python says of a place.
const QRegularExpression &placePattern()
{
    static const QRegularExpression pattern(
        QStringLiteral("^\\s*File \"(.+)\", line (\\d+)(, in .*)?$"));
    return pattern;
}

int indentOf(const QString &line)
{
    int indent = 0;
    while (indent < line.size() && line[indent] == u' ')
        ++indent;
    return indent;
}

QString markOf(LineKind kind)
{
    switch (kind) {
    case LineKind::Error:
        return QStringLiteral("!");
    case LineKind::Notice:
        return QStringLiteral("•");
    case LineKind::Output:
    case LineKind::Input:
        break;
    }
    return {};
}

LineKind kindOfBlock(const QTextBlock &block)
{
    return block.userState() < 0 ? LineKind::Output : LineKind(block.userState());
}

} // namespace

// The strip at the left.
class ConsoleOutput::Marks : public QWidget
{
public:
    explicit Marks(ConsoleOutput &output) : QWidget(&output), m_Output(output) { }

protected:
    void paintEvent(QPaintEvent *event) override { m_Output.paintMarks(*event); }

private:
    ConsoleOutput &m_Output;
};

ConsoleOutput::ConsoleOutput(QWidget *parent) : QPlainTextEdit(parent), m_Marks(new Marks(*this))
{
    setObjectName(QStringLiteral("ConsoleOutput"));
    setAccessibleName(tr("Output of scripts"));
    setReadOnly(true);
    // Keys move the cursor, for those who select without a mouse.
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setUndoRedoEnabled(false);
    setMaximumBlockCount(kMostLines);
    setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    setViewportMargins(marksWidth(), 0, 0, 0);
    QScrollBar *const bar = verticalScrollBar();
    connect(bar, &QScrollBar::valueChanged, this,
            [this, bar](int value) { m_FollowsEnd = value == bar->maximum(); });
    // Also once lines have been wrapped.
    connect(bar, &QScrollBar::rangeChanged, this, [this, bar](int, int maximum) {
        if (m_FollowsEnd)
            bar->setValue(maximum);
    });
    connect(this, &QPlainTextEdit::updateRequest, m_Marks, qOverload<>(&QWidget::update));
}

int ConsoleOutput::marksWidth() const
{
    return 2 * fontMetrics().horizontalAdvance(u'!') + 2;
}

// ---- What comes

void ConsoleOutput::show(const OutputLines::News &news)
{
    if (news.lines.empty())
        return;
    QScrollBar *const bar = verticalScrollBar();
    // Whoever types something wants to see what comes of it.
    const bool followsEnd = m_FollowsEnd || std::any_of(news.lines.begin(), news.lines.end(),
                                                        [](const OutputLine &line) {
                                                            return line.kind == LineKind::Input;
                                                        });
    // A reader who has scrolled up keeps what he reads, also when lines above it go.
    QTextCursor read(firstVisibleBlock());
    append(news);
    if (followsEnd)
        bar->setValue(bar->maximum());
    else
        bar->setValue(read.block().firstLineNumber());
    m_FollowsEnd = followsEnd || bar->value() == bar->maximum();
    m_Marks->update();
}

void ConsoleOutput::append(const OutputLines::News &news)
{
    QTextCursor cursor(document());
    cursor.beginEditBlock();
    cursor.movePosition(QTextCursor::End);
    bool isFirst = document()->isEmpty() && document()->blockCount() == 1;
    if (news.replacesLast) {
        cursor.movePosition(QTextCursor::StartOfBlock, QTextCursor::KeepAnchor);
        cursor.removeSelectedText();
        isFirst = true;
    }
    for (std::size_t i = 0; i < news.lines.size();) {
        // Those of a kind in one go.
        const LineKind kind = news.lines[i].kind;
        QString text;
        const std::size_t begin = i;
        for (; i < news.lines.size() && news.lines[i].kind == kind; ++i) {
            if (i > begin)
                text += u'\n';
            text += news.lines[i].text;
        }
        const QTextCharFormat format = formatOf(kind);
        if (!std::exchange(isFirst, false))
            cursor.insertBlock(QTextBlockFormat(), format);
        QTextBlock block = cursor.block();
        cursor.setBlockCharFormat(format);
        cursor.insertText(text, format);
        for (; block.isValid(); block = block.next())
            block.setUserState(int(kind));
    }
    cursor.endEditBlock();
}

LineKind ConsoleOutput::kindOf(int line) const
{
    return kindOfBlock(document()->findBlockByNumber(line));
}

// ---- How it looks

QTextCharFormat ConsoleOutput::formatOf(LineKind kind) const
{
    QTextCharFormat format;
    switch (kind) {
    case LineKind::Output:
        break;
    case LineKind::Error:
        format.setForeground(errorColor(palette()));
        break;
    case LineKind::Notice:
        format.setForeground(noticeColor(palette()));
        break;
    case LineKind::Input:
        format.setFontWeight(QFont::DemiBold);
        break;
    }
    return format;
}

void ConsoleOutput::colorAnew()
{
    QTextCursor cursor(document());
    cursor.beginEditBlock();
    for (QTextBlock block = document()->firstBlock(); block.isValid(); block = block.next()) {
        const LineKind kind = kindOfBlock(block);
        if (kind != LineKind::Error && kind != LineKind::Notice)
            continue;
        cursor.setPosition(block.position());
        cursor.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
        cursor.setCharFormat(formatOf(kind));
    }
    cursor.endEditBlock();
}

void ConsoleOutput::paintMarks(QPaintEvent &event)
{
    QPainter painter(m_Marks);
    painter.fillRect(event.rect(), palette().base());
    QFont bold = font();
    bold.setBold(true);
    painter.setFont(bold);
    const int height = fontMetrics().height();
    QTextBlock block = firstVisibleBlock();
    QRectF place = blockBoundingGeometry(block).translated(contentOffset());
    for (; block.isValid() && place.top() <= event.rect().bottom(); block = block.next()) {
        const LineKind kind = kindOfBlock(block);
        const QString mark = markOf(kind);
        if (block.isVisible() && !mark.isEmpty()) {
            painter.setPen(formatOf(kind).foreground().color());
            painter.drawText(QRect(0, int(place.top()), m_Marks->width(), height), Qt::AlignCenter,
                             mark);
        }
        place = blockBoundingGeometry(block.next()).translated(contentOffset());
    }
}

void ConsoleOutput::resizeEvent(QResizeEvent *event)
{
    QPlainTextEdit::resizeEvent(event);
    const QRect area = contentsRect();
    m_Marks->setGeometry(area.left(), area.top(), marksWidth(), viewport()->height());
}

void ConsoleOutput::scrollContentsBy(int dx, int dy)
{
    QPlainTextEdit::scrollContentsBy(dx, dy);
    m_Marks->update();
}

void ConsoleOutput::changeEvent(QEvent *event)
{
    QPlainTextEdit::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        colorAnew();
}

// ---- Mouse and keys

void ConsoleOutput::mousePressEvent(QMouseEvent *event)
{
    m_Pressed = event->position().toPoint();
    QPlainTextEdit::mousePressEvent(event);
}

void ConsoleOutput::mouseReleaseEvent(QMouseEvent *event)
{
    QPlainTextEdit::mouseReleaseEvent(event);
    const QPoint place = event->position().toPoint();
    if (event->button() != Qt::LeftButton || textCursor().hasSelection() ||
        (place - m_Pressed).manhattanLength() >= QApplication::startDragDistance())
        return;
    const QTextBlock block = cursorForPosition(place).block();
    const QRegularExpressionMatch match = placePattern().match(block.text());
    if (!match.hasMatch())
        return;
    const QString next = block.next().text();
    const bool hasText = indentOf(next) > indentOf(block.text());
    emit placeClicked(match.captured(1), match.captured(2).toInt(),
                      hasText ? next.trimmed() : QString());
}

// Whoever types wants to write into the console.
void ConsoleOutput::keyPressEvent(QKeyEvent *event)
{
    const bool isCommand = (event->modifiers() & (Qt::ControlModifier | Qt::AltModifier)) != 0;
    const bool writes = !event->text().isEmpty() && event->text().front().isPrint();
    if ((writes && !isCommand) || event->matches(QKeySequence::Paste))
        emit typed(event);
    else
        QPlainTextEdit::keyPressEvent(event);
}

} // namespace TAMBO::app

#include "moc_ConsoleOutput.cpp"
