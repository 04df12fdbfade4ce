// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "contract/watch/findings.h"
#include "host/document/abstractdocument.h"

#include <QSet>
#include <QSharedPointer>
#include <QString>

#include <optional>
#include <thread>

namespace watch {

using DocumentPointer = QSharedPointer<AbstractDocument>;

/// Follows a host's calls and reports those that break a rule. Each operation is told before the
/// loyalty system does it, with the document that it is about and the one of setDocument; those
/// that answer say whether it can be done at all. What follows from its result is told afterwards.
class Order
{
public:
    explicit Order(int loyaltySystemType) : systemType(loyaltySystemType) {}

    void init();
    void deinit(const DocumentPointer& watched);
    /// The object ends.
    void end();

    void identify(const DocumentPointer& watched,
                  const QSharedPointer<DocumentCardRecord>& cardRecord);
    bool request(const DocumentPointer& check, const DocumentPointer& watched);
    void requested(const DocumentPointer& check, bool answered);
    void askPoints(const DocumentPointer& check, const DocumentPointer& watched);
    void setPoints(const DocumentPointer& check, const DocumentPointer& watched);
    bool spend(const DocumentPointer& watched);
    bool recalculate(const DocumentPointer& watched);
    bool commit(const DocumentPointer& check, const DocumentPointer& watched);
    bool restore(const DocumentPointer& watched);
    /// @param goods what the document kept of the goods that were asked about; null when nothing
    void restored(const DocumentPointer& watched, const QString& goods);
    /// Forgets what is held, by whichever call.
    void clear(const char* call);
    void clearAfterClose();

    /// The document's goods as they count for an answer, to be kept with it.
    static QString goodsOf(const AbstractDocument& document);

private:
    /// What is held for a document.
    struct Held
    {
        QString documentId;
        /// The goods that were asked about.
        QString goods;
        /// Whether the last request, or a restore, has given something that may be confirmed.
        bool answered = false;
        bool spent = false;
        bool recalculated = false;
        bool committed = false;
    };

    bool begin(const char* call);
    bool hasDocument(const char* call, const DocumentPointer& check,
                     const DocumentPointer& watched);
    void requireSession(const char* call, const DocumentPointer& check);
    void requireCard(const char* call, const QSharedPointer<DocumentCardRecord>& cardRecord);
    void requireType(const char* call, const AbstractDocument& check);
    bool isAnswered(const DocumentPointer& check) const;
    /// @param type the kind of impacts that count; none for all
    bool carriesImpacts(const AbstractDocument& check,
                        std::optional<EDiscountType::type> type) const;

    enum class Life
    {
        Made,
        Working,
        Over,
    };

    const int systemType;
    const std::thread::id thread = std::this_thread::get_id();
    Findings findings;
    Life life = Life::Made;
    std::optional<Held> held;
    QSet<QString> closed;
};

} // namespace watch
