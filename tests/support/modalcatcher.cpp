// SPDX-License-Identifier: GPL-3.0-or-later
#include "modalcatcher.h"

#include <QtWidgets>

ModalCatcher::ModalCatcher()
{
    connect(&timer, &QTimer::timeout, this, &ModalCatcher::Poll);
    timer.start(5);
}

// A message box goes first: it may stand over a file dialog that waits for it.
void ModalCatcher::Poll()
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget *widget : windows) {
        if (widget->isVisible() && AnswerMessageBox(widget))
            return;
    }
    for (QWidget *widget : windows) {
        if (widget->isVisible() && (AnswerFileDialog(widget) || AnswerColorDialog(widget)))
            return;
    }
}

bool ModalCatcher::AnswerMessageBox(QWidget *widget)
{
    auto *box = qobject_cast<QMessageBox *>(widget);
    if (!box)
        return false;
    messages.append(box->windowTitle() + QLatin1Char('|') + box->text());
    QAbstractButton *button = box->defaultButton();
    if (!messageAnswers.isEmpty() && box->button(messageAnswers.first()))
        button = box->button(messageAnswers.takeFirst());
    if (!button)
        button = box->buttons().value(0);
    if (button)
        button->click();
    else
        box->close();
    return true;
}

bool ModalCatcher::AnswerFileDialog(QWidget *widget)
{
    auto *dialog = qobject_cast<QFileDialog *>(widget);
    if (!dialog || answeredDialogs.contains(dialog))
        return false;
    answeredDialogs.removeAll(nullptr);
    fileDialogs.append(dialog->windowTitle() + QLatin1Char('|') + dialog->directory().absolutePath()
                       + QLatin1Char('|') + dialog->nameFilters().join(QLatin1Char(';')));
    const QStringList paths = fileAnswers.isEmpty() ? QStringList() : fileAnswers.takeFirst();
    if (paths.isEmpty()) {
        dialog->reject();
        return true;
    }
    dialog->setDirectory(QFileInfo(paths.first()).absolutePath());
    QStringList names;
    for (const QString &path : paths)
        names.append(QLatin1Char('"') + QFileInfo(path).fileName() + QLatin1Char('"'));
    if (auto *edit = dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit")))
        edit->setText(paths.size() == 1 ? QFileInfo(paths.first()).fileName() : names.join(QLatin1Char(' ')));
    // accept() is protected in QFileDialog; its slot is still reachable. It is
    // queued, so that a box it opens finds this catcher free to answer it.
    answeredDialogs.append(dialog);
    QMetaObject::invokeMethod(dialog, "accept", Qt::QueuedConnection);
    return true;
}

bool ModalCatcher::AnswerColorDialog(QWidget *widget)
{
    auto *dialog = qobject_cast<QColorDialog *>(widget);
    if (!dialog)
        return false;
    const QColor color = colorAnswers.isEmpty() ? QColor() : colorAnswers.takeFirst();
    dialog->setCurrentColor(color);
    color.isValid() ? dialog->accept() : dialog->reject();
    return true;
}
