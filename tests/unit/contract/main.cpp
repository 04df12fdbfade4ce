// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "brokenhosts.h"
#include "contract/run.h"
#include "ourhost.h"

#include <QCoreApplication>

#include <cstdio>

/// The contract suite on our own host, or on one with a mistake planted in it:
/// test-contract [--broken NAME] [GoogleTest's arguments]
int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    tests::OurHost ours;
    if (argc < 3 || qstrcmp(argv[1], "--broken") != 0) {
        return contract::run(argc, argv, ours);
    }
    const auto broken = tests::brokenHost(QString::fromLocal8Bit(argv[2]));
    if (!broken) {
        std::fprintf(stderr, "test-contract: no host is broken as \"%s\"\n", argv[2]);
        return 2;
    }
    argv[2] = argv[0];
    int rest = argc - 2;
    return contract::run(rest, argv + 2, *broken);
}
