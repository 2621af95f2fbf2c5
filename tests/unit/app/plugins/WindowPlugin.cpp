// SPDX-License-Identifier: GPL-3.0-or-later
// A plug-in whose windows can be asked to choose an alignment, as far as the workbench can tell.
#include <QMainWindow>

namespace {

int s_Open = 0;

} // namespace

class ChoosingWindow : public QMainWindow
{
    Q_OBJECT

public:
    ChoosingWindow()
    {
        setWindowTitle(QStringLiteral("Chooser"));
        setAttribute(Qt::WA_DeleteOnClose);
        ++s_Open;
    }
    ~ChoosingWindow() override { --s_Open; }

public slots:
    void GetAlignment() { setProperty("asked", true); }
};

extern "C" {

Q_DECL_EXPORT void Execute0()
{
    (new ChoosingWindow)->show();
}

Q_DECL_EXPORT bool IsDone()
{
    return s_Open == 0;
}

Q_DECL_EXPORT void Cleanup() { }

} // extern "C"

#include "WindowPlugin.moc"
