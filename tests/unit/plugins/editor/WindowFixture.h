// SPDX-License-Identifier: GPL-3.0-or-later
// Editor windows over small alignments, with settings of their own and a history.
#pragma once

#include "AcidColor.h"
#include "Alignment.h"
#include "ConfigStore.h"
#include "DataPoint.h"
#include "DialogDriver.h"
#include "History.h"
#include "Hooks.h"
#include "KALMO2.h"
#include "ObjectFactory.h"
#include "ObjectOperations.h"
#include "ObjectSpace.h"
#include "Peptide.h"
#include "QCanvas.h"
#include "Records.h"
#include "SelectObjectAnswers.h"
#include "View.h"
#include "support/ExpectMessage.h"
#include "support/LogLines.h"
#include "support/ScopedSettings.h"

#include <QGridLayout>
#include <QLabel>
#include <QScrollBar>
#include <QTest>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

// The parts of a window, found from outside.
struct WindowParts
{
    explicit WindowParts(const ZEP::KALMO2 &window)
        : grid(qobject_cast<QGridLayout *>(window.centralWidget()->layout())),
          corner(at<QLabel>(0, 0)),
          view(at<View>(1, 1)),
          header(at<Panel>(0, 1)),
          names(at<Panel>(1, 0)),
          colors(window.findChild<ZEP::AcidColor *>())
    {
        const auto canvases = window.findChildren<QCanvas *>(QString(), Qt::FindDirectChildrenOnly);
        cells = canvases.at(0);
        nameCanvas = canvases.at(1);
        headerCanvas = canvases.at(2);
    }

    QGridLayout *grid;
    QLabel *corner;
    View *view;
    Panel *header;
    Panel *names;
    ZEP::AcidColor *colors;
    QCanvas *cells = nullptr;
    QCanvas *nameCanvas = nullptr;
    QCanvas *headerCanvas = nullptr;

private:
    template <typename Widget> Widget *at(int row, int column) const
    {
        QLayoutItem *item = grid->itemAtPosition(row, column);
        return item == nullptr ? nullptr : qobject_cast<Widget *>(item->widget());
    }
};

class RecordingSubscriber : public Subscriber
{
public:
    void commUpdate() override { calls.emplace_back("update"); }
    void commAdd() override { calls.emplace_back("add"); }
    void commDelete() override { calls.emplace_back("delete"); }

    std::vector<std::string> calls;
};

class WindowFixture : public ::testing::Test
{
protected:
    using Texts = std::vector<std::string>;

    WindowFixture()
    {
        qputenv("TAMBO_SHARE_DIR", SOURCE_DIR "/share");
        setSettings(kFont);
        TAMBO::modelHooks().log = [](const std::string &message, TAMBO::LogSeverity) {
            Logger::Write(QString::fromStdString(message));
        };
        TAMBO::setEditRecorder(&history);
    }
    ~WindowFixture() override
    {
        m_Windows.clear();
        TAMBO::services::SelectObjectAnswers::clear();
        TAMBO::setObjectLocked(TAMBO::ObjectSpace::get(), false);
        TAMBO::setEditRecorder(nullptr);
        history.clear();
        TAMBO::ObjectSpace::get().reset();
        TAMBO::modelHooks() = {};
        qunsetenv("TAMBO_SHARE_DIR");
    }

    static constexpr const char *kFont = "[KALMO2]\nFont = DejaVu Sans Mono, 11\n";

    void setSettings(const QByteArray &text)
    {
        m_Settings.reset();
        m_Settings = std::make_unique<ScopedSettings>(text);
    }

