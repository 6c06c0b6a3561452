// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QApplication>
#include <QTemporaryDir>

// Points HOME and the XDG directories at a fresh temporary directory, so
// that no test reads or writes the user's real settings and data. Create it
// before the application object.
class TestEnvironment
{
public:
    TestEnvironment();

private:
    QTemporaryDir root;
};

// main() for a QtTest class that needs widgets: a temporary home, an
// application object, then the tests.
#define ZEPHLANE_TEST_MAIN(TestClass)                                                              \
    int main(int argc, char *argv[])                                                               \
    {                                                                                              \
        TestEnvironment environment;                                                               \
        QApplication app(argc, argv);                                                              \
        TestClass test;                                                                            \
        return QTest::qExec(&test, argc, argv);                                                    \
    }
