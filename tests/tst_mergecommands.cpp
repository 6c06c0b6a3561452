// The merge commands of the main window, driven as a user drives them:
// files added through "Add Files...", the merge dialog opened from the
// window, the save dialog and the success box answered by the catcher.

#include "datafilebuilder.h"
#include "mainwindow.h"
#include "mergedialog.h"
#include "modalcatcher.h"
#include "testenvironment.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

class TestMergeCommands : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void writesTheFocusedFileAndCloses();
    void cancelledSaveLeavesDialogOpen();
    void replacesAnExistingFile();
    void writesACombinedSelection();
    void doesNothingWithoutFiles();

private:
    QString WriteInput(const QString &name, const QString &experiment);
    void AddFiles(const QStringList &paths);
    void OpenMergeDialog();
    void ClickMerge(const QStringList &answer);
    QByteArray Output() const;
    QString OutputPath() const { return dir->filePath("out/merged.txt"); }

    std::unique_ptr<QTemporaryDir> dir;
    std::unique_ptr<ModalCatcher> catcher;
    std::unique_ptr<MainWindow> window;
    MergeDialog *dialog = nullptr;
};

void TestMergeCommands::init()
{
    dir = std::make_unique<QTemporaryDir>();
    QDir(dir->path()).mkdir("in");
    QDir(dir->path()).mkdir("out");
    catcher = std::make_unique<ModalCatcher>();
    window = std::make_unique<MainWindow>();
    window->show();
    dialog = window->findChild<MergeDialog *>();
    QVERIFY(dialog);
}

void TestMergeCommands::cleanup()
{
    window.reset();
    catcher.reset();
}

QString TestMergeCommands::WriteInput(const QString &name, const QString &experiment)
{
    return DataFileBuilder()
        .Experiment(experiment)
        .Date("2026-03-01")
        .Titles({"Block", "Error", "Reaction"}, {"Name", "Code", "Time"})
        .Row({"B1", "C", "300"})
        .Row({"B1", "E", "410"})
        .Write(dir->filePath("in/" + name));
}

// Through the "Add Files..." dialog, which also sets the last directory.
void TestMergeCommands::AddFiles(const QStringList &paths)
{
    catcher->QueueFileAnswer(paths);
    window->findChild<QAction *>("actionOpen_Files")->trigger();
    catcher->Clear();
}

void TestMergeCommands::OpenMergeDialog()
{
    QTest::mouseClick(window->findChild<QPushButton *>("mergeButton"), Qt::LeftButton);
    QVERIFY(dialog->isVisible());
}

void TestMergeCommands::ClickMerge(const QStringList &answer)
{
    catcher->QueueFileAnswer(answer);
    QTest::mouseClick(dialog->MergeButton(), Qt::LeftButton);
}

QByteArray TestMergeCommands::Output() const
{
    QFile file(OutputPath());
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void TestMergeCommands::writesTheFocusedFileAndCloses()
{
    AddFiles({WriteInput("stroop.txt", "Stroop")});
    OpenMergeDialog();
    QCOMPARE(dialog->findChild<QLabel *>("label_3")->text(), QString());

    ClickMerge({OutputPath()});
    QCOMPARE(catcher->FileDialogs(),
             QStringList({"Save Merged Data File|" + dir->filePath("in") + "|Text (*.txt)"}));
    QCOMPARE(Output(), QByteArray("\n{ Stroop }\n{ 2026-03-01 }\n\nBlock\tError\tReaction\nName\tCode\tTime\n"
                                  "B1\tC\t300\t\nB1\tE\t410\t\n"));
    QCOMPARE(catcher->Messages(),
             QStringList({"Talvox Zephlane|Data successfully written to " + OutputPath() + "."}));
    QVERIFY(!dialog->isVisible());
    QCOMPARE(dialog->result(), int(QDialog::Rejected));
}

void TestMergeCommands::cancelledSaveLeavesDialogOpen()
{
    AddFiles({WriteInput("stroop.txt", "Stroop")});
    OpenMergeDialog();
    ClickMerge({});
    QCOMPARE(catcher->FileDialogs().size(), 1);
    QVERIFY(catcher->Messages().isEmpty());
    QVERIFY(!QFile::exists(OutputPath()));
    QVERIFY(dialog->isVisible());
    dialog->reject();
}

void TestMergeCommands::replacesAnExistingFile()
{
    AddFiles({WriteInput("stroop.txt", "Stroop")});
    {
        QFile old(OutputPath());
        QVERIFY(old.open(QIODevice::WriteOnly));
        old.write(QByteArray(4096, 'x'));
    }
    OpenMergeDialog();
    dialog->findChild<QCheckBox *>("checkBox")->click();
    catcher->QueueMessageAnswer(QMessageBox::Yes); // the save dialog's "replace it?"
    ClickMerge({OutputPath()});
    QCOMPARE(Output(), QByteArray("Block Name\tB1\tB1\t\nError Code\tC\tE\t\nReaction Time\t300\t410\t"));
}

void TestMergeCommands::writesACombinedSelection()
{
    AddFiles({WriteInput("stroop.txt", "Stroop"), WriteInput("flanker.txt", "Flanker")});
    window->findChild<QListWidget *>("fileNamesList")->selectAll();
    OpenMergeDialog();
    ClickMerge({OutputPath()});
    QVERIFY(Output().startsWith("\n{ Stroop & Flanker }\n{ 2026-03-012026-03-01  }\n\n"));
    QCOMPARE(Output().count("B1\t"), 4);
}

void TestMergeCommands::doesNothingWithoutFiles()
{
    QVERIFY(QMetaObject::invokeMethod(window.get(), "OpenMergeDialog"));
    QVERIFY(!dialog->isVisible());
    QVERIFY(catcher->FileDialogs().isEmpty());
}

ZEPHLANE_TEST_MAIN(TestMergeCommands)
#include "tst_mergecommands.moc"
