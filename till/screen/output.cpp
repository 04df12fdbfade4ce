// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/screen/output.h"

#include "till/text.h"

using namespace Qt::StringLiterals;

namespace till {

void Output::done(const QString& text)
{
    if (!quiet) {
        line(text);
    }
}

void Output::notes(const QStringList& notices)
{
    for (const QString& notice : notices) {
        // scripts look for the word, so it is the same in every language
        line(u"note:"_s, Colour::Yellow, notice);
    }
}

void Output::failure(const QString& sentence)
{
    line(u"orva-till:"_s, Colour::Red, sentence);
}

ExitCode Output::tellTrouble(const console::Output& other, ExitCode code, const QString& done)
{
    if (other.isWhole()) {
        return code;
    }
    // who has stopped reading a list wants no more of it, and no complaint either
    if (!other.isUnread() || !done.isEmpty()) {
        const QString what = Text::tr("What is shown is not whole: %1.").arg(other.trouble());
        failure(done.isEmpty() ? what : what + u' ' + done);
    }
    return code == ExitCode::Ok ? ExitCode::NotShown : code;
}

} // namespace till
