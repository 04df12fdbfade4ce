// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// What sales and returns book, and which of them are taken.

#include "simulator/deviations/requestparts.h"
#include "simulator/documents/rejection.h"

#include <QCoreApplication>
#include <QHash>

using namespace Qt::StringLiterals;

namespace simulator {
namespace {

/// Makes the sums of a check those of its lines again.
void sumUp(Booking& booking)
{
    booking.earned = booking.spent = booking.givenBack = booking.takenBack = 0;
    for (const BookedLine& line : booking.lines) {
        booking.earned += line.earned;
        booking.spent += line.spent;
        booking.givenBack += line.givenBack;
        booking.takenBack += line.takenBack;
    }
}

/// Lets each line earn what a function makes of its award. paid, due: what of the check is paid in
/// money, and in money and points.
void earn(Booking& booking, const SaleTerms& terms,
          Kopecks (*earned)(Kopecks award, Kopecks paid, Kopecks due))
{
    const Kopecks due = booking.total - booking.discount;
    for (size_t i = 0; i < booking.lines.size() && due > 0; ++i) {
        booking.lines[i].earned = earned(terms.granted[i].awardBonus, booking.paid, due);
    }
    sumUp(booking);
}

/// Rounds once, for the whole check, and books that on the first line.
void earnInOne(Booking& booking, const SaleTerms& terms)
{
    Kopecks awards = 0;
    for (const LineGrant& line : terms.granted) {
        awards += line.awardBonus;
    }
    const Kopecks due = booking.total - booking.discount;
    for (size_t i = 0; i < booking.lines.size() && due > 0; ++i) {
        booking.lines[i].earned = i == 0 ? roundedShare(awards, booking.paid, due) : 0;
    }
    sumUp(booking);
}

void refuseOverdraft(Booking& booking, const SaleTerms& terms)
{
    if (booking.spent > terms.balance) {
        throw Rejection(424, u"The card holds fewer points"_s);
    }
}

/// What a sale booked and its returns have taken off so far.
struct Sale
{
    explicit Sale(const std::vector<SoldLine>& sold)
    {
        for (const SoldLine& line : sold) {
            byId.insert(line.sold.id, &line);
            total += line.sold.total;
            spent += line.sold.spent;
            earned += line.sold.earned;
        }
    }

