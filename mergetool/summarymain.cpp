// SPDX-License-Identifier: GPL-3.0-or-later
#include "summarytool.h"

int main(int argc, char *argv[])
{
    SummaryTool tool;
    return tool.Main(argc, argv);
}
