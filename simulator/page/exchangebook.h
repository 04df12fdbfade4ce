// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/exchange.h"

#include <QByteArrayList>

#include <atomic>
#include <deque>
#include <memory>
#include <mutex>
#include <optional>

class QTemporaryFile;

namespace simulator {

/// Every request that a server has answered, and its answer, in the order in which they were
/// answered. They lie in files without a name that go with the process, however it ends; in memory
/// are some 32 bytes of each. The oldest are forgotten, a file at a time, where there would be more
/// than the limits allow. All operations may be called from several threads at once.
class ExchangeBook
{
public:
    struct Limits
    {
        qint64 fileBytes = 64 * 1024 * 1024;        ///< a new file is begun from here on
        qint64 allBytes = 4LL * 1024 * 1024 * 1024; ///< on the disk
        size_t exchanges = 1'000'000;
    };

    /// folder: where there is room on the disk; it must exist.
    explicit ExchangeBook(QString folder);
    ExchangeBook(QString folder, const Limits& bookLimits);
    ~ExchangeBook();
    ExchangeBook(const ExchangeBook&) = delete;
    ExchangeBook& operator=(const ExchangeBook&) = delete;

    /// Writes one down; returns its number, which is one more than the last one's. Never throws:
    /// what the disk does not take is kept as a number without anything.
    qint64 add(const Request& request, const Answer& answer);

    /// The numbers of those that are there; last is first - 1 where there is none.
    struct Span
    {
        qint64 first = 1;
        qint64 last = 0;
    };
    [[nodiscard]] Span span() const;

    /// How many confirmations were answered since the start, whatever the answer was.
    [[nodiscard]] qint64 confirmations() const { return confirmed; }

    /// The lines of those behind a number, each a JSON object: number, time (ms since 1970),
    /// method, path, operation, check, card, status, reason, milliseconds, fault, requestType,
    /// requestBytes, answerType, answerBytes. At most that many; fewer only at the end.
    [[nodiscard]] QByteArrayList rows(qint64 after, qint64 most) const;

    /// One exchange as it was.
    struct Entry
    {
        QByteArray row; ///< as in rows
        QByteArray request;
        QByteArray answer;
    };
    /// Nothing where it is not there, or not any more. Throws std::runtime_error where the disk
    /// does not give it back.
    [[nodiscard]] std::optional<Entry> read(qint64 number) const;

private:
    struct File;
    struct Place
    {
        std::shared_ptr<File> file; ///< null: the disk did not take it
        quint32 at = 0;
        quint32 row = 0;
        quint32 request = 0;
        quint32 answer = 0;
    };

    [[nodiscard]] std::optional<Place> placeOf(qint64 number) const;
    std::shared_ptr<File> fileFor(qint64 bytes);
    Place write(const QByteArray& row, const QByteArray& request, const QByteArray& answer);
    void forgetOldest();

    const QString folder;
    const Limits limits;
    std::atomic<qint64> confirmed = 0;
    mutable std::mutex mutex; // guards what follows
    std::deque<Place> places;
    std::deque<std::shared_ptr<File>> files;
    qint64 bytes = 0;
    qint64 first = 1;
};

} // namespace simulator