    // '-' is a gap. The sequences are called "s0", "s1", ... unless names are given.
    TAMBO::Alignment &alignment(const Texts &rows, const std::string &name = "ali",
                                const Texts &names = {})
    {
        TAMBO::AlignmentRecord record;
        record.name = name;
        for (std::size_t i = 0; i < rows.size(); ++i) {
            TAMBO::RowRecord row;
            row.name = i < names.size() ? names[i] : "s" + std::to_string(i);
            row.sequence.append(rows[i]);
            record.rows.push_back(std::move(row));
        }
        TAMBO::Alignment *made = nullptr;
        {
            const DataPointBase guard(nullptr, Publisher::Add);
            made = TAMBO::ObjectFactory::adopt(std::move(record));
        }
        history.clear();
        return *made;
    }
    TAMBO::Alignment &alignmentWithoutColumns()
    {
        TAMBO::Alignment &made = alignment({"A", "C"}, "none");
        made.remove(0);
        history.clear();
        return made;
    }
    TAMBO::Peptide &peptide(const std::string &name, const std::string &letters)
    {
        auto made = std::make_unique<TAMBO::Peptide>(name, letters);
        TAMBO::Peptide &result = *made;
        TAMBO::ObjectSpace::get().add(std::move(made));
        history.clear();
        return result;
    }

    ZEP::KALMO2 &open() { return *m_Windows.emplace_back(std::make_unique<ZEP::KALMO2>()); }
    ZEP::KALMO2 &open(TAMBO::Alignment &shown)
    {
        ZEP::KALMO2 &window = open();
        const MessageRecorder quiet;
        window.Populate(&shown);
        return window;
    }
    ZEP::KALMO2 &show(TAMBO::Alignment &shown, const QSize &size)
    {
        ZEP::KALMO2 &window = open(shown);
        window.resize(size);
        window.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
        return window;
    }
    void closeWindows() { m_Windows.clear(); }

    template <typename... Arguments>
    static void call(ZEP::KALMO2 &window, const char *slot, Arguments... arguments)
    {
        EXPECT_TRUE(QMetaObject::invokeMethod(&window, slot, Qt::DirectConnection, arguments...))
            << slot;
    }
    static QGenericArgument number(const unsigned long &value)
    {
        return QArgument<unsigned long>("ulong", value);
    }
    static void pressButton(ZEP::KALMO2 &window, int button)
    {
        call(window, "ButtonPressed", Q_ARG(int, button), Q_ARG(int, 0), Q_ARG(bool, false));
    }

    static Texts rowsOf(const TAMBO::Alignment &alignment)
    {
        Texts texts;
        for (unsigned long row = 0; row < alignment.height(); ++row)
            texts.push_back(alignment.GetSequence(row, false));
        return texts;
    }
    static Texts topLevelNames()
    {
        Texts names;
        for (const TAMBO::Compound *object : TAMBO::ObjectSpace::get())
            names.push_back(object->Name());
        return names;
    }
    static std::vector<TAMBO::Alignment *> alignments()
    {
        std::vector<TAMBO::Alignment *> found;
        for (TAMBO::Compound *object : TAMBO::ObjectSpace::get()) {
            if (auto *alignment = dynamic_cast<TAMBO::Alignment *>(object))
                found.push_back(alignment);
        }
        return found;
    }
    static bool isEmpty(const ZEP::KALMO2 &window)
    {
        const WindowParts parts(window);
        return parts.cells->allItems().isEmpty() && parts.nameCanvas->allItems().isEmpty() &&
               parts.headerCanvas->allItems().isEmpty() && parts.corner->text().isEmpty();
    }
    static int itemsOf(QCanvas &canvas, int rtti)
    {
        int count = 0;
        for (const QCanvasItem *item : canvas.allItems())
            count += item->rtti() == rtti ? 1 : 0;
        return count;
    }
    // Every guard is refused.
    static void lockAll() { TAMBO::setObjectLocked(TAMBO::ObjectSpace::get(), true); }

    TAMBO::History history;

private:
    std::unique_ptr<ScopedSettings> m_Settings;
    std::vector<std::unique_ptr<ZEP::KALMO2>> m_Windows;
};
