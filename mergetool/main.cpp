// SPDX-License-Identifier: GPL-3.0-or-later
#include "mergetool.h"

int main(int argc, char *argv[])
{
    MergeTool tool;
    return tool.Main(argc, argv);
}
