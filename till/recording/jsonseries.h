// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/recording/documentimage.h"
#include "till/recording/fieldjson.h"
#include "till/recording/recordedfields_p.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QString>

#include <string>
#include <vector>

namespace till {

/// The objects of entries of one kind, which differ in few of their fields: what is as in the first
/// entry is not made again, which takes most of the time that an object takes.
class JsonSeries
{
public:
    /// The same object as a JsonFields would make.
    template <typename Entry>
    QJsonObject of(const Entry& entry)
    {
        begin();
        present = first;
        recordedfields::of(entry, *this);
        if (next == known.size() && !isOther) {
            return isFirst ? first : present;
        }
        fieldjson::JsonFields whole; // it has other fields than the first one
        recordedfields::of(entry, whole);
        return whole.object;
    }

    /// The entry as it is written in a long list: the first one whole, another one's object with
    /// the fields that are others than the first one's. One that has not the same fields as the
    /// first stands whole in an array of its own.
    template <typename Entry>
    QJsonValue shortOf(const Entry& entry)
    {
        begin();
        present = {};
        recordedfields::of(entry, *this);
        if (isFirst) {
            return first;
        }
        if (next == known.size() && !isOther) {
            return present;
        }
        fieldjson::JsonFields whole;
        recordedfields::of(entry, whole);
        return QJsonArray{whole.object};
    }

    template <typename Value>
    void add(const QString& name, const Value& value)
    {
        image.clear();
        image.add(name, value);
        if (isFirst) {
            known.push_back({name, image.bytes()});
            ++next;
            first.insert(name, fieldjson::of(value));
        } else if (next == known.size() || known[next].name != name) {
            isOther = true;
        } else if (known[next++].image != image.bytes()) {
            present.insert(name, fieldjson::of(value));
        }
    }

private:
    struct Known
    {
        QString name;
        std::string image;
    };

    void begin()
    {
        isFirst = known.empty();
        isOther = false;
        next = 0;
    }

    std::vector<Known> known; // the first entry's fields
    QJsonObject first;
    QJsonObject present;
    DocumentImage image;
    size_t next = 0;
    bool isFirst = true;
    bool isOther = false;
};

} // namespace till
