// SPDX-License-Identifier: GPL-3.0-or-later
// The editor window: residue grid, names and header of one alignment, and every command of the
// editor. The window owns its canvases; the alignment belongs to the workbench.
#pragma once

#include "Alignment.h"
#include "BaseWindow.h"
#include "CellMeasures.h"
#include "QCanvas.h"
#include "Subscriber.h"

#include <QColor>
#include <QFont>
#include <QString>

#include <memory>
#include <utility>

class ItemSeries;
class Panel;
class QLabel;
class QMenu;
class QPainter;
class QPoint;
class QProcess;
class View;

namespace ZEP {

class AcidColor;
class AlignmentWindowService;
class CatchUp;

class KALMO2 : public BaseWindow, public Subscriber
{
    Q_OBJECT

public:
    // Any number may come from a plug-in.
    enum PrintStyle : unsigned { Slim = 1, Fat = 2, BlackAndWhite = 3 };

    KALMO2();
    ~KALMO2() override;

    // Only keeps the font and measures the cells; callers resize panels and rebuild.
    void setFont(const QFont &font) override;
    // Takes a closed window out of the registry and deletes it.
    void Kill(BaseWindow *window) override;
    void commUpdate() override;
    void commAdd() override;
    void commDelete() override;

    // Shows obj when it is an alignment; anything else, null included, empties the window.
    void Populate(TAMBO::Compound *obj);
    // Asks the workbench to open a file; what it loads is shown with GetAlignment().
    void OpenFile();

    // The order of the slots is their index in the meta-object, by which they are known outside.
public slots:
    void AddSequences();
    void GetSequences();
    void GetAlignment();
    void MergeAlignment();
    void CombineAlignment();
    void DeleteAlignment();
    void Duplicate();
    void AddGapColumn();
    void RangeFull();
    void RangeSelect();
    void RangeRemove();
    void RangeReNumber();
    void RangeAddSSE();
    void Clear();
    void Save();
    void Save(const QString &Name, TAMBO::Alignment *Ali);
    void printItBox();
    void printItChar();
    void printItBW();
    void drawIt(QPainter *p, PrintStyle Box);
    void showHelp();
    void about();
    void kestram();
    void modeller();
    void malign();
    void scroll(int x, int y);
    void setColor(QColor *colors);
    void ChangeFont();
    void CreateNumbering();

private slots:
    void ButtonPressed(int i, int j, bool state);
    void Update();
    void ReCreate();
    void ReRange(unsigned long begin, unsigned long end);
    void RemoveRow(unsigned long Index);
    void RemoveCol(unsigned long Index);
    void InsertCol(unsigned long Index);
    void setColor();
    void colorConserved();
    void colorConservedN();
    void colorDistance();
    void selectConservedN();
    void selectSubSequence();
    void readOutput();
    void readOutputError();
    void JobReady();
    void RunKestram();

private:
    void CreateCanvases();
    void CreateViews();
    void CreateCatchUp();
    void CreateService();
    void CreateMenubar();
    // However large the font, a whole cell stays in sight.
    void reserveCell();
    QMenu *addMenu(const QString &title);
    void CreateToolbars();
    void CreateIcon();
    void ProcInit();
    void print(PrintStyle style);

    void createItems();
    void createHeader();
    void createNames(unsigned long rows);
    void clearItems();
    void setCellSize(const QSize &size);
    // 0 for what the font asks.
    void setNameWidth(int width);
    // What is seen first stays so.
    void showFont(const QFont &font);
    [[nodiscard]] int nameWidth() const;
    void fitNames();
    void showName();
    void createMarker();
    // Puts the header's marker over the alignment's range.
    void showRange();
    // Edits inside a guard of this window and rebuilds while the guard is held.
    template <typename Edit> void editShape(Edit edit);
    // Whether the canvases still have the alignment's size.
    [[nodiscard]] bool hasCurrentShape() const;
    // Whether rows, columns, numbering and range are shown as they are.
    [[nodiscard]] bool isCurrent() const;
    // Marks the canvases wholly changed, without painting them.
    void setAllChanged();

    int m_NameColumns = 8;
    int m_HeaderRows = 4;
    QFont m_Font;
    // As the font asks; what others want the cells to be is in m_Measures.
    int m_CellWidth = 0;
    int m_CellHeight = 0;
    View *m_View = nullptr;
    Panel *m_Header = nullptr;
    Panel *m_Names = nullptr;
    AcidColor *m_AcidColor = nullptr;
    QCanvas *m_Canvas = nullptr;
    QCanvas *m_NameCanvas = nullptr;
    QCanvas *m_HeaderCanvas = nullptr;
    QLabel *m_Corner = nullptr;
    // Neither list owns its items. Those of the numbering that somebody has asked for:
    QCanvasItemList m_Numbering;
    QCanvasItemList m_Spare;
    TAMBO::Alignment *m_Data = nullptr;
    QProcess *m_Process = nullptr;
    QString m_Output;
    QString m_Errors;
    CellMeasures m_Measures;
    // 0 for what the font asks.
    int m_NameWidth = 0;
    // The names' minimum, as long as nobody wants another width.
    int m_FirstNameWidth = 0;
    // The alignment's layout revision that the display was made from.
    unsigned long m_ShownRevision = 0;
    // The alignment's range that the header's marker was put over.
    TAMBO::Alignment::Range m_ShownRange{0, 0};
    // Null for none.
    const ItemSeries *m_NumberingItems = nullptr;
    bool m_IsPopulating = false;
    // Both go before everything that they look at.
    std::unique_ptr<CatchUp> m_CatchUp;
    std::unique_ptr<AlignmentWindowService> m_Service;
};

} // namespace ZEP
