#include "rowcolorsdialog.h"

// The colour choices and their form come with the dialog's own work; until
// then no colour is chosen and the dialog is an empty window.
RowColorsDialog::RowColorsDialog(QWidget *parent)
    : QDialog(parent, Qt::WindowTitleHint | Qt::WindowCloseButtonHint)
{
    setModal(true);
    setWindowTitle(QStringLiteral("Row Colors"));
}
