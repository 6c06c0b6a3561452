#include "windowdriver.h"

#include <QAction>
#include <QHeaderView>
#include <QTest>

WindowDriver::WindowDriver()
    : window(std::make_unique<MainWindow>())
{
    window->show();
    if (!QTest::qWaitForWindowExposed(window.get()))
        qWarning("The main window was not exposed.");
}

WindowDriver::~WindowDriver() = default;

QString WindowDriver::Write(const QString &name, const DataFileBuilder &builder) const
{
    return builder.Write(Path(name));
}

void WindowDriver::AddFiles(const QStringList &paths)
{
    catcher.QueueFileAnswer(paths);
    Find<QAction>(QStringLiteral("actionOpen_Files"))->trigger();
}

void WindowDriver::ClickRows(const QList<int> &rows)
{
    ClickRows(Find<QListWidget>(QStringLiteral("fileNamesList")), rows);
}

void WindowDriver::ClickRows(QListWidget *list, const QList<int> &rows)
{
    Qt::KeyboardModifiers modifiers = Qt::NoModifier;
    for (int row : rows) {
        const QPoint centre = list->visualItemRect(list->item(row)).center();
        QTest::mouseClick(list->viewport(), Qt::LeftButton, modifiers, centre);
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

void WindowDriver::ClickHeader(QTableView *view, int column, Qt::MouseButton button)
{
    view->scrollTo(view->model()->index(0, column));
    QHeaderView *header = view->horizontalHeader();
    const QPoint centre(header->sectionViewportPosition(column) + header->sectionSize(column) / 2, header->height() / 2);
    QTest::mouseClick(header->viewport(), button, Qt::NoModifier, centre);
}

DataFileBuilder WindowDriver::Stroop(const QString &experiment, int trials)
{
    DataFileBuilder builder;
    builder.Experiment(experiment).ProductTitles();
    for (int i = 0; i < trials; ++i)
        builder.Trial(QStringLiteral("Practice"), QStringLiteral("T%1").arg(i + 1), QStringLiteral("C"),
                      QString::number(400 + i));
    return builder;
}
