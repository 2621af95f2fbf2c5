// SPDX-License-Identifier: GPL-3.0-or-later
#include "MessageBox.h"

#include "Check.h"

#include <QPointer>

namespace ZEP {

void tell(QWidget *window, QMessageBox::Icon icon, const QString &title, const QString &text)
{
    const QPointer<QMessageBox> box(new QMessageBox(icon, title, text, QMessageBox::Ok, window));
    TAMBO_CHECK_PTR(box, "KalmoModel", 39);
    box->setTextFormat(Qt::PlainText);
    box->exec();
    delete box;
}

} // namespace ZEP
