// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/output.h"

#include "till/text.h"

namespace till {

Output::~Output() = default;

void Output::write(const QString& text)
{
    const QByteArray bytes = text.toUtf8();
    std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stream);
    std::fflush(stream);
}

void Output::notes(const QStringList& notices)
{
    for (const QString& notice : notices) {
        line(Text::tr("note: %1").arg(notice));
    }
}

} // namespace till