    QHash<int, const SoldLine*> byId;
    Kopecks total = 0;
    Kopecks spent = 0;
    Kopecks earned = 0;
};

/// Gives back and takes back by the share of the sale's money that a line is, whatever its own
/// points were.
void shareBySale(Booking& booking, const std::vector<SoldLine>& sold)
{
    const Sale sale(sold);
    for (BookedLine& line : booking.lines) {
        line.givenBack = roundedShare(sale.spent, line.total, sale.total);
        line.takenBack = roundedShare(sale.earned, line.total, sale.total);
    }
    sumUp(booking);
}

/// Rounds what every return takes back by itself; what it gives back the till has worked out.
void shareEach(Booking& booking, const std::vector<SoldLine>& sold)
{
    const Sale sale(sold);
    for (BookedLine& line : booking.lines) {
        const BookedLine& from = sale.byId.value(line.id)->sold;
        line.takenBack = roundedShare(from.earned, line.quantity, from.quantity);
    }
    sumUp(booking);
}

const Deviation bookingRows[] = {
    {"points-rounded-down", "accrual-scaled",
     QT_TRANSLATE_NOOP("Simulator", "points earned are rounded down to whole kopecks"),
     [](Booking& booking, const SaleTerms& terms) {
         earn(booking, terms,
              [](Kopecks award, Kopecks paid, Kopecks due) { return award * paid / due; });
     }},
    {"points-unscaled", "accrual-scaled",
     QT_TRANSLATE_NOOP("Simulator", "a check earns the same however much of it points have paid"),
     [](Booking& booking, const SaleTerms& terms) {
         earn(booking, terms, [](Kopecks award, Kopecks, Kopecks) { return award; });
     }},
    {"points-rounded-in-one", "accrual-scaled",
     QT_TRANSLATE_NOOP("Simulator", "points earned are rounded once for the whole check"),
     earnInOne, blind},
    {"points-spent-forgotten", "points-as-confirmed",
     QT_TRANSLATE_NOOP("Simulator", "the points of the payment try are forgotten"),
     [](Booking& booking, const SaleTerms&) {
         for (BookedLine& line : booking.lines) {
             line.spent = 0;
         }
         sumUp(booking);
     }},
    {"points-spent-as-allowed", "points-as-confirmed",
     QT_TRANSLATE_NOOP("Simulator", "a check that points pay for spends all that they may pay"),
     [](Booking& booking, const SaleTerms& terms) {
         for (size_t i = 0; i < booking.lines.size() && booking.spent > 0; ++i) {
             booking.lines[i].spent = terms.granted[i].allowBonus;
         }
         sumUp(booking);
     },
     blind},
    {"overdraft-refused", "closed-check-booked",
     QT_TRANSLATE_NOOP("Simulator", "a check is refused when the card holds less by now"),
     refuseOverdraft},
    {"payment-unchecked", "payment-agrees",
     QT_TRANSLATE_NOOP("Simulator", "what was paid need not be what was to be paid"),
     [](const Request& request, const Handler& sound, Notes& notes) {
         return unless(request, sound, notes, "but the payment is"_L1);
     }},
    {"overspending-taken", "used-within-granted",
     QT_TRANSLATE_NOOP("Simulator", "a line may use more than it was granted"),
     [](const Request& request, const Handler& sound, Notes& notes) {
         return unless(request, sound, notes, "was granted"_L1);
     },
     blind},
    {"other-card-taken", "same-check",
     QT_TRANSLATE_NOOP("Simulator", "a check may be confirmed with another card"),
     [](const Request& request, const Handler& sound, Notes& notes) {
         return unless(request, sound, notes, "is not the pre-checked one"_L1);
     }},
    {"other-lines-taken", "same-check",
     QT_TRANSLATE_NOOP("Simulator", "a check may be confirmed with other lines"),
     [](const Request& request, const Handler& sound, Notes& notes) {
         return unless(request, sound, notes, "pre-checked last"_L1);
     }},
    {"return-of-unknown-sale-taken", "return-of-booked-sale",
     QT_TRANSLATE_NOOP("Simulator", "a sale that nobody knows may be returned"),
     [](const Request& request, const Handler& sound, Notes& notes) {
         return unless(request, sound, notes, "is not known as a confirmed one"_L1);
     }},
    {"return-to-another-card-taken", "return-of-booked-sale",
     QT_TRANSLATE_NOOP("Simulator", "a sale may be returned with another card"),
     [](const Request& request, const Handler& sound, Notes& notes) {
         return unless(request, sound, notes, "is not the one of the returned sale"_L1);
     },
     blind},
    {"over-return-taken", "return-within-sale",
     QT_TRANSLATE_NOOP("Simulator", "more may be returned than was sold"),
     [](const Request& request, const Handler& sound, Notes& notes) {
         return unless(request, sound, notes, "more is returned than was sold"_L1);
     }},
    {"return-points-unchecked", "return-shares-agree",
     QT_TRANSLATE_NOOP("Simulator", "a return may give back any number of points"),
     [](const Request& request, const Handler& sound, Notes& notes) {
         return unless(request, sound, notes, "points are given back"_L1);
     }},
    {"returns-by-share-of-sale", "return-books",
     QT_TRANSLATE_NOOP("Simulator", "returns give back by the share of the sale's money"),
     shareBySale},
    {"returns-give-nothing-back", "return-books",
     QT_TRANSLATE_NOOP("Simulator", "returns do not give back the points that were spent"),
     [](Booking& booking, const std::vector<SoldLine>&) {
         for (BookedLine& line : booking.lines) {
             line.givenBack = 0;
         }
         sumUp(booking);
     },
     blind},
    {"returns-take-nothing-back", "return-books",
     QT_TRANSLATE_NOOP("Simulator", "returns do not take back the points that were earned"),
     [](Booking& booking, const std::vector<SoldLine>&) {
         for (BookedLine& line : booking.lines) {
             line.takenBack = 0;
         }
         sumUp(booking);
     }},
    {"returns-rounded-each", "returns-add-up",
     QT_TRANSLATE_NOOP("Simulator", "each partial return is rounded by itself"), shareEach},
};

} // namespace

std::span<const Deviation> bookingDeviations()
{
    return bookingRows;
}

} // namespace simulator
