// SPDX-License-Identifier: GPL-3.0-or-later
// The window's construction: canvases, views, menus, tool bars, font and icon.
#include "KALMO2.h"

#include "AcidColor.h"
#include "AlignmentWindowService.h"
#include "CatchUp.h"
#include "Check.h"
#include "Config.h"
#include "CornerLabel.h"
#include "DialogFont.h"
#include "HelpViewer.h"
#include "KestramProcess.h"
#include "PanelLayoutItem.h"
#include "Toolbar.h"
#include "View.h"

#include <QFile>
#include <QFontDialog>
#include <QGridLayout>
#include <QIcon>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPixmap>
#include <QPointer>
#include <QScrollBar>
#include <QStatusBar>

#include <algorithm>
#include <vector>

namespace ZEP {

KALMO2::KALMO2()
    : BaseWindow("Alignment Editor", QSize(500, 150), QString(), false, nullptr, nullptr)
{
    bool hasFont = false;
    const QFont font = Config::GetSetting("KALMO2", "Font").ToFont(&hasFont);
    setFont(hasFont ? font : m_Font);

    CreateCanvases();
    CreateViews();
    CreateCatchUp();
    m_AcidColor = new AcidColor(this);
    TAMBO_CHECK_PTR(m_AcidColor, "KALMO2", 102);
    connect(m_AcidColor, SIGNAL(colorize(QColor *)), SLOT(setColor(QColor *)));
    CreateMenubar();
    CreateToolbars();
    statusBar();
    CreateIcon();
    ProcInit();
    CreateService();
}

KALMO2::~KALMO2()
{
    m_Service.reset();
    static_cast<KestramProcess *>(m_Process)->letGo();
    Clear();
}

void KALMO2::CreateCanvases()
{
    m_Canvas = new QCanvas(this);
    TAMBO_CHECK_PTR(m_Canvas, "KALMO2", 61);
    m_NameCanvas = new QCanvas(this);
    TAMBO_CHECK_PTR(m_NameCanvas, "KALMO2", 63);
    m_HeaderCanvas = new QCanvas(this);
    TAMBO_CHECK_PTR(m_HeaderCanvas, "KALMO2", 65);
}

void KALMO2::CreateViews()
{
    auto *central = new QWidget(this);
    TAMBO_CHECK_PTR(central, "KALMO2", 67);
    setCentralWidget(central);
    auto *grid = new QGridLayout(central);
    TAMBO_CHECK_PTR(grid, "KALMO2", 70);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(0);
    // After a change to a larger font the panels may grow; they come first, the view gets the rest.
    constexpr int kPanelsFirst = 1000;
    grid->setRowStretch(0, kPanelsFirst);
    grid->setColumnStretch(0, kPanelsFirst);
    grid->setRowStretch(1, 1);
    grid->setColumnStretch(1, 1);

    m_Corner = new CornerLabel(central);
    TAMBO_CHECK_PTR(m_Corner, "KALMO2", 73);
    grid->addWidget(m_Corner, 0, 0);

    m_View = new View(*m_Canvas, central, nullptr, 0);
    TAMBO_CHECK_PTR(m_View, "KALMO2", 76);
    connect(m_View, SIGNAL(contentsMoving(int, int)), SLOT(scroll(int, int)));
    connect(m_View, SIGNAL(ReArrange()), SLOT(ReCreate()));
    connect(m_View, SIGNAL(Update()), SLOT(Update()));
    // Always there, so that the panels' bars have their match however small the alignment is.
    m_View->setVScrollBarMode(QCanvasView::AlwaysOn);
    m_View->setHScrollBarMode(QCanvasView::AlwaysOn);
    grid->addWidget(m_View, 1, 1);

    m_Header = new Panel(*m_HeaderCanvas, central, nullptr, 0);
    TAMBO_CHECK_PTR(m_Header, "KALMO2", 82);
    connect(m_Header, SIGNAL(ReArrange()), SLOT(ReCreate()));
    connect(m_Header, SIGNAL(ReRange(ulong, ulong)), SLOT(ReRange(ulong, ulong)));
    connect(m_Header, SIGNAL(RemoveCol(ulong)), SLOT(RemoveCol(ulong)));
    connect(m_Header, SIGNAL(InsertCol(ulong)), SLOT(InsertCol(ulong)));
    connect(m_Header, SIGNAL(Update()), SLOT(Update()));
    // The disabled bars keep the panels exactly as large as the view beside its own bars.
    m_Header->setVScrollBarMode(QCanvasView::AlwaysOn);
    m_Header->verticalScrollBar()->setEnabled(false);
    m_Header->setHScrollBarMode(QCanvasView::AlwaysOff);
    m_Header->setCellSizeSource([this] { return QSize(m_Measures.cellWidth(), m_CellHeight); });
    m_Header->setLeader(m_View);
    auto *headerPlace = new PanelLayoutItem(m_Header);
    TAMBO_CHECK_PTR(headerPlace, "KALMO2", 90);
    grid->addItem(headerPlace, 0, 1);

    m_Names = new Panel(*m_NameCanvas, central, nullptr, 0);
    TAMBO_CHECK_PTR(m_Names, "KALMO2", 94);
    connect(m_Names, SIGNAL(ReArrange()), SLOT(CreateNumbering()));
    connect(m_Names, SIGNAL(Update()), SLOT(Update()));
    connect(m_Names, SIGNAL(RemoveRow(ulong)), SLOT(RemoveRow(ulong)));
    m_Names->setVScrollBarMode(QCanvasView::AlwaysOff);
    m_Names->setHScrollBarMode(QCanvasView::AlwaysOn);
    m_Names->horizontalScrollBar()->setEnabled(false);
    m_Names->setCellSizeSource([this] { return QSize(m_Measures.cellWidth(), m_CellHeight); });
    m_Names->setLeader(m_View);
    auto *namesPlace = new PanelLayoutItem(m_Names);
    TAMBO_CHECK_PTR(namesPlace, "KALMO2", 100);
    grid->addItem(namesPlace, 1, 0);

    m_FirstNameWidth = nameWidth();
    fitNames();
    m_Header->setMinimumHeight(m_HeaderRows * m_CellHeight);
    m_Header->setMaximumHeight(m_HeaderRows * m_CellHeight);
    reserveCell();
}

void KALMO2::reserveCell()
{
    auto *grid = static_cast<QGridLayout *>(centralWidget()->layout());
    const int frame = 2 * m_View->frameWidth();
    grid->setRowMinimumHeight(1, m_CellHeight + frame +
                                     m_View->horizontalScrollBar()->sizeHint().height());
    grid->setColumnMinimumWidth(1, m_CellWidth + frame +
                                       m_View->verticalScrollBar()->sizeHint().width());
}

void KALMO2::CreateCatchUp()
{
    m_CatchUp = std::make_unique<CatchUp>(
        *this, [this] { return isCurrent(); }, [this] { commUpdate(); });
    for (QCanvasView *view : std::initializer_list<QCanvasView *>{m_View, m_Header, m_Names})
        m_CatchUp->watch(*view);
}

void KALMO2::CreateService()
{
    AlignmentWindowService::Commands commands;
    commands.setCell = [this](const QSize &size) { setCellSize(size); };
    commands.setNameWidth = [this](int width) { setNameWidth(width); };
    commands.setFont = [this](const QFont &font) { showFont(font); };
    commands.catchUp = [this] { m_CatchUp->now(); };
    m_Service = std::make_unique<AlignmentWindowService>(
        AlignmentWindowService::Parts{*this, *m_View, *m_Header, *m_Names,
                                      static_cast<CornerLabel &>(*m_Corner), m_Measures},
        std::move(commands));
}

QMenu *KALMO2::addMenu(const QString &title)
{
    auto *menu = new QMenu(title, this);
    TAMBO_CHECK_PTR(menu, "KALMO2", 141);
    menuBar()->addMenu(menu);
    // Comes before what an entry does, since the menu itself hears of it first.
    connect(menu, &QMenu::triggered, this, [this] { m_CatchUp->now(); });
    return menu;
}

void KALMO2::CreateMenubar()
{
    QMenu *file = addMenu(tr("&File"));
    file->addAction(tr("Make from &Seqs"), Qt::CTRL | Qt::Key_S, this, &KALMO2::GetSequences);
    file->addAction(tr("Add Seqs"), this, &KALMO2::AddSequences);
    file->addAction(tr("Combine"), this, &KALMO2::CombineAlignment);
    file->addAction(tr("Get &Alignment"), Qt::CTRL | Qt::Key_A, this, &KALMO2::GetAlignment);
    file->addSeparator();
    file->addAction(tr("Duplicate"), this, &KALMO2::Duplicate);
    file->addAction(tr("Delete"), this, &KALMO2::DeleteAlignment);
    file->addSeparator();
    file->addAction(tr("Save"), this, qOverload<>(&KALMO2::Save));
    file->addAction(tr("&Close"), Qt::CTRL | Qt::Key_W, this, &KALMO2::Clear);
    file->addAction(tr("&Print Fat"), this, &KALMO2::printItBox);
    file->addAction(tr("&Print Slim"), this, &KALMO2::printItChar);
    file->addAction(tr("&Print BW"), this, &KALMO2::printItBW);
    file->addSeparator();
    file->addAction(tr("Exit"), Qt::ALT | Qt::Key_F4, this, qOverload<>(&QWidget::close));

    QMenu *model = addMenu(tr("Model"));
    if (!qEnvironmentVariableIsEmpty("KESTRAM"))
        model->addAction(tr("Kestram"), this, &KALMO2::kestram);

    QMenu *range = addMenu(tr("Range"));
    range->addAction(tr("Full"), this, &KALMO2::RangeFull);
    range->addAction(tr("Select"), this, &KALMO2::RangeSelect);
    range->addAction(tr("Remove"), this, &KALMO2::RangeRemove);
    range->addAction(tr("Renumber"), this, &KALMO2::RangeReNumber);
    range->addAction(tr("Add SSE"), this, &KALMO2::RangeAddSSE);

    QMenu *select = addMenu(tr("Select"));
    select->addAction(tr("ConservedN"), this, &KALMO2::selectConservedN);
    select->addAction(tr("SubSequence"), this, &KALMO2::selectSubSequence);

    QMenu *color = addMenu(tr("Color"));
    color->addAction(tr("Selected"), this, qOverload<>(&KALMO2::setColor));
    color->addAction(tr("Conserved"), this, &KALMO2::colorConserved);
    color->addAction(tr("ConservedN"), this, &KALMO2::colorConservedN);
    color->addAction(tr("By Property"), m_AcidColor, &QWidget::show);
    color->addAction(tr("By Distance"), this, &KALMO2::colorDistance);

    QMenu *help = addMenu(tr("Help"));
    help->addAction(tr("Show"), this, &KALMO2::showHelp);
}

void KALMO2::CreateToolbars()
{
    const auto setting = [](const QString &key) {
        const std::string value = Config::GetSetting("KALMO2", key.toStdString()).ToString();
        return QString::fromStdString(value);
    };
    std::vector<Toolbar *> toolbars;
    // An unknown side, "Top" included, keeps the side of the tool bar before.
    Qt::ToolBarArea area = Qt::TopToolBarArea;
    for (int number = 1;; ++number) {
        const QString name = setting(tr("ToolbarName%1").arg(number));
        const QString location = setting(tr("ToolbarLocation%1").arg(number));
        if (name.isEmpty() || location.isEmpty())
            break;
        if (location == "Bottom")
            area = Qt::BottomToolBarArea;
        else if (location == "Left")
            area = Qt::LeftToolBarArea;
        else if (location == "Right")
            area = Qt::RightToolBarArea;
        toolbars.push_back(new Toolbar(tr("Tools%1").arg(number), this, name, area, this,
                                       SLOT(ButtonPressed(int, int, bool))));
        TAMBO_CHECK_PTR(toolbars.back(), "KALMO2", 233);
    }
}

void KALMO2::CreateIcon()
{
    const std::string file =
        Config::GetIconDir() + '/' + Config::GetSetting("KALMO2", "Icon").ToString();
    QPixmap icon;
    icon.load(QFile::decodeName(QByteArray::fromStdString(file)));
    setWindowIcon(icon);
    setWindowIconText("Editor");
}

void KALMO2::setFont(const QFont &font)
{
    m_Font = font;
    m_Measures.setFont(font);
    m_CellWidth = m_Measures.ownCell().width();
    m_CellHeight = m_Measures.ownCell().height();
}

void KALMO2::ChangeFont()
{
    const QPointer<KALMO2> alive(this);
    bool chosen = false;
    // The dialog refers to what it began with until it returns.
    const QFont before = dialogFont(m_Font);
    const QFont font = QFontDialog::getFont(&chosen, before, this);
    // The dialog runs an event loop, in which the window may have been closed.
    if (alive && chosen)
        showFont(font);
}

void KALMO2::showFont(const QFont &font)
{
    TAMBO::Alignment *shown = m_Data;
    const QPoint firstCell(m_View->contentsX() / m_Measures.cellWidth(),
                           m_View->contentsY() / m_Measures.cellHeight());
    Clear();
    setFont(font);
    fitNames();
    m_Header->setMaximumHeight(m_HeaderRows * m_CellHeight);
    reserveCell();
    Populate(shown);
    m_View->setContentsPos(firstCell.x() * m_Measures.cellWidth(),
                           firstCell.y() * m_Measures.cellHeight());
}

void KALMO2::ButtonPressed(int i, int, bool)
{
    m_CatchUp->now();
    switch (i) {
    case 2:
        GetSequences();
        break;
    case 3:
        GetAlignment();
        break;
    case 4:
        DeleteAlignment();
        break;
    case 6:
        setColor();
        break;
    case 7:
        m_AcidColor->show();
        break;
    case 8:
        colorConserved();
        break;
    case 9:
        ChangeFont();
        break;
    case 11:
        malign();
        break;
    default:
        qDebug("Unused button.");
    }
}

void KALMO2::about()
{
    QMessageBox::about(this, "KALMO2 2001", "An alternative way.\n");
}

void KALMO2::showHelp()
{
    HelpViewer::Show(QString::fromStdString(Config::GetSetting("KALMO2", "Help").ToString()));
}

} // namespace ZEP

#include "moc_KALMO2.cpp"
