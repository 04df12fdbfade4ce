// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/checks/check.h"
#include "till/checks/checkfile.h"

#include <QMap>
#include <QString>
#include <QStringList>

namespace year {

class TillBox;
struct Scene;

/// What goes on at the tills: a sale, a return or a suspended check from its opening to its end,
/// with all that customers and cashiers think of on the way. Each operation tells in words for the
/// journal what was done.
class Trade
{
public:
    /// How often what happened.
    struct Counts
    {
        int sales = 0;
        int returns = 0;
        int unconfirmed = 0; ///< of the closed checks, those without a confirmation
        int suspended = 0;
        int restored = 0;
        int abandoned = 0;
        int interrupted = 0; ///< the till was restarted with a check open
        int refused = 0;     ///< closings of a return that another return had overtaken
    };

    explicit Trade(Scene& everything) : scene(everything) {}

    QString sell(TillBox& till);
    /// Takes up a suspended check; there is one.
    QString resume(TillBox& till);
    /// Takes back goods of one of the till's sales; there is one.
    QString takeBack(TillBox& till);

    bool hasSuspended(const TillBox& till) const;
    bool hasReturnable(const TillBox& till) const;
    const Counts& counts() const { return count; }

private:
    /// A closed sale with what may still be returned: position -> thousandths.
    struct Sold
    {
        QString id;
        QMap<int, qint64> left;
        QMap<int, bool> fractional;
    };

    QList<till::Line> basket();
    void presentCard(TillBox& till);
    void payWithPoints(TillBox& till);
    void changeLine(TillBox& till);
    till::CheckFile returnOf(const Sold& sold);
    QString finish(TillBox& till, bool wasSuspended);
    QString suspend(TillBox& till);
    QString overtake(TillBox& till, const QString& sale);
    QString abandon(TillBox& till);
    QString interrupt(TillBox& till, bool wasSuspended);
    QString close(TillBox& till);
    void remember(const till::Check& closed, int till);
    QString describe(const till::Check& check) const;
    QString notices(TillBox& till) const;

    Scene& scene;
    Counts count;
    QMap<int, QStringList> suspended;
    QMap<int, QList<Sold>> sold;
};

} // namespace year
