// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/doctor/report.h"

#include <QJsonArray>
#include <QList>
#include <QSet>
#include <QString>

namespace till::doctor {

/// Applies the mends that may be applied unseen. A file whose content changes is copied beside
/// itself first, with its rights; a line is put into it in one step, so that a power cut leaves the
/// old file or the new one.
class Mending
{
public:
    /// What became of a mend.
    struct Deed
    {
        QString id; ///< of the check
        Mend mend;
        QString copy;   ///< of the file as it was; empty where no content changed
        QString reason; ///< why it was not applied; empty: it was
    };

    /// Applies the first safe mend that was not tried before: what the others say may be different
    /// then. @return false: there is none left
    bool applyNext(const Report& report);

    const QList<Deed>& deeds() const { return done; }
    /// A few lines for each deed, for people.
    QString text() const;
    /// The same of what could not be done.
    QString failures() const;
    QJsonArray json() const;

private:
    QList<Deed> done;
    QSet<QString> tried;
};

} // namespace till::doctor
