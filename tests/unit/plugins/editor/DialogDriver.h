// SPDX-License-Identifier: GPL-3.0-or-later
// Answers the modal dialogs that open while it lives, one handler per dialog in the order of their
// coming. A dialog that nobody waits for is noted and rejected, so that no test hangs on it.
#pragma once

#include <QApplication>
#include <QDialog>
#include <QEvent>
#include <QPointer>
#include <QProgressDialog>
#include <QStringList>
#include <QTimer>

#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <utility>

class DialogDriver : public QObject
{
public:
    using Handler = std::function<void(QDialog &)>;

    DialogDriver() { qApp->installEventFilter(this); }
    ~DialogDriver() override { EXPECT_TRUE(m_Handlers.empty()) << "a dialog did not come"; }

    void expect(Handler handler) { m_Handlers.push_back(std::move(handler)); }
    void expectAccepted()
    {
        expect([](QDialog &dialog) { dialog.accept(); });
    }
    void expectRejected()
    {
        expect([](QDialog &dialog) { dialog.reject(); });
    }
    // The titles of all that came.
    [[nodiscard]] const QStringList &titles() const { return m_Titles; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        auto *dialog = qobject_cast<QDialog *>(watched);
        // Progress comes or not by the speed of the computer, and waits for no answer.
        if (event->type() == QEvent::Show && dialog != nullptr && dialog->isModal() &&
            qobject_cast<QProgressDialog *>(dialog) == nullptr)
            QTimer::singleShot(0, this, [this, shown = QPointer<QDialog>(dialog)] {
                if (shown)
                    handle(*shown);
            });
        return false;
    }

private:
    void handle(QDialog &dialog)
    {
        m_Titles.append(dialog.windowTitle());
        const QPointer<QDialog> alive(&dialog);
        if (!m_Handlers.empty()) {
            const Handler handler = std::move(m_Handlers.front());
            m_Handlers.pop_front();
            handler(dialog);
        }
        if (alive && dialog.isVisible())
            dialog.reject();
    }

    std::deque<Handler> m_Handlers;
    QStringList m_Titles;
};
