// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QStringList>
#include <QVariant>

#include <map>
#include <tuple>
#include <utility>

namespace till {

class RecordTarget;

/// Writes long texts of a record down on lines of their own, each once: the server's answer comes
/// back at every question and stays in the document, and a heavy one has megabytes.
class RecordedTexts
{
public:
    /// @param recordTarget must live longer
    explicit RecordedTexts(RecordTarget& recordTarget);

    /// A new record begins.
    void forget() { known.clear(); }
    /// What stands for the text in the record: itself, or { "text": index } where it is long.
    /// @throws std::exception when the text cannot be written
    QJsonValue once(const QString& text);
    /// What stands for the value, its texts written as by once.
    QJsonValue ofVariant(const QVariant& value);
    QJsonValue ofBytes(const QByteArray& bytes);

    /// Puts the texts back where a line of a record has indices in their places.
    /// @return whether all of them are known
    static bool putBack(QJsonObject& line, const QStringList& texts);

private:
    RecordTarget& target;
    /// Length and two hashes of a text, whose seeds nobody outside knows: kept whole, heavy texts
    /// would take their memory twice, and a cryptographic hash takes longer than writing them.
    using Key = std::tuple<qsizetype, size_t, size_t>;
    const std::pair<size_t, size_t> seeds;
    std::map<Key, int> known;
};

} // namespace till
