#pragma once

#include <QStringList>

// Judges whether every path holds a data file. On the first that does not,
// tells the user in a message box and returns false.
bool ValidateDataFiles(const QStringList &paths);
