#include "mergetool.h"

#include <QCoreApplication>

// No GUI application: the tool runs where there is no display at all.
int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("zephlane-merge"));
    QCoreApplication::setApplicationVersion(QStringLiteral(ZEPHLANE_VERSION));
    MergeTool tool;
    return tool.Run(QCoreApplication::arguments());
}
