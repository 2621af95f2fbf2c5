// SPDX-License-Identifier: GPL-3.0-or-later
// The floor under every start of the workbench: a main window that ends with its first paint, or,
// with any argument, stays.
#include <QApplication>
#include <QMainWindow>
#include <QTimer>

namespace {

class EmptyWindow : public QMainWindow
{
protected:
    void paintEvent(QPaintEvent *event) override
    {
        QMainWindow::paintEvent(event);
        if (QApplication::arguments().size() == 1)
            QTimer::singleShot(0, qApp, &QApplication::quit);
    }
};

} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    EmptyWindow window;
    window.resize(1000, 700);
    window.show();
    return QApplication::exec();
}
