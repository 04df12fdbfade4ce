// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "contract/watch/findings.h"

#include <QFile>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace watch {
namespace {

QString textOf(std::string_view text)
{
    return QString::fromLatin1(text.data(), qsizetype(text.size()));
}

} // namespace

void Findings::report(const Rule& broken, const char* call)
{
    ++found;
    write(u"%1: %2: %3"_s.arg(textOf(broken.name), QString::fromLatin1(call),
                              textOf(broken.sentence)));
}

void Findings::summarise()
{
    write(u"%1 calls watched, %2 findings"_s.arg(calls.load()).arg(found.load()));
}

void Findings::write(const QString& line)
{
    const QByteArray text = "poshost-watch: " + line.toUtf8() + '\n';
    const QString name = qEnvironmentVariable("POSHOST_WATCH_FILE");
    if (!name.isEmpty()) {
        QFile file(name);
        if (file.open(QIODevice::WriteOnly | QIODevice::Append) &&
            file.write(text) == text.size() && file.flush()) {
            return;
        }
        std::fprintf(stderr, "poshost-watch: %s cannot be written (%s)\n", qPrintable(name),
                     qPrintable(file.errorString()));
    }
    std::fputs(text.constData(), stderr);
}

} // namespace watch
