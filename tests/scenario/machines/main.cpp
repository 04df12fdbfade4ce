// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// orva-spreadings COUNT FILE: the digest of so many spreadings, held against the one in FILE, whose
// lines are "COUNT DIGEST". Ends with 1 where it is another one, or none.

#include "tests/scenario/machines/spreadings.h"

#include <QCoreApplication>
#include <QFile>
#include <QStringList>

#include <cstdio>

namespace {

QByteArray knownDigest(const QString& fileName, const QByteArray& count)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        return {};
    }
    for (const QByteArray& line : file.readAll().split('\n')) {
        const QList<QByteArray> words = line.split(' ');
        if (words.size() == 2 && words.first() == count) {
            return words.last();
        }
    }
    return {};
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = application.arguments();
    const int count = arguments.value(1).toInt();
    if (arguments.size() != 3 || count < 1) {
        std::fputs("orva-spreadings: COUNT FILE\n", stderr);
        return 2;
    }
    const QByteArray digest = machines::digestOfSpreadings(count);
    std::printf("%d spreadings, digest %s\n", count, digest.constData());
    const QByteArray known = knownDigest(arguments.at(2), QByteArray::number(count));
    if (known.isEmpty()) {
        std::fprintf(stderr, "orva-spreadings: %s knows no digest of %d spreadings\n",
                     qPrintable(arguments.at(2)), count);
        return 1;
    }
    if (known != digest) {
        std::fprintf(stderr, "orva-spreadings: it must be %s\n", known.constData());
        return 1;
    }
    return 0;
}
