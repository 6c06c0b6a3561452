// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <QMessageBox>
#include <QObject>
#include <QPointer>
#include <QStringList>
#include <QTimer>

// Answers the modal boxes and dialogs that the program opens while a test
// drives it: message boxes are recorded and closed with their default
// button, file and colour dialogs get the next queued answer (or are
// cancelled).
class ModalCatcher : public QObject
{
    Q_OBJECT

public:
    ModalCatcher();

    // The next file dialog selects these paths; an empty list cancels it.
    void QueueFileAnswer(const QStringList &paths) { fileAnswers.append(paths); }
    // The next message box is answered with this button instead of its
    // default (for example Yes to a file dialog's "replace it?").
    void QueueMessageAnswer(QMessageBox::StandardButton button) { messageAnswers.append(button); }
    // The next colour dialog picks this colour; an invalid colour cancels it.
    void QueueColorAnswer(const QColor &color) { colorAnswers.append(color); }
    // Title and text of each message box seen, as "title|text".
    QStringList Messages() const { return messages; }
    // Captions of the file dialogs seen, with their start directories and filters.
    QStringList FileDialogs() const { return fileDialogs; }
    void Clear()
    {
        messages.clear();
        fileDialogs.clear();
    }

private:
    void Poll();
    bool AnswerMessageBox(QWidget *widget);
    bool AnswerFileDialog(QWidget *widget);
    bool AnswerColorDialog(QWidget *widget);

    QTimer timer;
    QStringList messages;
    QStringList fileDialogs;
    QList<QStringList> fileAnswers;
    QList<QMessageBox::StandardButton> messageAnswers;
    QList<QColor> colorAnswers;
    // A dialog that was told to accept may open a box of its own before it
    // closes; it is not answered twice.
    QList<QPointer<QWidget>> answeredDialogs;
};
