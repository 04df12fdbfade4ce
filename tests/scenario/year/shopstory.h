// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "tests/scenario/year/shoptill.h"

#include <QHash>
#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <vector>

namespace year {

class Dice;
class Journal;

/// Decides by chance what customers do at the tills of a shop with a store: they buy, bring goods
/// back to another till, leave checks at one till and take them up at another. What comes of it at
/// the till is held against what the customer came with. @throws Violation from every operation
class ShopStory
{
public:
    using Tills = std::vector<std::unique_ptr<ShopTill>>;

    /// How often what happened.
    struct Counts
    {
        int sales = 0;
        int returns = 0;
        int elsewhere = 0; ///< of the returns, those at another till than the sale's
        int nameless = 0;  ///< of the returns, those of a customer who was forgotten
        int again = 0;     ///< opened again, since another one was on its way to the store
        int tooMuch = 0;   ///< refused: more came back than was left
        int left = 0;      ///< checks suspended in the store
        int takenUp = 0;   ///< of them, at another till
        int told = 0;      ///< tills that were refused a check which another one had taken up
        int abandoned = 0;
        int kills = 0; ///< of a till while it was closing
    };

    /// @param closed gets every check that a till has closed, with the till's number
    ShopStory(Dice& chance, Journal& lines, Tills& allTills, QStringList customers,
              std::function<void(const till::Check&, int)> closed);

    /// One customer comes.
    void event();
    /// Takes up and closes every check that is still suspended.
    void ending();
    /// A customer whom all may forget: with closed checks and none that is suspended; empty when
    /// there is none.
    QString customerToForget();
    /// From now on the customer's goods come back without the loyalty system, and the customer does
    /// not come any more.
    void forget(const QString& card);

    const Counts& counts() const { return count; }

private:
    struct Sold
    {
        QString id;
        int till = 0;
        QString card;
        QMap<int, qint64> left; ///< position -> thousandths
        QMap<int, bool> fractional;
    };
    struct Suspended
    {
        QString id;
        int till = 0;
        QString card;
        qint64 goods = 0;
        bool inStore = true;
    };

    ShopTill& anyTill();
    ShopTill& tillBut(int number);
    ShopTill& tillOf(int number) { return *tills.at(size_t(number - 1)); }
    void sell(ShopTill& till);
    void takeUp(ShopTill& till, const Suspended& waiting, bool mayWait);
    void resume();
    void takeBack();
    void bringTooMuch();
    ShopTill& tillForReturn(const Sold& sale);
    QString writeBasket(ShopTill& till, qint64& goods);
    QMap<int, qint64> writeReturn(ShopTill& till, const Sold& sale);
    void openReturn(ShopTill& till, const Sold& sale);
    void requireReturn(const till::Check& closed, const Sold& sale,
                       const QMap<int, qint64>& brought);
    void finish(ShopTill& till, Suspended check);
    void suspend(ShopTill& till, Suspended check);
    void dieClosing(ShopTill& till, Suspended check);
    void noteStoreAway(const ShopTill& till, const QString& answer);
    till::Check close(ShopTill& till);
    till::Check closeReturn(ShopTill& till, const Sold& sale);
    till::Check readClosed(ShopTill& till);
    void rememberSale(const till::Check& sale, const Suspended& check);
    void write(const ShopTill& till, const QString& what);

    Dice& dice;
    Journal& journal;
    Tills& tills;
    QStringList cards;
    std::function<void(const till::Check&, int)> closedCheck;
    QStringList forgotten;
    QList<Sold> sold; ///< sales of which something is left
    QList<Sold> gone; ///< sales that have come back as a whole
    QList<Suspended> suspended;
    Counts count;
    int number = 0;
};

} // namespace year
