// SPDX-License-Identifier: GPL-3.0-or-later
#include "windowdriver.h"


WindowDriver::WindowDriver(const QByteArray &cloudBaseUrl, const CloudLimits &cloudLimits)
    : window(std::make_unique<MainWindow>(cloudBaseUrl, cloudLimits))
{
    window->show();
    if (!QTest::qWaitForWindowExposed(window.get()))
        qWarning("The main window was not exposed.");
}

WindowDriver::~WindowDriver() = default;

void WindowDriver::AddFiles(const QStringList &paths)
{
    catcher.QueueFileAnswer(paths);
    Trigger(QStringLiteral("actionOpen_Files"));
}

void WindowDriver::ClickRows(const QList<int> &rows, QListWidget *list)
{
    if (list == nullptr)
        list = Find<QListWidget>(QStringLiteral("fileNamesList"));
    Qt::KeyboardModifiers modifiers = Qt::NoModifier;
    for (int row : rows) {
        QTest::mouseClick(list->viewport(), Qt::LeftButton, modifiers, list->visualItemRect(list->item(row)).center());
        modifiers = Qt::ControlModifier;
    }
}

void WindowDriver::ClickCell(QTableView *view, int row, int column, Qt::MouseButton button,
                             Qt::KeyboardModifiers modifiers)
{
    const QModelIndex index = view->model()->index(row, column);
    view->scrollTo(index);
    QTest::mouseClick(view->viewport(), button, modifiers, view->visualRect(index).center());
}

void WindowDriver::ClickHeader(QTableView *view, int column)
{
    view->scrollTo(view->model()->index(0, column));
    QHeaderView *header = view->horizontalHeader();
    const int x = header->sectionViewportPosition(column) + header->sectionSize(column) / 2;
    const QPoint centre(x, header->height() / 2);
    QTest::mouseClick(header->viewport(), Qt::LeftButton, Qt::NoModifier, centre);
}

QStringList WindowDriver::Column(int column) const
{
    return TableContents::Column(*Raw()->model(), column);
}

QString WindowDriver::Summary() const
{
    return TableContents::Cells(*Find<QTableWidget>(QStringLiteral("generalTable"))->model()).join(", ");
}

QString WindowDriver::FileInfo() const
{
    const QWidget *page = Find<QStackedWidget>(QStringLiteral("stack_xpt_filename"))->currentWidget();
    return page->findChild<QLabel *>()->text() + '|' + Find<QLabel>(QStringLiteral("label_file_and_rows_info"))->text();
}

QString WindowDriver::ActionStates() const
{
    const QStringList names = QStringLiteral(
        "actionRemove_Selected_Files actionMerge_Selected_Files actionSelect_All_Rows minusButton mergeButton | "
        "actionSelect_Flagged_Rows actionSelect_Unflagged_Rows actionFlag_Special actionHide_Selected_Rows "
        "actionHide_Flagged_Rows actionHide_Unflagged_Rows actionShow_All_Rows actionHide_Empty_Columns "
        "actionShow_All_Columns actionRefresh_Column_Autosizing | actionFlag_Selection | actionCopy actionRow_Colors")
        .split(' ');
    QString states;
    for (const QString &name : names)
        states += name == "|" ? ' ' : Find<QObject>(name)->property("enabled").toBool() ? '1' : '0';
    return states;
}

DataFileBuilder WindowDriver::Stroop(const QString &experiment, int trials)
{
    DataFileBuilder builder;
    builder.Experiment(experiment).KelmarunTitles();
    for (int i = 0; i < trials; ++i)
        builder.Trial(QStringLiteral("Practice"), QStringLiteral("T%1").arg(i + 1), QStringLiteral("C"),
                      QString::number(400 + i));
    return builder;
}

DataFileBuilder WindowDriver::Trials(const QString &trials)
{
    return DataFileBuilder().KelmarunTitles().Trials(trials.split(QStringLiteral(", ")).replaceInStrings(" ", ","));
}
