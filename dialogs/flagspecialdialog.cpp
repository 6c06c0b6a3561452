#include "flagspecialdialog.h"

// The rule pages and their form come with the dialog's own work; until then
// the dialog is an empty window with its final signals.
FlagSpecialDialog::FlagSpecialDialog(QWidget *parent)
    : QDialog(parent, Qt::WindowTitleHint | Qt::WindowCloseButtonHint)
{
    setModal(true);
    setWindowTitle(QStringLiteral("Select Rows to Flag"));
}

void FlagSpecialDialog::Prepare(const QString &, const QString &, int, int)
{
}

void FlagSpecialDialog::UpdateMatches(int)
{
}
