// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/unit/client/spendingmodel.h"

#include <cmath>

namespace tests {

namespace {

/// A line's place in the distribution.
struct Place
{
    int position;
    double share;
    double left;
};

/// The second where it is smaller, otherwise the first: also for numbers that do not compare.
double smaller(double first, double second)
{
    if (second < first) {
        return second;
    }
    return first;
}

bool isNothing(double value)
{
    return std::fabs(value) < 0.005;
}

/// What the first pass gives to a line with this allowance while so much is to be placed.
double shareOf(double allowance, double ratio, double toPlace)
{
    double share = roundByModel(ratio * allowance);
    const bool roundedToNothing = isNothing(share);
    if (toPlace > 0.005 && roundedToNothing) {
        share = smaller(toPlace, allowance);
    }
    return share;
}

void putInPlace(std::vector<Place>& places, const Place& place)
{
    std::vector<Place> others;
    for (const Place& other : places) {
        if (other.position != place.position) {
            others.push_back(other);
        }
    }
    others.push_back(place);
    places = others;
}

/// Sorts by picking the lowest again and again.
std::vector<Place> ascending(std::vector<Place> places)
{
    std::vector<Place> sorted;
    while (!places.empty()) {
        std::size_t lowest = 0;
        for (std::size_t i = 1; i < places.size(); ++i) {
            if (places[i].position < places[lowest].position) {
                lowest = i;
            }
        }
        sorted.push_back(places[lowest]);
        places.erase(places.begin() + static_cast<std::ptrdiff_t>(lowest));
    }
    return sorted;
}

} // namespace

double roundByModel(double value)
{
    double sign = 0.0;
    if (value > 0) {
        sign = 1.0;
    }
    if (value < 0) {
        sign = -1.0;
    }
    const double moved = value + sign * 0.005;
    const double hundredths = moved * 100.0 + sign * 0.001;
    const double limit = 9223372036854775808.0; // 2 to the power of 63
    if (std::isnan(hundredths)) {
        return 0.0;
    }
    if (hundredths >= limit) {
        return limit / 100.0;
    }
    if (hundredths <= -limit) {
        return -limit / 100.0;
    }
    // adding zero takes the sign off a negative zero, as whole numbers have none
    return (std::trunc(hundredths) + 0.0) / 100.0;
}

ModelResult spreadByModel(const std::vector<SpendingLine>& lines, double amount, double maximum)
{
    ModelResult result;
    if (isNothing(amount) || lines.empty()) {
        return result;
    }
    const double ratio = smaller(1.0, amount / maximum);
    double toPlace = amount;
    std::vector<Place> places;
    for (const SpendingLine& line : lines) {
        double share = 0.0;
        if (!isNothing(line.allowance)) {
            share = shareOf(line.allowance, ratio, toPlace);
            const double spend = smaller(share, toPlace);
            result.records.emplace_back(line.position, spend);
            putInPlace(places, {line.position, spend, line.allowance - spend});
        }
        if (share < toPlace) {
            toPlace = toPlace - share;
        } else {
            toPlace = 0.0;
        }
        if (isNothing(toPlace)) {
            break;
        }
    }
    for (const Place& place : ascending(places)) {
        result.impacts.push_back({place.position, place.share});
    }
    for (const Place& place : ascending(places)) {
        const double add = smaller(toPlace, place.left);
        result.records.emplace_back(place.position, add);
        toPlace = toPlace - add;
        if (isNothing(toPlace)) {
            break;
        }
    }
    return result;
}

} // namespace tests
